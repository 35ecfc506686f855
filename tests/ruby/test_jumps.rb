require_relative "helper"

# Non-local exits through the extension: an exception, throw, a proc's return, a thread kill
# and an abandoned fiber out of an element's or the type's to_int, and jumps out of host
# methods. Each case runs in its own interpreter, since a fault here is a crash. Plain Ruby's
# own conversion (Array#pack) is the reference for what must happen.
class JumpsTest < Minitest::Test
  include QuillonTestHelper
  include IsolatedRuby

  # Defines `Jumper`, whose to_int runs a given block, and, for each case, prints the outcome
  # through pack and through the extension (`outcome` comes with every child's prelude).
  CASES_PRELUDE = <<~RUBY.freeze
    class Jumper
      def initialize(&body) = @body = body
      def to_int = @body.call
    end
    def pack(jumper) = [0, 0, 4, jumper].pack("C*").bytes
    def light(jumper) = Quillonbin2xml.convert_light(OMNI.take(2) + [jumper] + OMNI.drop(3), 2)
    def light_type(jumper) = Quillonbin2xml.convert_light(OMNI, jumper)
    def after_jump = [$!, Quillonbin2xml.convert_light(OMNI, 2) == LIGHT]
    LIGHT = Quillonbin2xml.convert_light(OMNI, 2)
  RUBY

  def assert_isolated(source, expected_lines)
    assert_child_prints(CASES_PRELUDE + source, expected_lines)
  end

  def test_throw_and_return_reach_their_targets_as_through_plain_ruby
    assert_isolated(<<~RUBY, ["42", "42", "42", ":pack", ":light", "[nil, true]"] + ['"same"'] * 2)
      p catch(:k) { pack(Jumper.new { throw :k, 42 }) }
      p catch(:k) { light(Jumper.new { throw :k, 42 }) }
      p catch(:k) { light_type(Jumper.new { throw :k, 42 }) }
      def returns_through(how) = (pr = proc { return how }; send(how, Jumper.new { pr.call }); :missed)
      p returns_through(:pack)
      p returns_through(:light)
      p after_jump
      broken = ->(how) { outcome { [1, 2].each { send(how, Jumper.new { proc { break 7 }.call }) } } }
      p broken[:pack] == broken[:light] ? "same" : [broken[:pack], broken[:light]]
      raised = ->(how) { outcome { send(how, Jumper.new { raise IOError, "no byte" }) } }
      p raised[:pack] == raised[:light] ? "same" : [raised[:pack], raised[:light]]
    RUBY
  end

  def test_the_stored_scene_record_and_host_methods
    assert_isolated(<<~RUBY, ["42", "[false, :after, nil]", "[false, :after, nil]", "[nil, true]"])
      model = Object.new
      def model.attribute_dictionary(*) = { "serial_data" => [0, 0, Jumper.new { throw :k, 42 }] }
      p catch(:k) { Quillonbin2xml.old_deserialize(model) }
      throwing = Object.new
      def throwing.attribute_dictionary(*) = throw(:k, 1)
      p catch(:k) { [Quillonbin2xml.old_deserialize(throwing), :after, $!] }
      raising = Object.new
      def raising.attribute_dictionary(*) = raise("host failure")
      p catch(:k) { [Quillonbin2xml.old_deserialize(raising), :after, $!] }
      p after_jump
    RUBY
  end

  def test_a_killed_thread_stays_killed_and_others_go_on
    assert_isolated(<<~RUBY, ["[nil, false, :not_reached]", "[nil, false]", "[nil, true]"])
      reached = :not_reached
      t = Thread.new { light(Jumper.new { Thread.current.kill }); reached = :reached }
      p [t.value, t.status, reached]
      model = Object.new
      def model.attribute_dictionary(*) = Thread.current.kill
      t = Thread.new { Quillonbin2xml.old_deserialize(model); :reached }
      p [t.value, t.status]
      p after_jump
    RUBY
  end

  def test_re_entrant_calls_keep_their_own_errors
    assert_isolated(<<~RUBY, ["true", "true", "TypeError", "[nil, true]"])
      inner = Jumper.new { Quillonbin2xml.convert_light(OMNI, 2) == LIGHT ? 4 : 0 }
      p light(inner) == LIGHT
      caught = Jumper.new { catch(:in) { light(Jumper.new { throw :in }) }; 4 }
      p light(caught) == LIGHT
      failed = Jumper.new { Quillonbin2xml.convert_light(OMNI + ["x"], 2) rescue nil; 4 }
      p outcome { light(Jumper.new { light(failed); "not a number" }) }[1]
      p after_jump
    RUBY
  end

  def test_no_error_outlives_its_call
    assert_isolated(<<~RUBY, ["ArgumentError", "[true, nil]"])
      require "QuillonProbe"
      module Quillon; end
      p outcome { QuillonProbe.register_host_classes(Quillon) }[1]
      p [Quillonbin2xml.serialize_to_xml(nil).include?("<Assets>"), $!]
    RUBY
  end

  # The copy of each abandoned call is garbage once its fiber is: 200 calls of 1 Mi elements
  # would otherwise keep 200 MiB.
  def test_abandoned_fibers_leave_nothing_behind
    skip "too slow under valgrind" if ENV["QUILLON_VALGRIND"]
    env = { "ASAN_OPTIONS" => [ENV["ASAN_OPTIONS"], "quarantine_size_mb=8"].compact.join(":") }
    out, err, code = run_isolated(<<~RUBY, env: env)
      def rss_mib = File.read("/proc/self/status")[/VmRSS:\\s+(\\d+)/, 1].to_i / 1024
      bytes = Array.new(1 << 20, 0) + [Object.new.tap { |o| def o.to_int = Fiber.yield }]
      run = -> { Fiber.new { Quillonbin2xml.convert_light(bytes, 2) }.resume }
      20.times { run.call }
      GC.start
      before = rss_mib
      200.times { |i| run.call; GC.start if i % 20 == 19 }
      GC.start
      puts rss_mib - before
    RUBY
    assert_equal 0, code, err
    assert_operator out.to_i, :<, 64, "MiB kept by 200 abandoned calls"
  end
end
