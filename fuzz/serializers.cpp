// The four serializers and the linked buffer under a random run of loadData, clearData, typed
// writes and typed reads, each against a plain model of its documented rules: the binary
// serializer grows by whole chunks and refuses a read past its block; the memory serializer
// drops a write that would reach the end of its block and refuses a read past it; the buffered
// serializer follows its chain of blocks, reading into the unwritten end of the last block; the
// file serializer reads what the file holds, short at its end. A refused read touches neither
// the destination nor the position; bytes that were written read back as written.

#include "kelFuzz.h"

#include <kelcore/memory/kelLinkedBuffer.h>

#include <cstring>
#include <memory>

using namespace KELKIT;
using kelFuzz::Kind;

namespace {

typedef std::vector<std::uint8_t> Bytes;
int const UNKNOWN = -1; // a byte that holds whatever the memory held

// A store whose bytes are known or not.
struct Store {
    std::vector<int> bytes;
    void put(std::size_t at, std::uint8_t const* data, std::size_t n) {
        if (bytes.size() < at + n) {
            bytes.resize(at + n, UNKNOWN);
        }
        for (std::size_t i = 0; i < n; ++i) {
            bytes[at + i] = data[i];
        }
    }
};

// The chain walk of the linked buffer, from its head: the first block whose capacity exceeds
// what is left of the offset, subtracting the used bytes of the blocks passed.
struct ChainModel {
    struct Block {
        std::uint32_t capacity;
        std::uint32_t used;
        std::vector<int> bytes;
    };
    std::vector<Block> blocks;
    std::uint32_t blockSize = 1024;

    std::uint64_t size() const {
        std::uint64_t total = 0;
        for (Block const& b : blocks) {
            total += b.used;
        }
        return total;
    }
    std::uint64_t capacity() const {
        std::uint64_t total = 0;
        for (Block const& b : blocks) {
            total += b.capacity;
        }
        return total;
    }
    bool at(std::uint64_t offset, std::size_t& index, std::uint32_t& inBlock) const {
        for (index = 0; index < blocks.size(); ++index) {
            if (offset < blocks[index].capacity) {
                inBlock = static_cast<std::uint32_t>(offset);
                return true;
            }
            offset -= blocks[index].used;
        }
        return false;
    }
    void reserve(std::uint64_t wanted) {
        while (capacity() < wanted) {
            blocks.push_back(Block{blockSize, 0, std::vector<int>(blockSize, UNKNOWN)});
        }
    }
    bool write(std::uint8_t const* data, std::uint32_t n, std::uint64_t offset) {
        reserve(offset + n);
        while (n > 0) {
            std::size_t index;
            std::uint32_t inBlock;
            if (!at(offset, index, inBlock)) {
                return false;
            }
            Block& b = blocks[index];
            std::uint32_t const piece = std::min(n, b.capacity - inBlock);
            for (std::uint32_t i = 0; i < piece; ++i) {
                b.bytes[inBlock + i] = data[i];
            }
            b.used = std::max(b.used, inBlock + piece);
            data += piece;
            offset += piece;
            n -= piece;
        }
        return true;
    }
    std::uint32_t read(std::vector<int>& out, std::uint32_t n, std::uint64_t offset) const {
        std::uint32_t copied = 0;
        while (copied < n) {
            std::size_t index;
            std::uint32_t inBlock;
            if (!at(offset, index, inBlock)) {
                break;
            }
            Block const& b = blocks[index];
            std::uint32_t const piece = std::min(n - copied, b.capacity - inBlock);
            for (std::uint32_t i = 0; i < piece; ++i) {
                out[copied + i] = b.bytes[inBlock + i];
            }
            copied += piece;
            offset += piece;
        }
        return copied;
    }
    bool resize(std::uint64_t wanted) {
        if (wanted > capacity()) {
            return false;
        }
        for (Block& b : blocks) {
            if (wanted <= b.capacity) {
                b.used = static_cast<std::uint32_t>(wanted);
                wanted = 0;
            } else {
                wanted -= b.capacity;
            }
        }
        return true;
    }
};

// One serializer's model. read() fills out (starting as the destination's old bytes) and says
// whether the serializer throws.
struct Model {
    Kind kind;
    std::uint32_t writeAt = 0, readAt = 0;
    Store store;             // binary, memory, file
    std::uint32_t limit = 0; // binary: capacity; memory: block size
    std::uint32_t chunk = 1024;
    ChainModel chain; // buffered

