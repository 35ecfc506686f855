# Loads the native extension: the module Quillonbin2xml with its four conversion functions.
require "Quillonbin2xml"
require_relative "quillonbin2xml/model_walker"
