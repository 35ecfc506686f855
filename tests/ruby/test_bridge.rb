require_relative "helper"
require "QuillonProbe"

class BridgeTest < Minitest::Test
  include QuillonTestHelper

  def test_holders_pin_once_each
    assert_equal [1, 2, 1], QuillonProbe.holder_counts("text")
    assert_equal [0, 0, 0], QuillonProbe.holder_counts(false), "false is never pinned"
    assert_equal [0, 0, 0], QuillonProbe.holder_counts(nil)
  end

  def test_holders_leave_the_keep_alive_array_as_they_found_it
    before = QuillonProbe.keep_alive_count
    100.times { QuillonProbe.holder_counts(Object.new) }
    assert_equal before, QuillonProbe.keep_alive_count
  end

  def test_converters_check_the_kind_first
    # An Integer is no Float, and nil leaves the value alone.
    [[:to_float, 1, [false, -1.0]], [:to_float, 0.5, [true, 0.5]], [:to_long, 7, [true, 7]],
     [:to_long, 7.0, [false, -1]], [:to_long, 2**40, [true, 2**40]],
     [:to_bool, nil, [false, true]], [:to_bool, false, [true, false]]].each do |name, arg, result|
      assert_equal result, QuillonProbe.public_send(name, arg), "#{name}(#{arg.inspect})"
    end
    assert_raises(RangeError) { QuillonProbe.to_long(2**100) }
  end

  def test_protected_call_turns_failures_into_nil
    assert_equal 3, QuillonProbe.protected_call([1, 2, 3], "length")
    assert_equal 2, QuillonProbe.protected_call([1, 2, 3], "[]", 1)
    assert_nil QuillonProbe.protected_call(Object.new, "no_such_method")
    raiser = Object.new
    def raiser.boom = raise(ArgumentError, "inside")
    assert_nil QuillonProbe.protected_call(raiser, "boom")
    assert_nil $!, "the swallowed exception does not linger"
    assert_nil QuillonProbe.protected_call(nil, "to_s")
  end

  def test_text_between_ruby_and_wide
    assert_equal [true, "h\u00e9llo"], QuillonProbe.ruby_to_wide("h\u00e9llo")
    assert_equal [false, ""], QuillonProbe.ruby_to_wide(nil)
    assert_equal [true, "\u00e9"], QuillonProbe.ruby_to_wide("\xE9".b), "ANSI fallback"
    assert_raises(TypeError) { QuillonProbe.ruby_to_wide(5) }
    sub = Class.new(String)
    assert_equal [false, ""], QuillonProbe.ruby_to_wide(sub.new("x")), "only String itself"
  end

  def test_color_channels_round_half_up
    assert_equal [128, 0, 255], QuillonProbe.color_to_ruby(0.5, 0.0, 1.0)
    assert_equal [-26, 510, 1], QuillonProbe.color_to_ruby(-0.1, 2.0, 0.002), "no clamping"
  end

  def test_dictionary_lookup_consumes_its_holders
    model = FakeModel.new(GUID => { "serial_data" => [1, 2] })
    assert_equal [true, [1, 2], true], QuillonProbe.serial_data(model)
    assert_equal [false, nil, true], QuillonProbe.serial_data(FakeModel.new)
    assert_equal [false, nil, true], QuillonProbe.serial_data(nil)
  end

  def test_set_dictionary_value_tests_the_answer_against_the_dictionary
    dict = {}
    model = FakeModel.new("d" => dict)
    # Hash#[]= answers the stored value, not the dictionary: the test is false by design.
    assert_equal false, QuillonProbe.set_dictionary_value(model, "d", "k", 5, true)
    assert_equal 5, dict["k"]
    answering = Object.new
    def answering.[]=(_key, _value)
      self
    end
    assert_equal true, QuillonProbe.set_dictionary_value(FakeModel.new("d" => answering), "d", "k", 1, false)
    assert_equal false, QuillonProbe.set_dictionary_value(FakeModel.new, "d", "k", 1, true)
  end

  def test_delete_dictionary_key
    dict = { "k" => 1 }
    def dict.delete_key(key) = delete(key)
    assert_equal true, QuillonProbe.delete_dictionary_key(FakeModel.new("d" => dict), "d", "k")
    assert_empty dict
    assert_equal false, QuillonProbe.delete_dictionary_key(FakeModel.new, "d", "k")
  end

  def test_ask_yes_no_is_always_false_and_protected_eval
    assert_equal false, QuillonProbe.ask_yes_no("'Continue?'")
    Object.const_set(:UI, Module.new { def self.messagebox(*) = 6 }) unless defined?(::UI)
    assert_equal false, QuillonProbe.ask_yes_no("'Continue?'"), "even when the host says yes"
    assert_equal [true, 3], QuillonProbe.protected_eval("1 + 2")
    assert_equal [false, nil], QuillonProbe.protected_eval("raise 'x'")
  end

  def test_array_to_archive_keeps_the_low_byte
    bytes = QuillonProbe.archive_round_trip([300, 255, -1, 7])
    assert_equal 4096, bytes.length, "the attribute form holds whole blocks"
    assert_equal [44, 255, 255, 7, 0], bytes.first(5)
    assert_nil QuillonProbe.archive_round_trip([])
    assert_nil QuillonProbe.archive_round_trip(Class.new(Array).new([1]))
    assert_raises(TypeError) { QuillonProbe.archive_round_trip([1, nil]) }
    assert_equal 8192, QuillonProbe.archive_round_trip(Array.new(4097, 1)).length
  end

  def test_host_method_ids_in_their_fixed_order
    assert_equal ["deleted?", "[]=", "active_model", nil],
                 [0, 8, 46, 47].map { QuillonProbe.host_method_name(_1) }
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
