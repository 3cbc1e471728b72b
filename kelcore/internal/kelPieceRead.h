#ifndef KELCORE_INTERNAL_KELPIECEREAD_H
#define KELCORE_INTERNAL_KELPIECEREAD_H

// Internal: not installed. How a reader of untrusted bytes takes a payload whose length came
// from the stream itself, so that a hostile length costs no more than the bytes behind it.
//
// The payload is fetched in pieces of at most READ_PIECE bytes, and the destination grows only
// as pieces arrive. Most serializers throw on a short read; kelBufferedSerializer and
// kelFileSerializer cannot, and leave their read position where it was when nothing is there.
// So every piece is checked for progress, through getRemainingSize(): a piece that moved
// nothing ends the read, and the reader then keeps its old value.

#include <kelcore/frame/kelTypes.h>
#include <kelcore/serialization/kelISerializer.h>

#include <cstring>
#include <string>

namespace KELKIT {
namespace internal {

constexpr UInt32 READ_PIECE = 1u << 16;

// Watches the read of one value through the serializer's remaining size. Offsets count from the
// value's first byte. A piece has arrived when the read position has moved beyond the piece's
// start: a stream that ends earlier has nothing left for the piece either. The remaining size is
// asked once at the start and then only for a piece that reaches beyond it (asking may cost a
// system call, as with a file); a remaining size of 2 GiB or more is not believed, as it is what
// a read position beyond the end gives.
class ReadProgress {
public:
    explicit ReadProgress(kelISerializer& serializer)
        : mSerializer(serializer), mStart(serializer.getRemainingSize()) {}

    bool arrived(UInt64 pieceStart, UInt64 pieceEnd) const {
        if (mStart < 0x80000000u && pieceEnd <= mStart) {
            return true;
        }
        UInt32 const consumed = mStart - mSerializer.getRemainingSize();
        return consumed > pieceStart;
    }

private:
    kelISerializer& mSerializer;
    UInt32 const mStart;
};

// A UInt32 length at offset `at` of the value, then that many bytes, into text, cut at the first
// 0 byte as a C text would be. False, with text in an unspecified state, when the length or a
// piece of the payload did not arrive.
inline bool readCountedText(kelISerializer& serializer, std::string& text,
                            ReadProgress const& progress, UInt32 at) {
    UInt32 length = 0;
    serializer.deserialize(length);
    text.clear();
    if (length == 0) {
        return progress.arrived(at, at + 4);
    }
    UInt64 const payload = static_cast<UInt64>(at) + 4;
    UInt32 received = 0;
    while (received < length) {
        UInt32 const piece = (length - received < READ_PIECE) ? length - received : READ_PIECE;
        text.resize(static_cast<std::size_t>(received) + piece);
        serializer.deserialize(reinterpret_cast<UInt8*>(&text[received]), piece);
        if (!progress.arrived(payload + received, payload + received + piece)) {
            return false;
        }
        received += piece;
    }
    text.resize(std::strlen(text.c_str()));
    return true;
}

} // namespace internal
} // namespace KELKIT

#endif
