#include "support/kelUtf8Model.h"

#include <kelcore/strings/kelStringConverter.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <numeric>
#include <random>
#include <string>
#include <vector>

using namespace KELKIT;
using Conv = kelStringConverter;
using Bytes = std::vector<unsigned char>;

namespace {

// UTF-8 of a code point by its bit fields; nothing from 0x200000 up.
std::string utf8Of(unsigned long cp) {
    std::string out;
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x200000) {
        int const tail = cp < 0x800 ? 1 : cp < 0x10000 ? 2 : 3;
        out += static_cast<char>((0xFF00u >> (tail + 1)) | cp >> (6 * tail)); // 110x, 1110, 11110
        for (int i = tail - 1; i >= 0; --i) {
            out += static_cast<char>(0x80 | ((cp >> (6 * i)) & 0x3F));
        }
    }
    return out;
}

std::string const ENTITIES[] = {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;"}; // of "&<>\"'"

std::string encodeXml(std::string const& s) {
    std::string out;
    for (std::size_t i = 0; i < s.size(); ++i) {
        if (s.compare(i, 3, "&#x") == 0) { // a reference stays as it is, up to its ';'
            std::size_t const semicolon = s.find(';', i + 3);
            std::size_t const end = semicolon == std::string::npos ? s.size() - 1 : semicolon;
            out += s.substr(i, end - i);
            i = end;
        }
        std::size_t const which = std::string("&<>\"'").find(s[i]);
        char hex[8];
        std::snprintf(hex, sizeof hex, "&#x%02X;", static_cast<unsigned char>(s[i]));
        out += which < 5 ? ENTITIES[which] : s[i] > 0 && s[i] < 32 ? hex : std::string(1, s[i]);
    }
    return out;
}

char const BLANKS[] = " \t\n\v\f\r";

// A text node as the parser reads it, up to the first '<'. A sequence that a lead byte of the
// parser's UTF-8 table announces (C2-DF: 2, E0-EF: 3, F0-F4: 4) is taken whole, whatever it holds.
std::string decodeXml(std::string const& s) {
    std::size_t const n = s.size();
    if (s.compare(0, 9, "<![CDATA[") == 0) {
        return s.substr(0, s.find("]]>", 9)) + "]]>";
    }
    std::string out;
    std::size_t i = s.find_first_not_of(BLANKS);
    while (i < n && s[i] != '<') {
        auto const c = static_cast<unsigned char>(s[i]);
        std::size_t const length = c < 0xC2 ? 1 : c <= 0xDF ? 2 : c <= 0xEF ? 3 : c <= 0xF4 ? 4 : 1;
        std::size_t k = 0;
        while (k < 5 && s.compare(i, ENTITIES[k].size(), ENTITIES[k]) != 0) {
            ++k;
        }
        if (std::string(BLANKS).find(s[i]) != std::string::npos) { // a run becomes one blank
            i = s.find_first_not_of(BLANKS, i);
            out += i < n && s[i] != '<' ? " " : "";
        } else if (i + length > n) {
            return ""; // cut off by the end of the text
        } else if (c != '&') {
            out += s.substr(i, length);
            i += length;
        } else if (i + 2 < n && s[i + 1] == '#') { // digits between the last x (or #) and ';'
            bool const hex = s[i + 2] == 'x';
            std::size_t const semicolon = s.find(';', i + (hex ? 3 : 2));
            std::size_t const start = s.rfind(hex ? 'x' : '#', semicolon) + 1;
            std::string const digits = s.substr(start, semicolon - start);
            if (semicolon == std::string::npos ||
                digits.find_first_not_of(hex ? "0123456789abcdefABCDEF" : "0123456789") !=
                    std::string::npos) {
                break; // the parse ends here
            }
            unsigned long const cp =
                digits.empty() ? 0 : std::stoul(digits, nullptr, hex ? 16 : 10);
            out += cp == 0 ? std::string(1, '\0') : utf8Of(cp);
            i = semicolon + 1;
        } else { // named, or an unknown '&', which is dropped
            out += k < 5 ? std::string(1, "&<>\"'"[k]) : "";
            i += k < 5 ? ENTITIES[k].size() : 1;
        }
    }
    return out.substr(0, out.find('\0')); // the result is a terminated text
}

std::string randomPiece(std::mt19937& rng) {
    char const* const pieces[] = {"&amp;",           "&lt;",       "&gt;",     "&quot;",
                                  "&apos;",          "&#x",        "&#",       "&#x1G;",
                                  "&#xe9;",          "&#233;",     "&#x20AC;", "&#128512;",
                                  "&#x1FFFFF;",      "&#x200000;", "&#;",      "&#x;",
                                  "&#x4x1;",         "<",          ";",        "x",
                                  "  \t\n",          "&bogus;",    "\xC3\xA9", "\xE2\x82\xAC",
                                  "\xF0\x9F\x98\x80"};
    std::size_t const kind = rng() % 35;
    return kind < 25 ? pieces[kind] : std::string(1, static_cast<char>(1 + rng() % 255));
}

} // namespace

