require "minitest/autorun"
require "open3"
require "rbconfig"
require "tmpdir"

# Builds the gem from the working tree, installs it into an empty gem home, and converts a
# bundled record through `require "quillonbin2xml"` in a plain interpreter started outside the
# repository.
class GemInstallTest < Minitest::Test
  ROOT = File.expand_path("../..", __dir__)
  SAMPLE = File.join(ROOT, "samples", "light_type2_omni.json")

  def run!(env, *command, chdir: ROOT)
    out, err, status = Open3.capture3(env, *command, chdir: chdir)
    assert status.success?, "#{command.join(' ')} failed:\n#{out}#{err}"
    [out, err]
  end

  def test_gem_builds_installs_and_converts
    Dir.mktmpdir do |dir|
      gem_file, home = File.join(dir, "quillonbin2xml.gem"), File.join(dir, "home")
      # No MAKEFLAGS: the gem's own build must choose its parallel compile.
      env = { "GEM_HOME" => home, "GEM_PATH" => home, "MAKEFLAGS" => nil, "RUBYLIB" => nil,
              "RUBYOPT" => nil }
      run!(env, "gem", "build", "quillonbin2xml.gemspec", "-o", gem_file)
      run!(env, "gem", "install", "--local", "--no-document", "--install-dir", home, gem_file)
      gem_dir = Dir[File.join(home, "gems", "quillonbin2xml-*")].first or flunk "no gem folder"
      installed = File.join(gem_dir, "lib", "quillonbin2xml", "Quillonbin2xml.so")
      assert File.file?(installed), "the extension belongs in lib/quillonbin2xml/"
      assert_no_names_that_differ_only_in_case(File.join(gem_dir, "lib"))
      assert_converts_outside_the_repository(env, dir)
      assert_exports_only_the_entry(installed)
      sections = run!({}, "readelf", "-S", "-W", installed)[0]
      refute_match(/\.debug_info/, sections, "the installed extension carries debug information")
    end
  end

  # -w: a circular require (the script finding itself again) would warn on standard error.
  def assert_converts_outside_the_repository(env, dir)
    script = <<~RUBY
      require "quillonbin2xml"
      bytes = File.read(ARGV[0]).scan(/-?\\d+/).map(&:to_i)
      xml = Quillonbin2xml.convert_light(bytes, 2)
      abort "no XML" unless xml&.include?('url="/LightOmni"')
      puts Quillonbin2xml::VERSION
      print Quillonbin2xml.singleton_methods.sort.join(",")
    RUBY
    out, err = run!(env, RbConfig.ruby, "-w", "-e", script, SAMPLE, chdir: dir)
    assert_equal "", err
    version = File.read(File.join(ROOT, "VERSION")).strip
    # The gem's Ruby entry adds the model walker to the four native functions.
    assert_equal "#{version}\nconvert_light,convert_material,convert_model,old_deserialize,serialize_to_xml", out
  end

  # On the host's case-insensitive file systems such names are one file.
  def assert_no_names_that_differ_only_in_case(lib)
    files = Dir[File.join(lib, "**", "*")].select { |path| File.file?(path) }
    stems = files.map { |path| path.sub(/\.[^.\/]*\z/, "").downcase }
    assert_equal stems.uniq.sort, stems.sort, "files of lib/ clash on a case-insensitive file system"
  end

  def assert_exports_only_the_entry(installed)
    exports = run!({}, "nm", "-D", "--defined-only", installed)[0].lines.map { |l| l.split.last }
    assert_equal ["Init_Quillonbin2xml"], exports - %w[_init _fini __bss_start _edata _end]
  end
end
