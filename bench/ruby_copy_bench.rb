# The copy of a Ruby byte array into an archive, per element, against Array#pack("C*") of the
# same array in the same run. Run with `make bench` (needs the test-only probe extension).
$LOAD_PATH.unshift ENV.fetch("QUILLON_PROBE_DIR", File.expand_path("../build-bench/ext-test", __dir__))
require "QuillonProbe"

def best_rate(elements, rounds)
  best = Float::INFINITY
  rounds.times do
    start = Process.clock_gettime(Process::CLOCK_MONOTONIC)
    yield
    best = [best, Process.clock_gettime(Process::CLOCK_MONOTONIC) - start].min
  end
  elements / best
end

[4096, 1 << 20, 8 << 20].each do |size|
  array = Array.new(size) { |i| (i * 7) & 0xFF }
  rounds = [3, (64 << 20) / size].max.clamp(3, 200)
  copy = best_rate(size, rounds) { QuillonProbe.copy_to_archive(array) }
  pack = best_rate(size, rounds) { array.pack("C*") }
  printf("copy to archive  %9d elements: %8.1f M elements/s   pack(\"C*\"): %8.1f M elements/s   ratio %.2f\n",
         size, copy / 1e6, pack / 1e6, copy / pack)
end
