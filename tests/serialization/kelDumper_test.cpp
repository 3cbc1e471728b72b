#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/serialization/kelFileDumper.h>
#include <kelcore/serialization/kelMemoryDumper.h>

#include "support/kelUniqueScratch.h"
#include "support/kelWireBytes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

using namespace KELKIT;
using Bytes = std::vector<unsigned char>;

namespace {

// Arrays of 0 to 3 random elements of each type, then each first element alone, on a dumper
// and on the oracle, which shifts the values' bits apart (a float's by its bit pattern). The
// single values name the dumper's class, so that its inline forms run as compiled here.
template <class... T, class D>
void dumpEach(D& dumper, kelTest::WireBytes& expected, std::mt19937_64& rng) {
    auto const both = [&](auto* values) {
        using V = std::remove_pointer_t<decltype(values)>;
        for (int i = 0; i < 3; ++i) {
            values[i] = std::is_floating_point<V>::value ? static_cast<V>(rng() % 1000) / 8
                                                         : static_cast<V>(rng() % 3 ? rng() : 0);
        }
        UInt32 const count = static_cast<UInt32>(rng() % 4);
        dumper.dump(static_cast<V const*>(values), count);
        dumper.D::dump(values[0]);
        for (UInt32 i = 0; i <= count; ++i) {
            V const v = values[i < count ? i : 0];
            std::uint64_t bits = static_cast<std::uint64_t>(v); // sign-extended: low bytes right
            if (std::is_floating_point<V>::value) {
                std::memcpy(&bits, &v, sizeof v);
            }
            expected.le(bits, sizeof(V));
        }
    };
    (both(std::make_unique<T[]>(3).get()), ...);
}

// The same random run of every form on a dumper and on the wire oracle.
template <class D>
void dumpRandomMix(D& dumper, kelTest::WireBytes& expected, unsigned seed) {
    std::mt19937_64 rng(seed);
    kelString const texts[3] = {kelString("ab"), kelString(), kelString("xyz")};
    kelMemoryBuffer buffers[2];
    buffers[0].set(reinterpret_cast<UInt8 const*>("\x01\x00\x02"), 3);
    for (int round = 0; round < 60; ++round) {
        dumpEach<UInt8, SInt8, bool, UInt16, SInt16, UInt32, SInt32, UInt64, SInt64, Float32,
                 Float64>(dumper, expected, rng);
        // Texts and buffers: their bytes only, element borders and empty elements vanish.
        UInt32 const count = static_cast<UInt32>(rng() % 4);
        dumper.dump(texts, count);
        dumper.dump(texts[round % 3]);
        dumper.dump(buffers, count % 3);
        dumper.dump(buffers[round % 2]);
        for (UInt32 i = 0; i < count; ++i) {
            expected.text(texts[i].c_str());
        }
        expected.text(texts[round % 3].c_str());
        expected.le(0x020001, count % 3 > 0 ? 3 : 0).le(0x020001, round % 2 == 0 ? 3 : 0);
    }
}

Bytes contentOf(kelMemoryBuffer const& buffer) {
    return Bytes(buffer.getBuffer(), buffer.getBuffer() + buffer.getSize());
}

} // namespace

TEST(kelDumpers, EveryFormEmitsTheWireBytesAlone) {
    kelMemoryDumper memory;
    kelTest::WireBytes expected;
    dumpRandomMix(memory, expected, 7);
    EXPECT_EQ(expected.bytes(), contentOf(kelMemoryDumper(memory).getBuffer())); // a copy too

    kelTest::ScratchFile file("dump");
    kelTest::WireBytes expectedInFile;
    {
        kelFileDumper dumper(file.path());
        dumpRandomMix(dumper, expectedInFile, 8);
    }
    EXPECT_EQ(expectedInFile.bytes(), file.read());
}

TEST(kelDumpers, MemoryDumperGrowsByExactlyWhatWasDumped) {
    kelMemoryDumper dumper;
    kelTest::WireBytes expected;
    for (UInt32 i = 0; i < 100000; ++i) {
        dumper.dump(i * 2654435761u);
        expected.u32(i * 2654435761u);
    }
    dumper.dump(dumper.getBuffer()); // its own bytes, while the block moves
    Bytes twice = expected.bytes();
    twice.insert(twice.end(), expected.bytes().begin(), expected.bytes().end());
    EXPECT_EQ(twice, contentOf(dumper.getBuffer()));
    // The caller empties or refills the buffer through getBuffer: dumps land behind exactly
    // what it holds then, whatever block it got.
    for (UInt32 size : {0u, 2u, 1u}) {
        dumper.getBuffer().allocate(size);
        dumper.dump(static_cast<SInt16>(-2));
        Bytes const content = contentOf(dumper.getBuffer());
        ASSERT_EQ(size + 2, content.size());
        EXPECT_EQ(Bytes({0xFE, 0xFF}), Bytes(content.begin() + size, content.end()));
    }
    // The same after a refill by deserializing, which hands the buffer a block of its own.
    kelMemoryBuffer three;
    three.set(reinterpret_cast<UInt8 const*>("abc"), 3);
    kelBinarySerializer wire;
    three.serializeTo(wire);
    for (UInt32 i = 0; i < 1000; ++i) {
        dumper.dump(i);
    }
    dumper.getBuffer().deserializeFrom(wire);
    dumper.dump(static_cast<SInt16>(-2));
    EXPECT_EQ(Bytes({'a', 'b', 'c', 0xFE, 0xFF}), contentOf(dumper.getBuffer()));
}

TEST(kelDumpers, FileDumperFailuresAreSilentAndCopiesCloseOnce) {
    kelTest::ScratchFile file("dump-shared");
    std::string const badPath = std::string(file.path()) + "-missing/x.bin";
    kelFileDumper broken(badPath.c_str());
    broken.dump(1.0); // silent
    EXPECT_STREQ("", broken.getFilePath());
    {
        kelFileDumper dumper(file.path());
        kelFileDumper copy(dumper);
        broken = dumper; // the same open file again
        dumper.dump(1.0);
        dumper.closeFile();
        dumper.dump(UInt8(9)); // silent after closeFile, as is flushFile
        dumper.flushFile();
        EXPECT_STREQ(file.path(), dumper.getFilePath());
        copy.dump(true);
        broken.dump(static_cast<SInt16>(-2));
        broken.closeFile();
    } // the last share closes the file, once
    EXPECT_EQ(Bytes({0, 0, 0, 0, 0, 0, 0xF0, 0x3F, 0x01, 0xFE, 0xFF}), file.read());
}
