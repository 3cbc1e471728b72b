#ifndef KELCORE_MEMORY_KELBITACCUMULATOR_H
#define KELCORE_MEMORY_KELBITACCUMULATOR_H

#include <kelcore/memory/kelBitAdaptor.h>

namespace KELKIT {

// A bit view with a cursor, for writing or reading bits one after the other.
//
// The cursor stops at both ends of the block: stepping forward from the last bit stays there
// (a further insertBit overwrites that bit), stepping back from bit 0 stays at bit 0. moveTo
// places it anywhere without a test; a cursor outside the block reads false and writes
// nothing. On an empty block a forward step leaves the cursor at bit 0.
//
// Moving the cursor is const: it is not part of the view's value. setBuffer keeps it.
class KELCORE_API kelBitAccumulator : public kelBitAdaptor {
public:
    kelBitAccumulator();
    kelBitAccumulator(void* buffer, UInt32 size);
    kelBitAccumulator(kelBitAccumulator const& other);
    kelBitAccumulator& operator=(kelBitAccumulator const& other);
    ~kelBitAccumulator() override;

    using kelBitAdaptor::getBit;
    using kelBitAdaptor::setBit;

    // The cursor to bit 0 of byte 0; the bits stay.
    void reset();
    bool getBit() const;
    // The cursor stays.
    void setBit(bool value);
    kelBitAccumulator& operator=(bool const& value);
    // setBit, then one step forward.
    void insertBit(bool value);

    kelBitAccumulator const& operator++() const;
    kelBitAccumulator const& operator--() const;
    // count single steps, taken at once.
    void moveForward(UInt32 count) const;
    void moveBackward(UInt32 count) const;
    // Byte index / 8, bit index % 8.
    void moveTo(UInt32 index) const;

private:
    UInt64 cursorIndex() const;
    void placeCursor(UInt64 index) const;

    mutable UInt32 mBytePosition;
    mutable UInt8 mBitPosition;
};

} // namespace KELKIT

#endif
