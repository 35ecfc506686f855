// Archive primitives: writes and reads per value.
#include <benchmark/benchmark.h>

#include "archive/quick_archive.h"

using CorvaneCore::QuickArchive;

namespace {

constexpr int kValues = 4096;

template <class T>
void writeValues(benchmark::State& state, T value) {
    for (auto _ : state) {
        QuickArchive archive(1);
        for (int i = 0; i < kValues; ++i) archive.write(value);
        benchmark::DoNotOptimize(archive.writePos());
    }
    state.SetItemsProcessed(state.iterations() * kValues);
}

template <class T>
void readValues(benchmark::State& state, T value) {
    QuickArchive archive(1);
    for (int i = 0; i < kValues; ++i) archive.write(value);
    for (auto _ : state) {
        archive.setReadPos(0);
        T out{};
        for (int i = 0; i < kValues; ++i) archive.read(out);
        benchmark::DoNotOptimize(out);
    }
    state.SetItemsProcessed(state.iterations() * kValues);
}

void BM_WriteBool(benchmark::State& s) { writeValues(s, true); }
void BM_WriteInt(benchmark::State& s) { writeValues(s, int32_t(7)); }
void BM_WriteFloat(benchmark::State& s) { writeValues(s, 1.5f); }
void BM_WriteColor(benchmark::State& s) { writeValues(s, CorvaneCore::Color(1, 2, 3)); }
void BM_WriteTransform(benchmark::State& s) { writeValues(s, CorvaneCore::Transform()); }
void BM_WriteWideString(benchmark::State& s) { writeValues(s, std::u16string(u"Material name")); }
void BM_ReadBool(benchmark::State& s) { readValues(s, true); }
void BM_ReadInt(benchmark::State& s) { readValues(s, int32_t(7)); }
void BM_ReadFloat(benchmark::State& s) { readValues(s, 1.5f); }
void BM_ReadColor(benchmark::State& s) { readValues(s, CorvaneCore::Color(1, 2, 3)); }
void BM_ReadTransform(benchmark::State& s) { readValues(s, CorvaneCore::Transform()); }
void BM_ReadWideString(benchmark::State& s) { readValues(s, std::u16string(u"Material name")); }

void BM_WriteBytesBulk(benchmark::State& state) {
    const std::string bytes(1 << 20, 'x');
    for (auto _ : state) {
        QuickArchive archive(1);
        archive.writeBytes(bytes.data(), bytes.size());
        benchmark::DoNotOptimize(archive.writePos());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes.size()));
}

}  // namespace

BENCHMARK(BM_WriteBool);
BENCHMARK(BM_WriteInt);
BENCHMARK(BM_WriteFloat);
BENCHMARK(BM_WriteColor);
BENCHMARK(BM_WriteTransform);
BENCHMARK(BM_WriteWideString);
BENCHMARK(BM_ReadBool);
BENCHMARK(BM_ReadInt);
BENCHMARK(BM_ReadFloat);
BENCHMARK(BM_ReadColor);
BENCHMARK(BM_ReadTransform);
BENCHMARK(BM_ReadWideString);
BENCHMARK(BM_WriteBytesBulk);
