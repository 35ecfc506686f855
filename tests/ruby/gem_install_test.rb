require "minitest/autorun"
require "open3"
require "tmpdir"

# Builds the gem from the working tree, installs it into an empty gem home, and converts a
# bundled record through `require "quillonbin2xml"` in a fresh interpreter.
class GemInstallTest < Minitest::Test
  ROOT = File.expand_path("../..", __dir__)

  def run!(env, *command)
    out, status = Open3.capture2e(env, *command, chdir: ROOT)
    assert status.success?, "#{command.join(' ')} failed:\n#{out}"
    out
  end

  def test_gem_builds_installs_and_converts
    Dir.mktmpdir do |dir|
      gem_file, home = File.join(dir, "quillonbin2xml.gem"), File.join(dir, "home")
      env = { "GEM_HOME" => home, "GEM_PATH" => home, "MAKEFLAGS" => "-j2" }
      run!(env, "gem", "build", "quillonbin2xml.gemspec", "-o", gem_file)
      run!(env, "gem", "install", "--local", "--no-document", "--install-dir", home, gem_file)
      script = <<~RUBY
        require "quillonbin2xml"
        bytes = File.read("samples/light_type2_omni.json").scan(/-?\\d+/).map(&:to_i)
        xml = Quillonbin2xml.convert_light(bytes, 2)
        abort "no XML" unless xml&.include?('url="/LightOmni"')
        print Quillonbin2xml.singleton_methods.sort.join(",")
      RUBY
      out = run!(env, "ruby", "-e", script)
      # The gem's Ruby entry adds the model walker to the four native functions.
      assert_equal "convert_light,convert_material,convert_model,old_deserialize,serialize_to_xml", out
      installed = Dir[File.join(home, "**", "Quillonbin2xml.so")].first or flunk "no extension installed"
      exports = run!({}, "nm", "-D", "--defined-only", installed).lines.map { |l| l.split.last }
      assert_equal ["Init_Quillonbin2xml"], exports - %w[_init _fini __bss_start _edata _end]
    end
  end
end
