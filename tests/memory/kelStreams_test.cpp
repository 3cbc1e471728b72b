#include <kelcore/frame/kelException.h>
#include <kelcore/memory/kelBufferInputStream.h>
#include <kelcore/memory/kelBufferOutputStream.h>
#include <kelcore/memory/kelFileInputStream.h>
#include <kelcore/memory/kelFileOutputStream.h>
#include <kelcore/memory/kelStreamUtils.h>

#include "support/kelUniqueScratch.h"
#include "support/kelWatchdog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using namespace KELKIT;
using Bytes = std::vector<unsigned char>;
using namespace std::chrono_literals;

namespace {

Bytes randomBytes(std::size_t size, unsigned seed) {
    std::mt19937 rng(seed);
    Bytes bytes(size);
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<UInt8>(rng()); });
    return bytes;
}

// Records the size of every write it passes on.
struct RecordingOutput : kelBufferOutputStream {
    using kelBufferOutputStream::kelBufferOutputStream;
    using kelBufferOutputStream::write;
    UInt32 write(UInt8 const* data, UInt32 size) override {
        writes.push_back(size);
        return kelBufferOutputStream::write(data, size);
    }
    std::vector<UInt32> writes;
};

} // namespace

TEST(kelBufferStreams, PartialCountsAndClosing) {
    Bytes const source = randomBytes(10, 1);
    UInt8 data[100] = {};
    kelBufferInputStream in(source.data(), 10);
    kelBufferInputStream copy(in); // the same memory, from the same position
    UInt32 const counts[] = {in.read(data, 4), in.read(data + 4, 100), in.read(data, 1), in.read()};
    EXPECT_EQ((Bytes{4, 6, 0, 0}), Bytes(counts, counts + 4)); // a braced list runs in order
    EXPECT_EQ(source, Bytes(data, data + 10));
    EXPECT_EQ(3u, copy.skip(3));
    copy.close();
    EXPECT_EQ(0u, copy.read(data, 5) + copy.skip(5) + copy.read());
    EXPECT_EQ(7u, copy.size()); // what was left, also when closed
    EXPECT_TRUE(kelBufferInputStream(nullptr, 5).isClosed());

    kelBufferOutputStream out(data, 4);
    EXPECT_EQ(4u, out.write(source.data() + 6, 3) + out.write(source.data() + 6, 3));
    EXPECT_EQ(0u, out.write(UInt8(1)) + out.available()); // filled to its last byte
    EXPECT_EQ(Bytes({source[6], source[7], source[8], source[6]}), Bytes(data, data + 4));
    out.close();
    EXPECT_TRUE(out.size() == 4 && kelBufferOutputStream(nullptr, 4).isClosed());
}

TEST(kelStreamUtils, CopiesInBlocksAndEndsOnEveryInput) {
    kelWatchdog watchdog("copyStream", 60s);
    Bytes const source = randomBytes(25000, 2);
    Bytes target(25000);
    kelBufferInputStream in(source.data(), 25000);
    RecordingOutput out(target.data(), 25000);
    EXPECT_TRUE(kelStreamUtils::copyStream(&in, &out) && source == target);
    EXPECT_EQ((std::vector<UInt32>{10240, 10240, 4520}), out.writes);

    kelBufferInputStream again(source.data(), 25000);
    kelBufferOutputStream full(target.data(), 100);
    EXPECT_FALSE(kelStreamUtils::copyStream(&again, &full));
    EXPECT_EQ(100u, full.size());
    kelBufferInputStream closed(source.data(), 25000);
    closed.close(); // size() still 25000, but nothing comes
    EXPECT_FALSE(kelStreamUtils::copyStream(&closed, &out));
    kelBufferInputStream empty(source.data(), 0);
    EXPECT_TRUE(kelStreamUtils::copyStream(&empty, &out));
    EXPECT_EQ(3u, out.writes.size()); // neither wrote anything
    EXPECT_FALSE(kelStreamUtils::copyStream(nullptr, &out));
    EXPECT_FALSE(kelStreamUtils::copyStream(&empty, nullptr));
}

TEST(kelFileStreams, CopiesMatchAnIndependentReadByteForByte) {
    kelWatchdog watchdog("file copies", 120s);
    for (std::size_t size : {0, 1, 10240, 3 * 10240 + 7, 300001}) {
        kelTest::ScratchFile from("stream-in");
        kelTest::ScratchFile to("stream-out");
        from.write(randomBytes(size, static_cast<unsigned>(size)));
        {
            kelFileInputStream in(from.path());
            kelFileOutputStream out(to.path());
            EXPECT_EQ(size, in.size());
            EXPECT_TRUE(kelStreamUtils::copyStream(&in, &out));
            EXPECT_EQ(size, out.size());
        } // the destructors close (and so flush) both files
        EXPECT_EQ(from.read(), to.read()) << size;
    }
}

TEST(kelFileStreams, SizeFromOpeningSharedFilesAndFailures) {
    kelTest::ScratchFile file("stream-grow");
    Bytes const first = randomBytes(100, 3);
    file.write(first);
    kelFileInputStream in(file.path());
    file.write(randomBytes(50, 4), std::ios::app); // growth after opening
    EXPECT_EQ(100u, in.size());
    EXPECT_EQ(40u, in.skip(40));
    EXPECT_EQ(60u, in.skip(1000)); // stops at the size measured at opening
    UInt8 data[100];
    EXPECT_EQ(50u, in.read(data, 100)); // read is limited by the file alone
    EXPECT_EQ(0u, in.size() + in.skip(1) + in.read());
    kelFileInputStream reader(file.path());
    {
        kelFileInputStream copy(reader); // one open file, read through either
        reader.close();
        EXPECT_EQ(0u, reader.size());
        kelFileInputStream(copy).skip(10); // through a copy of the copy
        EXPECT_EQ(first[10], copy.read()); // still open for the copy
    } // the copy was the last share: the file closes here, once

    kelTest::ScratchFile target("stream-shared-out");
    kelFileOutputStream out(target.path());
    kelFileOutputStream(out).write(first.data(), 2); // the copy goes, the file stays open
    EXPECT_EQ(1u, out.write(first[2]));
    out.close(); // the last share: flushed and closed, once
    EXPECT_EQ(0xFFFFFFFEu, out.available() - out.size() - out.write(UInt8(1)));
    EXPECT_EQ(Bytes(first.begin(), first.begin() + 3), target.read());

    std::string const missing = std::string(target.path()) + "-missing/x.bin";
    for (bool output : {false, true}) {
        try {
            output ? (void)kelFileOutputStream(missing.c_str())
                   : (void)kelFileInputStream(missing.c_str());
            ADD_FAILURE() << "nothing thrown";
        } catch (kelException const& e) {
            EXPECT_EQ(output ? "Unable to create file output stream! @kelFileOutputStream.cpp"
                             : "Unable to create file input stream! @kelFileInputStream.cpp",
                      std::string(e.getDescription()) + " @" + e.getSourceFile());
        }
    }
}
