require_relative "helper"
require "QuillonProbe"

# What the guard around every Ruby-facing function promises: a raise or jump out of Ruby code
# the bridge calls reaches the caller unchanged, a swallowed failure leaves nothing behind, and
# each call, on each fiber, keeps its own. Cases that could crash run in a child interpreter.
class EntryGuardTest < Minitest::Test
  include IsolatedRuby

  # The value classes need the host's classes to exist by name; empty stand-ins serve.
  VALUE_CLASSES = <<~RUBY.freeze
    require "QuillonProbe"
    module Sketchup; end
    module Geom; end
    %w[ComponentDefinition ComponentInstance Material Group Face Vertex Drawingelement Image Entity
       Model Color Texture].each { Sketchup.const_set(_1, Class.new) }
    %w[Vector3d Point3d Transformation PolygonMesh].each { Geom.const_set(_1, Class.new) }
    module Quillon; end
    QuillonProbe.register_host_classes(Quillon)
  RUBY

  def assert_child(source, expected_lines)
    assert_child_prints(VALUE_CLASSES + source, expected_lines)
  end

  # A bignum beyond a double's range warns while it is converted, and with $VERBOSE set the
  # warning runs Warning.warn: Ruby code in the middle of Vector#set.
  def test_a_raise_or_throw_from_a_warning_resumes_unchanged
    assert_child(<<~RUBY, ["true", "true", "42", "[nil, [1.0, 2.0, 3.0]]", "[:value, [Infinity, 0.0, 0.0]]"])
      huge = 2**1100
      mine = IOError.new("from the warning")
      on_warning = -> { raise mine }
      Warning.define_singleton_method(:warn) { |*| on_warning.call }
      $VERBOSE = true
      begin
        Quillon::Vector.new(huge, 0, 0)
      rescue IOError => e
        p e.equal?(mine)
        p e.backtrace.any? { _1.include?("block in <main>") }
      end
      on_warning = -> { throw :k, 42 }
      p catch(:k) { Quillon::Vector.new(huge, 0, 0); :not_thrown }
      p [$!, Quillon::Vector.new(1, 2, 3).to_a]
      on_warning = -> {}
      p outcome { Quillon::Vector.new(huge, 0, 0).to_a }
    RUBY
  end

  # Each argument of Vector#set is converted on its own, so a failure at the third belongs to
  # whichever call is current then: after a nested call has come and gone, and while another
  # fiber's call waits inside its own warning, that is still the outer call on this fiber.
  def test_a_later_failure_belongs_to_the_call_of_its_own_fiber
    expected = ['[:raised, IOError, "second"]'] * 2 + ["[Infinity, 0.0, 0.0]", "[nil, [1.0, 2.0, 3.0]]"]
    assert_child(<<~RUBY, expected)
      huge = 2**1100
      other = nil
      warnings = 0
      on_first = -> { Quillon::Vector.new(1, 2, 3) }
      Warning.define_singleton_method(:warn) do |*|
        next Fiber.yield if Fiber.current == other
        (warnings += 1).odd? ? on_first.call : raise(IOError, "second")
      end
      $VERBOSE = true
      p outcome { Quillon::Vector.new(huge, 0, huge) }
      other = Fiber.new { Quillon::Vector.new(huge, 0, 0).to_a }
      on_first = -> { other.resume }
      p outcome { Quillon::Vector.new(huge, 0, huge) }
      p other.resume
      p [$!, Quillon::Vector.new(1, 2, 3).to_a]
    RUBY
  end

  # A receiver's own respond_to? decides whether a host method is called; when it raises, the
  # method counts as missing and the failure is forgotten.
  def test_calls_into_ruby_ask_respond_to_first
    called = []
    raising = Object.new
    raising.define_singleton_method(:respond_to?) { |*| raise "no answer" }
    raising.define_singleton_method(:length) { called << :length; 3 }
    ghost = Object.new
    ghost.define_singleton_method(:method_missing) { |*| called << :ghost; 3 }
    assert_equal [nil, nil], [raising, ghost].map { QuillonProbe.protected_call(_1, "length") }
    assert_equal [[], nil], [called, $!]
    ghost.define_singleton_method(:respond_to_missing?) { |*| true }
    assert_equal 3, QuillonProbe.protected_call(ghost, "length")
  end
end
