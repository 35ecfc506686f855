$LOAD_PATH.unshift ENV.fetch("QUILLON_EXT_DIR")
require "Quillonbin2xml"
require "minitest/autorun"
require "json"

# Every material class through the Ruby module: one real record per type id, assembled field by
# field, and the records that the module refuses.
class TestMaterials2 < Minitest::Test
  SAMPLES = ENV.fetch("QUILLON_SAMPLES_DIR")
  EMPTY_DOCUMENT = "  <Assets>\n  </Assets>\n".freeze

  class Record
    def initialize = @bytes = +"".b
    def u32(v) = tap { @bytes << [v].pack("L<") }
    def i32(v) = tap { @bytes << [v].pack("l<") }
    def f32(*v) = tap { @bytes << v.pack("e*") }
    def bool(v) = tap { @bytes << (v ? 1 : 0).chr }
    def version(major) = u32(major << 16)
    def color(r, g, b) = f32(r, g, b)
    def text(s) = tap { u32(s.bytesize); @bytes << s.b }
    def absent = bool(false)
    def section(name, uuid = "") = version(2).text(name).text(uuid)
    def record(other) = tap { @bytes << other.to_s }
    def to_s = @bytes
    def to_a = @bytes.bytes
  end

  def diffuse(name)
    Record.new.i32(2).version(4).color(0.5, 0.5, 0.5).color(0, 0, 0).f32(1, 1).absent.absent
          .version(4).text(name).bool(true).bool(false).bool(false).bool(false)
  end

  def layered(name)
    Record.new.version(4).u32(1).record(diffuse("Layer")).i32(1).i32(0).i32(1).i32(1)
          .section(name).i32(0)
  end

  def slot(name) = Record.new.bool(true).i32(1).record(layered(name))

  def sample(file) = JSON.parse(File.read(File.join(SAMPLES, file)))

  # One record per type id, each of the class's newest version.
  def records
    {
      0 => Record.new.version(2).i32(0).i32(0).record(diffuse("Layer")).section("Single"),
      1 => sample("material_type1_brick.json"),
      2 => Record.new.version(2).u32(1).i32(1).record(layered("Inside")).section("Multi"),
      3 => sample("material_type3_bump_brick.json"),
      4 => Record.new.version(1).section("Instance"),
      5 => sample("material_type5_two_sided.json"),
      6 => Record.new.version(1).version(1).u32(2).i32(5).i32(1).record(layered("Inner"))
                 .section("Link"),
      7 => Record.new.version(1).section("Skp").record(slot("Front")).absent.bool(false),
      8 => Record.new.version(1).section("Env").record(slot("Base")).absent.absent.absent.absent
                 .color(0, 0, 0).color(0, 0, 0).color(0, 0, 0).color(0, 0, 0)
                 .f32(1, 1, 1, 1).bool(true).bool(false).bool(false).bool(false),
      9 => Record.new.version(2).section("Disp").record(slot("Base")).absent
                 .f32(1, 0, 4).i32(256).i32(1).i32(1).i32(1),
      10 => Record.new.version(3).i32(1).record(slot("Base")).u32(1).text("Wall")
                  .section("Ex").bool(true),
      11 => Record.new.version(1).section("Alpha").record(slot("Base")).absent.f32(1, 0.5),
      12 => Record.new.version(1).section("Blend").absent.record(slot("Two")).f32(75, 150),
      13 => Record.new.version(2).section("Ref").text("no-such-uuid").record(slot("Resolved")),
      14 => Record.new.version(2).record(slot("Base")).f32(1.5, 1).absent.f32(1, 1).absent
                  .f32(0, 1).absent.color(0, 0, 0).f32(1).absent.f32(0.95, 0.02, 0.7, 1)
                  .bool(true).bool(false).section("Toon").bool(false).f32(1.5)
    }
  end

  # The url of the last asset of each document: the block that stands for the whole material.
  ROOTS = { 1 => "/Brick", 3 => "/B1", 5 => "/Sign", 6 => "/Link", 7 => "/Skp", 8 => "/Env",
            9 => "/Disp", 10 => "/Ex", 11 => "/Alpha", 12 => "/Blend", 13 => "/Resolved",
            14 => "/Toon" }.freeze

  def test_every_type_id_converts_a_real_record
    records.each do |type, record|
      bytes = record.is_a?(Array) ? record : record.to_a
      xml = Quillonbin2xml.convert_material(bytes, type)
      assert_kind_of String, xml, "type #{type}"
      assert_equal Encoding::UTF_8, xml.encoding
      assert xml.start_with?("  <Assets>\n") && xml.end_with?("  </Assets>\n"), "type #{type}"
      root = ROOTS[type]
      if root
        assert_equal root, xml.scan(/<Asset [^>]*url="([^"]*)"/).last&.first, "type #{type}"
      else
        assert_equal EMPTY_DOCUMENT, xml, "type #{type}: no layered material of its own"
      end
    end
  end

  def test_layouts_and_folded_parameters_reach_ruby
    xml = Quillonbin2xml.convert_material(sample("material_type3_bump_brick.json"), 3)
    assert_includes xml, "<entry>/B1/BRDFDiffuse</entry>"
    assert_includes xml, "<value>/B1/bump_tex/TexBitmap</value>"
    xml = Quillonbin2xml.convert_material(sample("material_type5_two_sided.json"), 5)
    assert_equal ["/Front", "/Back", "/Sign"],
                 xml.scan(/layout="(?:defommat|TwoSidedMatLayout)"[^>]*url="([^"]*)"/).flatten
    xml = Quillonbin2xml.convert_material(records[14].to_a, 14)
    assert_includes xml, 'layout="ToonMatLayout"'
    assert_includes xml, 'name="lineWidth"'
  end

  def test_refused_records_give_nil
    records.each do |type, record|
      bytes = record.is_a?(Array) ? record.dup : record.to_a
      bytes[2] = 0x7F # an unknown major version
      assert_nil Quillonbin2xml.convert_material(bytes, type), "type #{type}"
    end
    assert_nil Quillonbin2xml.convert_material(records[2].to_a, 15)
    assert_nil Quillonbin2xml.convert_material(records[12].to_a.take(30), 12)
    # A reference with neither a target in the set nor a resolved copy is no refusal: it
    # contributes nothing.
    bare = Record.new.version(1).section("Ref").text("no-such-uuid")
    assert_equal EMPTY_DOCUMENT, Quillonbin2xml.convert_material(bare.to_a, 13)
  end
end
