# Builds the Quillonbin2xml extension from the same sources as the CMake build: the core library
# and the Ruby bridge, linked into one module that exports only Init_Quillonbin2xml.
require "mkmf"

root = File.expand_path("../..", __dir__)
src = File.join(root, "src")
folders = %w[archive xml materials textures options lights params upgrade util convert bridge]
sources = folders.flat_map { |folder| Dir[File.join(src, folder, "*.cpp")] }.sort

names = sources.map { |path| File.basename(path) }
duplicates = names.select { |name| names.count(name) > 1 }.uniq
abort "source file names must be unique for this build: #{duplicates.join(', ')}" unless duplicates.empty?

$srcs = names
$VPATH.concat(sources.map { |path| File.dirname(path) }.uniq)
$INCFLAGS << " -I#{src}"
$CXXFLAGS << " -std=c++17 -O2 -fvisibility=hidden -fvisibility-inlines-hidden -Wno-unused-parameter"
$DLDFLAGS << " -Wl,--version-script=#{File.join(src, 'bridge', 'exports.map')}"
$LIBS << " -lstdc++"

create_makefile("Quillonbin2xml")
