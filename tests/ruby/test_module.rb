require_relative "helper"

class ModuleTest < Minitest::Test
  include QuillonTestHelper

  def test_module_defines_exactly_the_four_functions
    assert_equal %i[convert_light convert_material old_deserialize serialize_to_xml],
                 Quillonbin2xml.singleton_methods.sort
    assert_equal 1, Quillonbin2xml.method(:old_deserialize).arity
    assert_equal 1, Quillonbin2xml.method(:serialize_to_xml).arity
    assert_equal 2, Quillonbin2xml.method(:convert_material).arity
    assert_equal 2, Quillonbin2xml.method(:convert_light).arity
  end

  def test_value_classes_are_not_registered_at_load
    refute defined?(Quillon::Vector)
  end

  def test_old_deserialize_without_a_model_gives_nil
    assert_nil Quillonbin2xml.old_deserialize(nil)
    assert_nil Quillonbin2xml.old_deserialize(false)
  end

  def test_old_deserialize_failure_rows_give_false
    assert_equal false, Quillonbin2xml.old_deserialize(Object.new), "no attribute_dictionary"
    model = FakeModel.new
    assert_equal false, Quillonbin2xml.old_deserialize(model), "no dictionary"
    assert_equal [[GUID, false]], model.asked
    assert_equal false, Quillonbin2xml.old_deserialize(FakeModel.new(GUID => {})), "no key"
    assert_equal false, Quillonbin2xml.old_deserialize(FakeModel.new(GUID => { "serial_data" => false }))
    assert_equal false, Quillonbin2xml.old_deserialize(FakeModel.new(GUID => { "serial_data" => "bytes" }))
    assert_equal false, Quillonbin2xml.old_deserialize(FakeModel.new(GUID => { "serial_data" => [] }))
  end

  def test_old_deserialize_survives_a_raising_host
    model = Object.new
    def model.attribute_dictionary(*)
      raise "host failure"
    end
    assert_equal false, Quillonbin2xml.old_deserialize(model)
  end

  def test_convert_material_refuses_bad_arguments_with_nil
    assert_nil Quillonbin2xml.convert_material([], 0)
    assert_nil Quillonbin2xml.convert_material("x", 0)
    assert_nil Quillonbin2xml.convert_material(nil, 0)
    assert_nil Quillonbin2xml.convert_material([0, 0, 1, 0], 15)
    assert_nil Quillonbin2xml.convert_material([0, 0, 1, 0], -1)
  end

  def test_convert_light_refuses_bad_arguments_with_nil
    assert_nil Quillonbin2xml.convert_light([], 0)
    assert_nil Quillonbin2xml.convert_light(:sym, 2)
    assert_nil Quillonbin2xml.convert_light([0, 0, 4, 0], 1), "type 1 has no class"
    assert_nil Quillonbin2xml.convert_light([0, 0, 1, 0], 8), "the factory stops at 7"
    assert_nil Quillonbin2xml.convert_light([0, 0, 4, 0], -3)
  end

  def test_only_an_array_itself_is_accepted
    subclass = Class.new(Array)
    assert_nil Quillonbin2xml.convert_light(subclass.new([0, 0, 4, 0]), 2)
  end

  def test_non_numeric_element_raises_type_error
    assert_raises(TypeError) { Quillonbin2xml.convert_light([0, "x", 4, 0], 2) }
    assert_raises(TypeError) { Quillonbin2xml.convert_material([nil], 1) }
  end

  def test_non_numeric_type_raises_type_error_after_the_copy
    assert_raises(TypeError) { Quillonbin2xml.convert_light([0, 0, 4, 0], "2") }
    assert_raises(TypeError) { Quillonbin2xml.convert_material([0, 0, 4, 0], nil) }
    # The bytes are checked first: a bad array gives nil before the type is looked at.
    assert_nil Quillonbin2xml.convert_material([], "2")
  end

  def test_out_of_range_numbers_raise_range_error
    assert_raises(RangeError) { Quillonbin2xml.convert_light([2**70], 2) }
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
    assert_match %r{name="mtl_maxDepth" [^\n]*>\n\s*<value>2</value>}, xml
    assert_match %r{<entry>RGB color</entry>\n\s*<entry>Alpha</entry>}, xml
  end

  def test_conversions_under_gc_stress
    with_gc_stress do
      20.times do
        Quillonbin2xml.serialize_to_xml(nil)
        Quillonbin2xml.convert_light(Array.new(64) { |i| i }, 2)
        Quillonbin2xml.convert_material(Array.new(64, 0), 1)
        Quillonbin2xml.old_deserialize(FakeModel.new(GUID => { "serial_data" => [1, 2, 3] }))
        assert_raises(TypeError) { Quillonbin2xml.convert_light([1, Object.new], 2) }
      end
    end
  end
end
