require_relative "helper"
require "QuillonProbe"

# The bridge's helpers, through the test-only probe, where the module's functions and the value
# classes do not reach every branch.
class BridgeTest < Minitest::Test
  include QuillonTestHelper

  def test_holders_pin_once_each_and_leave_the_keep_alive_array_as_they_found_it
    assert_equal [[1, 2, 1], [0, 0, 0], [0, 0, 0]], ["text", false, nil].map { QuillonProbe.holder_counts(_1) }
    before = QuillonProbe.keep_alive_count
    100.times { QuillonProbe.holder_counts(Object.new) }
    assert_equal before, QuillonProbe.keep_alive_count
  end

  def test_protected_call_turns_failures_into_nil
    raiser = Object.new
    def raiser.boom = raise(ArgumentError, "inside")
    [[3, [[1, 2, 3], "length"]], [2, [[1, 2, 3], "[]", 1]], [nil, [Object.new, "no_such_method"]],
     [nil, [raiser, "boom"]], [nil, [nil, "to_s"]]].each do |result, args|
      assert_equal result, QuillonProbe.protected_call(*args), args.inspect
    end
    assert_nil $!, "the swallowed exception does not linger"
  end

  def test_converters_check_the_kind_first
    # An Integer is no Float; a refused value leaves the output at its start (-1).
    [[:to_float, 1, [false, -1.0]], [:to_float, 0.5, [true, 0.5]], [:to_float, nil, [false, -1.0]],
     [:to_float, "0.5", [false, -1.0]], [:to_long, 7, [true, 7]], [:to_long, 0, [true, 0]],
     [:to_long, 7.0, [false, -1]], [:to_long, 2**40, [true, 2**40]], [:to_long, nil, [false, -1]],
     [:to_long, "7", [false, -1]]].each do |name, arg, result|
      assert_equal result, QuillonProbe.public_send(name, arg), "#{name}(#{arg.inspect})"
    end
    assert_raises(RangeError) { QuillonProbe.to_long(2**100) }
    # Beyond a fixnum, the long range is still taken whole; only a Float counts for a float.
    [[:to_long, 2**62, [true, 2**62]], [:to_long, -(2**63), [true, -(2**63)]], [:to_float, 2**70, [false, -1.0]],
     [:to_float, Rational(1, 2), [false, -1.0]], [:to_float, Float::INFINITY, [true, Float::INFINITY]],
     [:to_float, -1e300, [true, -Float::INFINITY]]].each do |name, arg, result|
      assert_equal result, QuillonProbe.public_send(name, arg), "#{name}(#{arg.inspect})"
    end
    assert_raises(RangeError) { QuillonProbe.to_long(2**63) }
    ok, nan = QuillonProbe.to_float(Float::NAN)
    assert ok && nan.nan?, "NaN is a Float like any other"
  end

  def test_bool_converter_takes_only_true_and_false
    # From either start: true and false are stored and accepted; anything else, nil too, is
    # refused and leaves the start.
    [[true, false, [true, true]], [true, true, [true, true]], [false, true, [true, false]],
     [false, false, [true, false]], [nil, true, [false, true]], [nil, false, [false, false]],
     [0, false, [false, false]], [1, false, [false, false]], ["true", true, [false, true]],
     [:true, false, [false, false]]].each do |value, start, result|
      assert_equal result, QuillonProbe.to_bool(value, start), "to_bool(#{value.inspect}) from #{start}"
    end
  end

  def test_text_between_ruby_and_wide
    assert_equal [[true, "h\u00e9llo"], [false, ""], [true, "\u00e9"], [false, ""]],
                 ["h\u00e9llo", nil, "\xE9".b, Class.new(String).new("x")].map { QuillonProbe.ruby_to_wide(_1) },
                 "ANSI fallback; only String itself"
    assert_raises(TypeError) { QuillonProbe.ruby_to_wide(5) }
    assert_equal [false, ""], QuillonProbe.ruby_to_wide(Object.new.tap { def _1.to_str = "text" }),
                 "a value that converts to a String is still no String"
  end

  def test_ask_yes_no_is_always_false_and_protected_eval
    assert_equal false, QuillonProbe.ask_yes_no("'Continue?'")
    Object.const_set(:UI, Module.new { def self.messagebox(*) = 6 }) unless defined?(::UI)
    assert_equal false, QuillonProbe.ask_yes_no("'Continue?'"), "even when the host says yes"
    assert_equal [[true, 3], [false, nil]], ["1 + 2", "raise 'x'"].map { QuillonProbe.protected_eval(_1) }
  end

  def test_color_channels_round_half_up_without_clamping
    assert_equal [[128, 0, 255], [-26, 510, 1]],
                 [[0.5, 0.0, 1.0], [-0.1, 2.0, 0.002]].map { QuillonProbe.color_to_ruby(*_1) }
    # Beyond what a channel can mean: NaN is 0, and the 64-bit range is where rounding stops.
    assert_equal [0, 2**63 - 1, -2**63], QuillonProbe.color_to_ruby(Float::NAN, Float::INFINITY, -Float::INFINITY)
    assert_equal [2**63 - 1, -2**63, 255 * 2**40], QuillonProbe.color_to_ruby(1e30, -1e30, 2.0**40)
  end

  def test_dictionaries
    model = FakeModel.new(GUID => { "serial_data" => [1, 2] })
    assert_equal [[true, [1, 2], true], [false, nil, true], [false, nil, true]],
                 [model, FakeModel.new, nil].map { QuillonProbe.serial_data(_1) }, "holders consumed"
    assert_equal [[GUID, false]], model.asked, "a lookup never makes a dictionary"
    # [answer, every holder emptied]. Hash#[]= answers the stored value, not the dictionary:
    # the answer is false by design.
    dict = {}
    holding = FakeModel.new("d" => dict)
    assert_equal [false, true], QuillonProbe.set_dictionary_value(holding, "d", "k", 5, true)
    assert_equal [{ "k" => 5 }, [["d", true]]], [dict, holding.asked]
    answering = Object.new.tap { |o| o.define_singleton_method(:[]=) { |*| o } }
    holding = FakeModel.new("d" => answering)
    assert_equal [true, true], QuillonProbe.set_dictionary_value(holding, "d", "k", "v", false)
    assert_equal [["d", false]], holding.asked, "the create flag is passed on as given"
    assert_equal [false, true], QuillonProbe.set_dictionary_value(FakeModel.new, "d", "k", 1, true)
    def dict.delete_key(key) = delete(key)
    holding = FakeModel.new("d" => dict)
    assert_equal [true, true], QuillonProbe.delete_dictionary_key(holding, "d", "k")
    assert_equal [{}, [["d", false]]], [dict, holding.asked]
    assert_equal [false, true], QuillonProbe.delete_dictionary_key(FakeModel.new, "d", "k")
  end

  def test_archive_to_array_gives_whole_blocks
    bytes = QuillonProbe.archive_round_trip([300, 255, -1, 7])
    assert_equal [4096, [44, 255, 255, 7, 0]], [bytes.length, bytes.first(5)]
    assert_equal 8192, QuillonProbe.archive_round_trip(Array.new(4097, 1)).length
    assert_nil QuillonProbe.archive_round_trip([])
    assert_nil QuillonProbe.archive_round_trip(Class.new(Array).new([1]))
    assert_raises(TypeError) { QuillonProbe.archive_round_trip([1, nil]) }
  end

  # An element's to_int may shorten or lengthen the array mid-copy: the copy ends with the
  # array as it stands then, no byte more or less.
  def test_copy_follows_an_array_that_changes_under_it
    changing = lambda do |change|
      array = [1, 2, nil, 7]
      array[2] = Object.new.tap { |o| o.define_singleton_method(:to_int) { change.call(array); 3 } }
      array
    end
    shrink = ->(array) { array.pop }
    grow = ->(array) { array.push(8, 9) }
    assert_equal [3, 6], [shrink, grow].map { QuillonProbe.copy_to_archive(changing[_1]) }
    bytes = [shrink, grow].map { QuillonProbe.archive_round_trip(changing[_1]) }
    assert_equal [[1, 2, 3, 0], [1, 2, 3, 7, 8, 9, 0]], [bytes[0].first(4), bytes[1].first(7)]
  end

  def test_probe_under_gc_stress
    with_gc_stress do
      5.times do
        assert_equal [44], QuillonProbe.archive_round_trip([300]).first(1)
        QuillonProbe.protected_call([1], "first")
        QuillonProbe.holder_counts("s" * 10)
      end
    end
  end
end