TEST(kelTextEncodings, Latin1AndUtf8AgreeWithBitFieldCodecs) {
    for (int b = 0; b < 256; ++b) {
        auto const c = static_cast<unsigned char>(b);
        EXPECT_EQ(kelTest::utf8LeadLength(c), Conv::getUTF8CodeLength(c)) << b;
        EXPECT_EQ(b >= 128, Conv::isUTF8CodeChar(c));
        EXPECT_EQ(b == 0 ? std::string(1, '\0') : utf8Of(c),
                  std::string(Conv::toUTF8(c).c_str(), Conv::toUTF8(c).size()));
    }
    std::mt19937 rng(3);
    unsigned char const blank = Conv::DEFAULT_UTF8_CHARACTER;
    for (int round = 0; round < 300; ++round) {
        std::string latin1(255, '\0');
        std::iota(latin1.begin(), latin1.end(), '\1'); // every byte value but 0
        std::shuffle(latin1.begin(), latin1.end(), rng);
        latin1.resize(rng() % 256);
        std::string expected;
        for (char c : latin1) {
            expected += utf8Of(static_cast<unsigned char>(c));
        }
        kelString const encoded = Conv::toUTF8(kelString(latin1.c_str()));
        EXPECT_EQ(expected, encoded.c_str());
        EXPECT_EQ(latin1, Conv::fromUTF8(encoded).c_str());
        // Any byte soup, including sequences cut off at the end, decodes as the model says.
        std::string soup = latin1 + expected;
        std::shuffle(soup.begin(), soup.end(), rng);
        EXPECT_EQ(kelTest::utf8ToLatin1(soup, blank),
                  Conv::fromUTF8(kelString(soup.c_str())).c_str());
        EXPECT_EQ(kelTest::utf8ToLatin1(soup, 0),
                  Conv::fromUTF8(kelString(soup.c_str()), nullptr).c_str());
    }
    unsigned char const next = 0xA9;
    EXPECT_EQ(0xE9 + '?', Conv::fromUTF8(0xC3, &next, '?') + Conv::fromUTF8(0xE2, &next, '?'));
    EXPECT_EQ(0, Conv::fromUTF8(0xC3, nullptr, '?'));
}

TEST(kelTextEncodings, XmlAgreesWithAnIndependentEncoderAndDecoder) {
    std::mt19937 rng(4);
    for (int round = 0; round < 4000; ++round) {
        std::string text = round % 50 == 0 ? "<![CDATA[" : "";
        for (int pieces = static_cast<int>(rng() % 30); pieces > 0; --pieces) {
            text += randomPiece(rng);
        }
        EXPECT_EQ(encodeXml(text), Conv::toXML(text.c_str()).c_str()) << text;
        EXPECT_EQ(decodeXml(text), Conv::fromXML(kelString(text.c_str())).c_str()) << text;
    }
    EXPECT_STREQ("", Conv::fromXML("").c_str());
    EXPECT_STREQ("", Conv::toXML(static_cast<char const*>(nullptr)).c_str());
}

TEST(kelTextEncodings, CodePageToUtf16AndBack) {
    auto const units = [](kelMemoryBuffer const& buffer) {
        return Bytes(buffer.getBuffer(), buffer.getBuffer() + buffer.getSize());
    };
    EXPECT_EQ(Bytes({'A', 0, 'z', 0, '~', 0, 0, 0}), units(Conv::toUnicode("Az~")));
    EXPECT_EQ(Bytes({0, 0}), units(Conv::toUnicode("")));
    EXPECT_EQ(0u, Conv::toUnicode(nullptr).getSize());
    EXPECT_STREQ("Az~", Conv::fromUnicodeString(Conv::toUnicode("Az~")).c_str());
    kelMemoryBuffer unterminated; // no whole 0 unit: nothing is read beyond it
    unterminated.set(reinterpret_cast<UInt8 const*>("A\0B\0\0"), 5);
    EXPECT_STREQ("", Conv::fromUnicodeString(unterminated).c_str());
    UInt8 const euro[] = {0xAC, 0x20, 'x', 0, 0, 0};
#if defined(_WIN32)
    // Windows: the ANSI code page, 1252 on the test systems.
    EXPECT_EQ(Bytes({0xAC, 0x20, 0xE9, 0, 0, 0}), units(Conv::toUnicode("\x80\xE9")));
    EXPECT_STREQ("\x80x", Conv::fromUnicodeString(euro).c_str());
#else
    // POSIX: the caller's locale. A program that never chose one is in the C locale, ASCII.
    EXPECT_EQ(0u, Conv::toUnicode("\xE9").getSize());
    EXPECT_STREQ("?x", Conv::fromUnicodeString(euro).c_str());
    // Tag characters (U+E0000, U+E007F) that the code page lacks are replaced, not dropped.
    UInt8 const tags[] = {0x40, 0xDB, 0x00, 0xDC, 'x', 0, 0x40, 0xDB, 0x7F, 0xDC, 0, 0};
    EXPECT_STREQ("?x?", Conv::fromUnicodeString(tags).c_str());
    ASSERT_NE(nullptr, std::setlocale(LC_CTYPE, "C.UTF-8")); // the caller's choice
    std::string const text = "A" + utf8Of(0xE9) + utf8Of(0x20AC) + utf8Of(0x1F600);
    kelMemoryBuffer const utf16 = Conv::toUnicode(text.c_str());
    EXPECT_EQ(Bytes({'A', 0, 0xE9, 0, 0xAC, 0x20, 0x3D, 0xD8, 0x00, 0xDE, 0, 0}), units(utf16));
    EXPECT_EQ(text, Conv::fromUnicodeString(utf16).c_str());
    EXPECT_EQ(0u, Conv::toUnicode("ab\xE2\x82").getSize()); // cut-off sequence
    UInt8 const lone[] = {0x00, 0xD8, 'A', 0, 0x00, 0xDC, 0, 0};
    EXPECT_STREQ("?A?", Conv::fromUnicodeString(lone).c_str());
    EXPECT_EQ(utf8Of(0xE0000) + "x" + utf8Of(0xE007F), Conv::fromUnicodeString(tags).c_str());
    std::setlocale(LC_CTYPE, "C");
#endif
}
