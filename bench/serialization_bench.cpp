// Writing and reading through the memory serializers, next to appending to a std::vector.

#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/serialization/kelFileSerializer.h>
#include <kelcore/serialization/kelMemorySerializer.h>
#include <kelcore/strings/kelString.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

using namespace KELKIT;

namespace {

void BM_kelBinarySerializer_WriteUInt32(benchmark::State& state) {
    UInt32 const count = static_cast<UInt32>(state.range(0));
    for (auto _ : state) {
        kelBinarySerializer s;
        for (UInt32 i = 0; i < count; ++i) {
            s.serialize(i);
        }
        benchmark::DoNotOptimize(s.getBufferC());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0) * 4);
}

// A caller who knows the volume sets a chunk that avoids repeated reallocation.
void BM_kelBinarySerializer_WriteUInt32_LargeChunk(benchmark::State& state) {
    UInt32 const count = static_cast<UInt32>(state.range(0));
    for (auto _ : state) {
        kelBinarySerializer s;
        s.setAllocationChunk(count * 4 + 1);
        for (UInt32 i = 0; i < count; ++i) {
            s.serialize(i);
        }
        benchmark::DoNotOptimize(s.getBufferC());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0) * 4);
}

void BM_kelMemorySerializer_WriteUInt32(benchmark::State& state) {
    UInt32 const count = static_cast<UInt32>(state.range(0));
    std::vector<UInt8> block(count * 4 + 1);
    for (auto _ : state) {
        kelMemorySerializer s(block.data(), static_cast<UInt32>(block.size()));
        for (UInt32 i = 0; i < count; ++i) {
            s.serialize(i);
        }
        benchmark::DoNotOptimize(block.data());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0) * 4);
}

void BM_stdVector_AppendUInt32(benchmark::State& state) {
    UInt32 const count = static_cast<UInt32>(state.range(0));
    for (auto _ : state) {
        std::vector<unsigned char> v;
        for (UInt32 i = 0; i < count; ++i) {
            unsigned char bytes[4];
            std::memcpy(bytes, &i, 4);
            v.insert(v.end(), bytes, bytes + 4);
        }
        benchmark::DoNotOptimize(v.data());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0) * 4);
}

void BM_kelMemorySerializer_ReadUInt32(benchmark::State& state) {
    UInt32 const count = static_cast<UInt32>(state.range(0));
    std::vector<UInt8> block(count * 4, 0x5A);
    for (auto _ : state) {
        kelMemorySerializer s(block.data(), static_cast<UInt32>(block.size()));
        UInt32 sum = 0;
        for (UInt32 i = 0; i < count; ++i) {
            UInt32 v;
            s.deserialize(v);
            sum += v;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetBytesProcessed(state.iterations() * state.range(0) * 4);
}

void BM_kelString_SerializeRoundTrip(benchmark::State& state) {
    kelString const text(std::string(static_cast<std::size_t>(state.range(0)), 'k').c_str());
    for (auto _ : state) {
        kelBinarySerializer s;
        text.serializeTo(s);
        kelString back;
        back.deserializeFrom(s);
        benchmark::DoNotOptimize(back.c_str());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

// 100,000 short texts in their wire form (a UInt32 length, then 24 bytes), in a file made once
// and removed at exit.
class ShortTextsFile {
public:
    static constexpr UInt32 COUNT = 100000;
    static constexpr UInt32 LENGTH = 24;
    static ShortTextsFile const& get() {
        static ShortTextsFile const file;
        return file;
    }
    std::string path;

private:
    ShortTextsFile() {
        path = (std::filesystem::temp_directory_path() /
                ("kelcore-bench-texts-" + std::to_string(std::random_device{}()) + ".bin"))
                   .string();
        kelFileSerializer out(path.c_str(), kelFileSerializer::FileMode::Write);
        kelString const text(std::string(LENGTH, 't').c_str());
        for (UInt32 i = 0; i < COUNT; ++i) {
            text.serializeTo(out);
        }
    }
    ~ShortTextsFile() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
};

void BM_kelString_ReadShortTextsFromFile(benchmark::State& state) {
    ShortTextsFile const& file = ShortTextsFile::get();
    for (auto _ : state) {
        kelFileSerializer in(file.path.c_str(), kelFileSerializer::FileMode::Read);
        kelString text;
        UInt32 total = 0;
        for (UInt32 i = 0; i < ShortTextsFile::COUNT; ++i) {
            text.deserializeFrom(in);
            total += text.size();
        }
        benchmark::DoNotOptimize(total);
    }
    state.SetItemsProcessed(state.iterations() * ShortTextsFile::COUNT);
}

// The same texts read with fread alone: the length, then the bytes into a std::string.
void BM_stdio_ReadShortTextsFromFile(benchmark::State& state) {
    ShortTextsFile const& file = ShortTextsFile::get();
    for (auto _ : state) {
        std::FILE* in = std::fopen(file.path.c_str(), "rb");
        std::string text;
        UInt32 total = 0;
        for (UInt32 i = 0; i < ShortTextsFile::COUNT; ++i) {
            UInt32 length = 0;
            if (std::fread(&length, 4, 1, in) != 1 || length > (1u << 16)) {
                break;
            }
            text.resize(length);
            total += static_cast<UInt32>(std::fread(&text[0], 1, length, in));
        }
        std::fclose(in);
        benchmark::DoNotOptimize(total);
    }
    state.SetItemsProcessed(state.iterations() * ShortTextsFile::COUNT);
}

} // namespace

BENCHMARK(BM_kelBinarySerializer_WriteUInt32)->Arg(1 << 10)->Arg(1 << 16)->Arg(1 << 20);
BENCHMARK(BM_kelBinarySerializer_WriteUInt32_LargeChunk)->Arg(1 << 10)->Arg(1 << 16)->Arg(1 << 20);
BENCHMARK(BM_kelMemorySerializer_WriteUInt32)->Arg(1 << 10)->Arg(1 << 16)->Arg(1 << 20);
BENCHMARK(BM_stdVector_AppendUInt32)->Arg(1 << 10)->Arg(1 << 16)->Arg(1 << 20);
BENCHMARK(BM_kelMemorySerializer_ReadUInt32)->Arg(1 << 10)->Arg(1 << 16)->Arg(1 << 18);
BENCHMARK(BM_kelString_SerializeRoundTrip)->Arg(16)->Arg(4096)->Arg(1 << 20);
BENCHMARK(BM_kelString_ReadShortTextsFromFile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_stdio_ReadShortTextsFromFile)->Unit(benchmark::kMillisecond);
