require_relative "helper"

# batch, check and inspect over whole folders of records, as someone migrating an archive
# runs them.
class CliBatchTest < Minitest::Test
  include QuillonTestHelper

  def text(s) = [s.bytesize].pack("L<") + s
  def sample(name) = File.join(SAMPLES, name)
  def sample_bytes(name) = JSON.parse(File.read(sample(name))).pack("C*")

  # A scene whose material set holds "DefaultMaterial", and a brick whose stored name is empty:
  # the brick is named from the set, so it reads differently after that scene in one process.
  def write_state_records(dir)
    scene = sample_bytes("scene_type0_major6.json").gsub(text("Oak"), text("DefaultMaterial"))
    brick = sample_bytes("material_type1_brick.json").sub(text("Brick"), text(""))
    File.write(File.join(dir, "a", "scene_type0_default_set.json"), JSON.dump(scene.bytes))
    File.write(File.join(dir, "b", "material_type1_nameless.json"), JSON.dump(brick.bytes))
    File.binwrite(File.join(dir, "b", "light_type2_raw.bin"), OMNI.pack("C*"))
  end

  def single_run(file)
    base = File.basename(file)
    args = case base
           when /\A(light|material)_type(\d+)/ then [$1, "--type", $2]
           when /\Ascene_/ then ["scene"]
           else [File.extname(base).delete(".")]
           end
    out, err, code = run_cli(*args, file)
    assert_equal 0, code, err
    out
  end

  def test_batch_output_equals_one_fresh_process_per_record
    Dir.mktmpdir do |dir|
      %w[a b].each { |d| Dir.mkdir(File.join(dir, d)) }
      Dir.glob(File.join(SAMPLES, "*.{json,cormat,coropt}")).each { |f| FileUtils.cp(f, File.join(dir, "b")) }
      write_state_records(dir)
      expected = Dir.glob(File.join(dir, "{a,b}", "*")).to_h { |f| [File.basename(f, ".*") + ".xml", single_run(f)] }
      [1, 2, 3].each do |jobs|
        out = File.join(dir, "out#{jobs}")
        _, err, code = run_cli("batch", "-j", jobs.to_s, "-o", out, File.join(dir, "a"), File.join(dir, "b"))
        assert_equal [0, "quillonbin2xml: #{expected.size} converted, 0 refused, 0 unreadable\n"], [code, err], "-j #{jobs}"
        assert_equal expected.keys.sort, Dir.children(out).sort, "-j #{jobs}"
        expected.each { |name, xml| assert_equal xml, File.read(File.join(out, name)), "-j #{jobs} #{name}" }
      end
    end
  end

  def test_refused_and_unreadable_records_do_not_stop_the_batch_and_are_reported
    Dir.mktmpdir do |dir|
      FileUtils.cp(sample("light_type2_omni.json"), dir)
      File.write(File.join(dir, "light_type2_broken.json"), "[0, 0, 9, 0]")
      File.write(File.join(dir, "lamp.json"), "[0]")
      File.write(File.join(dir, "material_typeX_odd.json"), "[0]")
      File.write(File.join(dir, "notes.txt"), "not a record") # not taken from a folder
      report = File.join(dir, "report.json")
      _, err, code = run_cli("batch", "-j", "2", "-o", File.join(dir, "out"), "--report", report, dir)
      assert_equal 2, code
      assert_equal "quillonbin2xml: 1 converted, 1 refused, 2 unreadable", err.lines.last.chomp
      entries = JSON.parse(File.read(report))
      assert_equal [1, 1, 2], entries.values_at("converted", "refused", "unreadable")
      by_name = entries["records"].to_h { |e| [File.basename(e["file"]), e] }
      assert_equal %w[lamp.json light_type2_broken.json light_type2_omni.json material_typeX_odd.json], by_name.keys.sort
      omni = by_name["light_type2_omni.json"]
      assert_equal ["light", 2, "converted", nil, File.size(File.join(dir, "out", "light_type2_omni.xml"))],
                   omni.values_at("kind", "type", "result", "reason", "bytes")
      assert_equal ["light", 2, "refused", 0], by_name["light_type2_broken.json"].values_at("kind", "type", "result", "bytes")
      assert_match(/does not tell the kind/, by_name["lamp.json"]["reason"])
      assert_match(/does not tell the type/, by_name["material_typeX_odd.json"]["reason"])
      assert_equal ["light_type2_omni.xml"], Dir.children(File.join(dir, "out"))
    end
  end

  def test_manifest_names_kind_and_type_and_usage_errors_exit_2
    Dir.mktmpdir do |dir|
      File.write(File.join(dir, "first.json"), File.read(sample("light_type4_spot.json")))
      manifest = File.join(dir, "list.jsonl")
      File.write(manifest, %({"file": "first.json", "kind": "light", "type": 4}\n\n) +
                           %({"kind": "material", "file": "#{sample("material_type1_brick.json")}", "type": 1, "note": "x"}\n))
      _, err, code = run_cli("batch", "-j", "1", "-o", File.join(dir, "out"), "--manifest", manifest)
      assert_equal [0, "quillonbin2xml: 2 converted, 0 refused, 0 unreadable\n"], [code, err]
      assert_equal Quillonbin2xml.convert_light(JSON.parse(File.read(sample("light_type4_spot.json"))), 4),
                   File.read(File.join(dir, "out", "first.xml"))
      File.write(manifest, %({"file": "first.json", "kind": "light"}\n))
      [[["--manifest", manifest], /list\.jsonl line 1: a light record needs a type/],
       [["-j", "0", dir], /-j needs a number of jobs from 1 to 256/],
       [[], /batch needs PATH or --manifest FILE/]].each do |args, message|
        _, err, code = run_cli("batch", "-o", File.join(dir, "out"), *args)
        assert_equal 2, code, args.inspect
        assert_match message, err
      end
    end
  end

  def test_check_reports_bytes_past_the_end_bytes_left_over_and_ill_formed_xml
    Dir.mktmpdir do |dir|
      short = File.join(dir, "short.json")
      long = File.join(dir, "long.json")
      quoted = File.join(dir, "quoted.json")
      File.write(short, JSON.dump(OMNI[0..-9]))
      File.write(long, JSON.dump(OMNI + [7, 7, 7]))
      File.write(quoted, JSON.dump(BRICK.pack("C*").sub(text("Brick"), text("Bri\"k")).bytes))
      out, _, code = run_cli("check", "--type", "light:2", short, long, sample("light_type2_omni.json"))
      assert_equal 1, code
      assert_equal ["#{short}: read 8 bytes past the end of the record (#{OMNI.size - 8} bytes); they were taken as zeros",
                    "#{long}: 3 bytes after the last byte read (at byte #{OMNI.size}) were not used"], out.lines.map(&:chomp)
      out, _, code = run_cli("check", "--type", "material:1", quoted)
      assert_equal 1, code
      # The first asset's url holds the name; the quote ends the attribute early.
      assert_match(/\A#{Regexp.escape(quoted)}: line 2: [^\n]*: <Asset layout="" renderer="ombra" type="uvw" url="\/Bri"k\/BRDFDiffuse\/[^\n]*\n\z/, out)
      assert_equal Quillonbin2xml.convert_material(JSON.parse(File.read(quoted)), 1), run_cli("material", "--type", "1", quoted)[0]
      assert_equal ["", 0], run_cli("check", "--type", "scene", sample("scene_type0_major6.json")).values_at(0, 2)
    end
  end

  def test_inspect_json_gives_structure_findings_and_the_scene_material_set
    out, _, code = run_cli("inspect", "--type", "scene", "--format=json", sample("scene_type0_major6.json"))
    assert_equal 0, code
    doc = JSON.parse(out)
    assert_equal ["scene", nil, "converted", nil, ["Oak (type 1)"], []], doc.values_at("kind", "type", "result", "reason", "materials", "findings")
    root = doc["objects"].first
    assert_equal ["SkpModule", 6, 0, doc["size"]], root.values_at("class", "version", "begin", "end")
    assert_equal %w[AllOptions SceneMaterials], root["children"].map { |c| c["class"] }
    Dir.mktmpdir do |dir|
      target = File.join(dir, "tree.json")
      _, _, code = run_cli("inspect", "--type", "light:2", "--format", "json", "-o", target, "-", stdin: "[0, 0, 9, 0]")
      doc = JSON.parse(File.read(target))
      assert_equal [1, "refused", 4], [code, doc["result"], doc["size"]]
      assert_match(/OmniLight/, doc["reason"])
    end
    out, _, code = run_cli("inspect", "--type", "cormat", sample("library.cormat"))
    assert_equal [0, ["Brick (type 1)", "B1 (type 3)", "Sign (type 5)"]], [code, out.scan(/^material: (.+)$/).flatten]
  end
end
