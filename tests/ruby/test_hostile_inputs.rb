require_relative "helper"

# Arguments nobody should pass: each gives what the module's result rules say (nil, or the
# TypeError/RangeError of Ruby's own integer conversions), never a crash.
class HostileInputsTest < Minitest::Test
  include QuillonTestHelper

  OMNI = JSON.parse(File.read(File.join(SAMPLES, "light_type2_omni.json"))).freeze
  BRICK = JSON.parse(File.read(File.join(SAMPLES, "material_type1_brick.json"))).freeze

  def light(bytes, type = 2) = Quillonbin2xml.convert_light(bytes, type)

  def test_subclass_of_array_gives_nil_for_both_conversions
    subclass = Class.new(Array)
    refute_nil Quillonbin2xml.convert_material(BRICK, 1)
    assert_nil Quillonbin2xml.convert_material(subclass.new(BRICK), 1)
    assert_nil light(subclass.new(OMNI))
    assert_nil light({ 0 => 0 }), "a Hash"
    assert_nil Quillonbin2xml.convert_material([], "2"), "the bytes are refused before the type is looked at"
  end

  def test_elements_that_are_no_number_raise_type_error
    [nil, "4", :four, Object.new, true, [4]].each do |bad|
      assert_raises(TypeError, bad.inspect) { light([bad] + OMNI.drop(1)) }
      assert_raises(TypeError, bad.inspect) { Quillonbin2xml.convert_material(BRICK + [bad], 1) }
    end
  end

  # Only the low 8 bits of each converted element count, so every one of these stands for the
  # byte 4 that the omni sample holds at index 2 and must give the sample's own XML.
  def test_numeric_elements_keep_their_low_eight_bits
    expected = light(OMNI)
    refute_nil expected
    [4.0, 4.9, Rational(9, 2), 260, -252, 2**40 + 4, 2**64 - 252, -(2**62) + 4].each do |four|
      bytes = OMNI.dup
      bytes[2] = four
      assert_equal expected, light(bytes), four.inspect
    end
  end

  def test_numbers_beyond_an_unsigned_long_raise_range_error
    [2**64, 2**200, -(2**64), Float::NAN, Float::INFINITY, -Float::INFINITY].each do |bad|
      assert_raises(RangeError, bad.inspect) { light(OMNI + [bad]) }
    end
  end

  def test_type_is_converted_like_any_ruby_integer_and_cut_to_32_bits
    expected = light(OMNI)
    [2.0, 2.9, Rational(5, 2), 2**32 + 2, -(2**32) + 2].each do |two|
      assert_equal expected, light(OMNI, two), two.inspect
    end
    [-1, 1, 8, 2**31, 2**32 + 1].each { |none| assert_nil light(OMNI, none), none.inspect }
    ["2", nil, :two, Object.new].each do |bad|
      assert_raises(TypeError, bad.inspect) { light(OMNI, bad) }
      assert_raises(TypeError, bad.inspect) { Quillonbin2xml.convert_material(BRICK, bad) }
    end
    [2**64, 2**100, Float::NAN].each do |bad|
      assert_raises(RangeError, bad.inspect) { Quillonbin2xml.convert_material(BRICK, bad) }
    end
  end

  # An element's to_int may run any Ruby code, including code that changes the array being
  # copied or raises an error of its own.
  class Shrinking
    def initialize(array) = @array = array
    def to_int = (@array.clear; GC.start; 4)
  end

  class Growing
    def initialize(array) = @array = array
    def to_int = (@array.concat([0] * 100_000); 4)
  end

  class Failing
    def to_int = raise(ArgumentError, "no byte here")
  end

  def test_elements_that_change_the_array_or_raise_while_copied
    # The bytes copied before the array emptied stay, the converted element among them.
    bytes = OMNI.dup
    bytes[2] = Shrinking.new(bytes)
    assert_equal light([0, 0, 4]), light(bytes)
    assert_empty bytes

    bytes = OMNI.dup
    bytes[2] = Growing.new(bytes)
    refute_nil light(bytes), "zeros behind a complete record change nothing"
    assert_equal OMNI.size + 100_000, bytes.size

    error = assert_raises(ArgumentError) { light(OMNI + [Failing.new]) }
    assert_equal "no byte here", error.message
  end

  def test_records_of_random_and_cut_bytes_give_nil_or_a_string
    random = Random.new(20_240_601)
    records = Array.new(40) { Array.new(random.rand(1..600)) { random.rand(256) } }
    records += (1...OMNI.size).step(7).map { |n| OMNI.take(n) }
    records.each do |bytes|
      (0..9).each do |type|
        result = light(bytes, type)
        assert(result.nil? || result.encoding == Encoding::UTF_8)
      end
      (-1..15).each do |type|
        result = Quillonbin2xml.convert_material(bytes, type)
        assert(result.nil? || result.encoding == Encoding::UTF_8)
      end
    end
  end

  def test_a_huge_array_of_zeros_is_refused
    skip "too slow under valgrind" if ENV["QUILLON_VALGRIND"]
    zeros = Array.new(50_000_000, 0)
    assert_nil light(zeros), "version word 0 is refused"
    assert_nil Quillonbin2xml.convert_material(zeros, 1)
    assert_equal false, Quillonbin2xml.old_deserialize(model_holding(zeros))
  end

  def test_hostile_arguments_under_gc_stress
    with_gc_stress do
      assert_nil light(Class.new(Array).new(OMNI))
      assert_raises(TypeError) { light(OMNI + ["x"]) }
      assert_raises(RangeError) { light(OMNI + [2**80]) }
      assert_raises(TypeError) { light(OMNI, "2") }
      bytes = OMNI.dup
      bytes[2] = Shrinking.new(bytes)
      assert_equal light([0, 0, 4]), light(bytes)
      assert_raises(ArgumentError) { light(OMNI + [Failing.new]) }
      assert_equal light(OMNI), light(OMNI.map(&:to_f), 2**32 + 2)
    end
  end
end
