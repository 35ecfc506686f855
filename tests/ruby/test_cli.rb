require_relative "helper"

# The command-line tool as a user runs it: exit codes, messages and atomic output.
class CliTest < Minitest::Test
  include QuillonTestHelper

  # [arguments, standard input, exit code, pattern the output (0) or the error (else) must match]
  def test_exit_codes_and_messages
    [[["--version"], "", 0, /\Aquillonbin2xml \d+\.\d+\.\d+\n\z/], [["--help"], "", 0, /light --type N FILE/],
     [["light", "--help"], "", 0, /\Ausage: quillonbin2xml light/],
     [[]], [["frobnicate"]], [["light", "x.json"]], [["light", "--type", "two", "x.json"]],
     [["light", "--type", "2"]], [["light", "--type", "2", "--input", "xml", "x"]], [["cormat"]],
     [["light", "--type", "2", "-"], "[1, 2.5]"],
     [["light", "--type", "2", "--input", "json", "-"], "\x00\x00"],
     [["inspect", "--type", "2", "x"], "", 2, /light:N/],
     [["light", "--type", "2", "/nonexistent/record.json"], "", 2, %r{\A[^\n]*/nonexistent/record\.json[^\n]*\n\z}],
     [["light", "--type", "2", "-"], "[1, 2,", 2, /<stdin>/],
     [%w[light --type 1 -], "[0,0,4,0]", 1, /no light class has type id 1/],
     [%w[material --type 15 -], "[0,0,1,0]", 1, /no material class has type id 15/],
     [%w[light --type 2 --input raw -], "", 1]].each do |args, stdin = "", status = 2, pattern = nil|
      out, err, code = run_cli(*args, stdin: stdin)
      assert_equal status, code, args.inspect
      assert_match pattern, status.zero? ? out : err if pattern
    end
  end

  def test_failed_run_leaves_no_output_file_and_options_match_the_extension
    Dir.mktmpdir do |dir|
      target = File.join(dir, "out.xml")
      assert_equal 1, run_cli("light", "--type", "1", "-o", target, "-", stdin: "[0]")[2]
      assert_empty Dir.children(dir)
      assert_equal 0, run_cli("options", "-o", target)[2]
      assert_equal ["out.xml"], Dir.children(dir)
      assert_equal Quillonbin2xml.serialize_to_xml(nil), File.read(target, encoding: "UTF-8")
    end
  end

  def test_cormat_converts_every_material_of_the_file
    library = File.join(SAMPLES, "library.cormat")
    out, _, code = run_cli("cormat", library)
    assert_equal 0, code
    assert_match(/\A<cormat>\n  <Assets>\n.*  <\/Assets>\n<\/cormat>\n?\z/m, out)
    assert_equal 5, out.scan(/layout="(?:defommat|TwoSidedMatLayout)"/).size
    assert_equal out, run_cli("cormat", "-", stdin: File.binread(library))[0]
  end

  def test_cormat_refusals_name_the_file
    Dir.mktmpdir do |dir|
      refused = File.join(dir, "zero.cormat")
      File.binwrite(refused, [0x20000, 0].pack("L<L<") + "\0" * 16)
      missing = File.join(dir, "missing.cormat")
      [[refused, 1, "the material file was refused"], [missing, 2, "no such file"]].each do |path, status, why|
        _, err, code = run_cli("cormat", path)
        assert_equal [status, ["quillonbin2xml: #{path}: #{why}\n"]], [code, err.lines]
      end
    end
  end
end
