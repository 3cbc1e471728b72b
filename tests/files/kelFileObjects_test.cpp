#include "kelFilesScratch.h"

#include <kelcore/files/kelFile.h>
#include <kelcore/files/kelFileCriteriaAll.h>
#include <kelcore/files/kelFileCriteriaDefault.h>
#include <kelcore/files/kelFolder.h>

#include <gtest/gtest.h>

#include <vector>

using namespace KELKIT;

namespace {

// Open descriptors of this process; -1 where the system cannot list them (Windows).
int openDescriptors() {
#if defined(_WIN32)
    return -1;
#else
    std::error_code error;
    int count = 0;
    for (fs::directory_iterator it("/proc/self/fd", error), end; !error && it != end; ++it) {
        ++count;
    }
    return error ? -1 : count;
#endif
}

} // namespace

TEST(kelFile, CreationBehaviourOfEachModeAndTheHandleRules) {
    kelScratch scratch("file");
    std::string const path = scratch.lib("a.bin");
    kelFile file(path.c_str());
    EXPECT_FALSE(file.open(kelFile::READ_WRITE)); // needs the file
    EXPECT_FALSE(file.isOpened());
    EXPECT_FALSE(file.exists());
    EXPECT_FALSE(file.open(static_cast<kelFile::ACCESS_MODE>(3)));
    ASSERT_TRUE(file.open(kelFile::READ)); // creates it empty
    EXPECT_TRUE(fs::exists(scratch.root / "a.bin"));
    EXPECT_EQ(0u, file.getSize());

    ASSERT_TRUE(file.open(kelFile::WRITE));
    EXPECT_EQ(kelFile::WRITE, file.getMode());
    unsigned char const bytes[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    EXPECT_EQ(10u, file.write(bytes, 10));
    EXPECT_EQ(10u, file.getPosition());
    EXPECT_EQ(10u, file.getSize());

    kelFile copy(file); // same path, closed; the source stays open
    EXPECT_STREQ(file.getPath(), copy.getPath());
    EXPECT_FALSE(copy.isOpened());
    EXPECT_TRUE(file.isOpened());
    copy = file;
    EXPECT_FALSE(copy.isOpened());

    // A second open drops the first handle, also when it fails.
    int const before = openDescriptors();
    EXPECT_FALSE(file.open(static_cast<kelFile::ACCESS_MODE>(7)));
    EXPECT_FALSE(file.isOpened());
    EXPECT_EQ(kelFile::READ, file.getMode());
    if (before >= 0) {
        EXPECT_EQ(before - 1, openDescriptors());
    }
    // On Windows the dropped write handle would refuse a reader that shares reading only.
    ASSERT_TRUE(copy.open(kelFile::READ));
    EXPECT_EQ(10u, copy.getSize()); // opening to read never truncates
    unsigned char back[16] = {};
    EXPECT_TRUE(copy.setPosition(4));
    EXPECT_EQ(6u, copy.read(back, 16));
    EXPECT_EQ(std::vector<unsigned char>(bytes + 4, bytes + 10),
              std::vector<unsigned char>(back, back + 6));
    EXPECT_TRUE(copy.setPosition(1000)); // past the end
    EXPECT_EQ(1000u, copy.getPosition());
    EXPECT_EQ(0u, copy.read(back, 16));
    copy.setPath(""); // stays open on the old file
    EXPECT_TRUE(copy.isOpened());
    EXPECT_EQ(0u, copy.getSize());
    copy.close();
    copy.close();
    EXPECT_EQ(kelFile::READ, copy.getMode());
    EXPECT_EQ(0u, copy.read(back, 1));
    EXPECT_EQ(0u, copy.write(bytes, 1));
    EXPECT_FALSE(copy.setPosition(0));
    EXPECT_EQ(0u, copy.getPosition());

    ASSERT_TRUE(file.open(kelFile::READ_WRITE));
    EXPECT_EQ(1u, file.read(back, 1));
    EXPECT_EQ(1u, back[0]);

    kelFile folder(scratch.lib().c_str()); // a folder exists, but never opens
    EXPECT_TRUE(folder.exists());
    EXPECT_FALSE(folder.open(kelFile::READ));
    EXPECT_FALSE(folder.open(kelFile::READ_WRITE));
    EXPECT_EQ(0u, folder.getSize());
}

// Closed, the size comes through the runtime's 32-bit status call and is widened with its
// sign; open, it is the whole 64-bit size. A sparse file costs no disk.
TEST(kelFile, ClosedSizeIsTheSignExtendedLow32Bits) {
    kelScratch scratch("size");
    fs::path const big = scratch.write("big", "");
    fs::resize_file(big, 0x80000001ull);
    kelFile file(kelScratch::lib(big).c_str());
    EXPECT_EQ(0xFFFFFFFF80000001ull, file.getSize());
    ASSERT_TRUE(file.open(kelFile::READ));
    EXPECT_EQ(0x80000001ull, file.getSize());
}

TEST(kelFolder, ExistsAndListsDotEntries) {
    kelScratch scratch("folder");
    kelListString names;
    names.add(kelString("untouched"));
    EXPECT_FALSE(kelFolder(scratch.lib("missing").c_str()).getFiles(names));
    EXPECT_FALSE(kelFolder(kelScratch::lib(scratch.write("f", "x")).c_str()).getFiles(names));
    EXPECT_FALSE(kelFolder("").exists());
    ASSERT_EQ(1u, names.size());
    fs::create_directory(scratch.root / "empty");
    kelFolder folder(scratch.lib("empty").c_str());
    ASSERT_TRUE(folder.getFiles(names));
    names.sort();
    ASSERT_EQ(2u, names.size());
    EXPECT_STREQ(".", names[0].c_str());
    EXPECT_STREQ("..", names[1].c_str());
}

TEST(kelFileCriteria, DefaultDropsOnlyDotFoldersAndAllTakesEverything) {
    kelFileCriteriaDefault byDefault;
    kelFileCriteriaAll all;
    for (int flags = 0; flags < 512; ++flags) {
        bool const folder = (flags & 4) != 0;
        bool const expected = folder ? (flags & (8 | 16)) == 0 : (flags & 2) != 0;
        EXPECT_EQ(expected, byDefault.accept("x", kelFileAttributes(flags))) << flags;
        EXPECT_TRUE(all.accept(nullptr, kelFileAttributes(flags)));
    }
}
