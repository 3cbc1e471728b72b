#include <kelcore/files/kelFiles.h>

#include <gtest/gtest.h>

#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

using namespace KELKIT;

namespace {

std::vector<std::string> texts(kelListString const& list) {
    std::vector<std::string> out;
    for (UInt32 i = 0; i < list.size(); ++i) {
        out.push_back(list[i].c_str());
    }
    return out;
}

std::string split(char const* path) {
    kelString folder("old"), file("old");
    kelFiles::splitPaths(path, folder, file);
    return std::string(folder.c_str()) + "|" + file.c_str();
}

} // namespace

TEST(kelFilesPathText, DocumentedCasesAndQuirks) {
    EXPECT_EQ(".\\|b.txt", split("b.txt"));
    EXPECT_EQ("C:\\a\\|b.txt", split("C:\\a\\b.txt"));
    EXPECT_EQ("C:\\a\\|", split("C:\\a\\"));
    EXPECT_EQ("a/b\\|c/d", split("a/b\\c/d")); // the slash is an ordinary character
    EXPECT_EQ(".\\|", split(nullptr));
    kelString text;
    kelFiles::getParentName("C:\\a\\b\\", text);
    EXPECT_STREQ("C:\\a\\", text.c_str());
    kelFiles::getParentName("C:\\a\\b\\\\", text); // only one trailing backslash goes
    EXPECT_STREQ("C:\\a\\b\\", text.c_str());
    EXPECT_STREQ("C:\\a\\b", kelFiles::concat("C:\\a", "b").c_str());
    EXPECT_STREQ("C:\\a\\b", kelFiles::concat("C:\\a\\", "b").c_str());
    EXPECT_STREQ("C:\\a\\\\b", kelFiles::concat("C:\\a", "\\b").c_str());
    EXPECT_STREQ("b", kelFiles::concat("", "b").c_str()); // never the root by accident
    kelFiles::concat(text.c_str(), "x", text);            // the output may be the input
    EXPECT_STREQ("C:\\a\\b\\x", text.c_str());

    kelString ext;
    kelFiles::getFileExtention("archive.tar.gz", ext);
    EXPECT_STREQ("gz", ext.c_str());
    ext = "";
    kelFiles::getFileExtention("noext", ext);
    EXPECT_STREQ("noext", ext.c_str());
    kelFiles::getFileExtention("more", ext); // not cleared first
    EXPECT_STREQ("noextmore", ext.c_str());
    kelFiles::getFileExtention("a.b\\c", ext);
    EXPECT_STREQ("b\\c", ext.c_str());

    kelListString parts;
    parts.add(kelString("kept"));
    kelFiles::splitPaths("\\\\srv\\x\\\\y\\", parts);
    EXPECT_EQ((std::vector<std::string>{"kept", "srv", "x", "y"}), texts(parts));

    EXPECT_TRUE(kelFiles::isWildcardPath("a\\*.txt"));
    EXPECT_TRUE(kelFiles::isWildcardPath("?"));
    EXPECT_FALSE(kelFiles::isWildcardPath("a[1]\\b"));
    EXPECT_FALSE(kelFiles::isWildcardPath(nullptr));

    struct {
        char const* path;
        std::vector<std::string> expanded;
    } const cases[] = {{"f[12].txt", {"f1.txt", "f2.txt"}},
                       {"a[]b", {}},
                       {"a[bc", {"a[bc"}},
                       {"a]b[", {"a]b["}},
                       {"[ab][cd]", {"a[cd]", "b[cd]"}},
                       {"x*[?]", {"x*?"}}};
    for (auto const& c : cases) {
        kelListString paths;
        kelFiles::expand(c.path, paths);
        EXPECT_EQ(c.expanded, texts(paths)) << c.path;
    }
    EXPECT_EQ(std::string("<>\\:\"*?|\r\n"), kelFiles::getFileInvalidCharacters());
}

