require "minitest/autorun"
require "open3"
require "tmpdir"

# The command-line tool as a user runs it: exit codes, messages and atomic output.
class CliTest < Minitest::Test
  CLI = ENV.fetch("QUILLON_CLI", File.expand_path("../../build/bin/quillonbin2xml", __dir__))

  def run_cli(*args, stdin: "")
    out, err, status = Open3.capture3(CLI, *args, stdin_data: stdin)
    [out, err, status.exitstatus]
  end

  def test_version_and_help
    out, _, code = run_cli("--version")
    assert_equal 0, code
    assert_match(/\Aquillonbin2xml \d+\.\d+\.\d+\n\z/, out)
    out, _, code = run_cli("--help")
    assert_equal 0, code
    assert_match(/light --type N FILE/, out)
    out, _, code = run_cli("light", "--help")
    assert_equal 0, code
    assert_match(/\Ausage: quillonbin2xml light/, out)
  end

  def test_bad_usage_exits_with_two
    assert_equal 2, run_cli[2]
    assert_equal 2, run_cli("frobnicate")[2]
    assert_equal 2, run_cli("light", "x.json")[2], "missing --type"
    assert_equal 2, run_cli("light", "--type", "two", "x.json")[2]
    assert_equal 2, run_cli("light", "--type", "2")[2], "missing FILE"
    assert_equal 2, run_cli("light", "--type", "2", "--input", "xml", "x")[2]
    _, err, code = run_cli("inspect", "--type", "2", "x")
    assert_equal 2, code
    assert_match(/light:N/, err)
  end

  def test_unreadable_and_malformed_input_exit_with_two
    _, err, code = run_cli("light", "--type", "2", "/nonexistent/record.json")
    assert_equal 2, code
    assert_equal 1, err.lines.size
    assert_match(%r{/nonexistent/record\.json}, err)
    _, err, code = run_cli("light", "--type", "2", "-", stdin: "[1, 2,")
    assert_equal 2, code
    assert_match(/<stdin>/, err)
    assert_equal 2, run_cli("light", "--type", "2", "--input", "json", "-", stdin: "\x00\x00")[2]
    assert_equal 2, run_cli("light", "--type", "2", "-", stdin: "[1, 2.5]")[2]
  end

  def test_refused_records_exit_with_one_and_say_why
    _, err, code = run_cli("light", "--type", "1", "-", stdin: "[0,0,4,0]")
    assert_equal 1, code
    assert_match(/no light class has type id 1/, err)
    _, err, code = run_cli("material", "--type", "15", "-", stdin: "[0,0,1,0]")
    assert_equal 1, code
    assert_match(/no material class has type id 15/, err)
    assert_equal 1, run_cli("light", "--type", "2", "--input", "raw", "-", stdin: "")[2]
  end

  def test_failed_run_leaves_no_output_file
    Dir.mktmpdir do |dir|
      target = File.join(dir, "out.xml")
      assert_equal 1, run_cli("light", "--type", "1", "-o", target, "-", stdin: "[0]")[2]
      assert_empty Dir.children(dir)
      assert_equal 0, run_cli("options", "-o", target)[2]
      assert_equal ["out.xml"], Dir.children(dir)
      assert_match(/<Assets>/, File.read(target))
    end
  end

  def test_options_document_matches_the_extension
    out, _, code = run_cli("options")
    assert_equal 0, code
    $LOAD_PATH.unshift ENV.fetch("QUILLON_EXT_DIR", File.expand_path("../../build/ext", __dir__))
    require "Quillonbin2xml"
    assert_equal Quillonbin2xml.serialize_to_xml(nil), out.force_encoding(Encoding::UTF_8)
  end

  def test_cormat_converts_every_material_of_the_file
    library = File.join(ENV.fetch("QUILLON_SAMPLES_DIR", File.expand_path("../../samples", __dir__)),
                        "library.cormat")
    out, _, code = run_cli("cormat", library)
    assert_equal 0, code
    lines = out.lines.map(&:chomp)
    assert_equal ["<cormat>", "  <Assets>"], lines.first(2)
    assert_equal ["  </Assets>", "</cormat>"], lines.last(2)
    assert_equal ["/Brick", "/B1", "/Front", "/Back", "/Sign"],
                 out.scan(/layout="(?:defommat|TwoSidedMatLayout)"[^>]*url="([^"]*)"/).flatten
    assert_equal out, run_cli("cormat", "-", stdin: File.binread(library))[0]
  end

  def test_cormat_refusals_name_the_file
    Dir.mktmpdir do |dir|
      refused = File.join(dir, "zero.cormat")
      File.binwrite(refused, [0x20000, 0].pack("L<L<") + "\0" * 16)
      _, err, code = run_cli("cormat", refused)
      assert_equal 1, code
      assert_equal ["quillonbin2xml: #{refused}: the material file was refused\n"], err.lines
      missing = File.join(dir, "missing.cormat")
      _, err, code = run_cli("cormat", missing)
      assert_equal 2, code
      assert_equal ["quillonbin2xml: #{missing}: cannot read the file\n"], err.lines
      assert_equal 2, run_cli("cormat")[2]
    end
  end
end
