#include <kelcore/strings/kelStringConverter.h>

#include <kelcore/frame/kelNumbers.h>
#include <kelcore/internal/kelStringAccess.h>
#include <kelcore/platform/kelCodePage.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <tinyxml.h>
#include <type_traits>

namespace KELKIT {

namespace {

// Characters of the result of format(), including its terminating 0.
constexpr std::size_t FORMAT_BUFFER = 10240;

kelString streamWrite(double value) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << value;
    return kelString(out.str().c_str());
}

// Number to text. Integers are written as a default stream writes them: the decimal digits,
// with a minus sign in front of a negative value. A long number is cut into 8-digit chunks that
// are written two digits at a time from a table, so that its divisions form short independent
// chains instead of one long one.
char const DIGIT_PAIRS[] = "0001020304050607080910111213141516171819"
                           "2021222324252627282930313233343536373839"
                           "4041424344454647484950515253545556575859"
                           "6061626364656667686970717273747576777879"
                           "8081828384858687888990919293949596979899";

void writeEightDigits(char* out, UInt32 value) {
    UInt32 const high = value / 10000;
    UInt32 const low = value % 10000;
    std::memcpy(out, DIGIT_PAIRS + 2 * (high / 100), 2);
    std::memcpy(out + 2, DIGIT_PAIRS + 2 * (high % 100), 2);
    std::memcpy(out + 4, DIGIT_PAIRS + 2 * (low / 100), 2);
    std::memcpy(out + 6, DIGIT_PAIRS + 2 * (low % 100), 2);
}

char* writeDecimal(char* out, UInt64 value) {
    constexpr UInt64 CHUNK = 100000000;
    if (value < CHUNK) {
        return std::to_chars(out, out + 8, static_cast<UInt32>(value)).ptr;
    }
    if (value < CHUNK * CHUNK) {
        out = std::to_chars(out, out + 8, static_cast<UInt32>(value / CHUNK)).ptr;
    } else {
        out = std::to_chars(out, out + 4, static_cast<UInt32>(value / (CHUNK * CHUNK))).ptr;
        writeEightDigits(out, static_cast<UInt32>(value / CHUNK % CHUNK));
        out += 8;
    }
    writeEightDigits(out, static_cast<UInt32>(value % CHUNK));
    return out + 8;
}

template <typename T>
kelString writeInteger(T value) {
    char text[24];
    char* out = text;
    UInt64 magnitude = static_cast<UInt64>(value);
    if constexpr (std::is_signed<T>::value) {
        if (value < 0) {
            *out++ = '-';
            magnitude = 0u - magnitude;
        }
    }
    char* const end = writeDecimal(out, magnitude);
    return internal::kelStringAccess::fromKnownLength(text, static_cast<UInt32>(end - text));
}

// A default stream writes a floating value (a float widened to double) as printf's "%.6g";
// to_chars with the general format and precision 6 follows the same rules, for subnormals and
// infinities too. A NaN takes the stream itself: the Windows runtime writes a negative one as
// "nan" where to_chars writes "-nan".
kelString writeFloating(double value) {
    if (std::isnan(value)) {
        return streamWrite(value);
    }
    char text[32];
    char* const end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::general, 6).ptr;
    return internal::kelStringAccess::fromKnownLength(text, static_cast<UInt32>(end - text));
}

// The general path of text to number: stream extraction in the classic locale, with 0 for text
// that holds no number or one that does not fit T.
template <typename T>
T streamRead(char const* text) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    T value = T();
    if (!(in >> value)) {
        return T();
    }
    return value;
}

