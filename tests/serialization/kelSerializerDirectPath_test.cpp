#include <kelcore/frame/kelException.h>
#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/serialization/kelBufferedSerializer.h>
#include <kelcore/serialization/kelMemorySerializer.h>

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

using namespace KELKIT;

namespace {

// The general path, kept as the oracle: in a derived class every typed call goes through the
// raw operations, as all of them did before the direct path existed.
template <class S>
struct GeneralPath : S {
    using S::S;
    void serializeData(void const* data, UInt32 size) override { S::serializeData(data, size); }
    void deserializeData(void* data, UInt32 size) override { S::deserializeData(data, size); }
};

std::vector<UInt8> storeBytes(kelBinarySerializer const& s) {
    return std::vector<UInt8>(s.getBufferC(), s.getBufferC() + s.getSize());
}
std::vector<UInt8> storeBytes(kelBufferedSerializer const& s) {
    std::vector<UInt8> bytes(s.getSize());
    s.getLinkedBuffer()->read(bytes.data(), s.getSize(), 0);
    return bytes;
}
std::vector<UInt8> storeBytes(kelMemorySerializer const&) {
    return {}; // the caller compares the two blocks
}

std::string thrownBy(kelISerializer& s, void (*call)(kelISerializer&, UInt8*), UInt8* out) {
    try {
        call(s, out);
    } catch (kelException const& e) {
        return e.getDescription();
    }
    return "";
}

// The same calls on both objects, every result compared. A value read from bytes that were
// never written is uninitialised and left uncompared, unless the caller owns the block.
template <class S>
struct Twins {
    S direct;
    GeneralPath<S> general;
    bool blockIsKnown = false;

    template <typename T>
    void transfer(bool write, UInt64 bits) {
        if (write) {
            T value;
            std::memcpy(&value, &bits, sizeof value);
            if (std::is_same<T, bool>::value) {
                value = (bits & 1) != 0; // a bool argument holds 0 or 1
            }
            direct.serialize(value);
            general.serialize(value);
            return;
        }
        UInt32 const at = direct.getSize() - direct.getRemainingSize();
        bool const known = blockIsKnown || UInt64(at) + sizeof(T) <= direct.getSize();
        auto const read = [](kelISerializer& s, UInt8* out) {
            s.deserialize(*reinterpret_cast<T*>(out));
        };
        alignas(8) UInt8 a[8] = {}, b[8] = {};
        ASSERT_EQ(thrownBy(general, read, b), thrownBy(direct, read, a));
        ASSERT_TRUE(!known || std::memcmp(a, b, sizeof(T)) == 0) << typeid(T).name() << at;
    }

    void randomStep(std::mt19937_64& rng) {
        bool const write = rng() % 3 != 0; // the store grows
        UInt64 const bits = rng();
        switch (rng() % 13) {
        case 0:
            return transfer<Float64>(write, bits);
        case 1:
            return transfer<Float32>(write, bits);
        case 2:
            return transfer<SInt64>(write, bits);
        case 3:
            return transfer<SInt32>(write, bits);
        case 4:
            return transfer<SInt16>(write, bits);
        case 5:
            return transfer<SInt8>(write, bits);
        case 6:
            return transfer<UInt64>(write, bits);
        case 7:
            return transfer<UInt32>(write, bits);
        case 8:
            return transfer<UInt16>(write, bits);
        case 9:
            return transfer<UInt8>(write, bits);
        case 10:
            return transfer<bool>(write, bits);
        default: {
            // A run of bytes that moves the positions across block boundaries; now and then
            // the content starts again.
            std::vector<UInt8> bytes(rng() % (rng() % 8 == 0 ? 1500 : 9));
            for (UInt8& byte : bytes) {
                byte = UInt8(rng());
            }
            UInt32 const size = UInt32(bytes.size());
            if (write) {
                direct.serializeData(bytes.data(), size);
                general.serializeData(bytes.data(), size);
            } else if (rng() % 40 == 0) {
                direct.loadData(bytes.data(), size);
                general.loadData(bytes.data(), size);
            } else if (rng() % 40 == 0) {
                direct.clearData();
                general.clearData();
            } else {
                UInt32 const at = direct.getSize() - direct.getRemainingSize();
                bool const known = blockIsKnown || UInt64(at) + size <= direct.getSize();
                std::vector<UInt8> a(size), b(size);
                std::string thrownA, thrownB;
                try {
                    direct.deserializeData(a.data(), size);
                } catch (kelException const& e) {
                    thrownA = e.getDescription();
                }
                try {
                    general.deserializeData(b.data(), size);
                } catch (kelException const& e) {
                    thrownB = e.getDescription();
                }
                ASSERT_EQ(thrownB, thrownA);
                ASSERT_TRUE(!known || a == b);
            }
        }
        }
    }

    void compare() {
        ASSERT_EQ(general.getSize(), direct.getSize());
        ASSERT_EQ(general.getRemainingSize(), direct.getRemainingSize());
        ASSERT_EQ(storeBytes(general), storeBytes(direct));
    }
};

template <class S, typename Prepare>
void runTwins(unsigned seed, Prepare prepare) {
    std::mt19937_64 rng(seed);
    for (int sequence = 0; sequence < 150; ++sequence) {
        Twins<S> twins;
        prepare(twins, rng);
        for (int step = 0; step < 3000; ++step) {
            ASSERT_NO_FATAL_FAILURE(twins.randomStep(rng));
            if (step % 97 == 0) {
                ASSERT_NO_FATAL_FAILURE(twins.compare());
            }
        }
        ASSERT_NO_FATAL_FAILURE(twins.compare());
    }
}

} // namespace

TEST(kelSerializerDirectPath, BinaryGivesTheBytesAndFailuresOfTheGeneralPath) {
    runTwins<kelBinarySerializer>(41, [](Twins<kelBinarySerializer>& t, std::mt19937_64& rng) {
        UInt32 const chunk = 1 + UInt32(rng() % 24); // growth at many offsets
        t.direct.setAllocationChunk(chunk);
        t.general.setAllocationChunk(chunk);
    });
}

TEST(kelSerializerDirectPath, MemoryGivesTheBytesAndFailuresOfTheGeneralPath) {
    std::vector<std::vector<UInt8>> blocks;
    runTwins<kelMemorySerializer>(43, [&](Twins<kelMemorySerializer>& t, std::mt19937_64& rng) {
        // Each object its own block of the same content; the previous pair is compared first.
        if (!blocks.empty()) {
            ASSERT_EQ(blocks[blocks.size() - 2], blocks.back());
        }
        std::vector<UInt8> block(rng() % 70);
        for (UInt8& byte : block) {
            byte = UInt8(rng());
        }
        blocks.push_back(block);
        blocks.push_back(block);
        UInt32 const size = UInt32(block.size());
        t.direct = kelMemorySerializer(blocks[blocks.size() - 2].data(), size);
        t.general = GeneralPath<kelMemorySerializer>(blocks.back().data(), size);
        t.blockIsKnown = true;
    });
}

TEST(kelSerializerDirectPath, BufferedGivesTheBytesOfTheGeneralPath) {
    runTwins<kelBufferedSerializer>(47, [](Twins<kelBufferedSerializer>&, std::mt19937_64&) {});
}
