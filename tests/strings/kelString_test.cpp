#include <kelcore/strings/kelString.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <thread>
#include <vector>

using namespace KELKIT;

namespace {

std::string randomText(std::mt19937& rng, char const* alphabet, std::size_t maxLength) {
    std::string const letters(alphabet);
    std::uniform_int_distribution<std::size_t> len(0, maxLength);
    std::uniform_int_distribution<std::size_t> pick(0, letters.size() - 1);
    std::string s(len(rng), ' ');
    for (char& c : s) {
        c = letters[pick(rng)];
    }
    return s;
}

// Reference for replace: non-overlapping, left to right, no rescan of inserted text.
std::size_t referenceReplace(std::string& s, std::string const& from, std::string const& to) {
    if (from.empty()) {
        return 0;
    }
    std::string out;
    std::size_t count = 0;
    std::size_t i = 0;
    while (i < s.size()) {
        if (s.compare(i, from.size(), from) == 0) {
            out += to;
            i += from.size();
            ++count;
        } else {
            out += s[i++];
        }
    }
    s = out;
    return count;
}

} // namespace

TEST(kelString, ZeroCharacterCountsButDoesNotShow) {
    kelString z(char(0));
    EXPECT_EQ(1u, z.size());
    EXPECT_STREQ("", z.c_str());
    EXPECT_EQ(0u, kelString(z).size()); // copies go by c_str()
    kelString a("a");
    a.append(char(0)); // appends nothing, while += stores the byte
    EXPECT_EQ(1u, a.size());
    a += char(0);
    EXPECT_EQ(2u, a.size());
    EXPECT_TRUE(kelString(static_cast<char const*>(nullptr)).empty());
}

TEST(kelString, TrimOnlyTouchesTheGivenCharacter) {
    kelString t("\t  x  ");
    t.trim();
    EXPECT_STREQ("\t  x", t.c_str()); // a leading tab stops trimLeft
    kelString stars("**a*b**");
    stars.trim('*');
    EXPECT_STREQ("a*b", stars.c_str());
    kelString only("    ");
    only.trimRight();
    EXPECT_TRUE(only.empty());
    kelString none;
    none.trim();
    none.reverse();
    EXPECT_TRUE(none.empty());
}

TEST(kelString, ReverseAndCaseMapping) {
    for (char const* text : {"a", "ab", "abc", "abcd"}) {
        std::string const forward(text);
        kelString s(text);
        s.reverse();
        EXPECT_EQ(std::string(forward.rbegin(), forward.rend()), s.c_str());
    }
    kelString mixed("Mixed Case 123 \xE9");
    mixed.makeUpper();
    EXPECT_STREQ("MIXED CASE 123 \xE9", mixed.c_str()); // the C locale leaves high bytes alone
    mixed.makeLower();
    EXPECT_STREQ("mixed case 123 \xE9", mixed.c_str());
}

TEST(kelString, PositionsOutOfRangeHaveNeutralResults) {
    kelString ab("ab");
    ab.insert(100, 'x');
    ab.insert(0, "<");
    EXPECT_STREQ("<abx", ab.c_str());
    kelString abc("abc");
    abc.erase(5);
    abc.erase(3, 1);
    EXPECT_STREQ("abc", abc.c_str());
    abc.erase(1, 100);
    EXPECT_STREQ("a", abc.c_str());

    kelString abcde("abcde");
    EXPECT_STREQ("cde", abcde.subString(2, 100).c_str());
    EXPECT_STREQ("", abcde.subString(5, 1).c_str());
    EXPECT_STREQ("ab", abcde.subString(2).c_str()); // the first count characters
    EXPECT_STREQ("de", abcde.subStringRight(2).c_str());
    EXPECT_STREQ("", abcde.subStringRight(6).c_str()); // wraps past the end
    EXPECT_STREQ("", abcde.subStringRight(0xFFFFFFFFu).c_str());
}

