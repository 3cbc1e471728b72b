#include <kelcore/strings/kelStringConverter.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
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

// The Latin-1 decoder: lengths by the count of leading one bits, pairs led by C2/C3 shifted.
std::string latin1Of(std::string const& text, int replacement) {
    std::string out;
    for (std::size_t i = 0; i < text.size();) {
        auto const lead = static_cast<unsigned char>(text[i]);
        int ones = 0;
        while (ones < 8 && (lead << ones & 0x80) != 0) {
            ++ones;
        }
        std::size_t const length = ones < 2 ? 1 : std::min(ones, 6);
        auto const next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        int c = length == 1 ? lead : replacement;
        if (length == 2) {
            c = lead == 0xC3 ? (next + 64) & 0xFF : lead == 0xC2 ? next : lead;
        }
        if (c > 0) {
            out += static_cast<char>(c);
        }
        i += length;
    }
    return out;
}

std::string encodeXml(std::string const& s) {
    std::string out;
    for (std::size_t i = 0; i < s.size(); ++i) {
        if (s.compare(i, 3, "&#x") == 0) { // a reference stays as it is, up to its ';'
            std::size_t const semicolon = s.find(';', i + 3);
            std::size_t const end = semicolon == std::string::npos ? s.size() - 1 : semicolon;
            out += s.substr(i, end - i);
            i = end;
        }
        auto const c = static_cast<unsigned char>(s[i]);
        char const* const named[] = {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;"};
        std::size_t const which = std::string("&<>\"'").find(static_cast<char>(c));
        char hex[8];
        std::snprintf(hex, sizeof hex, "&#x%02X;", c);
        out += which != std::string::npos ? named[which] : c < 32 ? hex : std::string(1, s[i]);
    }
    return out;
}

bool isXmlBlank(char c) {
    return std::string(" \t\n\v\f\r").find(c) != std::string::npos;
}

// A text node as the parser reads it, up to the first '<'; a sequence that a lead byte of the
// parser's UTF-8 table announces (C2-DF: 2, E0-EF: 3, F0-F4: 4) is taken whole, whatever it holds.
std::string decodeXml(std::string const& s) {
    std::size_t const n = s.size();
    if (s.compare(0, 9, "<![CDATA[") == 0) {
        std::size_t const end = s.find("]]>", 9);
        return s.substr(0, end) + "]]>";
    }
    std::size_t i = 0;
    while (i < n &&
           (isXmlBlank(s[i]) || s.compare(i, 3, "\xEF\xBB\xBF") == 0 ||
            s.compare(i, 3, "\xEF\xBF\xBE") == 0 || s.compare(i, 3, "\xEF\xBF\xBF") == 0)) {
        i += isXmlBlank(s[i]) ? 1 : 3;
    }
    std::string out;
    bool blank = false;
    while (i < n && s[i] != '<') {
        auto const c = static_cast<unsigned char>(s[i]);
        if (isXmlBlank(s[i])) {
            blank = true;
            ++i;
            continue;
        }
        out += blank ? " " : "";
        blank = false;
        std::size_t const length = c >= 0xC2 && c <= 0xDF   ? 2
                                   : c >= 0xE0 && c <= 0xEF ? 3
                                   : c >= 0xF0 && c <= 0xF4 ? 4
                                                            : 1;
        if (i + length > n) {
            return ""; // cut off by the end of the text
        }
        if (c != '&' || length > 1) {
            out += s.substr(i, length);
            i += length;
        } else if (i + 2 < n && s[i + 1] == '#') { // numeric: digits back from ';' to x or #
            bool const hex = s[i + 2] == 'x';
            std::size_t const semicolon = s.find(';', i + (hex ? 3 : 2));
            if ((hex && i + 3 >= n) || semicolon == std::string::npos) {
                break;
            }
            unsigned long cp = 0;
            unsigned long scale = 1;
            std::size_t q = semicolon - 1;
            for (; s[q] != (hex ? 'x' : '#'); --q, scale *= hex ? 16 : 10) {
                std::size_t const digit =
                    std::string("0123456789abcdef")
                        .find(static_cast<char>(hex && s[q] >= 'A' && s[q] <= 'F' ? s[q] + 32
                                                                                  : s[q]));
                if (digit == std::string::npos || digit >= (hex ? 16u : 10u)) {
                    return out.substr(0, out.find('\0'));
                }
                cp += digit * scale;
            }
            out += cp == 0 ? std::string(1, '\0') : utf8Of(cp);
            i = semicolon + 1;
        } else { // named, or an unknown '&', which is dropped
            std::string const named[] = {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;"};
            std::size_t k = 0;
            while (k < 5 && s.compare(i, named[k].size(), named[k]) != 0) {
                ++k;
            }
            out += k < 5 ? std::string(1, "&<>\"'"[k]) : "";
            i += k < 5 ? named[k].size() : 1;
        }
    }
    return out.substr(0, out.find('\0')); // the result is a terminated text
}

std::string randomPiece(std::mt19937& rng) {
    std::vector<std::string> const pieces = {
        "&amp;",        "&lt;",         "&gt;", "&quot;", "&apos;", "&#x",     "&#",
        "&#x1G;",       "&#xe9;",       "&#;",  "<",      "  \t\n", "&bogus;", "\xC3\xA9",
        "\xE2\x82\xAC", "\xEF\xBB\xBF", ";",    "x",      "&#x;"};
    std::size_t const kind = rng() % (pieces.size() + 6);
    if (kind < pieces.size()) {
        return pieces[kind];
    }
    if (kind < pieces.size() + 2) {
        char ref[16];
        std::snprintf(ref, sizeof ref, kind == pieces.size() ? "&#x%lX;" : "&#%lu;",
                      static_cast<unsigned long>(rng() % 0x220000));
        return ref;
    }
    return std::string(1, static_cast<char>(1 + rng() % 255));
}

} // namespace

TEST(kelTextEncodings, Latin1AndUtf8AgreeWithBitFieldCodecs) {
    for (int b = 0; b < 256; ++b) {
        auto const c = static_cast<unsigned char>(b);
        int ones = 0;
        while (ones < 8 && (b << ones & 0x80) != 0) {
            ++ones;
        }
        EXPECT_EQ(ones < 2 ? 1 : std::min(ones, 6), Conv::getUTF8CodeLength(c)) << b;
        EXPECT_EQ(b >= 128, Conv::isUTF8CodeChar(c));
        EXPECT_EQ(b == 0 ? std::string(1, '\0') : utf8Of(c),
                  std::string(Conv::toUTF8(c).c_str(), Conv::toUTF8(c).size()));
    }
    std::mt19937 rng(3);
    unsigned char const blank = Conv::DEFAULT_UTF8_CHARACTER;
    for (int round = 0; round < 300; ++round) {
        std::string latin1;
        for (int b = 1; b < 256; ++b) {
            latin1 += static_cast<char>(b);
        }
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
        EXPECT_EQ(latin1Of(soup, blank), Conv::fromUTF8(kelString(soup.c_str())).c_str());
        EXPECT_EQ(latin1Of(soup, 0), Conv::fromUTF8(kelString(soup.c_str()), nullptr).c_str());
    }
    unsigned char const next = 0xA9;
    EXPECT_EQ(0, Conv::fromUTF8(0xC3, nullptr, '?'));
    EXPECT_EQ(0xE9, Conv::fromUTF8(0xC3, &next, '?'));
    EXPECT_EQ('?', Conv::fromUTF8(0xE2, &next, '?'));
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
        // ASCII without references comes back from its XML form with only its blanks condensed.
        std::string ascii;
        std::string condensed;
        for (char c : text) {
            ascii += c > 0 ? c : 'a';
        }
        for (std::size_t at = ascii.find("&#x"); at != std::string::npos; at = ascii.find("&#x")) {
            ascii[at + 1] = '!';
        }
        for (std::size_t at = 0; at < ascii.size(); ++at) {
            bool const blank = ascii[at] == ' ';
            condensed +=
                blank && (condensed.empty() || condensed.back() == ' ') ? "" : ascii.substr(at, 1);
        }
        condensed.erase(condensed.empty() || condensed.back() != ' ' ? condensed.size()
                                                                     : condensed.size() - 1);
        EXPECT_EQ(condensed, Conv::fromXML(Conv::toXML(ascii.c_str())).c_str());
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
    EXPECT_STREQ("", Conv::fromUnicodeString(static_cast<unsigned char const*>(nullptr)).c_str());
    kelMemoryBuffer unterminated;
    unterminated.set(reinterpret_cast<UInt8 const*>("A\0B\0\0"), 5); // no whole 0 unit
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
    ASSERT_NE(nullptr, std::setlocale(LC_CTYPE, "C.UTF-8"));
    std::mt19937 rng(5);
    for (int round = 0; round < 200; ++round) {
        std::string text;
        Bytes expected;
        for (int i = 0; i < 20; ++i) {
            unsigned long cp = 1 + rng() % 0x10FFFF;
            cp = cp >= 0xD800 && cp < 0xE000 ? cp - 0x800 : cp;
            text += utf8Of(cp);
            unsigned long const high = 0xD800 + ((cp - 0x10000) >> 10);
            unsigned long const low = 0xDC00 + ((cp - 0x10000) & 0x3FF);
            for (unsigned long unit : cp < 0x10000 ? std::vector<unsigned long>{cp}
                                                   : std::vector<unsigned long>{high, low}) {
                expected.insert(expected.end(), {UInt8(unit & 0xFF), UInt8(unit >> 8)});
            }
        }
        expected.insert(expected.end(), {0, 0});
        kelMemoryBuffer const utf16 = Conv::toUnicode(text.c_str());
        EXPECT_EQ(expected, units(utf16));
        EXPECT_EQ(text, Conv::fromUnicodeString(utf16).c_str());
    }
    EXPECT_EQ(0u, Conv::toUnicode("ab\xE2\x82").getSize()); // cut-off sequence
    UInt8 const lone[] = {0x00, 0xD8, 'A', 0, 0x00, 0xDC, 0, 0};
    EXPECT_STREQ("?A?", Conv::fromUnicodeString(lone).c_str());
    std::setlocale(LC_CTYPE, "C");
#endif
}
