require_relative "helper"
require "json"
require "open3"
require "tmpdir"

# A host module that notes whether anything asks it for the open model.
module Sketchup
  class << self
    attr_reader :active_model_calls

    def active_model
      @active_model_calls = (@active_model_calls || 0) + 1
      nil
    end
  end
end

class SceneTest < Minitest::Test
  include QuillonTestHelper

  SAMPLES = ENV.fetch("QUILLON_SAMPLES_DIR", File.expand_path("../../samples", __dir__))
  CLI = ENV.fetch("QUILLON_CLI", File.expand_path("../../build/bin/quillonbin2xml", __dir__))
  SAMPLE = File.join(SAMPLES, "scene_type0_major6.json")

  def record = JSON.parse(File.read(SAMPLE))

  def with_major(major)
    bytes = record
    bytes[2] = major # the version word's major, low byte
    bytes
  end

  def model_holding(bytes) = FakeModel.new(GUID => { "serial_data" => bytes })

  # The text of the value element of `name` in the block `block`, without line breaks.
  def value_of(doc, block, name)
    part = doc[doc.index("<ombraplugin name=\"#{block}\"")..]
    part = part[part.index("name=\"#{name}\"")..]
    part[part.index("<value>") + 7...part.index("</value>")].gsub(/\s+/, "")
  end

  def test_stored_record_reaches_the_options_document
    assert_equal true, Quillonbin2xml.old_deserialize(model_holding(record))
    doc = Quillonbin2xml.serialize_to_xml(nil)
    assert_equal Encoding::UTF_8, doc.encoding
    assert_equal "1920", value_of(doc, "SettingsOutput", "img_width")
    assert_equal "1080", value_of(doc, "SettingsOutput", "img_height")
    assert_equal "C:/renders/hall.png", value_of(doc, "SettingsOutput", "img_file")
    assert_equal "1", value_of(doc, "SettingsImageFilter", "type"), "stored 2 is written as 1"
    assert_equal "<list><entry>RGBcolor</entry><entry>Alpha</entry><entry>ZDepth</entry></list>",
                 value_of(doc, "SettingsRenderChannels", "channel_names")
  end

  def test_refused_record_leaves_the_default_options
    assert_equal true, Quillonbin2xml.old_deserialize(model_holding(record))
    assert_equal false, Quillonbin2xml.old_deserialize(model_holding(with_major(7)))
    assert_equal "800", value_of(Quillonbin2xml.serialize_to_xml(nil), "SettingsOutput", "img_width")
  end

  def test_older_layout_reads_without_touching_the_host
    calls = Sketchup.active_model_calls.to_i
    assert_equal true, Quillonbin2xml.old_deserialize(model_holding(with_major(5)))
    assert_equal calls, Sketchup.active_model_calls.to_i, "the upgrade pass has no host here"
    refute defined?(Quillon::Vector), "the value classes stay unregistered"
  end

  def run_cli(*args)
    Open3.capture3(CLI, *args)
  end

  def test_cli_prints_the_same_document_as_the_module
    out, err, status = run_cli("scene", SAMPLE)
    assert_equal 0, status.exitstatus, err
    Quillonbin2xml.old_deserialize(model_holding(record))
    assert_equal Quillonbin2xml.serialize_to_xml(nil), out
  end

  def test_cli_refusals_and_inspection
    Dir.mktmpdir do |dir|
      refused = File.join(dir, "refused.json")
      File.write(refused, JSON.generate(with_major(7)))
      out, err, status = run_cli("scene", refused)
      assert_equal 1, status.exitstatus
      assert_empty out
      assert_equal 1, err.lines.size
      assert_includes err, refused
      assert_includes err, "0x70000"

      _, err, status = run_cli("scene", File.join(dir, "missing.json"))
      assert_equal 2, status.exitstatus
      assert_includes err, "missing.json"

      out, _, status = run_cli("inspect", "--type", "scene", SAMPLE)
      assert_equal 0, status.exitstatus
      assert_match(/^SkpModule version 6/, out)
      assert_match(/^    MaterialLayeredBRDF version 4/, out)
    end
  end
end
