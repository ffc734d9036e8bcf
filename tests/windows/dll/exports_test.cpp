// The finished file from outside: what it offers, what it needs, how it asks to be loaded.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>
#include <vector>

#include "base/windows_types.h"
#include "horivo_map.h"

namespace {

/// The loaded DLL as its headers describe it.
class LoadedImage : public testing::Test {
protected:
    LoadedImage() : module_(LoadLibraryW(L"horivo_map.dll")) {}
    ~LoadedImage() override { FreeLibrary(module_); }

    template <class Record>
    const Record* At(DWORD offset) const {
        return reinterpret_cast<const Record*>(reinterpret_cast<const std::byte*>(module_) +
                                               offset);
    }
    const IMAGE_OPTIONAL_HEADER64& Header() const {
        const auto* dos = At<IMAGE_DOS_HEADER>(0);
        return At<IMAGE_NT_HEADERS64>(static_cast<DWORD>(dos->e_lfanew))->OptionalHeader;
    }
    const IMAGE_DATA_DIRECTORY& Directory(int index) const { return Header().DataDirectory[index]; }

    HMODULE module_;
};

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool ComesWithWindows(const std::string& library) {
    static const std::set<std::string> kAllowed = {
        "kernel32.dll", "user32.dll",  "gdi32.dll",    "opengl32.dll", "glu32.dll",
        "gdiplus.dll",  "shell32.dll", "advapi32.dll", "msvcrt.dll",   "ucrtbase.dll"};
    return kAllowed.contains(library) || library.starts_with("api-ms-win-crt-");
}

}  // namespace

TEST_F(LoadedImage, OffersExactlySixPlainNames) {
    const auto& directory = Directory(IMAGE_DIRECTORY_ENTRY_EXPORT);
    ASSERT_NE(directory.VirtualAddress, 0U);
    const auto* exports = At<IMAGE_EXPORT_DIRECTORY>(directory.VirtualAddress);
    EXPECT_EQ(exports->NumberOfFunctions, 6U) << "nothing is reached by number alone";

    std::vector<std::string> names;
    const auto* offsets = At<DWORD>(exports->AddressOfNames);
    for (DWORD i = 0; i < exports->NumberOfNames; ++i) names.emplace_back(At<char>(offsets[i]));
    EXPECT_THAT(names,
                testing::UnorderedElementsAre("CreateMapWindow", "FreeMap", "GetLastSysError",
                                              "InitMap", "InstallMap", "SetLocalString"));
    // A forwarder's address lies inside the export directory: then the code would be elsewhere.
    const auto* functions = At<DWORD>(exports->AddressOfFunctions);
    for (DWORD i = 0; i < exports->NumberOfFunctions; ++i) {
        EXPECT_FALSE(functions[i] >= directory.VirtualAddress &&
                     functions[i] < directory.VirtualAddress + directory.Size);
    }
}

TEST_F(LoadedImage, NeedsOnlyWhatComesWithWindows) {
    const auto& directory = Directory(IMAGE_DIRECTORY_ENTRY_IMPORT);
    ASSERT_NE(directory.VirtualAddress, 0U);
    std::set<std::string> libraries;
    for (const auto* import = At<IMAGE_IMPORT_DESCRIPTOR>(directory.VirtualAddress);
         import->Name != 0; ++import) {
        libraries.insert(Lower(At<char>(import->Name)));
    }
    EXPECT_TRUE(libraries.contains("opengl32.dll")) << "the list was really read";
    for (const std::string& library : libraries) EXPECT_TRUE(ComesWithWindows(library)) << library;
    EXPECT_EQ(Directory(IMAGE_DIRECTORY_ENTRY_DELAY_IMPORT).Size, 0U);
}

TEST_F(LoadedImage, LiesAnywhereRunsNoDataAndCarriesItsVersion) {
    const WORD flags = Header().DllCharacteristics;
    EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE);
    EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_NX_COMPAT);
    EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA);
    EXPECT_GT(Directory(IMAGE_DIRECTORY_ENTRY_BASERELOC).Size, 0U)
        << "without relocations the flag for any address is an empty promise";
    EXPECT_NE(FindResourceW(module_, MAKEINTRESOURCEW(VS_VERSION_INFO), RT_VERSION), nullptr);
}
