# convert_light from Ruby: one stored record per light class, assembled here byte by byte.
$LOAD_PATH.unshift ENV.fetch("QUILLON_EXT_DIR")
require "Quillonbin2xml"
require "minitest/autorun"
require "json"

class TestLights < Minitest::Test
  def u32(*v) = v.pack("L<*").bytes
  def f32(*v) = v.pack("e*").bytes
  def flags(*v) = v.map { |x| x ? 1 : 0 }
  def text(s) = u32(s.bytesize) + s.bytes
  def place = f32(1, 0, 0, 0, 1, 0, 0, 0, 1, 5, 6, 7)
  # A transform curve with one key at time 0.0.
  def curve = u32(0x10000, 1, 8) + [0.0].pack("E").bytes + place

  def maya
    u32(0x40000) + f32(1, 1, 1, 0, 0, 0, 0, 2, 1) + u32(1000, 500, 3) + flags(true, true) +
      u32(8) + f32(0) + curve
  end

  def omni
    u32(0x40000) + f32(1, 1, 1, 0, 0, 0, 0.005, 0, 0, 30, 1) + u32(2, 500, 1000, 3) +
      flags(true, true) + u32(8) + f32(0) + place + flags(true, true)
  end

  def rectangle
    u32(0x40000) + f32(1, 1, 1, 0, 0, 0, 0.005, 0, 30, 1) + u32(0, 8, 1000, 500, 3) +
      flags(false, false, false, false, true, false, true, true) + place + f32(2, 3) +
      flags(true, true, true)
  end

  def spot
    u32(0x40000) + f32(1, 1, 1, 0, 0, 0, 0.005, 20, 20, 20, 20, 0, 0, 50, 1) +
      u32(0, 500, 1000, 3) + flags(true, true, true) + u32(8) + f32(0) + place + f32(1, 0) +
      flags(true, true)
  end

  def sun(id = "{5A5A}")
    u32(0x40000) + f32(0, 0, 1, 0, 3, 2, 1, 1, 50, 150, 0.35) + u32(500, 1000, 8) +
      flags(true) + text(id) + text("Noon") + flags(true, false) + curve
  end

  def ies
    u32(0x30000) + place + f32(1, 1, 1, 0, 0, 0, 1, 1, 1, 0, 0.005) + u32(8, 1000, 8) +
      flags(true, true, false) + text("lamps/a<b>.ies") + flags(true, true) + f32(2)
  end

  def sphere
    u32(0x20000) + place + f32(1, 1, 1, 0, 0, 0, 0, 0.005, 1, 1) + u32(500, 1000, 0, 8) +
      flags(true, true, false, false, false, true, true, true)
  end

  def convert(bytes, type) = Quillonbin2xml.convert_light(bytes, type)

  def values_of(xml, name)
    xml.scan(/name="#{name}"[^\n]*\n\s*<value>([^<]*)<\/value>/).flatten
  end

  def assert_light(xml, url, plugin)
    refute_nil xml
    assert_equal Encoding::UTF_8, xml.encoding
    lines = xml.lines
    assert_equal %(  <Asset layout="" renderer="ombra" type="light" url="#{url}" >\n), lines.first
    assert_equal %(      <ombraplugin name="#{plugin}" type="light">\n), lines[2]
    assert_equal "  </Asset>\n", lines.last
  end

  def test_each_class_converts
    xml = convert(maya, 0)
    assert_light xml, "/MayaLightDirect", "MayaLightDirect"
    assert_equal ["2"], values_of(xml, "intensity")
    refute_match(/name="transform"/, xml)

    xml = convert(omni, 2)
    assert_light xml, "/LightOmni", "LightOmni"
    assert_equal %w[2 1000], values_of(xml, "causticSubdivs")
    assert_equal ["0.005"], values_of(xml, "cutoffThreshold")

    xml = convert(rectangle, 3)
    assert_light xml, "/LightRectangle", "LightRectangle"
    assert_equal %w[2 3], values_of(xml, "u_size") + values_of(xml, "v_size")

    xml = convert(spot, 4)
    assert_light xml, "/LightSpot", "LightSpot"
    assert_includes xml, %(name="legacyMode" handler="default" listType="none" ) +
                         %(isUserData="1" label="Legacy Mode">)
    assert_equal ["1"], values_of(xml, "barnDoor")

    xml = convert(sun, 5)
    assert_light xml, "/SunLight", "SunLight"
    assert_equal ["0.35"], values_of(xml, "ozone")
    assert_match(%r{<vector>\s*<x>5</x>\s*<y>6</y>\s*<z>7</z>\s*</vector>\s*</value>}, xml)

    xml = convert(ies, 6)
    assert_light xml, "/LightIES", "LightIES"
    assert_includes xml, %(<parameter type="string" name="ies_file" handler="FileBrowserHandler")
    assert_equal ["lamps/a&lt;b&gt;.ies"], values_of(xml, "ies_file")

    assert_equal "", convert(sphere, 7)
  end

  # Type ids without a class and arguments that are no byte array: test_module.rb.
  def test_refused_records_give_nil
    assert_nil convert(u32(0x40001) + omni.drop(4), 2)
    assert_nil convert(u32(0x40000) + sphere.drop(4), 7)
  end

  def test_bundled_samples_match_the_command_line_tool
    cli = ENV.fetch("QUILLON_CLI")
    samples = Dir[File.join(ENV.fetch("QUILLON_SAMPLES_DIR"), "light_type*.json")].sort
    refute_empty samples
    samples.each do |path|
      type = File.basename(path)[/type(\d+)/, 1]
      from_ruby = convert(JSON.parse(File.read(path)), type.to_i)
      refute_nil from_ruby, path
      from_cli = IO.popen([cli, "light", "--type", type, path], &:read)
      assert $?.success?, path
      assert_equal from_ruby, from_cli.force_encoding(Encoding::UTF_8), path
    end
  end
end
