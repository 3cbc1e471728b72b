// kelStringConverter's text encodings against models written from their header:
//  - toUTF8 writes each Latin-1 byte as itself below 128, else as C2 or C3 and one more byte;
//    fromUTF8 reads by the lead byte's length, pairs by C2/C3 (a pair cut off by the end takes
//    the terminator as its second byte), longer sequences as the replacement, and drops 0
//    bytes; fromUTF8(toUTF8(t)) is t for every text;
//  - toXML writes the five XML characters as entities and bytes below 32 as "&#xHH;", copying
//    a hexadecimal reference that is already there; fromXML reads a text node up to the first
//    '<' (entities decoded, numeric ones above 127 as UTF-8, white space trimmed and each run
//    one blank, a CDATA section as it stands, "" for a sequence cut off by the end); printable
//    ASCII goes through toXML and back to its own white-space-collapsed form;
//  - toUnicode and fromUnicodeString between the locale's code page (ASCII in the C locale,
//    UTF-8 in C.UTF-8) and UTF-16 units, least significant byte first and 0-terminated: a
//    text the code page cannot decode gives nothing, a unit it cannot encode (and a lone
//    surrogate) becomes '?', a buffer without a 0 unit gives "".
// Every decoder allocates no more than a small constant plus a few times its input.

#include "kelFuzz.h"
#include "support/kelUtf8Model.h"

#include <kelcore/strings/kelStringConverter.h>

#include <clocale>

using namespace KELKIT;
using Conv = kelStringConverter;

