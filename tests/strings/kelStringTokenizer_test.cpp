#include <kelcore/strings/kelStringTokenizer.h>
#include <kelcore/strings/kelStringXmlTokenizer.h>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace KELKIT;

namespace {

std::vector<std::string> all(kelListString const& list) {
    std::vector<std::string> out;
    for (UInt32 i = 0; i < list.size(); ++i) {
        out.push_back(list[i].c_str());
    }
    return out;
}

// Oracle: leftmost matches of the delimiter, empty pieces dropped.
std::vector<std::string> referenceSplit(std::string const& text, std::string const& delimiter) {
    std::vector<std::string> out;
    if (delimiter.empty()) {
        return out;
    }
    std::size_t from = 0;
    for (;;) {
        std::size_t const at = text.find(delimiter, from);
        std::string const piece = text.substr(from, at == std::string::npos ? at : at - from);
        if (!piece.empty()) {
            out.push_back(piece);
        }
        if (at == std::string::npos) {
            return out;
        }
        from = at + delimiter.size();
    }
}

} // namespace

TEST(kelStringTokenizer, SplitsLikeTheReference) {
    std::mt19937 rng(99);
    char const* const delimiters[] = {" ", ",", "ab", "aa", "\\"};
    for (int round = 0; round < 2000; ++round) {
        std::string text(rng() % 24, ' ');
        for (char& c : text) {
            c = " ,ab\\"[rng() % 5];
        }
        std::string const delimiter = delimiters[round % 5];
        EXPECT_EQ(referenceSplit(text, delimiter),
                  all(kelStringTokenizer::split(text.c_str(), delimiter.c_str())))
            << "'" << text << "' on '" << delimiter << "'";
    }
    EXPECT_TRUE(kelStringTokenizer::split("abc", "").empty());
}

TEST(kelStringTokenizer, HandsTokensOutOnceAndCopiesOwnTheirs) {
    kelStringTokenizer path("\\usr\\local\\bin\\"); // the default delimiter is a backslash
    kelStringTokenizer copy(path);                  // before parsing
    EXPECT_EQ(3, path.countTokens());
    kelStringTokenizer parsedCopy(path); // after parsing
    EXPECT_STREQ("usr", path.nextToken().c_str());
    EXPECT_EQ(2, path.countTokens());
    kelStringTokenizer assigned("x");
    assigned = path;
    path.nextToken();
    path.nextToken();
    EXPECT_STREQ("", path.nextToken().c_str());
    EXPECT_FALSE(path.hasMoreTokens());

    EXPECT_EQ(3, copy.countTokens());
    EXPECT_EQ(3, parsedCopy.countTokens());
    EXPECT_EQ(2, assigned.countTokens());
    EXPECT_STREQ("local", assigned.nextToken().c_str());
}

TEST(kelStringXmlTokenizer, SearchesForTheExactMarks) {
    typedef kelStringXmlTokenizer X;
    kelString const doc("<r><name>kel</name><empty></empty><a x=\"1\">v</a><n><n>i</n></n></r>");
    EXPECT_STREQ("<name>kel</name>", X::extractXmlNode(doc, "name", false).c_str());
    EXPECT_STREQ("", X::extractXmlNode(doc, "empty", true).c_str());
    EXPECT_STREQ("", X::extractXmlNode(doc, "a", true).c_str());
    EXPECT_STREQ("<n>i", X::extractXmlNode(doc, "n", true).c_str());
    EXPECT_STREQ("", X::extractXmlNode("<only>", "only", true).c_str());

    // A closing mark before the opening one: the rest of the text from the start point.
    kelString const backwards("</b>xy<b>zz");
    EXPECT_STREQ("zz", X::extractXmlNode(backwards, "b", true).c_str());
    EXPECT_STREQ("<b>zz", X::extractXmlNode(backwards, "b", false).c_str());
    EXPECT_STREQ("", X::extractXmlNode("</b><b>", "b", false).c_str());
}
