#include <kelcore/frame/kelException.h>
#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/serialization/kelBufferedSerializer.h>
#include <kelcore/serialization/kelMemorySerializer.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

using namespace KELKIT;

namespace {

// The general path as the oracle: in a derived class every typed call goes through the raw
// operations, as all of them did before the direct path existed; the class counts what it sees.
template <class S>
struct GeneralPath : S {
    using S::S;
    void serializeData(void const* data, UInt32 size) override {
        seen += size;
        S::serializeData(data, size);
    }
    void deserializeData(void* data, UInt32 size) override {
        seen += size;
        S::deserializeData(data, size);
    }
    UInt64 seen = 0;
};

// The same random calls on both: typed writes and reads of every width with random bits, runs
// of bytes that move the positions across every boundary, now and then a load. Failures,
// positions and the bytes read agree; bytes never written are uninitialised and not compared,
// unless the caller owns the block. The typed calls name S, so that both objects run the inline
// forms as compiled here, and the derived one must still see each of its values.
template <class S>
void randomCalls(S& direct, GeneralPath<S>& general, std::mt19937_64& rng, bool owned) {
    for (int step = 0; step < 3000 && !testing::Test::HasFatalFailure(); ++step) {
        UInt64 const bits = rng(), kind = rng() % 13;
        bool const write = rng() % 3 != 0, restart = rng() % 40 == 0;
        std::vector<UInt8> run(rng() % (rng() % 8 == 0 ? 1500 : 9), UInt8(bits));
        UInt32 size = UInt32(run.size());
        auto const call = [&](S& s, UInt8* out) -> std::string {
            auto const typed = [&](auto value) {
                std::memcpy(&value, &bits, sizeof value);
                size = sizeof value;
                bool const isBool = std::is_same<decltype(value), bool>::value; // holds 0 or 1
                write ? s.S::serialize(isBool ? decltype(value)(bits & 1) : value)
                      : s.S::deserialize(*reinterpret_cast<decltype(value)*>(out));
            };
            try {
                unsigned type = 0; // the kind-th of the eleven fixed-width types
                auto const each = [&](auto value) { type++ == kind ? typed(value) : void(); };
                each(Float64()), each(Float32()), each(SInt64()), each(SInt32()), each(SInt16()),
                    each(SInt8()), each(UInt64()), each(UInt32()), each(UInt16()), each(UInt8()),
                    each(bool());
                if (kind < 11) {
                    return "";
                }
                write     ? s.serializeData(run.data(), size)
                : restart ? s.loadData(run.data(), size)
                          : s.deserializeData(out, size);
            } catch (kelException const& e) {
                return e.getDescription();
            }
            return "";
        };
        UInt32 const at = direct.getSize() - direct.getRemainingSize();
        std::vector<UInt8> a(1500), b(1500);
        UInt64 const seen = general.seen;
        ASSERT_EQ(call(general, b.data()), call(direct, a.data()));
        ASSERT_TRUE(kind > 10 || general.seen == seen + size);
        ASSERT_TRUE(write || !(owned || UInt64(at) + size <= direct.getSize()) || a == b) << at;
        ASSERT_EQ(general.getSize(), direct.getSize());
        ASSERT_EQ(general.getRemainingSize(), direct.getRemainingSize());
    }
}

} // namespace

TEST(kelSerializerDirectPath, EverySerializerMatchesTheGeneralPath) {
    std::mt19937_64 rng(41);
    for (int round = 0; round < 150; ++round) {
        kelBinarySerializer binary;
        GeneralPath<kelBinarySerializer> binaryGeneral;
        binary.setAllocationChunk(1 + UInt32(round % 24)); // growth at many offsets
        binaryGeneral.setAllocationChunk(1 + UInt32(round % 24));
        ASSERT_NO_FATAL_FAILURE(randomCalls(binary, binaryGeneral, rng, false));
        ASSERT_TRUE(std::equal(binary.getBufferC(), binary.getBufferC() + binary.getSize(),
                               binaryGeneral.getBufferC()));
        std::vector<UInt8> block(round % 70, UInt8(round)), blockGeneral = block;
        kelMemorySerializer memory(block.data(), UInt32(block.size()));
        GeneralPath<kelMemorySerializer> memoryGeneral(blockGeneral.data(), UInt32(block.size()));
        ASSERT_NO_FATAL_FAILURE(randomCalls(memory, memoryGeneral, rng, true));
        ASSERT_EQ(blockGeneral, block);
        kelBufferedSerializer buffered;
        GeneralPath<kelBufferedSerializer> bufferedGeneral;
        ASSERT_NO_FATAL_FAILURE(randomCalls(buffered, bufferedGeneral, rng, false));
        std::vector<UInt8> all(2 * buffered.getSize() + 1);
        buffered.getLinkedBuffer()->read(all.data(), buffered.getSize(), 0);
        bufferedGeneral.getLinkedBuffer()->read(&all[buffered.getSize()], buffered.getSize(), 0);
        ASSERT_TRUE(std::equal(&all[0], &all[buffered.getSize()], &all[buffered.getSize()]));
    }
}
