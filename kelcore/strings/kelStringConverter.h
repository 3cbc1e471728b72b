#ifndef KELCORE_STRINGS_KELSTRINGCONVERTER_H
#define KELCORE_STRINGS_KELSTRINGCONVERTER_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/strings/kelString.h>

#if defined(__MINGW32__)
#define KEL_PRINTF_FORMAT(fmt, args) __attribute__((format(gnu_printf, fmt, args)))
#elif defined(__GNUC__)
#define KEL_PRINTF_FORMAT(fmt, args) __attribute__((format(printf, fmt, args)))
#else
#define KEL_PRINTF_FORMAT(fmt, args)
#endif

namespace KELKIT {

// Conversions between numbers and text, hexadecimal and printable dumps, CSV fields and
// fixed-shape patterns. Every operation is static and thread-safe.
//
// Numbers are written and read as a standard string stream with default settings does it (in
// the classic locale, so never with thousands separators):
//  - reading skips leading white space, reads decimal only ("0x1F" reads 0), accepts a sign
//    (a minus wraps for the unsigned types: "-1" gives 65535 as UInt16), and ignores whatever
//    follows the number ("12abc" gives 12);
//  - toUInt8/toSInt8 read 16 bits and truncate: "300" gives 44, "200" gives -56 as SInt8;
//  - text that does not begin with a number, or whose number does not fit the width read,
//    gives 0 in every form (also for the floating-point forms, e.g. "1e999").
// Floating-point output is the stream's default: 6 significant digits, general notation.
class KELCORE_API kelStringConverter {
public:
    kelStringConverter() = default;
    kelStringConverter(kelStringConverter const&) = default;
    kelStringConverter& operator=(kelStringConverter const&) = default;
    virtual ~kelStringConverter();

    // Numbers in decimal; a char prints its numeric value, not the character. The native
    // long forms print the full native value (64 bits on Linux).
    static kelString toString(unsigned char value);
    static kelString toString(char value);
    static kelString toString(unsigned short value);
    static kelString toString(short value);
    static kelString toString(unsigned int value);
    static kelString toString(int value);
    static kelString toString(unsigned long value);
    static kelString toString(long value);
    static kelString toString(unsigned long long value);
    static kelString toString(long long value);
    static kelString toString(float value);
    static kelString toString(double value);

    static UInt8 toUInt8(char const* text);
    static UInt8 toUInt8(kelString const& text);
    static SInt8 toSInt8(char const* text);
    static SInt8 toSInt8(kelString const& text);
    static UInt16 toUInt16(char const* text);
    static UInt16 toUInt16(kelString const& text);
    static SInt16 toSInt16(char const* text);
    static SInt16 toSInt16(kelString const& text);
    static UInt32 toUInt32(char const* text);
    static UInt32 toUInt32(kelString const& text);
    static SInt32 toSInt32(char const* text);
    static SInt32 toSInt32(kelString const& text);
    static UInt64 toUInt64(char const* text);
    static UInt64 toUInt64(kelString const& text);
    static SInt64 toSInt64(char const* text);
    static SInt64 toSInt64(kelString const& text);
    static Float32 toFloat32(char const* text);
    static Float32 toFloat32(kelString const& text);
    static Float64 toFloat64(char const* text);
    static Float64 toFloat64(kelString const& text);
    static unsigned int toUnsignedInt(char const* text);
    static unsigned int toUnsignedInt(kelString const& text);
    static int toInt(char const* text);
    static int toInt(kelString const& text);
    // The library's 32-bit "long": the same reading as toUInt32 and toSInt32.
    static UInt32 toUnsignedLong(char const* text);
    static UInt32 toUnsignedLong(kelString const& text);
    static SInt32 toLong(char const* text);
    static SInt32 toLong(kelString const& text);
    static double toDouble(char const* text);
    static double toDouble(kelString const& text);
    static float toFloat(char const* text);
    static float toFloat(kelString const& text);

    // Whether the text begins with a number (see kelNumbers::isNumeric).
    static bool isNumeric(char const* text);
    static bool isNumeric(kelString const& text);

    // printf-style formatting. The result holds at most 10239 characters: a longer one is cut
    // there, never written beyond the buffer.
    static kelString format(char const* pattern, ...) KEL_PRINTF_FORMAT(1, 2);

    // True when the text has the pattern's length and each character fits its pattern
    // character: '0' a digit, 'A' or 'a' a letter of either case, anything else itself.
    // A null text or pattern counts as empty.
    static bool formatMatch(char const* pattern, char const* text);

    // A CSV field for the ';' separator: numeric text stays as it is; text with ';' or '"' is
    // quoted, with each '"' doubled.
    static kelString toCSV(char const* text);
    static kelString toCSV(kelString const& text);

    // Lower-case hexadecimal of the value's two's complement bits, 2, 4, 8 or 16 digits by width.
    static kelString toHex(unsigned char value);
    static kelString toHex(char value);
    static kelString toHex(unsigned short value);
    static kelString toHex(short value);
    static kelString toHex(unsigned int value);
    static kelString toHex(int value);
    static kelString toHex(unsigned long value);
    static kelString toHex(long value);
    static kelString toHex(unsigned long long value);
    static kelString toHex(long long value);
    // Each byte as two digits, no separators; null or size 0 gives the empty text.
    static kelString toHex(UInt8 const* data, UInt32 size);
    static kelString toHex(char const* text);
    static kelString toHex(kelString const& text);

    // Bytes 32 to 126 and 120 chosen bytes above them are printable.
    static bool isPrintableCharacter(char const& c);
    // size characters: printable bytes as they are, all others as the replacement (which may
    // itself be 0). Null data gives the empty text.
    static kelString toPrintableString(UInt8 const* data, UInt32 size, char replacement);
};

} // namespace KELKIT

#endif
