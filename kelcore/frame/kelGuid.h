#ifndef KELCORE_FRAME_KELGUID_H
#define KELCORE_FRAME_KELGUID_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// A random 128-bit identifier with the version 4 and variant bits set. A new object holds a
// fresh random value, not the null one.
class KELCORE_API kelGuid {
public:
    static const UInt32 mGuidSize = 16;

    kelGuid();
    kelGuid(kelGuid const& other);
    kelGuid& operator=(kelGuid const& other);
    virtual ~kelGuid();

    virtual void clear();
    virtual bool isNull() const;
    virtual void regenerate();
    // 36 characters: 8-4-4-4-12 lower-case hexadecimal digits.
    virtual kelString toString() const;
    // Reads the text form (either case). A text that is not 36 characters long leaves the null
    // value; the hyphen positions are skipped whatever they hold, and a digit pair that is not
    // hexadecimal reads as strtol reads it.
    virtual void fromString(char const* text);
    virtual bool operator==(kelGuid const& other) const;
    virtual bool operator!=(kelGuid const& other) const;

private:
    UInt8 mBytes[mGuidSize];
};

} // namespace KELKIT

#endif
