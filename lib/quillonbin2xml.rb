# Loads the native extension: the module Quillonbin2xml with its four conversion functions.
# The binary lives one folder down, so that on a case-insensitive file system this script and
# the extension never share a name.
require_relative "quillonbin2xml/version"
require "quillonbin2xml/Quillonbin2xml"
require_relative "quillonbin2xml/model_walker"
