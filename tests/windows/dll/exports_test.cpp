// The finished file from outside: what it offers and what it needs. The public header comes first:
// it must compile before windows.h.
#include "horivo_map.h"
// The order is tested, too.
#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>

#include "support/faked_import_win.h"

TEST(LoadedImage, OffersSixPlainNamesAndNeedsOnlyWhatComesWithWindows) {
    const HMODULE module = LoadLibraryW(L"horivo_map.dll");
    const auto* exports = InImage<IMAGE_EXPORT_DIRECTORY>(
        module, ImageDirectory(module, IMAGE_DIRECTORY_ENTRY_EXPORT));
    EXPECT_EQ(exports->NumberOfFunctions, 6U) << "nothing is reached by number alone";
    for (const char* name : {"CreateMapWindow", "FreeMap", "GetLastSysError", "InitMap",
                             "InstallMap", "SetLocalString"})
        EXPECT_NE(GetProcAddress(module, name), nullptr) << name;
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
    FreeLibrary(module);
}