TEST(kelString, FindReportsFirstMatchAndKeepsOutputOnFailure) {
    kelString abc("abcabc");
    UInt32 pos = 77;
    EXPECT_TRUE(abc.find(kelString("bc"), 2, pos));
    EXPECT_EQ(4u, pos);
    pos = 77;
    EXPECT_FALSE(abc.find('a', 4, pos));
    EXPECT_FALSE(abc.find("abc", 0xFFFFFFFFu, pos));
    EXPECT_EQ(77u, pos);

    kelString three("abc");
    EXPECT_TRUE(three.find("", 3, pos));
    EXPECT_EQ(3u, pos);
    EXPECT_FALSE(three.find("", 4, pos));
    EXPECT_TRUE(three.find(char(0), 2, pos)); // the 0 byte is the empty text
    EXPECT_EQ(2u, pos);
}

TEST(kelString, ReplaceCountsNonOverlappingOccurrences) {
    kelString s("a-b-c");
    EXPECT_EQ(0u, s.replace(char(0), 'z'));
    EXPECT_EQ(2u, s.replace('-', char(0)));
    EXPECT_STREQ("abc", s.c_str());
    EXPECT_EQ(0u, s.replace(1, 1, "Z")); // 1 only when the length changed
    EXPECT_STREQ("aZc", s.c_str());
    EXPECT_EQ(1u, s.replace(1, 1, kelString("YZ")));
    EXPECT_EQ(0u, s.replace(4, 1, "tail"));
    EXPECT_STREQ("aYZc", s.c_str());

    // Against the reference over many generated texts and patterns.
    std::mt19937 rng(20261123);
    for (int round = 0; round < 3000; ++round) {
        std::string text = randomText(rng, "ab", 12);
        std::string const from = randomText(rng, "ab", 3);
        std::string const to = randomText(rng, "abc", 3);
        kelString k(text.c_str());
        UInt32 const got = k.replace(from.c_str(), to.c_str());
        std::size_t const want = referenceReplace(text, from, to);
        ASSERT_EQ(want, got) << text << " / " << from << " -> " << to;
        ASSERT_EQ(text, k.c_str());
    }
}

TEST(kelString, ConcatenationChangesTheLeftOperand) {
    kelString a("a");
    kelString b("b");
    kelString r = a + b;
    EXPECT_STREQ("ab", r.c_str());
    EXPECT_STREQ("ab", a.c_str());
    r = a + "c" + 'd'; // the second + changes the copy that the first returned
    EXPECT_STREQ("abc", a.c_str());
    EXPECT_STREQ("abcd", r.c_str());
    kelString& alias = a;
    a = alias;
    a = a.c_str() + 1; // from its own buffer
    EXPECT_STREQ("bc", a.c_str());
}

TEST(kelString, ComparisonIsUnsignedByteOrder) {
    std::mt19937 rng(7);
    for (int round = 0; round < 2000; ++round) {
        std::string const x = randomText(rng, "aAb\x7F\x80\xFF", 4);
        std::string const y = randomText(rng, "aAb\x7F\x80\xFF", 4);
        int const want = x.compare(y); // char_traits<char> compares as unsigned char
        kelString const kx(x.c_str()), ky(y.c_str());
        ASSERT_EQ(want == 0, kx == ky);
        ASSERT_EQ(want != 0, kx != y.c_str());
        ASSERT_EQ(want < 0, kx < ky);
        ASSERT_EQ(want <= 0, kx <= y.c_str());
        ASSERT_EQ(want > 0, kx > ky);
        ASSERT_EQ(want >= 0, kx >= ky);
    }
    EXPECT_TRUE(kelString("") == char(0));
    EXPECT_TRUE(kelString("ab") > 'a');
}

TEST(kelString, HashIsTheProductOfSignedCharacters) {
    EXPECT_EQ(941094u, kelString("abc").getHashCode());
    // 0x80 is -128: (-128)^5 = -2^35, which is 0 modulo 2^32.
    EXPECT_EQ(0u, kelString("\x80\x80\x80\x80\x80").getHashCode());
    std::mt19937 rng(11);
    for (int round = 0; round < 500; ++round) {
        std::string const s = randomText(rng, "az\x01\x7F\x80\xC3\xFF", 40);
        std::int64_t want = s.empty() ? 0 : 1;
        for (unsigned char c : s) {
            std::int64_t const signedByte = c < 128 ? c : static_cast<int>(c) - 256;
            want = static_cast<std::int64_t>(static_cast<std::uint32_t>(want * signedByte));
        }
        ASSERT_EQ(static_cast<std::uint32_t>(want), kelString(s.c_str()).getHashCode());
    }
}

