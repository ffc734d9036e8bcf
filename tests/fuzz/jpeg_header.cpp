// Feeds arbitrary bytes to the walk through a JPEG header and judges what it finds as a map.
#include "api/map_picture_check.h"
#include "fuzz/check.h"
#include "horivo_map.h"
#include "support/memory_bytes.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MemoryBytes source({data, size});
    JpegSize found{-1, -1, -1};
    const bool isJpeg = ReadJpegHeader(source, found);
    // A segment takes three reads and at least four bytes: the walk cannot turn in circles.
    Check(source.reads <= size + 8);
    Check(isJpeg == (found.width >= 0 && found.height >= 0 && found.components >= 0));
    Check(found.width <= 65535 && found.height <= 65535 && found.components <= 255);
    const std::uint64_t memory = size > 11 ? data[11] * std::uint64_t{1} << data[10] % 32 : 0;
    if (isJpeg && CheckMapPicture(found, memory) == HORIVO_OK) {
        Check(found.width >= 16 && found.height >= 16);
        Check(std::uint64_t{3} * unsigned(found.width) * unsigned(found.height) <= memory);
    }
    return 0;
}
