// kelStringConverter's readers and the numeric-text test against the models their headers
// promise: every text-to-number form reads as a classic-locale string stream extraction (0 when
// it fails; the 8-bit forms through 16 bits), isNumeric as the stream or the strict character
// rules, formatMatch by character classes; and the dumps and CSV field against their rules.

#include "kelFuzz.h"

#include <kelcore/frame/kelNumbers.h>
#include <kelcore/strings/kelStringConverter.h>

#include <cstring>

using namespace KELKIT;

namespace {

using kelFuzz::streamRead;

template <class T>
T modelNumber(char const* text) {
    return kelFuzz::streamNumber<T>(text);
}

template <class T>
bool same(T a, T b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

void checkNumbers(char const* text) {
    typedef kelStringConverter C;
    KEL_FUZZ_CHECK(C::toUInt8(text) == static_cast<UInt8>(modelNumber<unsigned short>(text)));
    KEL_FUZZ_CHECK(C::toSInt8(text) == static_cast<SInt8>(modelNumber<short>(text)));
    KEL_FUZZ_CHECK(C::toUInt16(text) == modelNumber<UInt16>(text));
    KEL_FUZZ_CHECK(C::toSInt16(text) == modelNumber<SInt16>(text));
    KEL_FUZZ_CHECK(C::toUInt32(text) == modelNumber<UInt32>(text));
    KEL_FUZZ_CHECK(C::toSInt32(text) == modelNumber<SInt32>(text));
    KEL_FUZZ_CHECK(C::toUInt64(text) == modelNumber<UInt64>(text));
    KEL_FUZZ_CHECK(C::toSInt64(text) == modelNumber<SInt64>(text));
    KEL_FUZZ_CHECK(C::toUnsignedInt(text) == modelNumber<unsigned int>(text));
    KEL_FUZZ_CHECK(C::toInt(text) == modelNumber<int>(text));
    KEL_FUZZ_CHECK(C::toUnsignedLong(text) == modelNumber<UInt32>(text));
    KEL_FUZZ_CHECK(C::toLong(text) == modelNumber<SInt32>(text));
    KEL_FUZZ_CHECK(same(C::toFloat32(text), modelNumber<float>(text)));
    KEL_FUZZ_CHECK(same(C::toFloat64(text), modelNumber<double>(text)));
    KEL_FUZZ_CHECK(same(C::toFloat(text), modelNumber<float>(text)));
    KEL_FUZZ_CHECK(same(C::toDouble(text), modelNumber<double>(text)));
    KEL_FUZZ_CHECK(C::toUInt32(kelString(text)) == C::toUInt32(text));

    double d;
    SInt64 s;
    UInt64 u;
    bool const asDouble = streamRead(text, d);
    KEL_FUZZ_CHECK(C::isNumeric(text) == asDouble);
    kelNumbers& numbers = kelNumbers::getInstance();
    for (int options = 0; options < 8; ++options) {
        bool const decimal = options & 1, sign = options & 2, strict = options & 4;
        bool expected;
        if (strict) {
            std::size_t dots = 0, signAt = 0;
            expected = true;
            for (std::size_t i = 0; text[i] != '\0'; ++i) {
                char const c = text[i];
                if (c == '.' && decimal) {
                    ++dots;
                } else if ((c == '+' || c == '-') && sign) {
                    signAt = i;
                } else if (c < '0' || c > '9') {
                    expected = false;
                }
            }
            expected = expected && dots <= 1 && signAt == 0;
        } else {
            expected = decimal ? asDouble : sign ? streamRead(text, s) : streamRead(text, u);
        }
        KEL_FUZZ_CHECK(numbers.isNumeric(text, decimal, sign, strict) == expected);
    }
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool printable(unsigned char c) {
    return (c >= 32 && c <= 126) || c == 0x80 || (c >= 0x82 && c <= 0x8C) || c == 0x8E ||
           (c >= 0x91 && c <= 0x9C) || c == 0x9E || c == 0x9F || (c >= 0xA1 && c <= 0xFD);
}

void checkShapes(std::string const& pattern, std::string const& text) {
    bool expected = pattern.size() == text.size();
    for (std::size_t i = 0; expected && i < pattern.size(); ++i) {
        char const p = pattern[i], c = text[i];
        expected = p == '0'                 ? (c >= '0' && c <= '9')
                   : (p == 'A' || p == 'a') ? isLetter(c)
                                            : c == p;
    }
    KEL_FUZZ_CHECK(kelStringConverter::formatMatch(pattern.c_str(), text.c_str()) == expected);

    std::string csv = text;
    if (!kelStringConverter::isNumeric(text.c_str())) {
        bool const quote = text.find('"') != std::string::npos;
        std::string doubled;
        for (char c : text) {
            doubled += c;
            if (c == '"') {
                doubled += '"';
            }
        }
        csv = (quote || text.find(';') != std::string::npos) ? '"' + doubled + '"' : text;
    }
    KEL_FUZZ_CHECK(csv == kelStringConverter::toCSV(text.c_str()).c_str());
}

void checkDumps(std::uint8_t const* data, std::size_t size, char replacement) {
    static char const DIGITS[] = "0123456789abcdef";
    std::string hex, shown;
    for (std::size_t i = 0; i < size; ++i) {
        hex += DIGITS[data[i] >> 4];
        hex += DIGITS[data[i] & 15];
        shown += printable(data[i]) ? static_cast<char>(data[i]) : replacement;
    }
    KEL_FUZZ_CHECK(hex == kelStringConverter::toHex(data, UInt32(size)).c_str());
    kelString const printed =
        kelStringConverter::toPrintableString(data, UInt32(size), replacement);
    KEL_FUZZ_CHECK(printed.size() == size);
    KEL_FUZZ_CHECK(std::memcmp(printed.c_str(), shown.data(), size) == 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const whole(reinterpret_cast<char const*>(data), size);
    checkNumbers(whole.c_str());
    FuzzedDataProvider input(data, size);
    std::string const pattern = input.ConsumeRandomLengthString(64).c_str();
    std::string const text = input.ConsumeRemainingBytesAsString().c_str();
    checkShapes(pattern, text);
    checkDumps(data, size, size > 0 ? static_cast<char>(data[0]) : '.');
    return 0;
}
