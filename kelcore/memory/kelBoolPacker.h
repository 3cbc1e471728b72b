#ifndef KELCORE_MEMORY_KELBOOLPACKER_H
#define KELCORE_MEMORY_KELBOOLPACKER_H

#include <kelcore/memory/kelIPacker.h>

namespace KELKIT {

// A truth value in the bit `offset` of the word at `buffer`, whose width is that of a one-bit
// field at that offset (kelBitsPacker::getByteLength). Any value other than 0.0 and -0.0, a
// NaN included, sets the bit; reading gives 1.0 or 0.0. The rest of the word stays. An offset
// of 64 or more, or a null buffer, is refused: nothing is written and reading gives 0.0.
class KELCORE_API kelBoolPacker : public virtual kelIPacker {
public:
    kelBoolPacker(void* buffer, unsigned char offset);
    kelBoolPacker(kelBoolPacker const& other);
    kelBoolPacker& operator=(kelBoolPacker const& other);
    ~kelBoolPacker() override;

    kelIPacker& operator=(double value) override;
    operator double() const override;

private:
    void* mBuffer;
    unsigned char mOffset;
};

} // namespace KELKIT

#endif
