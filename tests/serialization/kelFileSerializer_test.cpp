#include <kelcore/frame/kelException.h>
#include <kelcore/serialization/kelFileSerializer.h>

#include "support/kelUniqueScratch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

using namespace KELKIT;
namespace fs = std::filesystem;
using Mode = kelFileSerializer::FileMode;

namespace {

struct ScratchFile {
    explicit ScratchFile(char const* name) : path((fs::temp_directory_path() / name).string()) {
        fs::remove(path);
    }
    ~ScratchFile() { fs::remove(path); }
    std::vector<unsigned char> bytes() const {
        std::ifstream in(path, std::ios::binary);
        return std::vector<unsigned char>(std::istreambuf_iterator<char>(in), {});
    }
    std::string const path;
};

// The description and unit of the exception that the call raises.
template <class Call>
std::string thrownBy(Call call) {
    try {
        call();
    } catch (kelException const& e) {
        return std::string(e.getDescription()) + " @" + e.getSourceFile();
    }
    return "nothing thrown";
}

} // namespace

TEST(kelFileSerializer, EachDirectionKeepsItsOwnPosition) {
    ScratchFile file("kelcore-file-directions.bin");
    kelFileSerializer s(file.path.c_str(), Mode::ReadAndWrite);
    s.serialize(static_cast<UInt32>(0x04030201));
    s.serialize(static_cast<UInt64>(0x0C0B0A0908070605ull));
    UInt32 first = 0;
    s.deserialize(first); // seeks to the read position 0
    EXPECT_EQ(0x04030201u, first);
    s.serialize(static_cast<UInt32>(0x100F0E0D)); // seeks back to the write position 12
    UInt64 second = 0;
    s.deserialize(second); // seeks to the read position 4
    EXPECT_EQ(0x0C0B0A0908070605ull, second);
    EXPECT_EQ(16u, s.getSize());
    EXPECT_EQ(4u, s.getRemainingSize());
    s.flushFile();
    EXPECT_EQ((std::vector<unsigned char>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}),
              file.bytes());

    // Short reads are no error: the position counts what came, the rest stays.
    UInt8 tail[6] = {0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE};
    s.deserialize(tail, 6);
    EXPECT_EQ((std::vector<unsigned char>{13, 14, 15, 16, 0xEE, 0xEE}),
              std::vector<unsigned char>(tail, tail + 6));
    EXPECT_EQ(0u, s.getRemainingSize());
}

TEST(kelFileSerializer, ModesOpeningAndTheirFailures) {
    ScratchFile file("kelcore-file-modes.bin");
    std::string const notAllowed = "Operation not allowed on serializer @kelFileSerializer.cpp";
    EXPECT_EQ("Unable to create file for serializer @kelFileSerializer.cpp",
              thrownBy([&] { kelFileSerializer(file.path.c_str(), Mode::Read); }));
    EXPECT_EQ("Unsupported file mode @kelFileSerializer.cpp",
              thrownBy([&] { kelFileSerializer(file.path.c_str(), Mode()); }));
    {
        kelFileSerializer writer(file.path.c_str(), Mode::Write);
        writer.serialize(static_cast<UInt16>(0xBEEF));
        UInt8 byte = 0;
        EXPECT_EQ(notAllowed, thrownBy([&] { writer.deserialize(byte); }));
    }
    EXPECT_EQ((std::vector<unsigned char>{0xEF, 0xBE}), file.bytes());

    kelFileSerializer reader(file.path.c_str(), Mode::Read);
    EXPECT_EQ(notAllowed, thrownBy([&] { reader.serialize(true); }));
    unsigned char const data[1] = {1};
    EXPECT_EQ(notAllowed, thrownBy([&] { reader.loadData(data, 1); }));
    UInt16 value = 0;
    reader.deserialize(value);
    EXPECT_EQ(0xBEEF, value);

    reader.closeFile();
    reader.closeFile(); // twice, then a flush: no effect
    reader.flushFile();
    EXPECT_EQ(0u - 2u, reader.getRemainingSize());
    EXPECT_EQ(notAllowed, thrownBy([&] { reader.deserialize(value); }));
    reader.clearData(); // opens again from the start
    EXPECT_EQ(2u, reader.getRemainingSize());

    kelFileSerializer emptied(file.path.c_str(), Mode::Write);
    EXPECT_TRUE(file.bytes().empty());
}

TEST(kelFileSerializer, CopiesShareOneStreamClosedOnce) {
    ScratchFile file("kelcore-file-copies.bin");
    {
        auto original = std::make_unique<kelFileSerializer>(file.path.c_str(), Mode::Write);
        original->serialize(static_cast<UInt8>(1));
        kelFileSerializer copy(*original);
        kelFileSerializer assigned(file.path.c_str(), Mode::ReadAndWrite);
        assigned = copy; // lets go of its own stream
        original.reset();
        copy.serialize(static_cast<UInt8>(2)); // positions were copied: it writes at offset 1
        EXPECT_STREQ(file.path.c_str(), assigned.getFilePath());
    }
    EXPECT_EQ((std::vector<unsigned char>{1, 2}), file.bytes());

    // Paths use the backslash on every platform.
    std::string backslashed = file.path;
    std::replace(backslashed.begin(), backslashed.end(), '/', '\\');
    {
        kelFileSerializer viaBackslashes(backslashed.c_str(), Mode::Write);
        viaBackslashes.serialize(static_cast<UInt8>(7));
    }
    EXPECT_EQ((std::vector<unsigned char>{7}), file.bytes());
}

// A reader keeps the file's length between questions, yet shows what another writer added once
// reading reaches the kept end, and what a copy sharing its stream writes at once.
TEST(kelFileSerializer, KeptLengthFollowsEveryWriter) {
    kelTest::ScratchFile file("kept-length");
    kelFileSerializer s(file.path(), Mode::ReadAndWrite);
    s.serialize(static_cast<UInt64>(0x0807060504030201ull));
    UInt32 value = 0;
    s.deserialize(value);
    EXPECT_EQ(4u, s.getRemainingSize());
    file.write({9, 10, 11, 12}, std::ios::app);
    s.deserialize(value); // reaches the kept end
    EXPECT_EQ(0x08070605u, value);
    EXPECT_EQ(12u, s.getSize());
    {
        kelFileSerializer copy(s);
        copy.serialize(static_cast<UInt64>(0)); // at the copied write position 8
        EXPECT_EQ(16u, s.getSize());
    }
    EXPECT_EQ(16u, s.getSize());
}
