#include "kelFilesScratch.h"

#include "support/kelChildProcess.h"

#include <kelcore/files/kelFile.h>
#include <kelcore/files/kelFileCriteriaAll.h>
#include <kelcore/files/kelFiles.h>
#include <kelcore/files/kelFolder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace KELKIT;
using A = kelFileAttributes;

namespace {

// The two outputs of splitPaths, then getParentName.
std::string split(char const* path) {
    kelString folder("old"), file("old"), parent;
    kelFiles::splitPaths(path, folder, file);
    kelFiles::getParentName(path, parent);
    return std::string(folder.c_str()) + "|" + file.c_str() + "|" + parent.c_str();
}

int flagsOf(char const* path) {
    return kelFiles::getItemAttributes(path).getValue();
}

#if !defined(_WIN32)
// Whether a folder without search permission counts, asked as an unprivileged user: root may
// enter any folder. Exit status 0 when it does not count.
KEL_CHILD_SCENARIO(filesNoSearchFolder) {
    bool const user = ::geteuid() != 0 || (::setgid(65534) == 0 && ::setuid(65534) == 0);
    char const* const path = argument.c_str();
    return user && !kelFiles::folderExists(path) && !kelFolder(path).exists() &&
                   flagsOf(path) == A::None
               ? 0
               : 1;
}
#endif

} // namespace

TEST(kelFilesQueries, ExistenceAndAttributesWithoutMovingTheWorkingFolder) {
    kelScratch scratch("exist");
    fs::path const plain = scratch.write("plain.txt", "abc");
    std::string const file = kelScratch::lib(plain), folder = scratch.lib();
    kelString const workingFolder = kelFiles::getCurrentFolder();
    EXPECT_STREQ(kelScratch::lib(fs::current_path()).c_str(), workingFolder.c_str());
    // Windows marks new files for archiving; POSIX has no such bit. Wine reports the bit on
    // every file even once cleared, so it is left out on Windows.
#if defined(_WIN32)
    EXPECT_EQ(A::None | A::File | A::Archive, flagsOf(file.c_str()));
    int const compared = ~A::Archive;
#else
    int const compared = ~0;
#endif
    auto kind = [&](std::string const& path) {
        return std::string(kelFiles::fileExists(path.c_str()) ? "file" : "") +
               (kelFiles::folderExists(path.c_str()) ? "folder" : "") + " " +
               std::to_string(flagsOf(path.c_str()) & compared);
    };
    EXPECT_EQ("file 3", kind(file));
    EXPECT_EQ("folder 5", kind(folder));
    EXPECT_EQ("folder 5", kind(folder + "\\"));
    EXPECT_EQ(" 1", kind(scratch.lib("none")));
    EXPECT_EQ(" 1", kind(""));
    EXPECT_EQ("folder 13", kind("."));  // CurrentFolder
    EXPECT_EQ("folder 21", kind("..")); // ParentFolder
    EXPECT_EQ(3u, kelFiles::getFileSize(file.c_str()) + kelFiles::getFileSize(folder.c_str()));

    // Hidden is a name on POSIX (a leading dot) and cannot be set; Windows keeps the bit.
    ASSERT_TRUE(kelFiles::setFileAttributes(file.c_str(), A(A::ReadOnly | A::Hidden | A::Folder)));
#if defined(_WIN32)
    EXPECT_EQ("file 195", kind(file));
#else
    EXPECT_EQ("file 131", kind(file));
    EXPECT_EQ("file 67", kind(kelScratch::lib(scratch.write(".dot", ""))));
    EXPECT_EQ(fs::perms::none,
              fs::status(plain).permissions() & fs::perms::all &
                  ~(fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read));
#endif
    ASSERT_TRUE(kelFiles::setFileAttributes(file.c_str(), A(A::None)));
    EXPECT_EQ("file 3", kind(file));
    EXPECT_FALSE(kelFiles::setFileAttributes(scratch.lib("none").c_str(), A(A::None)));

#if defined(_WIN32)
    GTEST_LOG_(INFO) << "symbolic links and search permission are POSIX cases; skipped on Windows";
#else
    // A link is a file, dangling or not, and never a folder; it has no attributes to set.
    fs::create_directory_symlink(scratch.root, scratch.root / "toFolder");
    fs::create_symlink(scratch.root / "none", scratch.root / "dangling");
    for (std::string const& link : {scratch.lib("toFolder"), scratch.lib("dangling")}) {
        EXPECT_EQ("file 3", kind(link));
        EXPECT_EQ(0u, kelFiles::getFileSize(link.c_str())); // neither opens as a file
        EXPECT_EQ(" 1", kind(link + "\\"));
        EXPECT_FALSE(kelFolder(link.c_str()).exists() ||
                     kelFiles::setFileAttributes(link.c_str(), A(A::ReadOnly)));
    }
    fs::create_directory(scratch.root / "closed");
    fs::permissions(scratch.root / "closed", fs::perms::owner_read | fs::perms::owner_write);
    fs::permissions(scratch.root, fs::perms::others_exec | fs::perms::group_exec,
                    fs::perm_options::add);
    kelChildProcess child("filesNoSearchFolder", scratch.lib("closed"));
    EXPECT_EQ(0, child.wait()) << "a folder without search permission counts as a folder";
#endif
    EXPECT_STREQ(workingFolder.c_str(), kelFiles::getCurrentFolder().c_str());
}

