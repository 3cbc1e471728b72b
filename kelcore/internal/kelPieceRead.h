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

// Runs one read through the serializer; false when it consumed nothing.
template <class Read>
bool advanced(kelISerializer& serializer, Read read) {
    UInt32 const before = serializer.getRemainingSize();
    read();
    return serializer.getRemainingSize() != before;
}

// size bytes into data, a piece at most; false when nothing was consumed.
inline bool readPiece(kelISerializer& serializer, UInt8* data, UInt32 size) {
    return advanced(serializer, [&] { serializer.deserialize(data, size); });
}

// A UInt32 length, then that many bytes, into text, cut at the first 0 byte as a C text would
// be. False, with text in an unspecified state, when a piece made no progress.
inline bool readCountedText(kelISerializer& serializer, std::string& text) {
    UInt32 length = 0;
    if (!advanced(serializer, [&] { serializer.deserialize(length); })) {
        return false;
    }
    text.clear();
    UInt32 received = 0;
    while (received < length) {
        UInt32 const piece = (length - received < READ_PIECE) ? length - received : READ_PIECE;
        text.resize(static_cast<std::size_t>(received) + piece);
        if (!readPiece(serializer, reinterpret_cast<UInt8*>(&text[received]), piece)) {
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
