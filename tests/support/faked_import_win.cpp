#include "support/faked_import_win.h"

namespace {

void* Swap(void** slot, void* replacement) {
    DWORD protection = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
    void* before = std::exchange(*slot, replacement);
    VirtualProtect(slot, sizeof *slot, protection, &protection);
    return before;
}

template <class Act>
void ForEachImport(HMODULE module, const Act& act) {
    for (const auto* import = FirstImport(module); import->Name != 0; ++import) {
        const auto* name = InImage<IMAGE_THUNK_DATA64>(module, import->OriginalFirstThunk);
        auto* slot = const_cast<void**>(InImage<void*>(module, import->FirstThunk));
        for (; name->u1.AddressOfData != 0; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL64(name->u1.Ordinal)) continue;
            const auto at = static_cast<DWORD>(name->u1.AddressOfData);
            act(InImage<IMAGE_IMPORT_BY_NAME>(module, at)->Name, slot);
        }
    }
}

}  // namespace

DWORD ImageDirectory(HMODULE module, int entry) {
    const LONG header = InImage<IMAGE_DOS_HEADER>(module, 0)->e_lfanew;
    const auto* headers = InImage<IMAGE_NT_HEADERS64>(module, static_cast<DWORD>(header));
    return headers->OptionalHeader.DataDirectory[entry].VirtualAddress;
}

const IMAGE_IMPORT_DESCRIPTOR* FirstImport(HMODULE module) {
    return InImage<IMAGE_IMPORT_DESCRIPTOR>(module,
                                            ImageDirectory(module, IMAGE_DIRECTORY_ENTRY_IMPORT));
}

void* ReplaceImport(HMODULE module, std::string_view function, void* replacement) {
    void* before = nullptr;
    ForEachImport(module, [&](std::string_view name, void** slot) {
        if (name == function) before = Swap(slot, replacement);
    });
    return before;
}

std::vector<std::string> ImportedFunctions(HMODULE module) {
    std::vector<std::string> names;
    ForEachImport(module, [&](std::string_view name, void**) { names.emplace_back(name); });
    return names;
}

bool IsLoaded(HMODULE module) { return GetModuleHandleW(L"horivo_map.dll") == module; }
