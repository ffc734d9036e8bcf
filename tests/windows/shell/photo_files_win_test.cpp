#include "photos/photo_files.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "base/common_folder_win.h"
#include "base/handles_win.h"
#include "image/gdiplus_session_win.h"
#include "photos/photo_set.h"
#include "support/gdiplus_pictures_win.h"
#include "support/import_spy_win.h"

namespace {

namespace fs = std::filesystem;

// Every path that the library hands to the system, by its own import table.
std::vector<std::wstring> asked;
decltype(&GetFileAttributesW) realAttributes = nullptr;
decltype(&CreateFileW) realCreateFile = nullptr;

DWORD WINAPI SpyAttributes(const wchar_t* path) {
    asked.emplace_back(path);
    return realAttributes(path);
}

HANDLE WINAPI SpyCreateFile(const wchar_t* path, DWORD access, DWORD share,
                            SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD flags,
                            HANDLE pattern) {
    asked.emplace_back(path);
    EXPECT_EQ(access, GENERIC_READ) << "the photo tree belongs to other software";
    return realCreateFile(path, access, share, security, disposition, flags, pattern);
}

/// A country of this process alone in the real photo tree.
class PhotoFilesTest : public testing::Test {
protected:
    PhotoFilesTest() {
        fs::create_directories(Folder(L"Port"));
        cities_.resize(2);
        Name(cities_[0], L"Port");
        Name(cities_[1], L"Älvsjö");
    }
    ~PhotoFilesTest() override {
        std::error_code ignored;
        fs::remove_all(Folder(L""), ignored);
    }
    void Name(CityRecord& city, const std::wstring& name) const {
        name.copy(city.cityName, 63);
        country_.copy(city.countryName, 63);
        city.latitude = city.longitude = 10.0;
    }
    fs::path Folder(const std::wstring& city) const {
        return fs::path(CommonAppDataFolder()) / L"Zelmo" / L"City Photos" / country_ / city;
    }
    void PutIndex(const std::wstring& city, const std::string& bytes) const {
        fs::create_directories(Folder(city));
        std::ofstream(Folder(city) / L"index.tsv", std::ios::binary) << bytes;
    }
    std::int32_t Load(const std::wstring& city) {
        return LoadPhotoSet(set_, {cities_.data(), 2}, country_, city);
    }

