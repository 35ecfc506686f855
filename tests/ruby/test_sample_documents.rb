require_relative "helper"

# Every bundled record beside the document it must give, byte for byte. The expected documents
# were written by hand from the record layouts and the parameter tables of each class, not taken
# from the converter's output; the command-line tool and the extension must both reproduce them.
class SampleDocumentsTest < Minitest::Test
  include QuillonTestHelper
  include IsolatedRuby

  # Record file => the tool's command for it.
  RECORDS = {
    "light_type2_omni.json" => %w[light --type 2],
    "light_type4_spot.json" => %w[light --type 4],
    "material_type1_brick.json" => %w[material --type 1],
    "material_type3_bump_brick.json" => %w[material --type 3],
    "material_type5_two_sided.json" => %w[material --type 5],
    "scene_type0_major6.json" => %w[scene],
    "library.cormat" => %w[cormat],
    "default_options.coropt" => %w[coropt]
  }.freeze

  def expected(record) = File.binread(File.join(SAMPLES, record.sub(/\.\w+\z/, ".xml")))
  def bytes(record) = JSON.parse(File.read(File.join(SAMPLES, record)))

  def assert_document(record, xml)
    assert_equal Encoding::UTF_8, xml.encoding, record
    assert_equal expected(record), xml.b, record
  end

  def test_every_record_has_its_expected_document_and_no_document_is_stray
    files = Dir.children(SAMPLES).grep_v(/\.md\z/)
    assert_equal RECORDS.keys.sort, files.grep_v(/\.xml\z/).sort
    assert_equal RECORDS.keys.map { _1.sub(/\.\w+\z/, ".xml") }.sort, files.grep(/\.xml\z/).sort
  end

  def test_command_line_tool_writes_the_expected_documents
    RECORDS.each do |record, command|
      out, err, code = run_cli(*command, File.join(SAMPLES, record))
      assert_equal [0, ""], [code, err], record
      assert_document record, out.force_encoding(Encoding::UTF_8)
    end
  end

  def test_extension_converts_lights_and_materials_to_the_expected_documents
    RECORDS.each do |record, (kind, _, type)|
      next unless %w[light material].include?(kind)

      assert_document record, Quillonbin2xml.public_send(:"convert_#{kind}", bytes(record), type.to_i)
    end
  end

  def test_extension_writes_the_stored_scene_as_the_expected_options_document
    record = "scene_type0_major6.json"
    assert_equal true, Quillonbin2xml.old_deserialize(model_holding(bytes(record)))
    assert_document record, Quillonbin2xml.serialize_to_xml(nil)
  end

  # The options file holds the default options, so a fresh load writes the same document; the
  # extension cannot read that file itself.
  def test_fresh_load_writes_the_options_that_the_options_file_holds
    out, err, code = run_isolated("print Quillonbin2xml.serialize_to_xml(nil).b")
    assert_equal [0, ""], [code, err]
    assert_equal expected("default_options.coropt"), out.b
    assert_equal expected("default_options.coropt"), run_cli("options")[0].b
  end
end
