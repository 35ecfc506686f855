# Shared setup for the Ruby tests: load the built extension (and, where asked, the test-only
# probe) from the build tree.
$LOAD_PATH.unshift ENV.fetch("QUILLON_EXT_DIR", File.expand_path("../../build/ext", __dir__))
$LOAD_PATH.unshift ENV.fetch("QUILLON_PROBE_DIR", File.expand_path("../../build/ext-test", __dir__))
require "Quillonbin2xml"
require "minitest/autorun"
require "json"
require "open3"
require "tmpdir"
require "tempfile"
require "fileutils"

module QuillonTestHelper
  GUID = "{DD17A615-9867-4806-8F46-B37031D7F153}".freeze
  SAMPLES = ENV.fetch("QUILLON_SAMPLES_DIR", File.expand_path("../../samples", __dir__))
  CLI = ENV.fetch("QUILLON_CLI", File.expand_path("../../build/bin/quillonbin2xml", __dir__))
  OMNI = JSON.parse(File.read(File.join(SAMPLES, "light_type2_omni.json"))).freeze
  BRICK = JSON.parse(File.read(File.join(SAMPLES, "material_type1_brick.json"))).freeze

  # A stand-in for the host model: attribute dictionaries looked up by name, each lookup noted.
  class FakeModel
    attr_reader :asked

    def initialize(dictionaries = {}) = (@dictionaries, @asked = dictionaries, [])
    def attribute_dictionary(name, create = false) = (@asked << [name, create]; @dictionaries[name])
  end

  def model_holding(bytes) = FakeModel.new(GUID => { "serial_data" => bytes })

  # The tool's standard output, standard error and exit code. Without a build that names the
  # tool (`rake test` builds only the extension), the comparison with it is skipped.
  def run_cli(*args, stdin: "")
    skip "no command-line tool at #{CLI}" unless ENV["QUILLON_CLI"] || File.executable?(CLI)
    out, err, status = Open3.capture3(CLI, *args, stdin_data: stdin)
    [out, err, status.exitstatus]
  end

  def with_gc_stress
    GC.stress = true
    yield
  ensure
    GC.stress = false
  end
end

# Runs Ruby source in a child interpreter with the extension and the probe on its load path,
# so that a crash fails one test instead of the runner. Gives standard output, standard error
# and the exit status (a signal shows as nil).
module IsolatedRuby
  PRELUDE = <<~RUBY.freeze
    $LOAD_PATH.unshift #{ENV.fetch("QUILLON_EXT_DIR", File.expand_path("../../build/ext", __dir__)).inspect}
    $LOAD_PATH.unshift #{ENV.fetch("QUILLON_PROBE_DIR", File.expand_path("../../build/ext-test", __dir__)).inspect}
    require "Quillonbin2xml"
    require "json"
    OMNI = JSON.parse(File.read(#{File.join(QuillonTestHelper::SAMPLES, "light_type2_omni.json").inspect}))
    # What a block gave or raised, as one printable value.
    def outcome
      [:value, yield]
    rescue Exception => e
      [:raised, e.class, e.message]
    end
  RUBY

  def run_isolated(source, env: {})
    out, err, status = Open3.capture3(env, RbConfig.ruby, "-e", PRELUDE + source)
    [out, err, status.exitstatus]
  end

  # Runs `source` in a child interpreter that must live, and compares what it printed.
  def assert_child_prints(source, expected_lines)
    out, err, code = run_isolated(source)
    assert_equal 0, code, "the child died: #{err}"
    assert_equal expected_lines, out.lines.map(&:chomp), err
  end
end