// What the extraction skips before a number: the blanks of the classic locale.
bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Longest digit run read directly: its value cannot overflow 64 bits. Longer runs (leading
// zeros included) take the general path.
constexpr int FAST_DIGITS = 18;

// Text to integer. The extraction skips blanks, takes one optional sign and then decimal
// digits up to the first other character; no digit, or a magnitude beyond the width read
// (for an unsigned type a minus wraps a magnitude up to its maximum), fails and gives 0. This
// reads the common shapes the same way and leaves long digit runs to the stream.
template <typename T>
T readInteger(char const* text) {
    if (text == nullptr) {
        return T();
    }
    char const* p = text;
    while (isBlank(*p)) {
        ++p;
    }
    bool const negative = *p == '-';
    if (*p == '-' || *p == '+') {
        ++p;
    }
    UInt64 magnitude = 0;
    int digits = 0;
    for (; isDigit(*p); ++p) {
        if (++digits > FAST_DIGITS) {
            return streamRead<T>(text);
        }
        magnitude = magnitude * 10 + static_cast<UInt64>(*p - '0');
    }
    if (digits == 0) {
        return T();
    }
    if constexpr (std::is_unsigned<T>::value) {
        if (magnitude > static_cast<UInt64>(std::numeric_limits<T>::max())) {
            return T();
        }
        return negative ? static_cast<T>(0u - magnitude) : static_cast<T>(magnitude);
    }
    UInt64 const limit = static_cast<UInt64>(std::numeric_limits<T>::max()) + (negative ? 1u : 0u);
    if (magnitude > limit) {
        return T();
    }
    // Two's complement wrap of the negated magnitude: also right for the type's minimum.
    return negative ? static_cast<T>(0u - magnitude) : static_cast<T>(magnitude);
}

// Largest written exponent read directly: with at most 19 digits the value then stays well
// inside the normal range of the type.
constexpr int FLOAT32_FAST_EXPONENT = 18;
constexpr int FLOAT64_FAST_EXPONENT = 250;

// Text to floating point. The extraction takes the longest prefix of the form
// [sign] digits [. digits] [e|E [sign] digits] (with at least one digit before the exponent
// mark) and converts it whole: a prefix the conversion does not take completely, such as "1e"
// or ".", fails and gives 0, as does a value beyond the type's range. from_chars rounds as the
// C library's conversion does; a prefix with many digits or a large exponent, where range and
// subnormal results come in, takes the general path.
template <typename T>
T readFloating(char const* text, int maxExponent) {
    if (text == nullptr) {
        return T();
    }
    char const* p = text;
    while (isBlank(*p)) {
        ++p;
    }
    char const* const start = *p == '+' ? p + 1 : p;
    if (*p == '-' || *p == '+') {
        ++p;
    }
    int digits = 0;
    bool mantissa = false;
    for (bool point = false;; ++p) {
        if (isDigit(*p)) {
            mantissa = true;
            ++digits;
        } else if (*p == '.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    if (mantissa && (*p == 'e' || *p == 'E')) {
        char const* q = p + 1;
        if (*q == '-' || *q == '+') {
            ++q;
        }
        int exponent = 0;
        for (; isDigit(*q); ++q) {
            if (exponent > maxExponent) {
                return streamRead<T>(text);
            }
            exponent = exponent * 10 + (*q - '0');
        }
        if (exponent > maxExponent) {
            return streamRead<T>(text);
        }
        p = q;
    }
    if (digits > FAST_DIGITS + 1) {
        return streamRead<T>(text);
    }
    T value = T();
    std::from_chars_result const read = std::from_chars(start, p, value);
    if (read.ec != std::errc() || read.ptr != p) {
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

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

} // namespace

kelStringConverter::~kelStringConverter() = default;

kelString kelStringConverter::toString(unsigned char value) {
    return writeInteger(static_cast<unsigned int>(value));
}
kelString kelStringConverter::toString(char value) {
    return writeInteger(static_cast<int>(static_cast<signed char>(value)));
}
kelString kelStringConverter::toString(unsigned short value) {
    return writeInteger(value);
}
kelString kelStringConverter::toString(short value) {
    return writeInteger(value);
}
kelString kelStringConverter::toString(unsigned int value) {
    return writeInteger(value);
}
kelString kelStringConverter::toString(int value) {
    return writeInteger(value);
}
kelString kelStringConverter::toString(unsigned long value) {
    return writeInteger(value);
}
kelString kelStringConverter::toString(long value) {
    return writeInteger(value);
}
kelString kelStringConverter::toString(unsigned long long value) {
    return writeInteger(value);
}
kelString kelStringConverter::toString(long long value) {
    return writeInteger(value);
}
kelString kelStringConverter::toString(float value) {
    return writeFloating(value);
}
kelString kelStringConverter::toString(double value) {
    return writeFloating(value);
}

// The 8-bit forms read 16 bits and keep the low byte.
UInt8 kelStringConverter::toUInt8(char const* text) {
    return static_cast<UInt8>(readInteger<unsigned short>(text));
}
SInt8 kelStringConverter::toSInt8(char const* text) {
    return static_cast<SInt8>(static_cast<UInt8>(readInteger<short>(text)));
}
UInt16 kelStringConverter::toUInt16(char const* text) {
    return readInteger<UInt16>(text);
}
SInt16 kelStringConverter::toSInt16(char const* text) {
    return readInteger<SInt16>(text);
}
UInt32 kelStringConverter::toUInt32(char const* text) {
    return readInteger<UInt32>(text);
}
SInt32 kelStringConverter::toSInt32(char const* text) {
    return readInteger<SInt32>(text);
}
UInt64 kelStringConverter::toUInt64(char const* text) {
    return readInteger<UInt64>(text);
}
SInt64 kelStringConverter::toSInt64(char const* text) {
    return readInteger<SInt64>(text);
}
Float32 kelStringConverter::toFloat32(char const* text) {
    return readFloating<Float32>(text, FLOAT32_FAST_EXPONENT);
}
Float64 kelStringConverter::toFloat64(char const* text) {
    return readFloating<Float64>(text, FLOAT64_FAST_EXPONENT);
}
unsigned int kelStringConverter::toUnsignedInt(char const* text) {
    return readInteger<unsigned int>(text);
}
int kelStringConverter::toInt(char const* text) {
    return readInteger<int>(text);
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

// Text encodings.

const unsigned char kelStringConverter::DEFAULT_UTF8_CHARACTER;

namespace {

// A UTF-16 buffer's bytes are least significant first, as on Windows, on every platform.
kelString fromUnits(UInt8 const* bytes, std::size_t count) {
    std::u16string units(count, u'\0');
    for (std::size_t i = 0; i < count; ++i) {
        units[i] = static_cast<char16_t>(bytes[2 * i] | bytes[2 * i + 1] << 8);
    }
    std::string text;
    if (!platform::utf16ToCodePage(units.data(), units.size(), text)) {
        return kelString();
    }
    return kelString(text.c_str());
}

} // namespace

kelMemoryBuffer kelStringConverter::toUnicode(char const* text) {
    kelMemoryBuffer result;
    std::u16string units;
    if (text == nullptr || !platform::codePageToUtf16(text, std::strlen(text), units) ||
        units.size() >= 0x7FFFFFFFu) {
        return result;
    }
    units.push_back(u'\0');
    if (!result.allocate(static_cast<UInt32>(2 * units.size()))) {
        return result;
    }
    for (std::size_t i = 0; i < units.size(); ++i) {
        result[static_cast<UInt32>(2 * i)] = static_cast<UInt8>(units[i] & 0xFF);
        result[static_cast<UInt32>(2 * i + 1)] = static_cast<UInt8>(units[i] >> 8);
    }
    return result;
}

kelString kelStringConverter::fromUnicodeString(unsigned char const* data) {
    if (data == nullptr) {
        return kelString();
    }
    std::size_t count = 0;
    while (data[2 * count] != 0 || data[2 * count + 1] != 0) {
        ++count;
    }
    return fromUnits(data, count);
}

kelString kelStringConverter::fromUnicodeString(kelMemoryBuffer const& data) {
    UInt8 const* const bytes = data.getBuffer();
    std::size_t const units = bytes == nullptr ? 0 : data.getSize() / 2;
    for (std::size_t count = 0; count < units; ++count) {
        if (bytes[2 * count] == 0 && bytes[2 * count + 1] == 0) {
            return fromUnits(bytes, count);
        }
    }
    return kelString(); // no terminating unit within the buffer
}

bool kelStringConverter::isUTF8CodeChar(unsigned char c) {
    return c >= 0x80;
}

int kelStringConverter::getUTF8CodeLength(unsigned char lead) {
    if (lead >= 0xFC) {
        return 6;
    }
    if (lead >= 0xF8) {
        return 5;
    }
    if (lead >= 0xF0) {
        return 4;
    }
    if (lead >= 0xE0) {
        return 3;
    }
    return lead >= 0xC0 ? 2 : 1;
}

unsigned char kelStringConverter::fromUTF8(unsigned char lead, unsigned char next) {
    if (lead == 0xC3) {
        return static_cast<unsigned char>(next + 64);
    }
    return lead == 0xC2 ? next : lead;
}

unsigned char kelStringConverter::fromUTF8(unsigned char lead, unsigned char const* next,
                                           unsigned char replacement) {
    if (next == nullptr) {
        return 0;
    }
    return getUTF8CodeLength(lead) < 3 ? fromUTF8(lead, *next) : replacement;
}

kelString kelStringConverter::fromUTF8(kelString const& text, unsigned char const* replacement) {
    auto const* bytes = reinterpret_cast<unsigned char const*>(text.c_str());
    std::size_t const size = text.size();
    std::string result;
    result.reserve(size);
    auto const append = [&result](unsigned char c) {
        if (c != 0) { // as kelString::append(char) does
            result += static_cast<char>(c);
        }
    };
    for (std::size_t i = 0; i < size;) {
        int const length = getUTF8CodeLength(bytes[i]);
        if (length == 1) {
            append(bytes[i]);
        } else if (length == 2) {
            append(fromUTF8(bytes[i], bytes[i + 1])); // at the end, bytes[i + 1] is the terminator
        } else if (replacement != nullptr) {
            append(*replacement);
        }
        i += static_cast<std::size_t>(length);
    }
    return kelString(result.c_str());
}

kelString kelStringConverter::fromUTF8(kelString const& text) {
    return fromUTF8(text, &DEFAULT_UTF8_CHARACTER);
}

kelString kelStringConverter::toUTF8(unsigned char c) {
    if (c < 128) {
        return kelString(static_cast<char>(c));
    }
    char const pair[3] = {static_cast<char>(c < 192 ? 0xC2 : 0xC3),
                          static_cast<char>(c < 192 ? c : c - 64), '\0'};
    return kelString(pair);
}

kelString kelStringConverter::toUTF8(kelString const& text) {
    char const* const bytes = text.c_str();
    std::string result;
    result.reserve(text.size());
    for (UInt32 i = 0; i < text.size(); ++i) {
        auto const c = static_cast<unsigned char>(bytes[i]);
        if (c >= 192) {
            result += static_cast<char>(0xC3);
            result += static_cast<char>(c - 64);
        } else if (c >= 128) {
            result += static_cast<char>(0xC2);
            result += static_cast<char>(c);
        } else if (c != 0) { // a 0 byte adds nothing to a concatenation of texts
            result += static_cast<char>(c);
        }
    }
    return kelString(result.c_str());
}

// XML goes through TinyXML. The version this library is built with (Debian's 2.6.2) differs
// from the behaviour callers rely on in three places, each worked around where it is used. Its
// encoder is a static member, so no object of the (abstract) TiXmlBase is needed to call it.

kelString kelStringConverter::toXML(char const* text) {
    std::string const in(text == nullptr ? "" : text);
    std::string out;
    out.reserve(in.size());
    std::size_t i = 0;
    while (i < in.size()) {
        // TiXmlBase::EncodeString of Debian's 2.6.2 escapes the '&' of a hexadecimal character
        // reference already in the text. It is right everywhere else, so it gets the pieces
        // between references, and each reference is copied here as the encoder used to: up to
        // its ';', or with no ';' up to the last character, which is then encoded normally.
        std::size_t const reference = in.find("&#x", i);
        std::size_t const end = reference == std::string::npos ? in.size() : reference;
        if (end > i) {
            std::string piece;
            TiXmlBase::EncodeString(in.substr(i, end - i), &piece);
            out += piece;
        }
        i = end;
        if (reference != std::string::npos) {
            while (i + 1 < in.size()) {
                out += in[i];
                ++i;
                if (in[i] == ';') {
                    break;
                }
            }
        }
    }
    return kelString(out.c_str());
}

kelString kelStringConverter::toXML(kelString const& text) {
    return toXML(text.c_str());
}

kelString kelStringConverter::fromXML(char const* text) {
    if (text == nullptr || *text == '\0') {
        // Debian's 2.6.2 stops on an assertion when a text node parses an empty text; an empty
        // text reads as nothing.
        return kelString();
    }
    // The parser reads a multi-byte UTF-8 character by its lead byte's length, also when the
    // text ends first, and then looks at the byte after it. A few '<' behind the terminator
    // keep those reads inside this copy and stop the parse there, which shows as a parse end
    // beyond the terminator.
    std::size_t const length = std::strlen(text);
    std::string padded(text, length);
    padded.append(1, '\0').append(4, '<');
    TiXmlText node("");
    char const* const end = node.Parse(padded.c_str(), nullptr, TIXML_ENCODING_UTF8);
    if (end != nullptr && end > padded.c_str() + length) {
        return kelString(); // a character cut off by the end of the text
    }
    if (node.CDATA()) {
        TiXmlPrinter printer;
        printer.SetIndent("");
        printer.SetLineBreak("");
        node.Accept(&printer);
        return kelString(printer.CStr());
    }
    // Debian's 2.6.2 printer encodes a text node's value again (a decoded "&lt;" would come back
    // as "&lt;"); the value is the decoded text.
    return kelString(node.Value());
}

kelString kelStringConverter::fromXML(kelString const& text) {
    return fromXML(text.c_str());
}

} // namespace KELKIT
