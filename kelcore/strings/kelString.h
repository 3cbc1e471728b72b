#ifndef KELCORE_STRINGS_KELSTRING_H
#define KELCORE_STRINGS_KELSTRING_H

#include <kelcore/frame/kelDefaultComparator.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelIHashable.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/serialization/kelISerializable.h>

#include <memory>
#include <string>

namespace KELKIT {

namespace internal {
struct kelStringAccess;
}

// The library's text: a mutable byte string with value semantics. It knows no encoding.
//
// The value is a NUL-terminated text: copying, comparing with another kelString, searching
// and appending all go by c_str(). Only the single-character forms (constructor, =, +=, +)
// store a 0 byte as it is, and count it in size().
//
// Positions are 32-bit. Out-of-range positions have the neutral results given below; only
// operator[] is unchecked. A null `char const*` argument is taken as the empty text.
class KELCORE_API kelString : public virtual kelISerializable, public virtual kelIHashable {
public:
    kelString();
    kelString(kelString const& other);
    kelString(char const* text);
    kelString(char c);
    ~kelString() override;

    char const* c_str() const;
    UInt32 size() const;
    bool empty() const;
    void clear();
    // Unchecked: the caller keeps the position below size().
    char const& operator[](UInt32 pos) const;
    char& operator[](UInt32 pos);

    // Trimming without an argument removes blanks (32) only, not tabs or line ends.
    void trimRight(char c);
    void trimLeft(char c);
    void trim(char c);
    void trimRight();
    void trimLeft();
    void trim();
    void reverse();
    // Byte by byte through toupper/tolower, so the process's locale decides.
    void makeUpper();
    void makeLower();

    // A position beyond size() appends.
    void insert(UInt32 pos, kelString const& text);
    void insert(UInt32 pos, char const* text);
    void insert(UInt32 pos, char c);
    // append(char) goes through a one-character text: the byte 0 appends nothing.
    void append(kelString const& text);
    void append(char const* text);
    inline void append(char c);
    // Removes the one character at pos (not the rest of the text).
    void erase(UInt32 pos);
    void erase(UInt32 pos, UInt32 count);

    // Replaces every occurrence, left to right and without rescanning inserted text; returns
    // the count. An empty `from` replaces nothing.
    UInt32 replace(char const* from, char const* to);
    UInt32 replace(kelString const& from, kelString const& to);
    UInt32 replace(kelString const& from, char const* to);
    UInt32 replace(char const* from, kelString const& to);
    // A `from` of 0 replaces nothing; a `to` of 0 deletes each `from`.
    UInt32 replace(char from, char to);
    // Returns 0 when pos is not below size(); otherwise 1 if the size changed, else 0.
    UInt32 replace(UInt32 pos, UInt32 count, char const* text);
    UInt32 replace(UInt32 pos, UInt32 count, kelString const& text);

    // Empty when start is not below size().
    kelString subString(UInt32 start, UInt32 count) const;
    // The first count characters.
    kelString subString(UInt32 count) const;
    kelString subStringLeft(UInt32 count) const;
    // The last count characters; a count above size() gives the empty text.
    kelString subStringRight(UInt32 count) const;

    // On success, stores the position of the first match at or after start; on failure,
    // leaves pos as it was. The empty text matches at any start up to size().
    bool find(char const* text, UInt32 start, UInt32& pos) const;
    bool find(char const* text, UInt32& pos) const;
    bool find(kelString const& text, UInt32 start, UInt32& pos) const;
    bool find(kelString const& text, UInt32& pos) const;
    bool find(char c, UInt32 start, UInt32& pos) const;
    bool find(char c, UInt32& pos) const;

    kelString const& operator=(kelString const& other);
    kelString const& operator=(char const* text);
    kelString const& operator=(char c);
    kelString const& operator+=(kelString const& text);
    kelString const& operator+=(char const* text);
    // Inline (as append(char)), so that appending a character costs no call while the text has
    // room for it.
    inline kelString const& operator+=(char c);
    // Not const: a + b appends b to a itself and returns a copy of the result.
    kelString operator+(kelString const& text);
    kelString operator+(char const* text);
    kelString operator+(char c);

    // Byte order as unsigned values; a prefix orders first. A char operand is a one-character
    // text.
    bool operator==(kelString const& other) const;
    bool operator==(char const* other) const;
    bool operator==(char other) const;
    bool operator!=(kelString const& other) const;
    bool operator!=(char const* other) const;
    bool operator!=(char other) const;
    bool operator<(kelString const& other) const;
    bool operator<(char const* other) const;
    bool operator<(char other) const;
    bool operator<=(kelString const& other) const;
    bool operator<=(char const* other) const;
    bool operator<=(char other) const;
    bool operator>(kelString const& other) const;
    bool operator>(char const* other) const;
    bool operator>(char other) const;
    bool operator>=(kelString const& other) const;
    bool operator>=(char const* other) const;
    bool operator>=(char other) const;

    // A UInt32 length, then that many bytes (none when empty).
    void serializeTo(kelISerializer& serializer) const override;
    // Reads that form; the text ends at the first 0 byte of the data. A long length is believed
    // only as the bytes arrive, so a hostile one costs no more memory than the data behind it.
    // A refused read leaves the string as it was: the serializer's exception passes, and with a
    // serializer that cannot throw on a short read (kelBufferedSerializer, kelFileSerializer)
    // the read stops at the first piece that arrives empty.
    void deserializeFrom(kelISerializer& serializer) override;

    // The product of the characters taken as signed bytes, modulo 2^32; 0 when empty. The order
    // of the characters does not matter.
    UInt32 getHashCode() const override;

    // strlen cut to 32 bits; 0 for null.
    static UInt32 size(char const* text);
    // Two nulls are equal; a null never equals a text, not even the empty one.
    static bool equals(char const* first, char const* second);
    // At most count characters, ending early at a 0 byte; the text need not be terminated.
    static kelString extractString(char const* text, UInt32 count);

private:
    friend struct internal::kelStringAccess;
    // The first length bytes of text, which the caller knows hold no 0 byte.
    kelString(char const* text, UInt32 length);
    // operator+=(char) where the text has to grow.
    void appendGrowing(char c);

    std::unique_ptr<std::string> mText;
};

inline void kelString::append(char c) {
    if (c != '\0') {
        *this += c;
    }
}

inline kelString const& kelString::operator+=(char c) {
    std::string& text = *mText;
    if (text.size() < text.capacity()) {
        text.push_back(c);
    } else {
        appendGrowing(c);
    }
    return *this;
}

extern template class KELCORE_API kelDefaultComparator<kelString>;

} // namespace KELKIT

#endif
