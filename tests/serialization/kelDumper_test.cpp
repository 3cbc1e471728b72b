#include <kelcore/serialization/kelFileDumper.h>
#include <kelcore/serialization/kelMemoryDumper.h>

#include "support/kelUniqueScratch.h"
#include "support/kelWireBytes.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace KELKIT;
using Bytes = std::vector<unsigned char>;

namespace {

// Makes the same random run of dump calls, every form, on a dumper and on the wire oracle.
void dumpRandomMix(kelIDumper& dumper, kelTest::WireBytes& expected, unsigned seed) {
    std::mt19937_64 rng(seed);
    for (int call = 0; call < 400; ++call) {
        std::uint64_t const v = rng();
        UInt32 const n = static_cast<UInt32>(rng() % 4); // arrays of 0 to 3 elements
        switch (rng() % 14) {
        case 0:
            dumper.dump(static_cast<UInt8>(v));
            expected.u8(static_cast<UInt8>(v));
            break;
        case 1:
            dumper.dump(static_cast<SInt8>(v));
            expected.u8(static_cast<UInt8>(v));
            break;
        case 2:
            dumper.dump(v % 2 == 0);
            expected.u8(v % 2 == 0 ? 1 : 0);
            break;
        case 3:
            dumper.dump(static_cast<SInt16>(v));
            expected.s16(static_cast<SInt16>(v));
            break;
        case 4:
            dumper.dump(static_cast<UInt16>(v));
            expected.u16(static_cast<UInt16>(v));
            break;
        case 5:
            dumper.dump(static_cast<SInt32>(v));
            expected.s32(static_cast<SInt32>(v));
            break;
        case 6:
            dumper.dump(static_cast<UInt32>(v));
            expected.u32(static_cast<UInt32>(v));
            break;
        case 7:
            dumper.dump(static_cast<SInt64>(v));
            expected.u64(v);
            break;
        case 8:
            dumper.dump(static_cast<UInt64>(v));
            expected.u64(v);
            break;
        case 9:
            dumper.dump(static_cast<Float64>(v % 1000) / 8);
            expected.f64(double(v % 1000) / 8);
            break;
        case 10:
            dumper.dump(static_cast<Float32>(v % 1000) / 8);
            expected.f32(float(v % 1000) / 8);
            break;
        case 11: { // arrays of each width, no count
            UInt32 u32[3] = {UInt32(v), UInt32(v >> 8), UInt32(v >> 16)};
            UInt16 u16[3] = {UInt16(v), UInt16(v >> 4), UInt16(v >> 12)};
            bool flags[3] = {true, false, v % 2 == 0};
            Float64 f64[3] = {0.5, -2.0, double(v % 77)};
            dumper.dump(u32, n);
            dumper.dump(u16, n);
            dumper.dump(flags, n);
            dumper.dump(f64, n);
            for (UInt32 i = 0; i < n; ++i)
                expected.u32(u32[i]);
            for (UInt32 i = 0; i < n; ++i)
                expected.u16(u16[i]);
            for (UInt32 i = 0; i < n; ++i)
                expected.u8(flags[i] ? 1 : 0);
            for (UInt32 i = 0; i < n; ++i)
                expected.f64(f64[i]);
            break;
        }
        case 12: { // texts: their characters only, borders and empty ones vanish
            kelString const texts[3] = {kelString("ab"), kelString(), kelString("xyz")};
            dumper.dump(texts, n);
            dumper.dump(texts[v % 3]);
            for (UInt32 i = 0; i < n; ++i)
                expected.text(texts[i].c_str());
            expected.text(texts[v % 3].c_str());
            break;
        }
        default: { // buffers: their bytes only
            kelMemoryBuffer buffers[2];
            buffers[0].set(reinterpret_cast<UInt8 const*>("\x01\x00\x02"), 3);
            dumper.dump(buffers, n % 3);
            dumper.dump(buffers[0]);
            for (UInt32 i = 0; i < n % 3; ++i)
                expected.le(i == 0 ? 0x020001 : 0, i == 0 ? 3 : 0);
            expected.le(0x020001, 3);
            break;
        }
        }
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
    EXPECT_EQ(expected.bytes(), contentOf(memory.getBuffer()));
    EXPECT_EQ(expected.bytes().size(), memory.getBuffer().getSize());
    kelMemoryDumper const copy(memory);
    EXPECT_EQ(expected.bytes(), contentOf(copy.getBuffer()));

    kelTest::ScratchFile file("dump");
    kelTest::WireBytes expectedInFile;
    {
        kelFileDumper dumper(file.path());
        EXPECT_STREQ(file.path(), dumper.getFilePath());
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
    EXPECT_EQ(400000u, dumper.getBuffer().getSize());
    EXPECT_EQ(expected.bytes(), contentOf(dumper.getBuffer()));
    dumper.dump(dumper.getBuffer()); // its own bytes, while the block moves
    EXPECT_EQ(800000u, dumper.getBuffer().getSize());
    EXPECT_TRUE(std::equal(expected.bytes().begin(), expected.bytes().end(),
                           dumper.getBuffer().getBuffer() + 400000));

    // The caller empties and refills the buffer through getBuffer: dumps land behind exactly
    // what it holds then, whatever block it got.
    for (UInt32 size : {0u, 2u, 1u}) {
        dumper.getBuffer().clear();
        dumper.getBuffer().allocate(size);
        dumper.dump(static_cast<SInt16>(-2));
        ASSERT_EQ(size + 2, dumper.getBuffer().getSize());
        EXPECT_EQ(Bytes({0xFE, 0xFF}), Bytes(dumper.getBuffer().getBuffer() + size,
                                             dumper.getBuffer().getBuffer() + size + 2));
    }
}

TEST(kelDumpers, FileDumperFailuresAreSilentAndCopiesCloseOnce) {
    kelTest::ScratchFile missing("dump-missing");
    std::string const badPath = std::string(missing.path()) + "-folder/x.bin";
    kelFileDumper broken(badPath.c_str());
    EXPECT_STREQ("", broken.getFilePath());
    broken.dump(1.0);
    broken.flushFile();
    broken.closeFile();

    kelTest::ScratchFile file("dump-shared");
    {
        kelFileDumper dumper(file.path());
        kelFileDumper copy(dumper);
        kelFileDumper assigned(broken);
        assigned = dumper; // the same open file again
        dumper.dump(1.0);
        dumper.closeFile();
        dumper.dump(UInt8(9)); // silent after closeFile
        dumper.flushFile();
        dumper.closeFile();
        EXPECT_STREQ(file.path(), dumper.getFilePath());
        copy.dump(true);
        assigned.dump(static_cast<SInt16>(-2));
    } // the last share closes the file, once
    EXPECT_EQ(Bytes({0, 0, 0, 0, 0, 0, 0xF0, 0x3F, 0x01, 0xFE, 0xFF}), file.read());
}
