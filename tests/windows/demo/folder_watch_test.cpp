// The sample host's watch over the photo tree, on a real folder.
#include "data/folder_watch.h"

#include <gmock/gmock.h>

#include <fstream>

#include "data/city_file.h"
#include "data/photo_tree.h"
#include "support/temporary_folder_win.h"

namespace {

using testing::Pair;

TEST(FolderWatch, TellsNewPhotosByCityOrCountry) {
    const TemporaryFolder folder;
    const auto cities =
        ReadCities(L"Zurich\tSwitzerland\t1\t1\nParis\tFrance\t1\t1\nLyon\tFrance\t1\t1\n");
    std::vector<std::pair<int, int>> told;
    const auto tell = [&](std::int32_t city, std::int32_t count) {
        told.emplace_back(city, count);
    };
    const auto write = [&](const char* path, const char* text) {
        std::filesystem::create_directories((folder.path / path).parent_path());
        std::ofstream(folder.path / path, std::ios::app) << text;
    };
    write("France\\Paris\\index.tsv", "# remark\nparis-1\t1\n");
    FolderWatch watch(folder.path.wstring() + L"\\", cities, tell);
    for (int i = 0; i < 3; ++i) {
        write("note.txt", "nothing that counts");
        ASSERT_EQ(WaitForSingleObject(watch.Event(), 10000), WAIT_OBJECT_0) << "set anew";
        watch.ReadChanges();
    }
    write("France\\Paris\\index.tsv", "paris-2\t1\nparis-3\t1\n");
    write("France\\index.tsv", "france-1\t1\n");
    write("France\\Lyon\\index.tsv", "lyon-1\t1\n");
    watch.CheckAll();
    write("France\\Paris\\index.tsv", "# another remark\n");
    std::filesystem::remove(folder.path / "France\\index.tsv");
    watch.CheckAll();
    EXPECT_THAT(told, testing::UnorderedElementsAre(Pair(1, 2), Pair(-1, 1), Pair(2, 1)));
    EXPECT_EQ(FolderWatch(L"C:\\no such folder\\", cities, tell).Event(), nullptr);
}

TEST(PhotoTree, NamesThatLeadOutOfTheTreeFormNoPath) {
    for (const wchar_t* name : {L"..", L". .", L"\\\\", L" "}) {
        const auto city = ReadCities(L"Paris\t" + std::wstring(name) + L"\t1\t1")[0];
        EXPECT_EQ(CityIndexPath(city) + CountryIndexPath(city), L"");
    }
    EXPECT_EQ(CityIndexPath(ReadCities(L"St/..\\John\tA:B?\t1\t1")[0]), L"AB\\St..John\\index.tsv");
}

}  // namespace
