Gem::Specification.new do |spec|
  spec.name = "quillonbin2xml"
  spec.version = File.read(File.join(__dir__, "VERSION")).strip
  spec.summary = "Converts the binary scene records of the older renderer plug-in to Asset XML"
  spec.description = "A native extension that reads render options, cameras, materials, BRDF " \
                     "layers, textures, UVW generators and lights from their old binary records " \
                     "and writes the renderer's Asset XML."
  spec.authors = ["quillonbin2xml developers"]
  spec.license = "Nonstandard"
  spec.required_ruby_version = ">= 2.7"
  spec.files = Dir["lib/**/*.rb", "ext/**/*.rb", "src/**/*.{cpp,h,map,txt}", "README.md", "VERSION"]
  spec.extensions = ["ext/quillonbin2xml/extconf.rb"]
  spec.require_paths = ["lib"]
end
