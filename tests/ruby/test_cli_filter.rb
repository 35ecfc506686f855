require_relative "helper"

# The tool as a dependable filter: how it writes -o targets, what it refuses to read, and the
# messages and exit codes of each refusal.
class CliFilterTest < Minitest::Test
  include QuillonTestHelper

  OMNI_FILE = File.join(SAMPLES, "light_type2_omni.json")

  def omni_xml = @omni_xml ||= Quillonbin2xml.convert_light(OMNI, 2)

  def test_output_file_keeps_mode_and_links_and_refuses_other_targets
    Dir.mktmpdir do |dir|
      private_file = File.join(dir, "private.xml")
      File.write(private_file, "old")
      File.chmod(0o600, private_file)
      assert_equal 0, run_cli("light", "--type", "2", "-o", private_file, OMNI_FILE)[2]
      assert_equal [0o600, omni_xml], [File.stat(private_file).mode & 0o777, File.read(private_file)]

      link = File.join(dir, "link.xml")
      File.symlink(private_file, link)
      assert_equal 0, run_cli("options", "-o", link)[2]
      assert File.symlink?(link), "the link stays a link"
      assert_equal Quillonbin2xml.serialize_to_xml(nil), File.read(private_file)

      fifo = File.join(dir, "fifo")
      File.mkfifo(fifo)
      _, err, code = run_cli("light", "--type", "2", "-o", fifo, OMNI_FILE)
      assert_equal [2, "quillonbin2xml: #{fifo}: not a regular file; refusing to replace it\n"], [code, err]
      assert File.pipe?(fifo)
      assert_equal %w[fifo link.xml private.xml], Dir.children(dir).sort, "no temporary file is left"
    end
  end

  def test_concurrent_runs_onto_one_target_each_leave_a_whole_document
    Dir.mktmpdir do |dir|
      target = File.join(dir, "out.xml")
      documents = [omni_xml, Quillonbin2xml.serialize_to_xml(nil)]
      runs = 8.times.map do |i|
        args = i.even? ? ["light", "--type", "2", "-o", target, OMNI_FILE] : ["options", "-o", target]
        Thread.new { run_cli(*args)[2] }
      end
      assert_equal [0] * 8, runs.map(&:value)
      assert_includes documents, File.read(target)
      assert_equal ["out.xml"], Dir.children(dir)
    end
  end

  def test_dash_is_standard_output_and_options_take_both_forms
    Dir.mktmpdir do |dir|
      out, _, code = Dir.chdir(dir) { run_cli("light", "--type=2", "--output=-", OMNI_FILE) }
      assert_equal [0, omni_xml, []], [code, out, Dir.children(dir)]
    end
    out, _, code = run_cli("light", "-t", "2", "--input=json", "--", "-", stdin: File.read(OMNI_FILE))
    assert_equal [0, omni_xml], [code, out]
  end

  def test_several_files_convert_in_turn_with_the_worst_exit_code
    out, err, code = run_cli("light", "--type", "2", OMNI_FILE, "-", OMNI_FILE, stdin: "[0]")
    assert_equal [1, omni_xml * 2], [code, out]
    assert_match(/\Aquillonbin2xml: <stdin>: /, err)
    _, err, code = run_cli("light", "--type", "2", OMNI_FILE, "/nonexistent.json")
    assert_equal [2, "quillonbin2xml: /nonexistent.json: no such file\n"], [code, err]
  end

  # [arguments, standard input, message]; every case exits 2 with one line on standard error.
  def test_refused_inputs_and_arguments_each_have_their_own_message
    [[%w[light --type 4294967298 -], "[0]", /--type needs an integer type id, not "4294967298"/],
     [%w[light --type 2x -], "[0]", /--type needs an integer type id/],
     [%w[inspect --type light -], "[0]", /--type light needs :N/],
     [%w[inspect --type scene:3 -], "[0]", /--type scene takes no :N/],
     [["light", "--type", "2", SAMPLES], "", /: a directory, not a record file\z/],
     [%w[light --type 2 /dev/zero], "", %r{/dev/zero: not a regular file\z}],
     [%w[light --type 2 -], "[18446744073709551616]", /number at byte 1 is beyond 18446744073709551615/],
     [%w[light --type 2 -], "[-1]", /negative number at byte 1/],
     [%w[light --type 2 -], "[1e3]", /not an integer \(a fraction or exponent\) at byte 1/],
     [%w[light --type 2 -], "\xEF\xBB\xBF[0]", /starts with a byte order mark/],
     [%w[light --type 2 -], "{\"a\": 1}", /expected a JSON array of integers, found an object/],
     [%w[light --type 2 -], "[0, \"a\"]", /a string at byte 4 where an integer belongs/],
     [%w[light --type 2 --bogus -], "", /unknown option --bogus/],
     [%w[options --type 2], "", /options takes no FILE and no --type/]].each do |args, stdin, message|
      _, err, code = run_cli(*args, stdin: stdin)
      assert_equal [2, 1], [code, err.lines.size], args.inspect
      assert_match message, err.chomp, args.inspect
    end
  end

  def test_large_json_numbers_keep_their_low_byte_like_the_module
    bytes = OMNI.dup
    bytes[0] += 18_446_744_073_709_551_360 # 2**64 - 256: the same low byte
    out, _, code = run_cli("light", "--type", "2", "-", stdin: JSON.dump(bytes))
    assert_equal [0, omni_xml], [code, out]
  end

  def test_oversized_standard_input_is_refused_without_reading_it_all
    _, err, code = Open3.capture3("head -c 70000000 /dev/zero | #{CLI} light --type 2 -")
    assert_equal [2, "quillonbin2xml: <stdin>: larger than the limit of 64 MiB\n"], [code.exitstatus, err]
  end

  def test_write_failures_are_one_line_and_exit_2
    _, err, status = Open3.capture3("#{CLI} options > /dev/full")
    assert_equal [2, "quillonbin2xml: cannot write standard output: No space left on device\n"],
                 [status.exitstatus, err]
    r, w = IO.pipe
    r.close
    pid = spawn(CLI, "options", out: w, err: (log = Tempfile.new("err")).path)
    w.close
    Process.wait(pid)
    assert_equal [2, "quillonbin2xml: cannot write standard output: Broken pipe\n"],
                 [$?.exitstatus, File.read(log.path)]
  end

  def test_coropt_reads_standard_input_and_json
    file = File.join(SAMPLES, "default_options.coropt")
    expected = Quillonbin2xml.serialize_to_xml(nil) # the file holds the default options
    raw = File.binread(file)
    [[file, ""], ["-", raw], ["-", JSON.dump(raw.bytes)]].each do |path, stdin|
      assert_equal [expected, 0], run_cli("coropt", path, stdin: stdin).values_at(0, 2), path
    end
  end
end
