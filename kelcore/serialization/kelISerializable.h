#ifndef KELCORE_SERIALIZATION_KELISERIALIZABLE_H
#define KELCORE_SERIALIZATION_KELISERIALIZABLE_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/serialization/kelISerializer.h>

namespace KELKIT {

// A value that writes its state through a serializer and reads the same sequence back.
class KELCORE_API kelISerializable {
public:
    kelISerializable() = default;
    kelISerializable(kelISerializable const&) = default;
    kelISerializable& operator=(kelISerializable const&) = default;

    virtual void serializeTo(kelISerializer& serializer) const = 0;
    virtual void deserializeFrom(kelISerializer& serializer) = 0;

protected:
    // Not deleted through this interface: it has no virtual destructor of its own.
    ~kelISerializable() = default;
};

} // namespace KELKIT

#endif