namespace {

// ---- Latin-1 and UTF-8 --------------------------------------------------------------------

std::string latin1ToUtf8(std::string const& text) {
    std::string out;
    for (unsigned char c : text) {
        if (c >= 128) {
            out += static_cast<char>(0xC0 | c >> 6);
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            out += static_cast<char>(c);
        }
    }
    return out;
}

void checkLatin1(std::string const& text, unsigned char replacement) {
    kelString const latin1(text.c_str());
    KEL_FUZZ_CHECK(latin1ToUtf8(text) == Conv::toUTF8(latin1).c_str());
    KEL_FUZZ_CHECK(text == Conv::fromUTF8(Conv::toUTF8(latin1)).c_str());
    {
        kelFuzz::HeapCount heap;
        kelString const decoded = Conv::fromUTF8(latin1, &replacement);
        KEL_FUZZ_CHECK(kelFuzz::withinBudget(heap.allocated(), text.size()));
        KEL_FUZZ_CHECK(kelTest::utf8ToLatin1(text, replacement) == decoded.c_str());
    }
    KEL_FUZZ_CHECK(kelTest::utf8ToLatin1(text, Conv::DEFAULT_UTF8_CHARACTER) ==
                   Conv::fromUTF8(latin1).c_str());
    KEL_FUZZ_CHECK(kelTest::utf8ToLatin1(text, -1) == Conv::fromUTF8(latin1, nullptr).c_str());

    // The single-character forms, on the first two bytes.
    auto const lead = static_cast<unsigned char>(text.empty() ? 0 : text[0]);
    auto const next = static_cast<unsigned char>(text.size() < 2 ? 0 : text[1]);
    kelString const one = Conv::toUTF8(lead);
    KEL_FUZZ_CHECK(lead == 0 ? one.size() == 1 && one[0] == '\0'
                             : latin1ToUtf8(std::string(1, char(lead))) == one.c_str());
    KEL_FUZZ_CHECK(Conv::isUTF8CodeChar(lead) == (lead >= 128));
    KEL_FUZZ_CHECK(Conv::getUTF8CodeLength(lead) == kelTest::utf8LeadLength(lead));
    unsigned char const pair = lead == 0xC3 ? next + 64 : lead == 0xC2 ? next : lead;
    KEL_FUZZ_CHECK(Conv::fromUTF8(lead, next) == pair);
    KEL_FUZZ_CHECK(Conv::fromUTF8(lead, &next, replacement) ==
                   (kelTest::utf8LeadLength(lead) < 3 ? pair : replacement));
    KEL_FUZZ_CHECK(Conv::fromUTF8(lead, nullptr, replacement) == 0);
}

// ---- XML ----------------------------------------------------------------------------------

char const MARKUP[] = "&<>\"'";
std::string const ENTITIES[] = {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;"};
char const BLANKS[] = " \t\n\v\f\r";

std::string encodeXml(std::string const& s) {
    std::string out;
    for (std::size_t i = 0; i < s.size(); ++i) {
        if (s.compare(i, 3, "&#x") == 0) {
            // Copied up to its ';', or without one up to the last character, encoded as usual.
            std::size_t const semicolon = s.find(';', i + 3);
            std::size_t const end = semicolon == std::string::npos ? s.size() - 1 : semicolon;
            out.append(s, i, end - i);
            i = end;
        }
        auto const c = static_cast<unsigned char>(s[i]);
        char const* const markup = std::strchr(MARKUP, c);
        if (markup != nullptr && c != 0) {
            out += ENTITIES[markup - MARKUP];
        } else if (c < 32) {
            char hex[8];
            std::snprintf(hex, sizeof hex, "&#x%02X;", c);
            out += hex;
        } else {
            out += static_cast<char>(c);
        }
    }
    return out;
}

// UTF-8 by bit fields; nothing from 0x200000 up.
std::string utf8Of(unsigned long cp) {
    std::string out;
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x200000) {
        int const tail = cp < 0x800 ? 1 : cp < 0x10000 ? 2 : 3;
        out += static_cast<char>((0xFF00u >> (tail + 1)) | cp >> (6 * tail));
        for (int i = tail - 1; i >= 0; --i) {
            out += static_cast<char>(0x80 | ((cp >> (6 * i)) & 0x3F));
        }
    }
    return out;
}

bool isBlank(char c) {
    return c != '\0' && std::strchr(BLANKS, c) != nullptr;
}

// A text node as an XML parser reads it. A sequence that a UTF-8 lead byte announces (C2-DF: 2,
// E0-EF: 3, F0-F4: 4) is taken whole, whatever it holds; a numeric reference is the digits
// between its last 'x' (or '#') and ';', and ends the text when they are not all digits; an
// unknown '&' is dropped.
std::string decodeXml(std::string const& s) {
    std::size_t const n = s.size();
    if (s.compare(0, 9, "<![CDATA[") == 0) {
        return s.substr(0, s.find("]]>", 9)) + "]]>";
    }
    std::string out;
    std::size_t i = 0;
    while (i < n && isBlank(s[i])) {
        ++i;
    }
    while (i < n && s[i] != '<') {
        auto const c = static_cast<unsigned char>(s[i]);
        std::size_t const length = c < 0xC2 ? 1 : c <= 0xDF ? 2 : c <= 0xEF ? 3 : c <= 0xF4 ? 4 : 1;
        if (isBlank(s[i])) {
            while (i < n && isBlank(s[i])) {
                ++i;
            }
            if (i < n && s[i] != '<') {
                out += ' ';
            }
        } else if (i + length > n) {
            return "";
        } else if (c != '&') {
            out.append(s, i, length);
            i += length;
        } else if (i + 2 < n && s[i + 1] == '#') {
            bool const hex = s[i + 2] == 'x';
            std::size_t const semicolon = s.find(';', i + (hex ? 3 : 2));
            if (semicolon == std::string::npos) {
                break;
            }
            std::size_t const start = s.rfind(hex ? 'x' : '#', semicolon) + 1;
            std::string const digits = s.substr(start, semicolon - start);
            if (digits.find_first_not_of(hex ? "0123456789abcdefABCDEF" : "0123456789") !=
                std::string::npos) {
                break;
            }
            std::uint32_t cp = 0; // in 32 bits, which wrap, as the parser counts
            for (char d : digits) {
                cp = cp * (hex ? 16 : 10) +
                     static_cast<std::uint32_t>(d <= '9' ? d - '0' : (d | 0x20) - 'a' + 10);
            }
            out += cp == 0 ? std::string(1, '\0') : utf8Of(cp);
            i = semicolon + 1;
        } else {
            std::size_t k = 0;
            while (k < 5 && s.compare(i, ENTITIES[k].size(), ENTITIES[k]) != 0) {
                ++k;
            }
            if (k < 5) {
                out += MARKUP[k];
                i += ENTITIES[k].size();
            } else {
                ++i;
            }
        }
    }
    return out.substr(0, out.find('\0'));
}

std::string collapsed(std::string const& s) {
    std::string out;
    for (std::size_t i = 0; i < s.size();) {
        if (s[i] == ' ') {
            while (i < s.size() && s[i] == ' ') {
                ++i;
            }
            if (!out.empty() && i < s.size()) {
                out += ' ';
            }
        } else {
            out += s[i++];
        }
    }
    return out;
}

void checkXml(std::string const& text) {
    KEL_FUZZ_CHECK_TEXT(encodeXml(text), Conv::toXML(text.c_str()).c_str());
    KEL_FUZZ_CHECK(Conv::toXML(text.c_str()) == Conv::toXML(kelString(text.c_str())));
    {
        kelFuzz::HeapCount heap;
        kelString const decoded = Conv::fromXML(text.c_str());
        KEL_FUZZ_CHECK(kelFuzz::withinBudget(heap.allocated(), text.size()));
        KEL_FUZZ_CHECK_TEXT(decodeXml(text), decoded.c_str());
    }
    // Printable ASCII without references goes there and back.
    std::string plain;
    for (char c : text) {
        if (c >= 32 && c <= 126) {
            plain += c;
        }
    }
    for (std::size_t at; (at = plain.find("&#x")) != std::string::npos;) {
        plain.erase(at, 1);
    }
    KEL_FUZZ_CHECK_TEXT(collapsed(plain), Conv::fromXML(Conv::toXML(plain.c_str())).c_str());
}

// ---- Code page and UTF-16 -----------------------------------------------------------------

// The strict UTF-8 decoder as code points, false for anything ill-formed (overlong forms,
// surrogates, beyond U+10FFFF, cut off).
bool decodeUtf8(std::string const& s, std::vector<std::uint32_t>& out) {
    for (std::size_t i = 0; i < s.size();) {
        auto const c = static_cast<unsigned char>(s[i]);
        std::size_t const tail = c < 0x80   ? 0
                                 : c < 0xC2 ? 9
                                 : c < 0xE0 ? 1
                                 : c < 0xF0 ? 2
                                 : c < 0xF5 ? 3
                                            : 9;
        if (tail == 9 || i + tail >= s.size()) {
            return false;
        }
        std::uint32_t cp = tail == 0 ? c : c & (0x3F >> tail);
        for (std::size_t k = 1; k <= tail; ++k) {
            auto const b = static_cast<unsigned char>(s[i + k]);
            if ((b & 0xC0) != 0x80) {
                return false;
            }
            cp = cp << 6 | (b & 0x3F);
        }
        std::uint32_t const least[] = {0, 0x80, 0x800, 0x10000};
        if (cp < least[tail] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
            return false;
        }
        out.push_back(cp);
        i += tail + 1;
    }
    return true;
}

std::vector<std::uint8_t> unitsOf(std::vector<std::uint32_t> const& points) {
    std::vector<std::uint8_t> bytes;
    auto const put = [&](std::uint32_t unit) {
        bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    };
    for (std::uint32_t cp : points) {
        if (cp >= 0x10000) {
            put(0xD800 + ((cp - 0x10000) >> 10));
            put(0xDC00 + ((cp - 0x10000) & 0x3FF));
        } else {
            put(cp);
        }
    }
    put(0);
    return bytes;
}

// The units up to the first 0 unit, in the code page; '?' for what it lacks and for a lone
// surrogate, one '?' for a pair outside ASCII.
std::string encodeUnits(std::vector<std::uint16_t> const& units, bool utf8) {
    std::string out;
    for (std::size_t i = 0; i < units.size(); ++i) {
        std::uint32_t cp = units[i];
        bool const high = cp >= 0xD800 && cp <= 0xDBFF;
        bool const low = cp >= 0xDC00 && cp <= 0xDFFF;
        if (high && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (units[++i] - 0xDC00);
        } else if (high || low) {
            out += '?';
            continue;
        }
        out += cp < 0x80 ? std::string(1, static_cast<char>(cp)) : utf8 ? utf8Of(cp) : "?";
    }
    return out;
}

locale_t gUtf8 = nullptr;

void checkCodePage(std::string const& text, std::uint8_t const* data, std::size_t size, bool utf8) {
    locale_t const previous = uselocale(utf8 ? gUtf8 : LC_GLOBAL_LOCALE);

    std::vector<std::uint32_t> points;
    bool decodable = decodeUtf8(text, points);
    if (!utf8) {
        decodable = std::all_of(text.begin(), text.end(), [](char c) { return c > 0; });
    }
    kelMemoryBuffer units;
    {
        kelFuzz::HeapCount heap;
        units = Conv::toUnicode(text.c_str());
        KEL_FUZZ_CHECK(kelFuzz::withinBudget(heap.allocated(), text.size()));
    }
    std::vector<std::uint8_t> const got(units.getBuffer(), units.getBuffer() + units.getSize());
    KEL_FUZZ_CHECK(got == (decodable ? unitsOf(points) : std::vector<std::uint8_t>()));
    if (decodable) {
        KEL_FUZZ_CHECK(text == Conv::fromUnicodeString(units).c_str());
    }

    // The input's bytes as units: up to the first 0 unit, or "" without one.
    std::vector<std::uint16_t> read;
    bool terminated = false;
    for (std::size_t i = 0; i + 1 < size && !terminated; i += 2) {
        std::uint16_t const unit = static_cast<std::uint16_t>(data[i] | data[i + 1] << 8);
        terminated = unit == 0;
        if (!terminated) {
            read.push_back(unit);
        }
    }
    std::string const expected = terminated ? encodeUnits(read, utf8) : std::string();
    kelMemoryBuffer buffer(static_cast<UInt32>(size));
    if (size > 0) {
        buffer.set(data, static_cast<UInt32>(size));
    }
    {
        kelFuzz::HeapCount heap;
        kelString const encoded = Conv::fromUnicodeString(buffer);
        KEL_FUZZ_CHECK(kelFuzz::withinBudget(heap.allocated(), size));
        KEL_FUZZ_CHECK_TEXT(expected.substr(0, std::strlen(expected.c_str())), encoded.c_str());
    }
    // The pointer form reads to the 0 unit, which a copy with three 0 bytes behind always has.
    std::vector<std::uint8_t> padded(data, data + size);
    padded.insert(padded.end(), 3, 0);
    if (!terminated) {
        for (std::size_t i = read.size() * 2; i + 1 < padded.size(); i += 2) {
            std::uint16_t const unit = static_cast<std::uint16_t>(padded[i] | padded[i + 1] << 8);
            if (unit == 0) {
                break;
            }
            read.push_back(unit);
        }
    }
    std::string const all = encodeUnits(read, utf8);
    KEL_FUZZ_CHECK_TEXT(all.substr(0, std::strlen(all.c_str())),
                        Conv::fromUnicodeString(padded.data()).c_str());
    KEL_FUZZ_CHECK(Conv::fromUnicodeString(static_cast<unsigned char const*>(nullptr)).empty());

    uselocale(previous);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    gUtf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    bool const utf8 = gUtf8 != nullptr && input.ConsumeBool();
    auto const replacement = input.ConsumeIntegral<unsigned char>();
    std::vector<std::uint8_t> const bytes = input.ConsumeRemainingBytes<std::uint8_t>();
    std::string const text = std::string(bytes.begin(), bytes.end()).c_str();
    checkLatin1(text, replacement);
    checkXml(text);
    checkCodePage(text, bytes.data(), bytes.size(), utf8);
    return 0;
}
