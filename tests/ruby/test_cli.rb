require_relative "helper"

# The command-line tool as a user runs it: exit codes, messages and atomic output.
class CliTest < Minitest::Test
  include QuillonTestHelper

  def test_version_and_help
    [[["--version"], /\Aquillonbin2xml \d+\.\d+\.\d+\n\z/], [["--help"], /light --type N FILE/],
     [["light", "--help"], /\Ausage: quillonbin2xml light/]].each do |args, pattern|
      out, _, code = run_cli(*args)
      assert_equal 0, code, args.inspect
      assert_match pattern, out
    end
  end

  # [arguments, standard input, exit code, pattern the error must match]
  def test_exit_codes_and_messages
    [[[]], [["frobnicate"]], [["light", "x.json"]], [["light", "--type", "two", "x.json"]],
     [["light", "--type", "2"]], [["light", "--type", "2", "--input", "xml", "x"]], [["cormat"]],
     [["light", "--type", "2", "-"], "[1, 2.5]"],
     [["light", "--type", "2", "--input", "json", "-"], "\x00\x00"],
     [["inspect", "--type", "2", "x"], "", /light:N/],
     [["light", "--type", "2", "/nonexistent/record.json"], "", %r{\A[^\n]*/nonexistent/record\.json[^\n]*\n\z}],
     [["light", "--type", "2", "-"], "[1, 2,", /<stdin>/],
     [%w[light --type 1 -], "[0,0,4,0]", /no light class has type id 1/, 1],
     [%w[material --type 15 -], "[0,0,1,0]", /no material class has type id 15/, 1],
     [%w[light --type 2 --input raw -], "", nil, 1]].each do |args, stdin, pattern, status = 2|
      _, err, code = run_cli(*args, stdin: stdin || "")
      assert_equal status, code, args.inspect
      assert_match pattern, err if pattern
    end
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
    assert_equal [0, Quillonbin2xml.serialize_to_xml(nil)], [code, out.force_encoding(Encoding::UTF_8)]
  end

  def test_cormat_converts_every_material_of_the_file
    library = File.join(SAMPLES, "library.cormat")
    out, _, code = run_cli("cormat", library)
    assert_equal 0, code
    assert_match(/\A<cormat>\n  <Assets>\n.*  <\/Assets>\n<\/cormat>\n?\z/m, out)
    assert_equal ["/Brick", "/B1", "/Front", "/Back", "/Sign"],
                 out.scan(/layout="(?:defommat|TwoSidedMatLayout)"[^>]*url="([^"]*)"/).flatten
    assert_equal out, run_cli("cormat", "-", stdin: File.binread(library))[0]
  end

  def test_cormat_refusals_name_the_file
    Dir.mktmpdir do |dir|
      refused = File.join(dir, "zero.cormat")
      File.binwrite(refused, [0x20000, 0].pack("L<L<") + "\0" * 16)
      missing = File.join(dir, "missing.cormat")
      [[refused, 1, "the material file was refused"], [missing, 2, "cannot read the file"]]
        .each do |path, status, why|
        _, err, code = run_cli("cormat", path)
        assert_equal status, code
        assert_equal ["quillonbin2xml: #{path}: #{why}\n"], err.lines
      end
    end
  end
end
