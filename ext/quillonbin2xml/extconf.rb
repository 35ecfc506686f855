# Builds the Quillonbin2xml extension from the same sources as the CMake build: the core library
# and the Ruby bridge, linked into one module that exports only Init_Quillonbin2xml. It installs
# as quillonbin2xml/Quillonbin2xml, beside lib/quillonbin2xml.rb rather than in its place.
require "mkmf"
require "etc"

root = File.expand_path("../..", __dir__)
src = File.join(root, "src")
folders = %w[archive xml materials textures options lights params upgrade util convert bridge
             platform]
sources = folders.flat_map { |folder| Dir[File.join(src, folder, "*.cpp")] }.sort

names = sources.map { |path| File.basename(path) }
duplicates = names.select { |name| names.count(name) > 1 }.uniq
abort "source file names must be unique for this build: #{duplicates.join(', ')}" unless duplicates.empty?

$srcs = names
$VPATH.concat(sources.map { |path| File.dirname(path) }.uniq)
$INCFLAGS << " -I#{src}"

# A release build: optimised, without the debug information Ruby's own flags ask for.
without_debug = ->(flags) { flags.gsub(/(?<=\A|\s)-g\S*/, "") }
$CFLAGS = without_debug.($CFLAGS)
$CXXFLAGS = without_debug.($CXXFLAGS)
RbConfig::MAKEFILE_CONFIG["debugflags"] = ""
RbConfig::MAKEFILE_CONFIG["CFLAGS"] = without_debug.(RbConfig::MAKEFILE_CONFIG["CFLAGS"])
RbConfig::MAKEFILE_CONFIG["CXXFLAGS"] = without_debug.(RbConfig::MAKEFILE_CONFIG["CXXFLAGS"].to_s)
$CXXFLAGS << " -std=c++17 -O2 -fvisibility=hidden -fvisibility-inlines-hidden"

# Only Init_Quillonbin2xml leaves the module; each linker is told so in its own way.
case RUBY_PLATFORM
when /darwin/
  $DLDFLAGS << " -Wl,-exported_symbols_list,#{File.join(src, 'bridge', 'exports.txt')}"
when /mingw|cygwin/
  # The declaration exports the entry; the C++ runtime goes inside, so no DLL must be found.
  $DLDFLAGS << " -static-libgcc -static-libstdc++"
else
  $DLDFLAGS << " -Wl,--version-script=#{File.join(src, 'bridge', 'exports.map')}"
end

create_makefile("quillonbin2xml/Quillonbin2xml") do |conf|
  # `gem install` runs a plain `make`: compile on every core unless the caller chose a -j.
  jobs = ENV.fetch("MAKEFLAGS", "").match?(/(\A|\s)-?j/) ? nil : Etc.nprocessors
  jobs ? conf + ["MAKEFLAGS += -j#{jobs}\n"] : conf
end
