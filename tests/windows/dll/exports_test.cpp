// The finished file from outside: what it offers and what it needs.
#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>

#include "horivo_map.h"
#include "support/faked_import_win.h"

namespace {

struct LoadedImage : testing::Test {
    ~LoadedImage() override { FreeLibrary(module); }
    const HMODULE module = LoadLibraryW(L"horivo_map.dll");
};

}  // namespace

TEST_F(LoadedImage, OffersExactlySixPlainNames) {
    const auto* exports = InImage<IMAGE_EXPORT_DIRECTORY>(
        module, ImageDirectory(module, IMAGE_DIRECTORY_ENTRY_EXPORT));
    EXPECT_EQ(exports->NumberOfFunctions, 6U) << "nothing is reached by number alone";
    std::vector<std::string> names;
    const auto* offsets = InImage<DWORD>(module, exports->AddressOfNames);
    for (DWORD i = 0; i < exports->NumberOfNames; ++i)
        names.emplace_back(InImage<char>(module, offsets[i]));
    EXPECT_THAT(names,
                testing::UnorderedElementsAre("CreateMapWindow", "FreeMap", "GetLastSysError",
                                              "InitMap", "InstallMap", "SetLocalString"));
}

TEST_F(LoadedImage, NeedsOnlyWhatComesWithWindows) {
    std::vector<std::string> libraries;
    for (const auto* import = FirstImport(module); import->Name != 0; ++import) {
        std::string& name = libraries.emplace_back(InImage<char>(module, import->Name));
        std::transform(name.begin(), name.end(), name.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    }
    EXPECT_THAT(libraries, testing::Contains("opengl32.dll")) << "the list was really read";
    EXPECT_THAT(libraries, testing::IsSubsetOf({"kernel32.dll", "user32.dll", "gdi32.dll",
                                                "opengl32.dll", "glu32.dll", "gdiplus.dll",
                                                "shell32.dll", "advapi32.dll", "msvcrt.dll"}));
    EXPECT_EQ(ImageDirectory(module, IMAGE_DIRECTORY_ENTRY_DELAY_IMPORT), 0U);
}

#ifdef __GLIBCXX__
TEST_F(LoadedImage, GivesEveryThreadRoomForItsExceptions) {
    const auto* data =
        InImage<IMAGE_TLS_DIRECTORY64>(module, ImageDirectory(module, IMAGE_DIRECTORY_ENTRY_TLS));
    // A pointer of the start-up code, then what the C++ library keeps; outside it would be lost.
    constexpr ULONGLONG kNeeded = sizeof(void*) + 2 * sizeof(void*);
    EXPECT_GE(data->EndAddressOfRawData - data->StartAddressOfRawData, kNeeded);
}
#endif