TEST(kelString, StaticHelpers) {
    EXPECT_EQ(0u, kelString::size(nullptr));
    EXPECT_TRUE(kelString::equals(nullptr, nullptr));
    EXPECT_FALSE(kelString::equals(nullptr, ""));
    EXPECT_FALSE(kelString::equals("abc", "abcd"));

    char const unterminated[4] = {'w', 'x', 'y', 'z'};
    EXPECT_STREQ("wxyz", kelString::extractString(unterminated, 4).c_str());
    EXPECT_STREQ("ab", kelString::extractString("ab\0cd", 5).c_str());
    EXPECT_TRUE(kelString::extractString(nullptr, 5).empty());
}

// Each character form against the text form with its one-character text, for every byte value
// on texts of any bytes, 0 included (kept by +=; a copy would cut the text at the first 0).
TEST(kelString, CharacterFormsActAsTheirOneCharacterText) {
    std::mt19937 rng(31);
    auto const bytesOf = [](kelString const& s) { return std::string(&s[0], s.size()); };
    for (int round = 0; round < 400; ++round) {
        std::string const bytes = randomText(rng, "ab\x01\xFF", 6) + char(0) + char(rng());
        for (int b = 0; b < 256; ++b) {
            char const c = char(b), text[2] = {c, '\0'}, to = char(rng() % 4 ? rng() : 0);
            char const toText[2] = {to, '\0'};
            UInt32 const at = rng() % 10;
            kelString byChar, byText;
            for (char byte : bytes.substr(rng() % bytes.size())) {
                byChar += byte;
                byText += byte;
            }
            byChar.append(c);
            byText.append(text);
            byChar.insert(at, c);
            byText.insert(at, text);
            ASSERT_EQ(byText.replace(text, toText), byChar.replace(c, to));
            ASSERT_EQ(bytesOf(byText), bytesOf(byChar));
            UInt32 posChar = 99, posText = 99;
            ASSERT_EQ(byText.find(text, at, posText), byChar.find(c, at, posChar));
            ASSERT_EQ(posText, posChar);
            ASSERT_EQ((byText < text) * 2 + (byText == text), (byText < c) * 2 + (byText == c));
            ASSERT_EQ((byText > text) * 2 + (byText <= text), (byText > c) * 2 + (byText <= c));
        }
    }
    // Long runs of both appending forms, across every growth of the text, against push_back.
    for (int round = 0; round < 20; ++round) {
        kelString s;
        std::string oracle;
        for (int i = 0; i < 3000; ++i) {
            char const c = char(rng() % 8 ? rng() : 0);
            bool const plus = rng() % 2 != 0;
            plus ? void(s += c) : s.append(c);
            if (plus || c != '\0') {
                oracle.push_back(c);
            }
        }
        ASSERT_EQ(oracle, bytesOf(s));
    }
}

// Short strings hand their blocks on to the next strings of their thread. Texts of every length
// around the in-place limit, made and freed on threads that end while strings they made live on
// elsewhere: each keeps its own text, and nothing leaks or is freed twice (AddressSanitizer).
TEST(kelString, StringsOutliveAndCrossTheThreadsThatMadeThem) {
    auto const textOf = [](unsigned seed) { return std::string(seed % 40, char('a' + seed % 26)); };
    std::vector<std::vector<kelString>> survivors(4);
    std::vector<std::thread> threads;
    for (unsigned t = 0; t < survivors.size(); ++t) {
        threads.emplace_back([&, t] {
            std::vector<kelString> live;
            for (unsigned i = 0; i < 4000; ++i) {
                live.emplace_back(textOf(t * 7919 + i).c_str());
                if (i % 3 == 0 && live.size() > 1) {
                    live.erase(live.begin() + static_cast<long>(i % live.size()));
                }
                kelString copy(live.back());
                copy += 'x';
            }
            survivors[t] = live;
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    for (auto& strings : survivors) {
        std::vector<std::string> expected;
        for (kelString const& s : strings) {
            expected.push_back(s.c_str());
        }
        std::vector<kelString> copies(strings.begin(), strings.end());
        strings.clear();
        for (std::size_t i = 0; i < copies.size(); ++i) {
            ASSERT_EQ(expected[i], copies[i].c_str());
        }
    }
}
