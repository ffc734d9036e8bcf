// Feeds arbitrary bytes to the walk through a JPEG header.

#include <cstdlib>

#include "support/memory_bytes.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MemoryBytes source({data, size});
    JpegSize found{-1, -1, -1};
    const bool isJpeg = ReadJpegHeader(source, found);
    // A segment takes three reads and at least four bytes: the walk cannot turn in circles.
    if (source.reads > size + 8) std::abort();
    const bool inRange = found.width >= 0 && found.width <= 65535 && found.height >= 0 &&
                         found.height <= 65535 && found.components >= 0 && found.components <= 255;
    const bool untouched = found.width == -1 && found.height == -1 && found.components == -1;
    if (isJpeg ? !inRange : !untouched) std::abort();
    return 0;
}