// Generated paths of random parts, doubled and trailing separators included: the parts of a
// split join back to the path, and the list split drops exactly the empty parts.
TEST(kelFilesPathText, SplitsJoinBackOverGeneratedPaths) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::vector<std::string> segments(random() % 6);
        std::string path;
        std::vector<std::string> nonEmpty;
        for (std::size_t i = 0; i < segments.size(); ++i) {
            std::string segment(random() % 4, 'a' + static_cast<char>(random() % 3));
            if (random() % 5 == 0) {
                segment += ".e";
            }
            path += (i == 0 ? "" : "\\") + segment;
            if (!segment.empty()) {
                nonEmpty.push_back(segment);
            }
        }
        kelString folder, file, single;
        kelFiles::splitPaths(path.c_str(), folder, file);
        std::size_t const cut = path.rfind('\\');
        EXPECT_EQ(cut == std::string::npos ? ".\\" + path : path,
                  std::string(folder.c_str()) + file.c_str());
        kelFiles::getFileName(path.c_str(), single);
        EXPECT_EQ(file, single);
        EXPECT_EQ(nullptr, std::strchr(file.c_str(), '\\'));
        kelListString parts;
        kelFiles::splitPaths(path.c_str(), parts);
        EXPECT_EQ(nonEmpty, texts(parts)) << path;
        if (cut != std::string::npos && cut > 0 && path[cut - 1] != '\\') {
            EXPECT_STREQ(path.c_str(),
                         kelFiles::concat(path.substr(0, cut).c_str(), file.c_str()).c_str());
        }
    }
}

TEST(kelFilesPathText, FriendlySizesTruncateAndSwitchUnitAtAThousand) {
    struct {
        UInt64 size;
        char const* text;
    } const cases[] = {{0, "0 bytes"},
                       {1023, "1023 bytes"},
                       {1024, "1.00 KB"},
                       {1023999, "999.99 KB"},
                       {1024000, "0.97 MB"},
                       {1048575999, "999.99 MB"},
                       {1048576000, "0.97 GB"},
                       {1073741824000ull, "0.97 TB"},
                       {18446744073709551615ull, "16777215.99 TB"}};
    for (auto const& c : cases) {
        EXPECT_STREQ(c.text, kelFiles::getUserFriendlySize(c.size).c_str()) << c.size;
    }
    EXPECT_STREQ("1.50 MB",
                 kelFiles::getUserFriendlySize(1572864, kelFileSizeUnit::Megabytes).c_str());
    EXPECT_STREQ("2048 bytes", kelFiles::getUserFriendlySize(2048, kelFileSizeUnit::Bytes).c_str());
    // size x 100 wraps in 64 bits for Kilobytes, as the arithmetic always did.
    EXPECT_STREQ("0.00 KB",
                 kelFiles::getUserFriendlySize(1ull << 62, kelFileSizeUnit::Kilobytes).c_str());
    EXPECT_STREQ("", kelFiles::getUserFriendlySize(5, kelFileSizeUnit(9)).c_str());

    // Random sizes against printf in the C locale, the text the sizes were always made with.
    std::mt19937_64 random(11);
    char const* const names[] = {"KB", "MB", "GB", "TB"};
    UInt64 const divisors[] = {1, 1024, 1048576, 1073741824};
    for (int i = 0; i < 5000; ++i) {
        UInt64 const size = random() >> (random() % 64);
        int const unit = 1 + static_cast<int>(random() % 4);
        UInt64 const hundredths =
            unit == 1 ? size * 100 / 1024 : size / 1024 * 100 / divisors[unit - 1];
        char expected[64];
        std::snprintf(expected, sizeof expected, "%.2f %s", static_cast<double>(hundredths) / 100.0,
                      names[unit - 1]);
        EXPECT_STREQ(expected, kelFiles::getUserFriendlySize(size, kelFileSizeUnit(unit)).c_str());
    }
}
