#include <kelcore/kelcore.h>

#include <cstdio>

int main() {
    KELKIT::kelBinarySerializer out;
    KELKIT::kelString("installed").serializeTo(out);
    KELKIT::kelString back;
    back.deserializeFrom(out);
    if (back != "installed" || out.getSize() != 13) {
        std::printf("round trip through the installed library failed\n");
        return 1;
    }
    std::printf("installed library works\n");
    return 0;
}
