#include "kelFilesScratch.h"

#include <kelcore/files/kelFile.h>
#include <kelcore/files/kelFileCriteriaAll.h>
#include <kelcore/files/kelFileCriteriaDefault.h>
#include <kelcore/files/kelFolder.h>

#include <gtest/gtest.h>

using namespace KELKIT;

TEST(kelFile, CreationBehaviourOfEachModeAndTheHandleRules) {
    kelScratch scratch("file");
    kelFile file(scratch.lib("a.bin").c_str());
    EXPECT_FALSE(file.open(kelFile::READ_WRITE)); // needs the file
    EXPECT_FALSE(file.isOpened() || file.exists());
    EXPECT_FALSE(file.open(static_cast<kelFile::ACCESS_MODE>(3)));
    ASSERT_TRUE(file.open(kelFile::READ)); // creates it empty
    EXPECT_TRUE(fs::exists(scratch.root / "a.bin") && file.getSize() == 0);
    ASSERT_TRUE(file.open(kelFile::WRITE));
    EXPECT_EQ(kelFile::WRITE, file.getMode());
    unsigned char const bytes[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    EXPECT_EQ(10u, file.write(bytes, 10));
    EXPECT_TRUE(file.getPosition() == 10 && file.getSize() == 10);

    kelFile copy(file); // same path, closed; the source stays open
    EXPECT_STREQ(file.getPath(), copy.getPath());
    EXPECT_TRUE(file.isOpened() && !copy.isOpened());

    // A second open drops the first handle, also when it fails. On Windows the dropped write
    // handle would refuse the reader below, which shares reading only.
    int const before = kelOpenDescriptors();
    EXPECT_FALSE(file.open(static_cast<kelFile::ACCESS_MODE>(7)) || file.isOpened());
    EXPECT_EQ(kelFile::READ, file.getMode());
    EXPECT_EQ(before < 0 ? -1 : before - 1, kelOpenDescriptors());
    ASSERT_TRUE(copy.open(kelFile::READ));
    EXPECT_EQ(10u, copy.getSize()); // opening to read never truncates
    unsigned char back[16] = {};
    EXPECT_TRUE(copy.setPosition(4) && copy.read(back, 16) == 6 &&
                !std::memcmp(bytes + 4, back, 6));
    EXPECT_TRUE(copy.setPosition(1000) && copy.getPosition() == 1000 && copy.read(back, 16) == 0);
    copy.setPath(""); // stays open on the old file
    EXPECT_TRUE(copy.isOpened() && copy.getSize() == 0);
    copy = file; // ends closed
    EXPECT_FALSE(copy.isOpened() || copy.setPosition(0));
    EXPECT_EQ(0u, copy.read(back, 1) + copy.write(bytes, 1) + copy.getPosition());
    ASSERT_TRUE(file.open(kelFile::READ_WRITE));
    EXPECT_TRUE(file.read(back, 1) == 1 && back[0] == 1);

    // Closed, the size comes through the runtime's 32-bit status call, widened with its sign;
    // open, it is the whole 64-bit size. A sparse file costs no disk.
    fs::resize_file(scratch.root / "a.bin", 0x80000001ull);
    EXPECT_EQ(0x80000001ull, file.getSize());
    EXPECT_EQ(0xFFFFFFFF80000001ull, copy.getSize());

    kelFile folder(scratch.lib().c_str()); // a folder exists, but never opens
    EXPECT_TRUE(folder.exists() && folder.getSize() == 0);
    EXPECT_FALSE(folder.open(kelFile::READ) || folder.open(kelFile::READ_WRITE));
}

TEST(kelFolder, ListsDotEntriesAndTheCriteriaDropThem) {
    kelScratch scratch("folder");
    kelListString names;
    names.add(kelString("untouched"));
    EXPECT_FALSE(kelFolder(scratch.lib("missing").c_str()).getFiles(names) ||
                 kelFolder(kelScratch::lib(scratch.write("f", "x")).c_str()).getFiles(names));
    EXPECT_EQ(1u, names.size());
    ASSERT_TRUE(kelFolder(scratch.lib().c_str()).getFiles(names));
    names.sort();
    EXPECT_EQ((std::vector<std::string>{".", "..", "f"}), kelTexts(names));

    using A = kelFileAttributes;
    kelFileCriteriaDefault byDefault;
    EXPECT_TRUE(byDefault.accept("x", A(A::Folder | A::Hidden)) &&
                byDefault.accept(nullptr, A(A::File | A::System)));
    EXPECT_FALSE(byDefault.accept("x", A(A::Folder | A::ParentFolder)) ||
                 byDefault.accept("x", A(A::None)) ||
                 byDefault.accept("x", A(A::Folder | A::File | A::CurrentFolder)));
    EXPECT_TRUE(kelFileCriteriaAll().accept(nullptr, A(0)));
}
