require_relative "helper"

# Arguments nobody should pass: each gives nil or the TypeError/RangeError of Ruby's own integer
# conversions, never a crash.
class HostileInputsTest < Minitest::Test
  include QuillonTestHelper

  def light(bytes, type = 2) = Quillonbin2xml.convert_light(bytes, type)
  def material(bytes, type = 1) = Quillonbin2xml.convert_material(bytes, type)

  def with_byte2(value) = OMNI.dup.tap { _1[2] = value }

  # An element's to_int may run any Ruby code: empty or grow the array being copied, or raise.
  class Shrinking < Struct.new(:array)
    def to_int = (array.clear; GC.start; 4)
  end

  class Growing < Struct.new(:array)
    def to_int = (array.concat([0] * 100_000); 4)
  end

  class Failing
    def to_int = raise(ArgumentError, "no byte here")
  end

  def test_bytes_table
    sub = Class.new(Array)
    refute_nil material(BRICK)
    # [bytes, type, expected result or error class]; OMNI's byte 2 is 4 and only the low 8 bits
    # of an element count, so every "four" below gives the sample's own XML.
    omni = light(OMNI)
    rows = [[sub.new(OMNI), 2, nil], [{ 0 => 0 }, 2, nil]]
    rows += [4.0, 4.9, Rational(9, 2), 260, -252, 2**40 + 4, 2**64 - 252, -(2**62) + 4]
            .map { [with_byte2(_1), 2, omni] }
    rows += [nil, "4", :four, Object.new, true, [4]].map { [[_1] + OMNI.drop(1), 2, TypeError] }
    rows += [2**64, 2**200, -(2**64), Float::NAN, Float::INFINITY, -Float::INFINITY]
            .map { [OMNI + [_1], 2, RangeError] }
    rows.each do |bytes, type, expected|
      what = "#{bytes.class} #{bytes.inspect.slice(0, 20)}"
      if expected.is_a?(Class)
        assert_raises(expected, what) { light(bytes, type) }
      else
        assert_equal expected, light(bytes, type), what
      end
    end
    assert_nil material(sub.new(BRICK))
    assert_nil material([], "2"), "the bytes are refused before the type is looked at"
    [nil, "4", :four, [4]].each { |bad| assert_raises(TypeError) { material(BRICK + [bad]) } }
  end

  def test_type_table
    omni = light(OMNI)
    [2.0, 2.9, Rational(5, 2), 2**32 + 2, -(2**32) + 2].each { assert_equal omni, light(OMNI, _1), _1.inspect }
    [-1, 1, 8, 2**31, 2**32 + 1].each { assert_nil light(OMNI, _1), _1.inspect }
    ["2", nil, :two, Object.new].each do |bad|
      assert_raises(TypeError, bad.inspect) { light(OMNI, bad) }
      assert_raises(TypeError, bad.inspect) { material(BRICK, bad) }
    end
    [2**64, 2**100, Float::NAN].each { |bad| assert_raises(RangeError, bad.inspect) { material(BRICK, bad) } }
  end

  def test_elements_that_change_the_array_or_raise_while_copied
    bytes = OMNI.dup.tap { _1[2] = Shrinking.new(_1) }
    assert_equal light([0, 0, 4]), light(bytes), "the bytes copied before the array emptied stay"
    assert_empty bytes
    bytes = OMNI.dup.tap { _1[2] = Growing.new(_1) }
    refute_nil light(bytes), "zeros behind a complete record change nothing"
    assert_equal OMNI.size + 100_000, bytes.size
    assert_equal "no byte here", assert_raises(ArgumentError) { light(OMNI + [Failing.new]) }.message
  end

  def test_random_and_cut_records_give_nil_or_a_string
    random = Random.new(20_240_601)
    records = Array.new(40) { Array.new(random.rand(1..600)) { random.rand(256) } }
    records += (1...OMNI.size).step(7).map { OMNI.take(_1) }
    records.product((-1..15).to_a).each do |bytes, type|
      [light(bytes, type), material(bytes, type)].each { assert(_1.nil? || _1.encoding == Encoding::UTF_8) }
    end
  end

  def test_a_huge_array_of_zeros_is_refused
    skip "too slow under valgrind" if ENV["QUILLON_VALGRIND"]
    zeros = Array.new(50_000_000, 0)
    assert_nil light(zeros), "version word 0 is refused"
    assert_nil material(zeros)
    assert_equal false, Quillonbin2xml.old_deserialize(model_holding(zeros))
  end

  def test_hostile_arguments_under_gc_stress
    with_gc_stress do
      assert_nil light(Class.new(Array).new(OMNI))
      assert_raises(TypeError) { light(OMNI + ["x"]) }
      assert_raises(RangeError) { light(OMNI + [2**80]) }
      assert_raises(TypeError) { light(OMNI, "2") }
      assert_equal light([0, 0, 4]), light(OMNI.dup.tap { _1[2] = Shrinking.new(_1) })
      assert_raises(ArgumentError) { light(OMNI + [Failing.new]) }
      assert_equal light(OMNI), light(OMNI.map(&:to_f), 2**32 + 2)
    end
  end
end
