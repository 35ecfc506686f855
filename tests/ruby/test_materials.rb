$LOAD_PATH.unshift ENV.fetch("QUILLON_EXT_DIR")
require "Quillonbin2xml"
require "minitest/autorun"
require "json"

# The Brick record through the Ruby module: a layered material with one diffuse layer whose
# colour texture is a bitmap.
class TestMaterials < Minitest::Test
  SAMPLE = File.join(ENV.fetch("QUILLON_SAMPLES_DIR"), "material_type1_brick.json")

  def brick_bytes
    JSON.parse(File.read(SAMPLE))
  end

  def test_brick_converts_to_one_folded_document
    xml = Quillonbin2xml.convert_material(brick_bytes, 1)
    refute_nil xml
    assert_equal Encoding::UTF_8, xml.encoding
    lines = xml.lines.map(&:chomp)
    assert_equal "  <Assets>", lines.first
    assert_equal "  </Assets>", lines.last
    urls = lines.grep(/<Asset /).map { |l| l[/url="([^"]*)"/, 1] }
    assert_equal ["/Brick/BRDFDiffuse/color_texture/TexBitmap/uvwgen/UVWGenChannel",
                  "/Brick/BRDFDiffuse/color_texture/TexBitmap/buffer/BitmapBuffer",
                  "/Brick/BRDFDiffuse/color_texture/TexBitmap",
                  "/Brick/BRDFDiffuse",
                  "/Brick"], urls
    assert_includes lines, '    <Asset layout="defommat" renderer="ombra" type="material" url="/Brick" >'
    assert_includes lines, "                <entry>/Brick/BRDFDiffuse</entry>"
    assert_includes lines, "              <value>/Brick/BRDFDiffuse/color_texture/TexBitmap</value>"
    assert_includes lines, "              <value>C:/maps/brick&amp;mortar.png</value>"
  end

  def test_whole_block_array_converts_the_same
    padded = brick_bytes + [0] * (4096 - brick_bytes.size)
    assert_equal Quillonbin2xml.convert_material(brick_bytes, 1),
                 Quillonbin2xml.convert_material(padded, 1)
  end

  def test_refused_records_give_nil
    assert_nil Quillonbin2xml.convert_material(brick_bytes, 0)
    assert_nil Quillonbin2xml.convert_material(brick_bytes.take(40), 1)
    assert_nil Quillonbin2xml.convert_material([0x01, 0x00, 0x05, 0x00], 1)
  end
end
