// The sample host's watch over the photo tree, on a real folder.
#include "data/folder_watch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "data/photo_tree.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr DWORD kPatienceMs = 10000;

CityRecord MakeCity(const wchar_t* name, const wchar_t* country) {
    CityRecord city{};
    lstrcpynW(city.cityName, name, 64);
    lstrcpynW(city.countryName, country, 64);
    return city;
}

class FolderWatchTest : public testing::Test {
protected:
    FolderWatchTest() {
        Write(L"France\\Paris\\index.tsv", "# remark\nparis-1\t1\n");
        Write(L"France\\index.tsv", "france-1\t1\n");
        watch_.emplace(
            folder_.wstring() + L"\\", cities_,
            [this](std::int32_t city, std::int32_t count) { told_.emplace_back(city, count); });
    }
    ~FolderWatchTest() override {
        watch_.reset();
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    void Write(const std::wstring& path, const char* text) {
        std::filesystem::create_directories((folder_ / path).parent_path());
        std::ofstream(folder_ / path, std::ios::binary | std::ios::app) << text;
    }

    const std::filesystem::path folder_ = std::filesystem::temp_directory_path() /
                                          (L"horivo-watch-" + std::to_wstring(GetTickCount64()));
    const std::vector<CityRecord> cities_ = {MakeCity(L"Zurich", L"Switzerland"),
                                             MakeCity(L"Paris", L"France"),
                                             MakeCity(L"Lyon", L"France")};
    std::vector<std::pair<std::int32_t, std::int32_t>> told_;
    std::optional<FolderWatch> watch_;
};

TEST_F(FolderWatchTest, NewPhotosAreToldByCityOrCountry) {
    const auto toldAfter = [this](const wchar_t* path, const char* text) {
        told_.clear();
        Write(path, text);
        watch_->CheckAll();
        return told_;
    };
    EXPECT_THAT(toldAfter(L"France\\Paris\\index.tsv", "paris-2\t1\nparis-3\t1\n"),
                ElementsAre(Pair(1, 2)));
    EXPECT_THAT(toldAfter(L"France\\index.tsv", "france-2\t1\n"), ElementsAre(Pair(-1, 1)));
    EXPECT_THAT(toldAfter(L"France\\Lyon\\index.tsv", "lyon-1\t1\n"), ElementsAre(Pair(2, 1)))
        << "a city that had none";
    EXPECT_THAT(toldAfter(L"France\\Paris\\index.tsv", "# another remark\n"), IsEmpty());
    EXPECT_THAT(toldAfter(L"Elsewhere\\index.tsv", "x\t1\n"), IsEmpty());
    std::filesystem::remove(folder_ / L"France\\index.tsv");
    EXPECT_THAT(toldAfter(L"France\\Paris\\paris-9.jpg", "no index"), IsEmpty()) << "lost photos";
    EXPECT_THAT(toldAfter(L"France\\index.tsv", "france-1\t1\n"), ElementsAre(Pair(-1, 1)))
        << "one that comes back counts again";
}

TEST_F(FolderWatchTest, EveryChangeSetsTheEventAnew) {
    for (int i = 0; i < 3; ++i) {
        Write(L"note.txt", "nothing that counts");
        ASSERT_EQ(WaitForSingleObject(watch_->Event(), kPatienceMs), WAIT_OBJECT_0);
        watch_->ReadChanges();
    }
    EXPECT_THAT(told_, IsEmpty());
}

TEST(FolderWatchAlone, AMissingTreeIsNotWatched) {
    const std::vector<CityRecord> cities;
    const FolderWatch watch(L"C:\\no such folder\\", cities, [](std::int32_t, std::int32_t) {});
    EXPECT_EQ(watch.Event(), nullptr);
}

TEST(PhotoTreeTest, NamesThatLeadOutOfTheTreeFormNoPath) {
    EXPECT_EQ(CityIndexPath(MakeCity(L"Paris", L"France")), L"France\\Paris\\index.tsv");
    EXPECT_EQ(CityIndexPath(MakeCity(L"St/..\\John", L"A:B?")), L"AB\\St..John\\index.tsv");
    for (const wchar_t* name : {L"", L"..", L". .", L"\\\\", L" "}) {
        EXPECT_EQ(CityIndexPath(MakeCity(name, L"France")), L"");
        EXPECT_EQ(CountryIndexPath(MakeCity(L"Paris", name)), L"");
    }
}

}  // namespace
