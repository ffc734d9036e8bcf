#include "support/faked_import_win.h"

namespace {

std::byte* At(HMODULE module, DWORD offset) {
    return reinterpret_cast<std::byte*>(module) + offset;
}

const IMAGE_IMPORT_DESCRIPTOR* FirstImport(HMODULE module) {
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(module);
    const auto* headers =
        reinterpret_cast<const IMAGE_NT_HEADERS64*>(At(module, static_cast<DWORD>(dos->e_lfanew)));
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    return reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(At(module, directory.VirtualAddress));
}

/// Hands `visit` the name and the slot of every function that `import` names.
template <class Visit>
void VisitFunctions(HMODULE module, const IMAGE_IMPORT_DESCRIPTOR& import, Visit&& visit) {
    const auto* names =
        reinterpret_cast<const IMAGE_THUNK_DATA64*>(At(module, import.OriginalFirstThunk));
    auto* slot = reinterpret_cast<void**>(At(module, import.FirstThunk));
    for (; names->u1.AddressOfData != 0; ++names, ++slot) {
        if (IMAGE_SNAP_BY_ORDINAL64(names->u1.Ordinal)) continue;
        const auto* byName = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(
            At(module, static_cast<DWORD>(names->u1.AddressOfData)));
        visit(std::string_view(reinterpret_cast<const char*>(byName->Name)), slot);
    }
}

void* Swap(void** slot, void* replacement) {
    DWORD protection = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
    void* before = *slot;
    *slot = replacement;
    VirtualProtect(slot, sizeof *slot, protection, &protection);
    return before;
}

}  // namespace

void* ReplaceImport(HMODULE module, std::string_view function, void* replacement) {
    void** found = nullptr;
    for (const auto* import = FirstImport(module); import->Name != 0; ++import) {
        VisitFunctions(module, *import, [&](std::string_view name, void** slot) {
            if (found == nullptr && name == function) found = slot;
        });
    }
    return found != nullptr ? Swap(found, replacement) : nullptr;
}

std::vector<std::string> ImportedNames(HMODULE module, std::string_view library) {
    std::vector<std::string> names;
    for (const auto* import = FirstImport(module); import->Name != 0; ++import) {
        if (library != reinterpret_cast<const char*>(At(module, import->Name))) continue;
        VisitFunctions(module, *import,
                       [&](std::string_view name, void**) { names.emplace_back(name); });
    }
    return names;
}
