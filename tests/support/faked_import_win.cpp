#include "support/faked_import_win.h"

namespace {

/// The place where a module keeps the address of an imported function; null when there is none.
void** FindSlot(HMODULE module, std::string_view function) {
    for (const auto* import = FirstImport(module); import->Name != 0; ++import) {
        const auto* name = InImage<IMAGE_THUNK_DATA64>(module, import->OriginalFirstThunk);
        auto* slot = const_cast<void**>(InImage<void*>(module, import->FirstThunk));
        for (; name->u1.AddressOfData != 0; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL64(name->u1.Ordinal)) continue;
            const auto at = static_cast<DWORD>(name->u1.AddressOfData);
            if (function == InImage<IMAGE_IMPORT_BY_NAME>(module, at)->Name) return slot;
        }
    }
    return nullptr;
}

}  // namespace

const IMAGE_IMPORT_DESCRIPTOR* FirstImport(HMODULE module) {
    const auto header = static_cast<DWORD>(InImage<IMAGE_DOS_HEADER>(module, 0)->e_lfanew);
    const auto& directories =
        InImage<IMAGE_NT_HEADERS64>(module, header)->OptionalHeader.DataDirectory;
    return InImage<IMAGE_IMPORT_DESCRIPTOR>(
        module, directories[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
}

void* ReplaceImport(HMODULE module, std::string_view function, void* replacement) {
    void** const slot = FindSlot(module, function);
    if (slot == nullptr) return nullptr;
    DWORD protection = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
    void* const before = std::exchange(*slot, replacement);
    VirtualProtect(slot, sizeof *slot, protection, &protection);
    return before;
}