    std::uint32_t size() const {
        return kind == Kind::Buffered ? static_cast<std::uint32_t>(chain.size())
               : kind == Kind::File   ? static_cast<std::uint32_t>(store.bytes.size())
                                      : writeAt;
    }
    void clear() {
        writeAt = readAt = 0;
        chain.blocks.clear();
        if (kind == Kind::Memory) {
            store.bytes.assign(limit, 0);
        } else {
            store.bytes.clear();
            if (kind == Kind::Binary) {
                limit = 0;
            }
        }
    }
    void write(std::uint8_t const* data, std::uint32_t n) {
        switch (kind) {
        case Kind::Binary: {
            std::uint64_t const needed = std::uint64_t(writeAt) + n;
            if (needed >= limit) {
                limit += static_cast<std::uint32_t>(((needed - limit) / chunk + 1) * chunk);
            }
            store.put(writeAt, data, n);
            writeAt += n;
            break;
        }
        case Kind::Memory:
            if (std::uint64_t(writeAt) + n < limit) {
                store.put(writeAt, data, n);
                writeAt += n;
            }
            break;
        case Kind::Buffered:
            if (chain.write(data, n, writeAt)) {
                writeAt += n;
            }
            break;
        case Kind::File:
            store.put(writeAt, data, n);
            writeAt += n;
            break;
        }
    }
    void load(std::uint8_t const* data, std::uint32_t n) {
        clear();
        if (kind == Kind::Binary) {
            store.put(0, data, n);
            limit = n;
            writeAt = n;
        } else if (kind == Kind::Memory) {
            std::uint32_t const copied = std::min(n, limit);
            store.put(0, data, copied);
            writeAt = copied;
        } else if (n > 0) {
            write(data, n);
        }
    }
    bool read(std::vector<int>& out, std::uint32_t n) {
        switch (kind) {
        case Kind::Binary:
        case Kind::Memory:
            if (std::uint64_t(readAt) + n > limit) {
                return true;
            }
            for (std::uint32_t i = 0; i < n; ++i) {
                out[i] = readAt + i < store.bytes.size() ? store.bytes[readAt + i] : UNKNOWN;
            }
            readAt += n;
            return false;
        case Kind::Buffered:
            if (chain.read(out, n, readAt) != 0) {
                readAt += n;
            }
            return false;
        case Kind::File: {
            std::uint32_t const got =
                readAt < store.bytes.size()
                    ? std::min<std::uint32_t>(n, static_cast<std::uint32_t>(store.bytes.size()) -
                                                     readAt)
                    : 0;
            for (std::uint32_t i = 0; i < got; ++i) {
                out[i] = store.bytes[readAt + i];
            }
            readAt += got;
            return false;
        }
        }
        return false;
    }
};

// The typed forms, numbered as the operations pick them; bool (10) is apart.
// clang-format off
#define KEL_TYPED_FORMS(X) X(0, Float64) X(1, Float32) X(2, SInt64) X(3, SInt32) X(4, SInt16) \
    X(5, SInt8) X(6, UInt64) X(7, UInt32) X(8, UInt16) X(9, UInt8)
// clang-format on

// A typed call of the given width: the scalar form for one element, the array form otherwise.
void typedWrite(kelISerializer& s, int type, std::uint8_t const* bytes, std::uint32_t count,
                bool scalar) {
    switch (type) {
#define KEL_FORM(N, T)                                                                             \
    case N: {                                                                                      \
        T values[8] = {};                                                                          \
        if (count > 0) {                                                                           \
            std::memcpy(values, bytes, sizeof(T) * count);                                         \
        }                                                                                          \
        if (scalar) {                                                                              \
            s.serialize(values[0]);                                                                \
        } else {                                                                                   \
            s.serialize(static_cast<T const*>(values), count);                                     \
        }                                                                                          \
        break;                                                                                     \
    }
        KEL_TYPED_FORMS(KEL_FORM)
#undef KEL_FORM
    default: {
        bool values[8];
        for (std::uint32_t i = 0; i < count; ++i) {
            values[i] = bytes[i] & 1;
        }
        if (scalar) {
            s.serialize(values[0]);
        } else {
            s.serialize(static_cast<bool const*>(values), count);
        }
    }
    }
}

void typedRead(kelISerializer& s, int type, std::uint8_t* bytes, std::uint32_t count, bool scalar) {
    switch (type) {
#define KEL_FORM(N, T)                                                                             \
    case N:                                                                                        \
        if (scalar) {                                                                              \
            s.deserialize(*reinterpret_cast<T*>(bytes));                                           \
        } else {                                                                                   \
            s.deserialize(reinterpret_cast<T*>(bytes), count);                                     \
        }                                                                                          \
        break;
        KEL_TYPED_FORMS(KEL_FORM)
        KEL_FORM(10, bool)
#undef KEL_FORM
    }
}

std::uint32_t const WIDTH[] = {8, 4, 8, 4, 2, 1, 8, 4, 2, 1, 1};

void runSerializers(FuzzedDataProvider& input) {
    std::uint32_t const blockSize = input.ConsumeIntegralInRange<std::uint32_t>(0, 300);
    Bytes block(blockSize);
    kelBinarySerializer binary;
    kelMemorySerializer memory(block.data(), blockSize);
    kelBufferedSerializer buffered;
    kelFileSerializer& file = kelFuzz::Serializers::scratchFile();
    file.clearData();
    kelISerializer* real[4] = {&binary, &memory, &buffered, &file};
    Model models[4];
    for (int i = 0; i < 4; ++i) {
        models[i].kind = static_cast<Kind>(i);
    }
    models[1].limit = blockSize;
    models[1].store.bytes.assign(blockSize, 0);

    for (int step = 0; step < 64 && input.remaining_bytes() > 0; ++step) {
        int const op = input.ConsumeIntegralInRange(0, 9);
        if (op == 0) {
            Bytes const data =
                input.ConsumeBytes<std::uint8_t>(input.ConsumeIntegralInRange(0, 96));
            for (int i = 0; i < 4; ++i) {
                real[i]->loadData(data.data(), static_cast<UInt32>(data.size()));
                models[i].load(data.data(), static_cast<std::uint32_t>(data.size()));
            }
        } else if (op == 1) {
            for (int i = 0; i < 4; ++i) {
                real[i]->clearData();
                models[i].clear();
            }
        } else if (op == 2) {
            std::uint32_t const chunk = input.ConsumeIntegralInRange<std::uint32_t>(0, 40);
            binary.setAllocationChunk(chunk);
            models[0].chunk = chunk == 0 ? models[0].chunk : chunk;
        } else {
            int const type = input.ConsumeIntegralInRange(0, 10);
            bool const scalar = input.ConsumeBool();
            std::uint32_t const count =
                scalar ? 1 : input.ConsumeIntegralInRange<std::uint32_t>(0, 8);
            std::uint32_t const n = WIDTH[type] * count;
            if (op < 6) {
                Bytes data = input.ConsumeBytes<std::uint8_t>(n);
                data.resize(n);
                if (type == 10) {
                    for (std::uint8_t& b : data) {
                        b &= 1;
                    }
                }
                for (int i = 0; i < 4; ++i) {
                    typedWrite(*real[i], type, data.data(), count, scalar);
                    models[i].write(data.data(), n);
                }
            } else {
                for (int i = 0; i < 4; ++i) {
                    alignas(8) std::uint8_t destination[72];
                    std::memset(destination, 0xA5, sizeof destination);
                    std::vector<int> expected(n, 0xA5);
                    bool const refuses = models[i].read(expected, n);
                    bool const threw = kelFuzz::throws(
                        [&] { typedRead(*real[i], type, destination, count, scalar); });
                    KEL_FUZZ_CHECK(threw == refuses);
                    for (std::uint32_t b = 0; b < n; ++b) {
                        KEL_FUZZ_CHECK(expected[b] == UNKNOWN || expected[b] == destination[b]);
                    }
                    KEL_FUZZ_CHECK(destination[n] == 0xA5);
                }
            }
        }
        for (int i = 0; i < 4; ++i) {
            KEL_FUZZ_CHECK(real[i]->getSize() == models[i].size());
            KEL_FUZZ_CHECK(real[i]->getRemainingSize() == models[i].size() - models[i].readAt);
        }
    }
}

// The linked buffer by itself, with small blocks, gaps, resizes and reads at any offset.
void runChain(FuzzedDataProvider& input) {
    kelLinkedBuffer chain;
    ChainModel model;
    for (int step = 0; step < 64 && input.remaining_bytes() > 0; ++step) {
        int const op = input.ConsumeIntegralInRange(0, 5);
        std::uint64_t const offset = input.ConsumeIntegralInRange<std::uint64_t>(0, 3000);
        if (op == 0) {
            std::uint32_t const size = input.ConsumeIntegralInRange<std::uint32_t>(8, 200);
            chain.setDefaultBlockSize(size);
            model.blockSize = size;
        } else if (op == 1) {
            Bytes const data =
                input.ConsumeBytes<std::uint8_t>(input.ConsumeIntegralInRange(0, 300));
            KEL_FUZZ_CHECK(chain.write(data.data(), UInt32(data.size()), offset) ==
                           model.write(data.data(), UInt32(data.size()), offset));
        } else if (op == 2) {
            std::uint32_t const n = input.ConsumeIntegralInRange<std::uint32_t>(0, 600);
            Bytes got(n + 1, 0x5C);
            std::vector<int> expected(n, 0x5C);
            KEL_FUZZ_CHECK(chain.read(got.data(), n, offset) == model.read(expected, n, offset));
            for (std::uint32_t b = 0; b < n; ++b) {
                KEL_FUZZ_CHECK(expected[b] == UNKNOWN || expected[b] == got[b]);
            }
            KEL_FUZZ_CHECK(got[n] == 0x5C);
        } else if (op == 3) {
            KEL_FUZZ_CHECK(chain.resize(offset) == model.resize(offset));
        } else if (op == 4) {
            KEL_FUZZ_CHECK(chain.reserve(offset));
            model.reserve(offset);
        } else {
            // A copy has blocks of its own: clearing the original leaves it whole.
            kelLinkedBuffer copy(chain);
            chain.clear();
            KEL_FUZZ_CHECK(chain.getSize() == 0 && chain.getCapacity() == 0);
            KEL_FUZZ_CHECK(copy.getSize() == model.size());
            chain = copy;
        }
        KEL_FUZZ_CHECK(chain.getSize() == model.size());
        KEL_FUZZ_CHECK(chain.getCapacity() == model.capacity());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    if (input.ConsumeBool()) {
        runSerializers(input);
    } else {
        runChain(input);
    }
    return 0;
}
