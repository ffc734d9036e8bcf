#include "support/resource_count_win.h"

#include "base/windows_types.h"
// These need windows.h before them.
#include <psapi.h>
#include <winternl.h>

#include <cstdint>
#include <cstring>
#include <vector>

namespace {

constexpr int kSystemHandleInformation = 16;
constexpr std::size_t kRecordBytes = 24;       // of one handle, in either list below
constexpr std::size_t kFirstHandleOffset = 8;  // behind the number of handles
constexpr std::size_t kGdiTableOffset = 0xF8;  // in the 64-bit process environment block
constexpr std::size_t kGdiTypeOffset = 14;
constexpr std::size_t kGdiTableLength = 0x4000;

template <class Value>
Value ValueAt(const void* address) {
    Value value;
    std::memcpy(&value, address, sizeof value);
    return value;
}

/// Handles of this process in the system's list of all of them.
std::size_t CountInHandleList() {
    using Query = LONG(WINAPI*)(int, void*, ULONG, ULONG*);
    const auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
    std::vector<std::uint8_t> list(1 << 16);
    while (query(kSystemHandleInformation, list.data(), static_cast<ULONG>(list.size()), nullptr) !=
           0) {
        if (list.size() > (1U << 26)) return 0;
        list.resize(list.size() * 2);
    }
    std::size_t ours = 0;
    for (std::size_t i = 0; i < ValueAt<std::uint32_t>(list.data()); ++i) {
        const std::uint8_t* record = list.data() + kFirstHandleOffset + i * kRecordBytes;
        if (ValueAt<std::uint32_t>(record) == GetCurrentProcessId()) ++ours;
    }
    return ours;
}

/// Entries in use of the process's own GDI handle table, as Wine keeps it.
std::size_t CountInGdiTable() {
    const auto* block =
        reinterpret_cast<const std::uint8_t*>(NtCurrentTeb()->ProcessEnvironmentBlock);
    const auto* table = ValueAt<const std::uint8_t*>(block + kGdiTableOffset);
    std::size_t used = 0;
    for (std::size_t i = 0; table != nullptr && i < kGdiTableLength; ++i) {
        if (table[i * kRecordBytes + kGdiTypeOffset] != 0) ++used;
    }
    return used;
}

std::size_t CountCommitted() {
    std::size_t bytes = 0;
    MEMORY_BASIC_INFORMATION region = {};
    for (const char* at = nullptr; VirtualQuery(at, &region, sizeof region) != 0;
         at = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
    }
    return bytes;
}

}  // namespace

ResourceCount CountResources() {
    // Wine: the official counters answer 0; of the memory only what is resident is known.
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    const DWORD objects = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    PROCESS_MEMORY_COUNTERS_EX memory = {};
    K32GetProcessMemoryInfo(GetCurrentProcess(),
                            reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory), sizeof memory);
    return {
        handles != 0 ? handles : CountInHandleList(), objects != 0 ? objects : CountInGdiTable(),
        memory.PrivateUsage != 0 ? memory.PrivateUsage : memory.WorkingSetSize, CountCommitted()};
}
