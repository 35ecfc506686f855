require_relative "helper"

# The module's four functions and their result tables. Hostile arguments: test_hostile_inputs.rb;
# the XML of each class, line by line: the C++ tests.
class ModuleTest < Minitest::Test
  include QuillonTestHelper

  def u32(*v) = v.pack("L<*").bytes
  def f32(*v) = v.pack("e*").bytes

  def test_module_defines_exactly_the_four_functions
    assert_equal({ convert_light: 2, convert_material: 2, old_deserialize: 1, serialize_to_xml: 1 },
                 Quillonbin2xml.singleton_methods.sort.to_h { [_1, Quillonbin2xml.method(_1).arity] })
    refute defined?(Quillon::Vector), "the value classes are not registered at load"
  end

  def test_old_deserialize_result_table
    model = FakeModel.new
    assert_equal false, Quillonbin2xml.old_deserialize(model), "no dictionary"
    assert_equal [[GUID, false]], model.asked
    raising = Object.new
    def raising.attribute_dictionary(*) = raise("host failure")
    [[nil, nil], [false, nil], [Object.new, false], [raising, false], [FakeModel.new(GUID => {}), false],
     [model_holding(false), false], [model_holding("bytes"), false], [model_holding([]), false]]
      .each { |owner, result| assert_equal result, Quillonbin2xml.old_deserialize(owner), owner.inspect }
  end

  # nil is a refusal; a sphere light (no XML form of its own) and a material without a layered
  # material of its own give empty results, which are strings.
  def test_conversion_result_table
    flags = [1, 1, 0, 0, 0, 1, 1, 1]
    sphere = u32(0x20000) + f32(1, 0, 0, 0, 1, 0, 0, 0, 1, 5, 6, 7) +
             f32(1, 1, 1, 0, 0, 0, 0, 0.005, 1, 1) + u32(500, 1000, 0, 8) + flags
    instance = u32(0x10000, 0x20000, 8) + "Instance".bytes + u32(0)
    refused = OMNI.dup.tap { _1[0] = 1 } # a non-zero minor
    [[[], 0], ["x", 0], [nil, 0], [[0, 0, 1, 0], 15], [[0, 0, 1, 0], -1], [BRICK, 0],
     [BRICK.take(40), 1], [[0x01, 0x00, 0x05, 0x00], 1], [instance, 4, "  <Assets>\n  </Assets>\n"]]
      .each do |bytes, type, result|
      assert_equal result, Quillonbin2xml.convert_material(bytes, type), "material #{bytes.inspect[0, 30]} #{type}"
    end
    [[[], 0], [:sym, 2], [[0, 0, 4, 0], 1], [[0, 0, 1, 0], 8], [[0, 0, 4, 0], -3], [refused, 2],
     [u32(0x40000) + sphere.drop(4), 7], [sphere, 7, ""]].each do |bytes, type, result|
      assert_equal result, Quillonbin2xml.convert_light(bytes, type), "light #{bytes.inspect[0, 30]} #{type}"
    end
  end

  # Every bundled sample converts, in UTF-8, to what the command-line tool prints; the attribute
  # form holds whole blocks, so zeros behind a record change nothing.
  def test_bundled_samples_match_the_command_line_tool
    samples = Dir[File.join(SAMPLES, "{light,material}_type*.json")].sort
    assert_equal 5, samples.size
    samples.each do |path|
      kind, type = File.basename(path).match(/\A(\w+?)_type(\d+)/).captures
      bytes = JSON.parse(File.read(path))
      xml = Quillonbin2xml.public_send(:"convert_#{kind}", bytes, type.to_i)
      assert_equal Encoding::UTF_8, xml.encoding, path
      assert_equal xml, Quillonbin2xml.public_send(:"convert_#{kind}", bytes + [0] * (4096 - bytes.size), type.to_i)
      out, err, code = run_cli(kind, "--type", type, path)
      assert_equal [0, xml], [code, out.force_encoding(Encoding::UTF_8)], err
    end
  end

  # The 22 default blocks and their values: options_xml_test.cpp.
  def test_serialize_to_xml_ignores_its_argument
    xml = Quillonbin2xml.serialize_to_xml(nil)
    assert_equal Encoding::UTF_8, xml.encoding
    assert_match(/\A  <Assets>\n.*  <\/Assets>\n\z/m, xml)
    assert_equal 22, xml.scan(/^    <Assets>$/).size
    assert_equal xml, Quillonbin2xml.serialize_to_xml(42)
  end

  def test_conversions_under_gc_stress
    expected = [Quillonbin2xml.convert_light(OMNI, 2), Quillonbin2xml.convert_material(BRICK, 1)]
    with_gc_stress do
      assert_equal expected, [Quillonbin2xml.convert_light(OMNI, 2), Quillonbin2xml.convert_material(BRICK, 1)]
      20.times do
        Quillonbin2xml.serialize_to_xml(nil)
        Quillonbin2xml.convert_light(Array.new(64) { |i| i }, 2)
        Quillonbin2xml.convert_material(Array.new(64, 0), 1)
        Quillonbin2xml.old_deserialize(model_holding([1, 2, 3]))
        assert_raises(TypeError) { Quillonbin2xml.convert_light([1, Object.new], 2) }
      end
    end
  end
end