// Generated text with LF and CR LF line ends, lone CRs, empty lines and lines around the
// 10,239-character chunk, against chunks cut by a reading model written here.
TEST(kelFilesQueries, TextReadsMatchAChunkModelOnBothPlatforms) {
    kelScratch scratch("text");
    std::mt19937 random(3);
    std::string raw, logical; // logical: each line end as one line feed
    std::vector<std::size_t> rawStarts, logicalStarts;
    for (int i = 0; i < 24; ++i) {
        rawStarts.push_back(raw.size());
        logicalStarts.push_back(logical.size());
        std::string line(std::vector<int>{0, 1, 7, 10238, 10239, 10240, 25000, 3}[i % 8], 'a');
        std::generate(line.begin(), line.end(),
                      [&] { return static_cast<char>('a' + random() % 26); });
        if (line.size() > 3 && random() % 2 == 0) {
            line[1] = '\r'; // a lone carriage return stays
        }
        raw += line + (random() % 2 ? "\r\n" : "\n");
        logical += line + "\n";
    }
    raw += "tail without end";
    logical += "tail without end";
    std::string const path = kelScratch::lib(scratch.write("t.txt", raw));

    // fgets in text mode: up to 10,239 characters, through a line feed.
    auto chunksOf = [](std::string const& text) {
        std::vector<std::string> chunks;
        for (std::size_t at = 0, end = 0; at < text.size(); at = end) {
            std::size_t const feed = text.find('\n', at);
            end = std::min(feed == std::string::npos ? text.size() : feed + 1, at + 10239);
            chunks.push_back(text.substr(at, end - at - (text[end - 1] == '\n')));
        }
        return chunks;
    };
    kelListString lines;
    lines.add(kelString("old"));
    kelFiles::getTextFileContent(path.c_str(), lines);
    EXPECT_EQ(chunksOf(logical), kelTexts(lines));
    EXPECT_EQ(lines.size(), kelFiles::getLinesInFile(path.c_str()));

    // find counts each chunk's length plus one, from the byte offset it starts reading at.
    for (std::size_t line : {0, 12}) {
        std::string const text = logical.substr(logicalStarts[line]);
        UInt32 position = static_cast<UInt32>(rawStarts[line]);
        int checked = 0;
        for (std::string const& chunk : chunksOf(text)) {
            std::string const needle = chunk.substr(std::min<std::size_t>(2, chunk.size()), 10);
            if (needle.size() == 10 && text.find(needle) == text.rfind(needle)) {
                EXPECT_EQ(position + 2,
                          kelFiles::find(path.c_str(), rawStarts[line], needle.c_str()));
                ++checked;
            }
            position += static_cast<UInt32>(chunk.size()) + 1;
        }
        EXPECT_GT(checked, 6);
    }
    EXPECT_EQ(0u,
              kelFiles::find(path.c_str(), "not in there") + kelFiles::find(path.c_str(), nullptr));

    kelString content("old");
    kelMemoryBuffer bytes;
    std::string const binary = std::string("ab\0cd", 5) + raw;
    std::string const withZero = kelScratch::lib(scratch.write("z.bin", binary));
    ASSERT_TRUE(kelFiles::loadFile(withZero.c_str(), bytes));
    EXPECT_EQ(binary,
              std::string(reinterpret_cast<char const*>(bytes.getBuffer()), bytes.getSize()));
    kelFiles::getTextFileContent(withZero.c_str(), content);
    kelFiles::getTextFileContent(scratch.lib("none").c_str(), content); // leaves it as it was
    EXPECT_STREQ("ab", content.c_str());
    // An empty file fails as much as a folder or a missing file.
    for (std::string const& unreadable :
         {kelScratch::lib(scratch.write("empty", "")), scratch.lib(), scratch.lib("none")}) {
        EXPECT_FALSE(kelFiles::loadFile(unreadable.c_str(), bytes));
        EXPECT_EQ(0u, bytes.getSize() + kelFiles::getLinesInFile(unreadable.c_str()));
        ASSERT_TRUE(kelFiles::loadFile(withZero.c_str(), bytes));
        kelFiles::getTextFileContent(unreadable.c_str(), bytes); // as loadFile
        EXPECT_EQ(0u, bytes.getSize());
    }
}

