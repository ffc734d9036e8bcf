#include "image/jpeg_header.h"

#include "base/handles_win.h"

namespace {

/// Reads from the file without a buffer: a header takes about twenty small reads.
class FileBytes final : public ByteSource {
public:
    explicit FileBytes(HANDLE file) noexcept : file_(file) {}
    bool Read(void* out, std::size_t size) noexcept override {
        DWORD read = 0;
        const auto wanted = static_cast<DWORD>(size);
        return ReadFile(file_, out, wanted, &read, nullptr) != FALSE && read == wanted;
    }
    bool Skip(std::int32_t offset) noexcept override {
        LARGE_INTEGER distance;
        distance.QuadPart = offset;
        return SetFilePointerEx(file_, distance, nullptr, FILE_CURRENT) != FALSE;
    }

private:
    HANDLE file_;
};

}  // namespace

bool ProbeJpeg(const std::wstring& path, std::int32_t& width, std::int32_t& height,
               std::int32_t& components) noexcept {
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsOpen()) return false;
    FileBytes bytes(file.Get());
    JpegSize size;
    if (!ReadJpegHeader(bytes, size)) return false;
    height = size.height;
    width = size.width;
    components = size.components;
    return true;
}
