require_relative "helper"

# The module's four functions and their result tables. Hostile arguments: test_hostile_inputs.rb;
# the XML of each class, line by line: the C++ tests.
class ModuleTest < Minitest::Test
  include QuillonTestHelper

  EMPTY_DOCUMENT = "  <Assets>\n  </Assets>\n".freeze
  OMNI = JSON.parse(File.read(File.join(SAMPLES, "light_type2_omni.json"))).freeze
  BRICK = JSON.parse(File.read(File.join(SAMPLES, "material_type1_brick.json"))).freeze

  def u32(*v) = v.pack("L<*").bytes
  def f32(*v) = v.pack("e*").bytes
  def text(s) = u32(s.bytesize) + s.bytes

  def test_module_defines_exactly_the_four_functions
    assert_equal %i[convert_light convert_material old_deserialize serialize_to_xml],
                 Quillonbin2xml.singleton_methods.sort
    assert_equal [1, 1, 2, 2], %i[old_deserialize serialize_to_xml convert_material convert_light]
      .map { Quillonbin2xml.method(_1).arity }
    refute defined?(Quillon::Vector), "the value classes are not registered at load"
  end

  def test_old_deserialize_result_table
    assert_nil Quillonbin2xml.old_deserialize(nil)
    assert_nil Quillonbin2xml.old_deserialize(false)
    model = FakeModel.new
    assert_equal false, Quillonbin2xml.old_deserialize(model), "no dictionary"
    assert_equal [[GUID, false]], model.asked
    raising = Object.new
    def raising.attribute_dictionary(*) = raise("host failure")
    { "no attribute_dictionary" => Object.new, "a raising host" => raising,
      "no key" => FakeModel.new(GUID => {}) }.each do |why, owner|
      assert_equal false, Quillonbin2xml.old_deserialize(owner), why
    end
    [false, "bytes", []].each do |stored|
      assert_equal false, Quillonbin2xml.old_deserialize(model_holding(stored)), stored.inspect
    end
  end

  def test_conversions_refuse_with_nil
    [[[], 0], ["x", 0], [nil, 0], [[0, 0, 1, 0], 15], [[0, 0, 1, 0], -1],
     [BRICK, 0], [BRICK.take(40), 1], [[0x01, 0x00, 0x05, 0x00], 1]].each do |bytes, type|
      assert_nil Quillonbin2xml.convert_material(bytes, type), "material #{bytes.inspect.slice(0, 30)} #{type}"
    end
    refused = OMNI.dup
    refused[0] = 1 # a non-zero minor
    [[[], 0], [:sym, 2], [[0, 0, 4, 0], 1], [[0, 0, 1, 0], 8], [[0, 0, 4, 0], -3],
     [refused, 2]].each do |bytes, type|
      assert_nil Quillonbin2xml.convert_light(bytes, type), "light #{bytes.inspect.slice(0, 30)} #{type}"
    end
  end

  # A sphere light has no XML form of its own, and a material without a layered material of its
  # own gives an empty document: both are results, not refusals.
  def test_empty_results_are_strings
    flags = [1, 1, 0, 0, 0, 1, 1, 1]
    sphere = u32(0x20000) + f32(1, 0, 0, 0, 1, 0, 0, 0, 1, 5, 6, 7) +
             f32(1, 1, 1, 0, 0, 0, 0, 0.005, 1, 1) + u32(500, 1000, 0, 8) + flags
    assert_equal "", Quillonbin2xml.convert_light(sphere, 7)
    assert_nil Quillonbin2xml.convert_light(u32(0x40000) + sphere.drop(4), 7)
    instance = u32(0x10000, 0x20000) + text("Instance") + text("")
    assert_equal EMPTY_DOCUMENT, Quillonbin2xml.convert_material(instance, 4)
  end

  def test_conversions_give_utf8_xml
    xml = Quillonbin2xml.convert_light(OMNI, 2)
    assert_equal Encoding::UTF_8, xml.encoding
    assert_equal %(  <Asset layout="" renderer="ombra" type="light" url="/LightOmni" >\n), xml.lines.first
    assert_equal %(      <ombraplugin name="LightOmni" type="light">\n), xml.lines[2]
    assert_equal "  </Asset>\n", xml.lines.last
    xml = Quillonbin2xml.convert_material(sample("material_type5_two_sided.json"), 5)
    assert_equal Encoding::UTF_8, xml.encoding
    assert xml.start_with?("  <Assets>\n") && xml.end_with?("  </Assets>\n")
    assert_equal ["/Front", "/Back", "/Sign"],
                 xml.scan(/layout="(?:defommat|TwoSidedMatLayout)"[^>]*url="([^"]*)"/).flatten
    # The attribute form holds whole blocks: the zeros behind the record change nothing.
    assert_equal Quillonbin2xml.convert_material(BRICK, 1),
                 Quillonbin2xml.convert_material(BRICK + [0] * (4096 - BRICK.size), 1)
  end

  def test_bundled_samples_match_the_command_line_tool
    samples = Dir[File.join(SAMPLES, "{light,material}_type*.json")].sort
    assert_equal 5, samples.size
    samples.each do |path|
      kind, type = File.basename(path).match(/\A(\w+?)_type(\d+)/).captures
      from_ruby = Quillonbin2xml.public_send(:"convert_#{kind}", JSON.parse(File.read(path)), type.to_i)
      refute_nil from_ruby, path
      out, err, code = run_cli(kind, "--type", type, path)
      assert_equal 0, code, err
      assert_equal from_ruby, out.force_encoding(Encoding::UTF_8), path
    end
  end

  def test_serialize_to_xml_gives_a_utf8_assets_document
    xml = Quillonbin2xml.serialize_to_xml(nil)
    assert_equal Encoding::UTF_8, xml.encoding
    assert_match(/\A  <Assets>\n/, xml)
    assert_match(/  <\/Assets>\n\z/, xml)
    assert_equal xml, Quillonbin2xml.serialize_to_xml(42), "the argument is not looked at"
    # The module's own options at load give the 22 default blocks in order, each in its own
    # inner Assets; their parameters and values: options_xml_test.cpp.
    blocks = %w[ImageSampler ImageFilter Camera CameraDof MotionBlur GI IrradianceMap PhotonMap
                LightCache Caustics Raycaster RegionsGenerator DMCGI DMCSampler ColorMapping
                RenderChannels Options DefaultDisplacement Environment Output].map { "/Settings#{_1}" }
    assert_equal blocks + %w[/CameraPhysical /SettingsDR],
                 xml.scan(/<Asset layout="" renderer="ombra" type="settings" url="([^"]*)" >/).flatten
    assert_equal 22, xml.scan(/^    <Assets>$/).size
  end

  def test_conversions_under_gc_stress
    light, material = Quillonbin2xml.convert_light(OMNI, 2), Quillonbin2xml.convert_material(BRICK, 1)
    with_gc_stress do
      assert_equal light, Quillonbin2xml.convert_light(OMNI, 2)
      assert_equal material, Quillonbin2xml.convert_material(BRICK, 1)
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
