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
class RecordingOutput : public kelBufferOutputStream {
public:
    using kelBufferOutputStream::kelBufferOutputStream;
    using kelBufferOutputStream::write;
    UInt32 write(UInt8 const* data, UInt32 size) override {
        writes.push_back(size);
        return kelBufferOutputStream::write(data, size);
    }
    std::vector<UInt32> writes;
};

} // namespace

TEST(kelBufferStreams, CountsPositionsAndClosing) {
    Bytes const source = randomBytes(10, 1);
    UInt8 data[100] = {};
    kelBufferInputStream in(source.data(), 10);
    EXPECT_EQ(4u, in.read(data, 4));
    EXPECT_EQ(6u, in.size());
    kelBufferInputStream copy(in); // the same memory, from the same position
    EXPECT_EQ(source[4], copy.read());
    EXPECT_EQ(6u, in.read(data + 4, 100));
    EXPECT_EQ(Bytes(source.begin(), source.end()), Bytes(data, data + 10));
    EXPECT_EQ(0u, in.read(data, 1));
    EXPECT_EQ(0, in.read());
    EXPECT_EQ(5u, copy.skip(100));
    EXPECT_EQ(0u, copy.skip(1));
    kelBufferInputStream closing(source.data(), 10);
    closing.skip(3);
    closing.close();
    EXPECT_TRUE(closing.isClosed());
    EXPECT_EQ(0u, closing.read(data, 5));
    EXPECT_EQ(0u, closing.skip(5));
    EXPECT_EQ(7u, closing.size()); // what was left, also when closed
    EXPECT_TRUE(kelBufferInputStream(nullptr, 5).isClosed());

    UInt8 target[4] = {};
    UInt8 const three[3] = {7, 8, 9};
    kelBufferOutputStream out(target, 4);
    EXPECT_EQ(3u, out.write(three, 3));
    EXPECT_EQ(1u, out.available());
    EXPECT_EQ(3u, out.size());
    EXPECT_EQ(1u, out.write(three, 3)); // filled to the last byte
    EXPECT_EQ(0u, out.write(UInt8(1)));
    out.flush();
    EXPECT_EQ(Bytes({7, 8, 9, 7}), Bytes(target, target + 4));
    out.close();
    EXPECT_TRUE(out.isClosed());
    EXPECT_EQ(4u, out.size());
    EXPECT_EQ(0u, kelBufferOutputStream(nullptr, 4).write(UInt8(1)));
}

TEST(kelStreamUtils, CopiesInBlocksAndEndsOnEveryInput) {
    kelWatchdog watchdog("copyStream", 60s);
    Bytes const source = randomBytes(25000, 2);
    Bytes target(25000);
    kelBufferInputStream in(source.data(), 25000);
    RecordingOutput out(target.data(), 25000);
    EXPECT_TRUE(kelStreamUtils::copyStream(&in, &out));
    EXPECT_EQ((std::vector<UInt32>{10240, 10240, 4520}), out.writes);
    EXPECT_EQ(source, target);

    kelBufferInputStream again(source.data(), 25000);
    Bytes small(100);
    kelBufferOutputStream full(small.data(), 100);
    EXPECT_FALSE(kelStreamUtils::copyStream(&again, &full));
    EXPECT_EQ(Bytes(source.begin(), source.begin() + 100), small);

    kelBufferInputStream closed(source.data(), 25000);
    closed.close(); // size() still 25000, but nothing comes
    kelBufferOutputStream sink(target.data(), 25000);
    EXPECT_FALSE(kelStreamUtils::copyStream(&closed, &sink));
    EXPECT_EQ(0u, sink.size());

    kelBufferInputStream empty(source.data(), 0);
    EXPECT_TRUE(kelStreamUtils::copyStream(&empty, &sink));
    EXPECT_FALSE(kelStreamUtils::copyStream(nullptr, &sink));
    EXPECT_FALSE(kelStreamUtils::copyStream(&empty, nullptr));
}

TEST(kelFileStreams, CopiesMatchAnIndependentReadByteForByte) {
    kelWatchdog watchdog("file copies", 120s);
    for (std::size_t size : {std::size_t(0), std::size_t(1), std::size_t(10240),
                             std::size_t(3 * 10240 + 7), std::size_t(300001)}) {
        kelTest::ScratchFile from("stream-in");
        kelTest::ScratchFile to("stream-out");
        from.write(randomBytes(size, static_cast<unsigned>(size)));
        {
            kelFileInputStream in(from.path());
            kelFileOutputStream out(to.path());
            EXPECT_EQ(size, in.size());
            EXPECT_TRUE(kelStreamUtils::copyStream(&in, &out));
            EXPECT_EQ(size, out.size());
            EXPECT_EQ(0u, in.read());
        } // the destructors close (and so flush) both files
        EXPECT_EQ(from.read(), to.read()) << size;
    }
}

TEST(kelFileStreams, SizeIsMeasuredAtOpeningAndCopiesShareTheFile) {
    kelTest::ScratchFile file("stream-grow");
    Bytes const first = randomBytes(100, 3);
    file.write(first);
    kelFileInputStream in(file.path());
    file.write(randomBytes(50, 4), true); // growth after opening
    EXPECT_EQ(100u, in.size());
    EXPECT_EQ(40u, in.skip(40));
    EXPECT_EQ(60u, in.skip(1000)); // stops at the size measured at opening
    EXPECT_EQ(0u, in.size());
    UInt8 data[100];
    EXPECT_EQ(50u, in.read(data, 100)); // read is limited by the file alone
    EXPECT_EQ(0u, in.size());
    EXPECT_EQ(0u, in.skip(1));

    kelFileInputStream reader(file.path());
    {
        kelFileInputStream copy(reader); // one open file, read through either
        copy.skip(10);
        reader.close();
        EXPECT_TRUE(reader.isClosed());
        EXPECT_EQ(0u, reader.size());
        EXPECT_EQ(first[10], copy.read()); // still open for the copy
    } // the copy was the last share: the file closes here, once

    kelTest::ScratchFile target("stream-shared-out");
    {
        kelFileOutputStream out(target.path());
        kelFileOutputStream copy(out);
        EXPECT_EQ(1u, out.write(UInt8(0xAB)));
        out.close();
        EXPECT_EQ(0u, out.write(UInt8(1)));
        EXPECT_EQ(1u, out.size());
        EXPECT_EQ(0xFFFFFFFFu, out.available());
        EXPECT_EQ(2u, copy.write(first.data(), 2));
    }
    EXPECT_EQ(Bytes({0xAB, first[0], first[1]}), target.read());
}

TEST(kelFileStreams, OpeningFailuresThrow) {
    kelTest::ScratchFile missing("stream-missing");
    kelTest::ScratchFile empty("stream-empty");
    empty.write({});
    auto const thrown = [](auto make) {
        try {
            make();
        } catch (kelException const& e) {
            return std::string(e.getDescription()) + " @" + e.getSourceFile();
        }
        return std::string("nothing thrown");
    };
    EXPECT_EQ("Unable to create file input stream! @kelFileInputStream.cpp",
              thrown([&] { kelFileInputStream in(missing.path()); }));
    std::string const badFolder = std::string(missing.path()) + "-folder/x.bin";
    EXPECT_EQ("Unable to create file output stream! @kelFileOutputStream.cpp",
              thrown([&] { kelFileOutputStream out(badFolder.c_str()); }));
    kelFileInputStream in(empty.path());
    EXPECT_EQ(0u, in.size());
    EXPECT_EQ(0, in.read());
}
