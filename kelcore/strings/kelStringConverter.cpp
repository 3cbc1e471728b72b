#include <kelcore/strings/kelStringConverter.h>

#include <kelcore/frame/kelNumbers.h>

#include <array>
#include <cstdarg>
#include <cstdio>
#include <locale>
#include <sstream>

namespace KELKIT {

namespace {

// Characters of the result of format(), including its terminating 0.
constexpr std::size_t FORMAT_BUFFER = 10240;

template <typename T>
kelString writeNumber(T value) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << value;
    return kelString(out.str().c_str());
}

// Stream extraction, with 0 for text that holds no number or one that does not fit T.
template <typename T>
T readNumber(char const* text) {
    if (text == nullptr) {
        return T();
    }
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    T value = T();
    if (!(in >> value)) {
        return T();
    }
    return value;
}

char const HEX_DIGITS[] = "0123456789abcdef";

// Lower-case hexadecimal of the low `digits` nibbles of the value, most significant first.
kelString hexDigits(UInt64 value, unsigned digits) {
    char text[17];
    for (unsigned i = 0; i < digits; ++i) {
        text[digits - 1 - i] = HEX_DIGITS[(value >> (4 * i)) & 0xF];
    }
    text[digits] = '\0';
    return kelString(text);
}

// The printable bytes above 126, as inclusive ranges.
struct ByteRange {
    unsigned char first;
    unsigned char last;
};
constexpr ByteRange PRINTABLE_HIGH_BYTES[] = {{0x80, 0x80}, {0x82, 0x8C}, {0x8E, 0x8E},
                                              {0x91, 0x9C}, {0x9E, 0x9F}, {0xA1, 0xFD}};

constexpr std::array<bool, 256> makePrintableTable() {
    std::array<bool, 256> table{};
    for (unsigned c = 32; c <= 126; ++c) {
        table[c] = true;
    }
    for (ByteRange const& range : PRINTABLE_HIGH_BYTES) {
        for (unsigned c = range.first; c <= range.last; ++c) {
            table[c] = true;
        }
    }
    return table;
}

constexpr std::array<bool, 256> PRINTABLE = makePrintableTable();

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

} // namespace

kelStringConverter::~kelStringConverter() = default;

kelString kelStringConverter::toString(unsigned char value) {
    return writeNumber(static_cast<unsigned int>(value));
}
kelString kelStringConverter::toString(char value) {
    return writeNumber(static_cast<int>(static_cast<signed char>(value)));
}
kelString kelStringConverter::toString(unsigned short value) {
    return writeNumber(value);
}
kelString kelStringConverter::toString(short value) {
    return writeNumber(value);
}
kelString kelStringConverter::toString(unsigned int value) {
    return writeNumber(value);
}
kelString kelStringConverter::toString(int value) {
    return writeNumber(value);
}
kelString kelStringConverter::toString(unsigned long value) {
    return writeNumber(value);
}
kelString kelStringConverter::toString(long value) {
    return writeNumber(value);
}
kelString kelStringConverter::toString(unsigned long long value) {
    return writeNumber(value);
}
kelString kelStringConverter::toString(long long value) {
    return writeNumber(value);
}
kelString kelStringConverter::toString(float value) {
    return writeNumber(value);
}
kelString kelStringConverter::toString(double value) {
    return writeNumber(value);
}

// The 8-bit forms read 16 bits and keep the low byte.
UInt8 kelStringConverter::toUInt8(char const* text) {
    return static_cast<UInt8>(readNumber<unsigned short>(text));
}
SInt8 kelStringConverter::toSInt8(char const* text) {
    return static_cast<SInt8>(static_cast<UInt8>(readNumber<short>(text)));
}
UInt16 kelStringConverter::toUInt16(char const* text) {
    return readNumber<UInt16>(text);
}
SInt16 kelStringConverter::toSInt16(char const* text) {
    return readNumber<SInt16>(text);
}
UInt32 kelStringConverter::toUInt32(char const* text) {
    return readNumber<UInt32>(text);
}
SInt32 kelStringConverter::toSInt32(char const* text) {
    return readNumber<SInt32>(text);
}
UInt64 kelStringConverter::toUInt64(char const* text) {
    return readNumber<UInt64>(text);
}
SInt64 kelStringConverter::toSInt64(char const* text) {
    return readNumber<SInt64>(text);
}
Float32 kelStringConverter::toFloat32(char const* text) {
    return readNumber<Float32>(text);
}
Float64 kelStringConverter::toFloat64(char const* text) {
    return readNumber<Float64>(text);
}
unsigned int kelStringConverter::toUnsignedInt(char const* text) {
    return readNumber<unsigned int>(text);
}
int kelStringConverter::toInt(char const* text) {
    return readNumber<int>(text);
}
UInt32 kelStringConverter::toUnsignedLong(char const* text) {
    return toUInt32(text);
}
SInt32 kelStringConverter::toLong(char const* text) {
    return toSInt32(text);
}
double kelStringConverter::toDouble(char const* text) {
    return toFloat64(text);
}
float kelStringConverter::toFloat(char const* text) {
    return toFloat32(text);
}

