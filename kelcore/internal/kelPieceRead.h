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

// Watches a read through the serializer's remaining size, asked once before the read and once
// after each piece (asking may cost a system call, as with a file). A piece counts as arrived
// when more bytes were consumed since the last question than the fixed fields read before it
// in that span: a stream that ends inside those fields has nothing left for the piece either.
class ReadProgress {
public:
    explicit ReadProgress(kelISerializer& serializer)
        : mSerializer(serializer), mMark(serializer.getRemainingSize()) {}

    bool arrived(UInt32 fieldBytes) {
        UInt32 const now = mSerializer.getRemainingSize();
        UInt32 const consumed = mMark - now;
        mMark = now;
        return consumed > fieldBytes;
    }

private:
    kelISerializer& mSerializer;
    UInt32 mMark;
};

// A UInt32 length, then that many bytes, into text, cut at the first 0 byte as a C text would
// be; fieldBytes were read since progress last looked. False, with text in an unspecified
// state, when the length or a piece of the payload made no progress.
inline bool readCountedText(kelISerializer& serializer, std::string& text, ReadProgress& progress,
                            UInt32 fieldBytes) {
    UInt32 length = 0;
    serializer.deserialize(length);
    if (length == 0) {
        text.clear();
        return progress.arrived(fieldBytes);
    }
    fieldBytes += 4;
    text.clear();
    UInt32 received = 0;
    while (received < length) {
        UInt32 const piece = (length - received < READ_PIECE) ? length - received : READ_PIECE;
        text.resize(static_cast<std::size_t>(received) + piece);
        serializer.deserialize(reinterpret_cast<UInt8*>(&text[received]), piece);
        if (!progress.arrived(fieldBytes)) {
            return false;
        }
        fieldBytes = 0;
        received += piece;
    }
    text.resize(std::strlen(text.c_str()));
    return true;
}

} // namespace internal
} // namespace KELKIT

#endif
