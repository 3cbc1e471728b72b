#include <kelcore/memory/kelStreamUtils.h>

namespace KELKIT {

kelStreamUtils::~kelStreamUtils() = default;

bool kelStreamUtils::copyStream(kelInputStream* input, kelOutputStream* output) {
    if (input == nullptr || output == nullptr) {
        return false;
    }
    UInt32 const BLOCK = 10240;
    UInt8 block[BLOCK];
    while (input->size() != 0) {
        UInt32 const count = input->read(block, BLOCK);
        // A read of nothing would never end the loop; more than asked cannot be trusted.
        if (count == 0 || count > BLOCK) {
            return false;
        }
        if (output->write(block, count) != count) {
            return false;
        }
    }
    return true;
}

} // namespace KELKIT
