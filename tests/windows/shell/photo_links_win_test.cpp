#include "photos/photo_links_win.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "base/windows_types.h"
#include "support/import_spy_win.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::wstring> opened;
PhotoSet* emptiedMeanwhile = nullptr;

/// Stands in for the shell: no browser starts.
HINSTANCE WINAPI Opened(HWND window, const wchar_t* verb, const wchar_t* file,
                        const wchar_t* parameters, const wchar_t* folder, int show) {
    EXPECT_EQ(window, nullptr);
    EXPECT_EQ(std::wstring(verb), L"open");
    EXPECT_EQ(parameters, nullptr);
    EXPECT_EQ(std::wstring(folder), L".\\");
    EXPECT_EQ(show, SW_SHOWNORMAL);
    // What a host may do while the shell pumps messages.
    if (emptiedMeanwhile != nullptr) DeletePhotos(*emptiedMeanwhile);
    opened.emplace_back(file);
    return nullptr;
}

class PhotoLinksTest : public testing::Test {
protected:
    PhotoLinksTest() {
        opened.clear();
        emptiedMeanwhile = nullptr;
        real_ = ReplaceImport(GetModuleHandleW(nullptr), "ShellExecuteW",
                              reinterpret_cast<void*>(&Opened));
        for (const auto& [number, link] :
             {std::pair{7, L"https://photos.example/7.htm"}, std::pair{8, L""}}) {
            auto photo = std::make_unique<PhotoRecord>();
            photo->link = link;
            set_.byNumber.emplace(number, photo.get());
            set_.photos.push_back(std::move(photo));
        }
    }
    ~PhotoLinksTest() override { ReplaceImport(GetModuleHandleW(nullptr), "ShellExecuteW", real_); }

    PhotoSet set_;
    void* real_ = nullptr;
};

TEST_F(PhotoLinksTest, OpensThePageOfALoadedPhoto) {
    OpenPhotoPage(set_, 9);
    EXPECT_THAT(opened, IsEmpty()) << "an unknown number";
    OpenPhotoPage(set_, 8);
    EXPECT_THAT(opened, IsEmpty()) << "an empty name would open the current folder";
    OpenPhotoPage(set_, 7);
    EXPECT_THAT(opened, ElementsAre(L"https://photos.example/7.htm"));
}

TEST_F(PhotoLinksTest, NeedsNothingOfTheSetWhileThePageOpens) {
    emptiedMeanwhile = &set_;
    OpenPhotoPage(set_, 7);
    EXPECT_THAT(opened, ElementsAre(L"https://photos.example/7.htm"));
    EXPECT_THAT(set_.byNumber, IsEmpty());
}

TEST_F(PhotoLinksTest, OpensTheAddPhotoPageOfTheSite) {
    OpenAddPhotoPage();
    EXPECT_THAT(opened, ElementsAre(HORIVO_PHOTO_SITE L"/add_photo.htm"));
}

}  // namespace