// A path far beyond every bound is refused by each entry point that reaches the system, and
// handled whole by the path text operations (under AddressSanitizer natively).
TEST(kelFilesQueries, OverLongPathsAreRefusedNeverOverrun) {
    kelScratch scratch("long");
    std::string const longPath = scratch.lib() + "\\" + std::string(20000, 'n') + ".[xy]";
    char const* const p = longPath.c_str();
    kelListString list;
    kelFileCriteriaAll all;
    kelMemoryBuffer bytes(4);
    kelString text("kept");
    kelFile file(p);
    kelFiles::getFiles(p, list);
    kelFiles::getFiles(p, list, true, true, &all);
    kelFiles::getFiles(p, list, true, false, nullptr);
    kelFiles::getTextFileContent(p, text);
    EXPECT_FALSE(kelFiles::fileExists(p) || kelFiles::folderExists(p) ||
                 kelFiles::setFileAttributes(p, A(A::ReadOnly)) || kelFiles::loadFile(p, bytes) ||
                 file.open(kelFile::READ) || file.open(kelFile::WRITE) || file.exists() ||
                 kelFolder(p).exists() || kelFolder(p).getFiles(list));
    EXPECT_EQ(0u, list.size() + bytes.getSize() + kelFiles::getFileSize(p) + file.getSize() +
                      kelFiles::getNumFilesInFolder(p, true) + kelFiles::getFolderSize(p) +
                      kelFiles::find(p, "n") + kelFiles::getLinesInFile(p));
    EXPECT_EQ(A::None, flagsOf(p));
    EXPECT_STREQ("kept", text.c_str());
    EXPECT_TRUE(fs::is_empty(scratch.root)); // nothing made under a shortened name
    kelFiles::expand(p, list);
    kelFiles::splitPaths(p, list);
    EXPECT_EQ(longPath.substr(0, longPath.size() - 4) + "y", list[1].c_str());
    EXPECT_EQ(longPath.substr(scratch.lib().size() + 1), list[list.size() - 1].c_str());
    EXPECT_EQ(longPath + "\\x", kelFiles::concat(p, "x").c_str());

    // The listing pattern "<folder>\*.*" holds 2,048 characters: a folder of 2,043 is listed,
    // one of 2,044 is not (POSIX; the Windows system refuses either before that).
    std::string exact = scratch.lib();
    while (exact.size() < 2043) {
        exact += exact.size() == 2042 ? "\\" : "\\.";
    }
    kelFiles::getFiles(exact.c_str(), list);
#if !defined(_WIN32)
    EXPECT_EQ(2u, list.size());
#endif
    kelFiles::getFiles((exact + "\\").c_str(), list);
    EXPECT_EQ(0u, list.size());
}

TEST(kelFilesPathText, EdgeCasesAndQuirks) {
    EXPECT_EQ(".\\|b.txt|.\\", split("b.txt"));
    EXPECT_EQ("C:\\a\\|b.txt|C:\\a\\", split("C:\\a\\b.txt"));
    EXPECT_EQ("C:\\a\\b\\||C:\\a\\", split("C:\\a\\b\\"));
    EXPECT_EQ("a/b\\|c/d|a/b\\", split("a/b\\c/d")); // the slash is an ordinary character
    EXPECT_EQ(".\\||.\\", split(nullptr));
    // Doubled separators stay; the parent drops only one trailing backslash.
    EXPECT_EQ("C:\\a\\\\||C:\\a\\", split("C:\\a\\\\"));
    EXPECT_STREQ("C:\\a\\b", kelFiles::concat("C:\\a", "b").c_str());
    EXPECT_STREQ("C:\\a\\b", kelFiles::concat("C:\\a\\", "b").c_str());
    EXPECT_STREQ("C:\\a\\\\b", kelFiles::concat("C:\\a", "\\b").c_str());
    EXPECT_STREQ("b", kelFiles::concat("", "b").c_str()); // never the root by accident
    kelString text("C:\\a");
    kelFiles::concat(text.c_str(), "x", text); // the output may be the input
    EXPECT_STREQ("C:\\a\\x", text.c_str());

    kelString ext("x"); // not cleared first; each dot empties it
    std::vector<std::string> seen;
    for (char const* path : {"noext", "archive.tar.gz", "more", "a.b\\c"}) {
        kelFiles::getFileExtention(path, ext);
        seen.push_back(ext.c_str());
    }
    EXPECT_EQ((std::vector<std::string>{"xnoext", "gz", "gzmore", "b\\c"}), seen);

    kelListString parts;
    parts.add(kelString("kept"));
    kelFiles::splitPaths("\\\\srv\\x\\\\y\\", parts);
    EXPECT_EQ((std::vector<std::string>{"kept", "srv", "x", "y"}), kelTexts(parts));

    EXPECT_TRUE(kelFiles::isWildcardPath("a\\*.txt") && kelFiles::isWildcardPath("?"));
    EXPECT_FALSE(kelFiles::isWildcardPath("a[1]\\b") || kelFiles::isWildcardPath(nullptr));
    kelListString paths; // expand adds, never clears; "[]" gives nothing
    for (char const* path : {"f[12].txt", "a[]b", "a[bc", "a]b[", "[ab][cd]", "x*[?]"}) {
        kelFiles::expand(path, paths);
    }
    EXPECT_EQ(
        (std::vector<std::string>{"f1.txt", "f2.txt", "a[bc", "a]b[", "a[cd]", "b[cd]", "x*?"}),
        kelTexts(paths));
    EXPECT_EQ(std::string("<>\\:\"*?|\r\n"), kelFiles::getFileInvalidCharacters());
}

