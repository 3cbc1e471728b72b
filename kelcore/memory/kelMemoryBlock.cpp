#include <kelcore/memory/kelMemoryBlock.h>

namespace KELKIT {

kelMemoryBlock::kelMemoryBlock() : data(nullptr), capacity(0), used(0) {}

kelMemoryBlock::kelMemoryBlock(kelMemoryBlock const& other) = default;

kelMemoryBlock& kelMemoryBlock::operator=(kelMemoryBlock const& other) = default;

kelMemoryBlock::~kelMemoryBlock() = default;

bool kelMemoryBlock::operator==(kelMemoryBlock const& other) const {
    return data == other.data && capacity == other.capacity && used == other.used;
}

bool kelMemoryBlock::operator!=(kelMemoryBlock const& other) const {
    return !(*this == other);
}

bool kelMemoryBlock::operator<(kelMemoryBlock const& other) const {
    return used < other.used;
}

} // namespace KELKIT
