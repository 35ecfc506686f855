require_relative "helper"

# A host module that counts the calls for the open model.
module Sketchup
  def self.active_model = (@active_model_calls = active_model_calls + 1; nil)
  def self.active_model_calls = @active_model_calls || 0
end

# A stored scene record through old_deserialize, serialize_to_xml and the command-line tool.
# The options' values and their refusals, field by field: scene_record_test.cpp and
# options_xml_test.cpp.
class SceneTest < Minitest::Test
  include QuillonTestHelper

  SAMPLE = File.join(SAMPLES, "scene_type0_major6.json")

  # The sample with another major in the version word's low byte.
  def with_major(major) = JSON.parse(File.read(SAMPLE)).tap { _1[2] = major }

  def test_stored_record_reaches_the_options_document_and_a_refused_one_resets_it
    defaults = run_cli("options")[0]
    assert_equal true, Quillonbin2xml.old_deserialize(model_holding(with_major(6)))
    doc = Quillonbin2xml.serialize_to_xml(nil)
    refute_equal defaults, doc
    assert_includes doc, "<value>C:/renders/hall.png</value>"
    assert_includes doc.gsub(/\s+/, ""), "<list><entry>RGBcolor</entry><entry>Alpha</entry><entry>ZDepth</entry></list>"
    out, err, code = run_cli("scene", SAMPLE)
    assert_equal [0, doc], [code, out], err
    assert_equal false, Quillonbin2xml.old_deserialize(model_holding(with_major(7)))
    assert_equal defaults, Quillonbin2xml.serialize_to_xml(nil)
  end

  def test_older_layout_reads_without_touching_the_host
    calls = Sketchup.active_model_calls
    assert_equal true, Quillonbin2xml.old_deserialize(model_holding(with_major(5)))
    assert_equal calls, Sketchup.active_model_calls, "the upgrade pass has no host here"
    refute defined?(Quillon::Vector), "the value classes stay unregistered"
  end

  def test_cli_refusals_and_inspection
    Dir.mktmpdir do |dir|
      refused = File.join(dir, "refused.json")
      File.write(refused, JSON.generate(with_major(7)))
      out, err, code = run_cli("scene", refused)
      assert_equal [1, "", 1], [code, out, err.lines.size]
      assert_match(/#{Regexp.escape(refused)}.*0x70000/, err)
      _, err, code = run_cli("scene", File.join(dir, "missing.json"))
      assert_equal [2, true], [code, err.include?("missing.json")]
    end
    out, _, code = run_cli("inspect", "--type", "scene", SAMPLE)
    assert_equal 0, code
    assert_match(/^SkpModule version 6.*\n(.*\n)*?    MaterialLayeredBRDF version 4/, out)
  end
end
