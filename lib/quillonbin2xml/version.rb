# The version from the one VERSION file that the gem, the CMake build and the tool share.
module Quillonbin2xml
  VERSION = File.read(File.expand_path("../../VERSION", __dir__)).strip.freeze
end
