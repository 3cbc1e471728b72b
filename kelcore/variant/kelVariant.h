#ifndef KELCORE_VARIANT_KELVARIANT_H
#define KELCORE_VARIANT_KELVARIANT_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/frame/kelVariantFormat.h>
#include <kelcore/serialization/kelISerializable.h>
#include <kelcore/strings/kelString.h>
#include <kelcore/time/kelTime.h>

namespace KELKIT {

// One value of any of the thirteen kelVariantFormat formats, readable as any of them.
//
// Numbers live in one 64-bit cell: Bool and the unsigned formats zero-extended, the signed
// formats sign-extended, a Float32 as its 32 bits in the low half (high half 0), a Float64 as its
// 64 bits. String and Time hold their own separately allocated object, which copies duplicate.
// The empty state, which a new variant has and every change of value passes through, is UInt8 0.
//
// Reading never changes the object and never fails:
//  - to an integer from Bool or an integer format: saturated to the target's range (a negative
//    value read as unsigned gives 0, 300 read as UInt8 gives 255); as bool, 0 and negative
//    values are false, positive ones true;
//  - to an integer from Float32/Float64: truncated toward zero and saturated, exactly by the
//    value (a Float32 2147483648 read as SInt32 gives 2147483647, never an overflow). A NaN
//    gives 0 for every integer type, and true for bool (any non-zero value is true there, and
//    negative values false);
//  - from String: through the same-named kelStringConverter reading, without saturation
//    ("300" read as UInt8 gives 44); getBool is toUInt8 of the text not being 0;
//  - from Time: false, 0 and 0.0; getTime of a non-Time value is the current time, on which a
//    String's text was tried with kelTime::fromString;
//  - Float64 read as Float32 rounds as IEEE 754 does (out of range gives an infinity).
//
// setString (and every way of setting a text) recognises "true" and "false" in any case as Bool
// and the time text "YYYY/MM/DD hh:mm:ss" as Time; any other text, a numeric one too, is String.
//
// No lock: concurrent reads are safe, a change is the caller's to exclude.
class KELCORE_API kelVariant : public virtual kelISerializable {
public:
    kelVariant();
    kelVariant(kelTime const& value);
    kelVariant(char const* value);
    kelVariant(kelString const& value);
    kelVariant(double const& value);
    kelVariant(float const& value);
    kelVariant(long long const& value);
    kelVariant(unsigned long long const& value);
    kelVariant(SInt32 const& value);
    kelVariant(UInt32 const& value);
    kelVariant(short const& value);
    kelVariant(unsigned short const& value);
    kelVariant(char const& value);
    kelVariant(unsigned char const& value);
    kelVariant(bool const& value);
    kelVariant(kelVariant const& other);
    virtual ~kelVariant();

    virtual bool getBool() const;
    virtual UInt8 getUInt8() const;
    virtual SInt8 getSInt8() const;
    virtual UInt16 getUInt16() const;
    virtual SInt16 getSInt16() const;
    virtual UInt32 getUInt32() const;
    virtual SInt32 getSInt32() const;
    virtual UInt64 getUInt64() const;
    virtual SInt64 getSInt64() const;
    virtual Float32 getFloat32() const;
    virtual Float64 getFloat64() const;
    virtual kelString getString() const;
    virtual kelTime getTime() const;

    virtual void setBool(bool const& value);
    virtual void setUInt8(UInt8 const& value);
    virtual void setSInt8(SInt8 const& value);
    virtual void setUInt16(UInt16 const& value);
    virtual void setSInt16(SInt16 const& value);
    virtual void setUInt32(UInt32 const& value);
    virtual void setSInt32(SInt32 const& value);
    virtual void setUInt64(UInt64 const& value);
    virtual void setSInt64(SInt64 const& value);
    virtual void setFloat32(Float32 const& value);
    virtual void setFloat64(Float64 const& value);
    // A null text makes the variant a String: it keeps its text if it was one, else it is empty.
    virtual void setString(char const* value);
    virtual void setString(kelString const& value);
    virtual void setTime(kelTime const& value);