#define KEL_FROM_STRING(NAME, T)                                                                   \
    T kelStringConverter::NAME(kelString const& text) {                                            \
        return NAME(text.c_str());                                                                 \
    }
KEL_FROM_STRING(toUInt8, UInt8)
KEL_FROM_STRING(toSInt8, SInt8)
KEL_FROM_STRING(toUInt16, UInt16)
KEL_FROM_STRING(toSInt16, SInt16)
KEL_FROM_STRING(toUInt32, UInt32)
KEL_FROM_STRING(toSInt32, SInt32)
KEL_FROM_STRING(toUInt64, UInt64)
KEL_FROM_STRING(toSInt64, SInt64)
KEL_FROM_STRING(toFloat32, Float32)
KEL_FROM_STRING(toFloat64, Float64)
KEL_FROM_STRING(toUnsignedInt, unsigned int)
KEL_FROM_STRING(toInt, int)
KEL_FROM_STRING(toUnsignedLong, UInt32)
KEL_FROM_STRING(toLong, SInt32)
KEL_FROM_STRING(toDouble, double)
KEL_FROM_STRING(toFloat, float)
KEL_FROM_STRING(isNumeric, bool)
KEL_FROM_STRING(toCSV, kelString)
KEL_FROM_STRING(toHex, kelString)
#undef KEL_FROM_STRING

bool kelStringConverter::isNumeric(char const* text) {
    return kelNumbers::getInstance().isNumeric(text);
}

kelString kelStringConverter::format(char const* pattern, ...) {
    if (pattern == nullptr) {
        return kelString();
    }
    char buffer[FORMAT_BUFFER];
    va_list args;
    va_start(args, pattern);
    // vsnprintf never writes past the buffer and always terminates it: a longer result is cut.
    int const written = std::vsnprintf(buffer, sizeof buffer, pattern, args);
    va_end(args);
    if (written < 0) {
        return kelString();
    }
    return kelString(buffer);
}

bool kelStringConverter::formatMatch(char const* pattern, char const* text) {
    kelString const shape(pattern);
    kelString const candidate(text);
    if (shape.size() != candidate.size()) {
        return false;
    }
    for (UInt32 i = 0; i < shape.size(); ++i) {
        char const p = shape[i];
        char const c = candidate[i];
        bool const fits = (p == '0') ? isDigit(c) : (p == 'A' || p == 'a') ? isLetter(c) : c == p;
        if (!fits) {
            return false;
        }
    }
    return true;
}

kelString kelStringConverter::toCSV(char const* text) {
    kelString field(text);
    if (isNumeric(text)) {
        return field;
    }
    UInt32 pos = 0;
    bool const hasSeparator = field.find(';', pos);
    bool const hasQuote = field.find('"', pos);
    if (hasQuote) {
        field.replace("\"", "\"\"");
    }
    if (hasSeparator || hasQuote) {
        field.insert(0, '"');
        field.append('"');
    }
    return field;
}

kelString kelStringConverter::toHex(unsigned char value) {
    return hexDigits(value, 2);
}
kelString kelStringConverter::toHex(char value) {
    return hexDigits(static_cast<unsigned char>(value), 2);
}
kelString kelStringConverter::toHex(unsigned short value) {
    return hexDigits(value, 4);
}
kelString kelStringConverter::toHex(short value) {
    return hexDigits(static_cast<unsigned short>(value), 4);
}
kelString kelStringConverter::toHex(unsigned int value) {
    return hexDigits(value, 8);
}
kelString kelStringConverter::toHex(int value) {
    return hexDigits(static_cast<unsigned int>(value), 8);
}
kelString kelStringConverter::toHex(unsigned long value) {
    return hexDigits(value, 2 * sizeof value);
}
kelString kelStringConverter::toHex(long value) {
    return hexDigits(static_cast<unsigned long>(value), 2 * sizeof value);
}
kelString kelStringConverter::toHex(unsigned long long value) {
    return hexDigits(value, 16);
}
kelString kelStringConverter::toHex(long long value) {
    return hexDigits(static_cast<unsigned long long>(value), 16);
}

kelString kelStringConverter::toHex(UInt8 const* data, UInt32 size) {
    if (data == nullptr || size == 0) {
        return kelString();
    }
    std::string text(static_cast<std::size_t>(size) * 2, '0');
    for (UInt32 i = 0; i < size; ++i) {
        text[2 * i] = HEX_DIGITS[data[i] >> 4];
        text[2 * i + 1] = HEX_DIGITS[data[i] & 0xF];
    }
    return kelString(text.c_str());
}

kelString kelStringConverter::toHex(char const* text) {
    return toHex(reinterpret_cast<UInt8 const*>(text), kelString::size(text));
}

bool kelStringConverter::isPrintableCharacter(char const& c) {
    return PRINTABLE[static_cast<unsigned char>(c)];
}

kelString kelStringConverter::toPrintableString(UInt8 const* data, UInt32 size, char replacement) {
    kelString result;
    if (data == nullptr) {
        return result;
    }
    for (UInt32 i = 0; i < size; ++i) {
        char const c = static_cast<char>(data[i]);
        // += stores the byte as it is, so a replacement of 0 still keeps the length.
        result += isPrintableCharacter(c) ? c : replacement;
    }
    return result;
}

} // namespace KELKIT