    const GdiplusUse gdiplus_;
    const std::wstring country_ = L"Testland " + std::to_wstring(GetCurrentProcessId());
    std::vector<CityRecord> cities_;
    PhotoSet set_;
};

TEST_F(PhotoFilesTest, ShowsTheGoodPicturesOfARealFolder) {
    SavePatternJpeg(Folder(L"Port") / L"12.jpg", 100, 75, 100);
    SavePatternJpeg(Folder(L"Port") / L"13.jpg", 128, 256, 100);
    SavePatternJpeg(Folder(L"Port") / L"14.jpg", 129, 10, 100);
    std::ofstream(Folder(L"Port") / L"15.jpg") << "not a picture";
    fs::create_directories(Folder(L"Port") / L"16.jpg");
    PutIndex(L"Port",
             "\xEF\xBB\xBF"
             "12\tx\ty\tOld harbour\t/photo/12.htm\r\n13\t\t\tCaf\xC3\xA9\t/13\r\n14\r\n15\r\n"
             "16\r\n17\r\n");
    ASSERT_EQ(Load(L"Port"), 2);
    EXPECT_EQ(set_.photos.size(), 4U) << "a folder is no photo, nor is a missing file";
    const PhotoRecord& harbour = *set_.byNumber.at(12);
    EXPECT_EQ(harbour.caption, L"Old harbour");
    EXPECT_EQ(harbour.link, HORIVO_PHOTO_SITE L"/photo/12.htm");
    EXPECT_EQ(set_.byNumber.at(13)->caption, L"Caf\u00E9");

    // The texture is what GDI+ itself decodes, bottom row first.
    const RgbPicture picture = DecodePicture(Folder(L"Port") / L"12.jpg");
    const CJpegTexture& texture = harbour.thumbnail;
    ASSERT_EQ(texture.GetWidth(), 100);
    ASSERT_EQ(texture.GetHeight(), 75);
    int wrong = 0;
    for (int row = 0; row < 75; ++row) {
        for (int x = 0; x < 100; ++x) {
            const std::uint8_t* pixel =
                texture.GetPixels() + (row * texture.GetBufferWidth() + x) * 4;
            const std::uint8_t* source =
                &picture.pixels[static_cast<std::size_t>(((74 - row) * 100 + x) * 3)];
            wrong += !std::equal(source, source + 3, pixel) || pixel[3] != 255;
        }
    }
    EXPECT_EQ(wrong, 0);
}

TEST_F(PhotoFilesTest, FindsNamesBeyondAsciiWhateverTheirCase) {
    PutIndex(L"Älvsjö", "");
    SavePatternJpeg(Folder(L"Älvsjö") / L"3.jpg", 20, 20, 100);
    PutIndex(L"", "3\t\xC3\xA4LVSJ\xC3\x96\t\t\tin UTF-8\t/3\n");
    ASSERT_EQ(Load(L""), 1);
    EXPECT_EQ(set_.photos[0]->cityIndex, 1);
    // The same in the system's code page.
    std::string ansi = "3\t?LVSJ?\t\t\tin the code page\t/3\n";
    char letters[3] = {};
    ASSERT_EQ(WideCharToMultiByte(CP_ACP, 0, L"äÖ", 2, letters, 3, nullptr, nullptr), 2);
    ansi[2] = letters[0];
    ansi[7] = letters[1];
    PutIndex(L"", ansi);
    ASSERT_EQ(Load(L""), 1);
    EXPECT_EQ(set_.photos[0]->caption, L"in the code page");
}

TEST_F(PhotoFilesTest, ReadsNothingOutsideThePhotoTree) {
    SavePatternJpeg(Folder(L"Port") / L"1.jpg", 20, 20, 100);
    // Bait: a picture in the country's own folder and one above it.
    const fs::path above = Folder(L"").parent_path() / (country_ + L".bait");
    fs::create_directories(above);
    fs::copy_file(Folder(L"Port") / L"1.jpg", above / L"1.jpg");
    fs::copy_file(Folder(L"Port") / L"1.jpg", Folder(L"") / L"1.jpg");
    const std::string bait = fs::path(above).filename().string();
    PutIndex(L"", "1\t..\n1\t.. \n1\t..\\" + bait + "\n1\t../" + bait + "\n1\tPort\\..\\..\\" +
                      bait +
                      "\n1\tC:\\Windows\n1\t\\\\?\\C:\n1\tNUL\n1\tCON:\n1\t.\n1\t. . .\n1\t\n1\t" +
                      std::string(5000, 'x') + "\n1\t" + std::string(200, 'y') +
                      "\n1\tPort\t\t\tgood\t/1\n" + std::string("1\tPo\0rt\n", 8) + "1\tPort");
    for (const wchar_t* city : {L"Port", L"..", L".. ", L"..\\..", L"", L"C:", L"NUL"}) {
        const auto module = GetModuleHandleW(nullptr);
        asked.clear();
        realAttributes = reinterpret_cast<decltype(realAttributes)>(
            ReplaceImport(module, "GetFileAttributesW", reinterpret_cast<void*>(&SpyAttributes)));
        realCreateFile = reinterpret_cast<decltype(realCreateFile)>(
            ReplaceImport(module, "CreateFileW", reinterpret_cast<void*>(&SpyCreateFile)));
        Load(city);
        ReplaceImport(module, "GetFileAttributesW", reinterpret_cast<void*>(realAttributes));
        ReplaceImport(module, "CreateFileW", reinterpret_cast<void*>(realCreateFile));
        if (std::wstring(city).empty()) {
            EXPECT_FALSE(asked.empty()) << "the spy sees what is read";
        }
        for (const std::wstring& path : asked) {
            wchar_t full[1024] = {};
            GetFullPathNameW(path.c_str(), 1024, full, nullptr);
            EXPECT_TRUE(std::wstring(full).starts_with(Folder(L"").wstring()))
                << fs::path(path) << " is " << fs::path(full);
        }
    }
    EXPECT_EQ(Load(L""), 2) << "the good lines are still shown";
    fs::remove_all(above);
}

TEST_F(PhotoFilesTest, ShowsNothingForAnIndexThatCannotBeRead) {
    SavePatternJpeg(Folder(L"Port") / L"1.jpg", 20, 20, 100);
    EXPECT_EQ(Load(L"Port"), 0) << "no index";
    fs::create_directories(Folder(L"Port") / L"index.tsv");
    EXPECT_EQ(Load(L"Port"), 0) << "a folder in its place";
    fs::remove(Folder(L"Port") / L"index.tsv");
    PutIndex(L"Port", "1\n");
    {
        const UniqueFile locked(CreateFileW((Folder(L"Port") / L"index.tsv").c_str(), GENERIC_READ,
                                            0, nullptr, OPEN_EXISTING, 0, nullptr));
        EXPECT_EQ(Load(L"Port"), 0) << "locked";
    }
    const UniqueFile writer(CreateFileW((Folder(L"Port") / L"index.tsv").c_str(), GENERIC_WRITE,
                                        FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(Load(L"Port"), 1) << "being written by the software that fills the tree";
}

TEST_F(PhotoFilesTest, MeasuresPhotosWithoutDecodingThem) {
    SavePatternJpeg(Folder(L"Port") / L"1.jpg", 300, 200, 50);
    WideString path;
    ASSERT_TRUE(GetPhotoPath({cities_.data(), 2}, 0, 1, path));
    EXPECT_EQ(fs::path(path), Folder(L"Port") / L"1.jpg");
    std::int32_t width = -1;
    std::int32_t height = -1;
    ASSERT_TRUE(ReadPhotoSize(path, width, height));
    EXPECT_EQ(width, 300);
    EXPECT_EQ(height, 200);
    ASSERT_TRUE(GetPhotoPath({cities_.data(), 2}, 0, 2, path));
    EXPECT_FALSE(ReadPhotoSize(path, width, height));
    EXPECT_EQ(height, 200);
}

}  // namespace