    // The setter of the argument's type. Here, in get, operator= and the constructors, "long"
    // is the library's 32-bit SInt32/UInt32 (int-based). A native long (64 bits on Linux, a
    // distinct 32-bit type on Windows) matches no overload exactly and is ambiguous, so such a
    // call does not compile rather than pick a width that differs between the platforms.
    virtual void set(kelTime const& value);
    virtual void set(char const* value);
    virtual void set(kelString const& value);
    virtual void set(double const& value);
    virtual void set(float const& value);
    virtual void set(long long const& value);
    virtual void set(unsigned long long const& value);
    virtual void set(SInt32 const& value);
    virtual void set(UInt32 const& value);
    virtual void set(short const& value);
    virtual void set(unsigned short const& value);
    virtual void set(char const& value);
    virtual void set(unsigned char const& value);
    virtual void set(bool const& value);

    // The getter of the argument's type, stored in out.
    virtual void get(kelTime& out) const;
    virtual void get(kelString& out) const;
    virtual void get(double& out) const;
    virtual void get(float& out) const;
    virtual void get(long long& out) const;
    virtual void get(unsigned long long& out) const;
    virtual void get(SInt32& out) const;
    virtual void get(UInt32& out) const;
    virtual void get(short& out) const;
    virtual void get(unsigned short& out) const;
    virtual void get(char& out) const;
    virtual void get(unsigned char& out) const;
    virtual void get(bool& out) const;

    virtual kelVariant& operator=(kelTime const& value);
    virtual kelVariant& operator=(char const* value);
    virtual kelVariant& operator=(kelString const& value);
    virtual kelVariant& operator=(double const& value);
    virtual kelVariant& operator=(float const& value);
    virtual kelVariant& operator=(long long const& value);
    virtual kelVariant& operator=(unsigned long long const& value);
    virtual kelVariant& operator=(SInt32 const& value);
    virtual kelVariant& operator=(UInt32 const& value);
    virtual kelVariant& operator=(short const& value);
    virtual kelVariant& operator=(unsigned short const& value);
    virtual kelVariant& operator=(char const& value);
    virtual kelVariant& operator=(unsigned char const& value);
    virtual kelVariant& operator=(bool const& value);

    // Takes the other's format and a copy of its value (a new String or Time object). Assigning
    // a variant to itself keeps its value.
    kelVariant& operator=(kelVariant const& other);

    kelVariantFormat const& getFormat() const;

    // Whether the text, set into a variant and read back in this variant's format, prints as
    // exactly the same characters: a UInt8 accepts "12" and refuses "300", "012" and "+1"; a
    // Float64 refuses "1.50". A null text is refused. accept changes nothing; fromString takes
    // the value on success and changes nothing on failure.
    bool accept(char const* text) const;
    bool fromString(char const* text);

    // Same format: the cells as 64-bit values (so floats by their bits: a NaN equals itself, 0.0
    // and -0.0 differ), texts by content, times by instant. Two float formats: by value as
    // Float64 (a NaN equals nothing). Both Bool/unsigned or both signed: by value. Anything
    // else: by getString ("5" equals UInt8 5 and Float64 5.0).
    bool operator==(kelVariant const& other) const;
    bool operator!=(kelVariant const& other) const;

    // The format number as one byte, then the cell as a UInt64 (formats 0 to 10, 9 bytes in
    // all), the String's own form or the Time's own form.
    void serializeTo(kelISerializer& serializer) const override;
    // Reads what serializeTo wrote; a String stays String whatever its text. A format number
    // above 12 reads nothing more and leaves the empty state. A cell that no setter could have
    // produced (a UInt8 cell of 0x1234, a Float32 with a high half) is cut to its format's
    // width and extended as a setter would; a Bool cell is true when its low byte is not 0.
    // When the serializer throws, the exception passes and the variant keeps its old value; so
    // it does when a serializer that cannot throw on a short read (kelBufferedSerializer,
    // kelFileSerializer) delivers nothing for a part. A String's length is believed only as its
    // bytes arrive (see kelString::deserializeFrom).
    void deserializeFrom(kelISerializer& serializer) override;

private:
    union Cell {
        UInt64 bits;
        kelString* text;
        kelTime* time;
    };

    void clear();
    // Frees a String or Time object and nothing else: the caller sets the format next.
    void release();
    // The one writer of mFormat and mKind.
    void setKind(kelVariantFormat::Enum kind);
    void stringnify();
    void timetify();

    // clear, then the given numeric format with its already extended cell.
    void setCell(kelVariantFormat::Enum format, UInt64 bits);
    bool roundTrip(char const* text, kelVariant* target) const;

    kelVariantFormat mFormat;
    // mFormat's value, read without a call into the enumeration class on every access.
    kelVariantFormat::Enum mKind;
    Cell mValue;
};

} // namespace KELKIT

#endif
