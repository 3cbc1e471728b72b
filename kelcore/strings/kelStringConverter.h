#ifndef KELCORE_STRINGS_KELSTRINGCONVERTER_H
#define KELCORE_STRINGS_KELSTRINGCONVERTER_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/memory/kelMemoryBuffer.h>
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

    // Text encodings. The UTF-8 forms know exactly the code points of Latin-1: they are not a
    // general UTF-8 codec.

    // The replacement for UTF-8 sequences without a single-byte form: a blank.
    static const unsigned char DEFAULT_UTF8_CHARACTER = 32;

    // UTF-16 code units of the text decoded from the system's default code page (on POSIX the
    // character set of the caller's locale), terminating 0 included, least significant byte
    // first. Empty when nothing can be converted: a null text, a byte the code page cannot
    // decode (POSIX), no converter.
    static kelMemoryBuffer toUnicode(char const* text);
    // A 0-terminated UTF-16 text encoded to the default code page; characters it lacks become
    // the system's replacement. Null data, or a conversion that yields nothing, gives "".
    static kelString fromUnicodeString(unsigned char const* data);
    // The same, never reading beyond the buffer: a buffer without a terminating unit gives "".
    static kelString fromUnicodeString(kelMemoryBuffer const& data);

    // True for any byte from 128 up.
    static bool isUTF8CodeChar(unsigned char c);
    // 6 from 0xFC, 5 from 0xF8, 4 from 0xF0, 3 from 0xE0, 2 from 0xC0, else 1 (continuation
    // bytes included).
    static int getUTF8CodeLength(unsigned char lead);
    // The Latin-1 byte of a two-byte sequence: next + 64 after 0xC3, next after 0xC2, otherwise
    // the lead itself.
    static unsigned char fromUTF8(unsigned char lead, unsigned char next);
    // 0 for a null next; the form above for leads of length below 3; else the replacement.
    static unsigned char fromUTF8(unsigned char lead, unsigned char const* next,
                                  unsigned char replacement);
    // Decodes by lead length: single bytes as they are, pairs by the form above, longer
    // sequences as the replacement (nothing for a null one). 0 bytes are dropped, and a pair cut
    // off by the end of the text takes the terminator as its second byte.
    static kelString fromUTF8(kelString const& text, unsigned char const* replacement);
    static kelString fromUTF8(kelString const& text);
    // Below 128 the byte itself; to 191 the bytes 0xC2, c; above, 0xC3, c - 64.
    static kelString toUTF8(unsigned char c);
    static kelString toUTF8(kelString const& text);

    // The five XML characters as entities and bytes below 32 as "&#xHH;"; a hexadecimal
    // character reference already present ("&#x" up to its ';') is copied as it stands.
    static kelString toXML(char const* text);
    static kelString toXML(kelString const& text);
    // The text up to the first '<' as an XML parser reads a text node: entities decoded
    // (numeric ones above 127 as UTF-8), white space trimmed and each inner run one blank. A
    // text starting with "<![CDATA[" comes back as that section, unchanged inside. A multi-byte
    // UTF-8 sequence cut off by the end of the text gives "".
    static kelString fromXML(char const* text);
    static kelString fromXML(kelString const& text);
};

} // namespace KELKIT

#endif
