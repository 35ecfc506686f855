# Shared setup for the Ruby tests: load the built extension (and, where asked, the test-only
# probe) from the build tree.
$LOAD_PATH.unshift ENV.fetch("QUILLON_EXT_DIR", File.expand_path("../../build/ext", __dir__))
$LOAD_PATH.unshift ENV.fetch("QUILLON_PROBE_DIR", File.expand_path("../../build/ext-test", __dir__))
require "Quillonbin2xml"
require "minitest/autorun"

module QuillonTestHelper
  GUID = "{DD17A615-9867-4806-8F46-B37031D7F153}".freeze

  # A stand-in for the host model: one attribute dictionary, looked up by name.
  class FakeModel
    attr_reader :asked

    def initialize(dictionaries = {})
      @dictionaries = dictionaries
      @asked = []
    end

    def attribute_dictionary(name, create = false)
      @asked << [name, create]
      @dictionaries[name]
    end
  end

  def with_gc_stress
    GC.stress = true
    yield
  ensure
    GC.stress = false
  end
end