TEST(kelFilesPathText, FriendlySizesTruncateAndSwitchUnitAtAThousand) {
    struct {
        UInt64 size;
        char const* text;
    } const cases[] = {
        {0, "0 bytes"},          {1023, "1023 bytes"},          {1024, "1.00 KB"},
        {1023999, "999.99 KB"},  {1024000, "0.97 MB"},          {1048575999, "999.99 MB"},
        {1048576000, "0.97 GB"}, {1073741824000ull, "0.97 TB"}, {~0ull, "16777215.99 TB"}};
    for (auto const& c : cases) {
        EXPECT_STREQ(c.text, kelFiles::getUserFriendlySize(c.size).c_str()) << c.size;
    }
    using U = kelFileSizeUnit;
    EXPECT_STREQ("1.50 MB", kelFiles::getUserFriendlySize(1572864, U::Megabytes).c_str());
    EXPECT_STREQ("2048 bytes", kelFiles::getUserFriendlySize(2048, U::Bytes).c_str());
    // size x 100 wraps in 64 bits for Kilobytes, as the arithmetic always did.
    EXPECT_STREQ("0.00 KB", kelFiles::getUserFriendlySize(1ull << 62, U::Kilobytes).c_str());
    EXPECT_STREQ("", kelFiles::getUserFriendlySize(5, U(9)).c_str());
}

TEST(kelFilesChanges, RenameNeverReplacesATakenName) {
    kelScratch scratch("rename");
    scratch.write("a.txt", "A");
    scratch.write("b.txt", "B");
    fs::create_directories(scratch.root / "d1" / "inner");
    fs::create_directories(scratch.root / "d2");
    auto const read = [&](char const* name) {
        std::ifstream in(scratch.root / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    auto const lib = [&](char const* name) { return scratch.lib(name); };
    // Taken names, file or folder, either way round: refused, and both items stay as they were.
    EXPECT_FALSE(kelFiles::rename(lib("a.txt").c_str(), lib("b.txt").c_str()));
    EXPECT_FALSE(kelFiles::rename(lib("a.txt").c_str(), lib("d2").c_str()));
    EXPECT_FALSE(kelFiles::rename(lib("d1").c_str(), lib("d2").c_str()));
    EXPECT_FALSE(kelFiles::rename(lib("d1").c_str(), lib("b.txt").c_str()));
    EXPECT_EQ("A", read("a.txt"));
    EXPECT_EQ("B", read("b.txt"));
    EXPECT_TRUE(fs::is_directory(scratch.root / "d1" / "inner"));
    // Free names: the item moves, contents and all.
    EXPECT_TRUE(kelFiles::rename(lib("a.txt").c_str(), lib("c.txt").c_str()));
    EXPECT_TRUE(kelFiles::rename(lib("d1").c_str(), lib("d2\\d3").c_str()));
    EXPECT_EQ("A", read("c.txt"));
    EXPECT_FALSE(fs::exists(scratch.root / "a.txt"));
    EXPECT_TRUE(fs::is_directory(scratch.root / "d2" / "d3" / "inner"));
    // Missing source, null and empty paths.
    EXPECT_FALSE(kelFiles::rename(lib("a.txt").c_str(), lib("e.txt").c_str()));
    EXPECT_FALSE(kelFiles::rename(nullptr, lib("e.txt").c_str()));
    EXPECT_FALSE(kelFiles::rename(lib("c.txt").c_str(), ""));
#if !defined(_WIN32)
    // A link is renamed itself: its target keeps its name and content.
    fs::create_symlink(scratch.root / "c.txt", scratch.root / "link");
    EXPECT_FALSE(kelFiles::rename(lib("link").c_str(), lib("b.txt").c_str()));
    EXPECT_TRUE(kelFiles::rename(lib("link").c_str(), lib("link2").c_str()));
    EXPECT_TRUE(fs::is_symlink(scratch.root / "link2"));
    EXPECT_EQ("A", read("c.txt"));
#endif
}
