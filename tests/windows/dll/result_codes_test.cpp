// What the exports answer when things go wrong or come in the wrong order.
#include <gmock/gmock.h>
#include <shlobj.h>

#include <fstream>

#include "support/faked_import_win.h"
#include "support/gl_spy_win.h"
#include "support/jpeg_bytes.h"
#include "support/map_host_win.h"

namespace {

constexpr DWORD kReason = 4321;  // a system error that nobody else reports

/// Fails as Windows does.
template <class Result>
Result Refuse() {
    SetLastError(kReason);
    return Result{};
}

struct MessageBoxCall {
    HWND owner;
    std::wstring text;
    std::wstring caption;
    UINT style;
};

class ResultCodesTest : public MapHostTest {
protected:
    ResultCodesTest() { SpiedGl().keepCalls = false; }

    /// Creates a window while one function of Windows fails.
    template <FunctionName Name, class Result, class... Arguments>
    HWND CreateWithout(Result (*)(Arguments...)) {
        const FakedImport<Name, Result(Arguments...)> failing(
            library.module, [](Arguments...) { return Refuse<Result>(); });
        return CreateMap();
    }
    void ExpectWindowLives(HWND window) {
        ASSERT_TRUE(IsWindow(window));
        const int before = SpiedGl().frames;
        Paint(window);
        EXPECT_EQ(SpiedGl().frames, before + 1);
    }

    std::vector<MessageBoxCall> boxes;
    std::function<void()> whileBoxIsOpen = [] {};

private:
    FakedImport<"MessageBoxW", decltype(MessageBoxW)> fakeBox_{
        library.module, [this](HWND owner, LPCWSTR text, LPCWSTR caption, UINT style) {
            boxes.push_back({owner, text, caption, style});
            whileBoxIsOpen();
            return IDOK;
        }};
};

TEST_F(ResultCodesTest, WindowRefusedByWindowsDoesNotRepeatAnOldCode) {
    PutPatternMap(64, 32);
    Init();
    EXPECT_EQ(CreateWithout<"wglCreateContext">(wglCreateContext), nullptr);
    ASSERT_EQ(status, HORIVO_CONTEXT_FAILED);
    EXPECT_EQ(library.CreateMapWindow(nullptr, 0, 0, 100, 100, &status), nullptr)
        << "a child needs a parent";
    EXPECT_EQ(status, HORIVO_OK);
    EXPECT_NE(library.GetLastSysError(), 0U);
    EXPECT_NE(library.GetLastSysError(), kReason);
    EXPECT_EQ(library.CreateMapWindow(nullptr, 0, 0, 100, 100, nullptr), nullptr) << "no status";
    ExpectWindowLives(library.CreateMapWindow(host, 0, 0, 200, 100, nullptr));
}

TEST_F(ResultCodesTest, CallsBeforeInitAndAfterFreeAreRefused) {
    PutPatternMap(64, 32);
    const auto expectRefusals = [this](const char* when, std::uint32_t installCode) {
        library.SetLocalString(2, L"kept");
        EXPECT_EQ(CreateMap(), nullptr) << when;
        EXPECT_EQ(status, HORIVO_OK) << when;
        // Wine: it says that the class does not exist, Windows that it cannot find it.
        EXPECT_THAT(library.GetLastSysError(), testing::AnyOf(DWORD{ERROR_CANNOT_FIND_WND_CLASS},
                                                              DWORD{ERROR_CLASS_DOES_NOT_EXIST}))
            << when;
        EXPECT_EQ(library.InstallMap(), installCode) << when;
        EXPECT_EQ(library.FreeMap(), 0U) << when;
    };
    EXPECT_EQ(library.GetLastSysError(), 0U);
    expectRefusals("before InitMap", HORIVO_COPY_FAILED);  // no folder is known yet
    EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(Init(), HORIVO_OK);
    EXPECT_NE(library.FreeMap(), 0U);
    expectRefusals("after FreeMap", HORIVO_CLASS_FAILED);
    EXPECT_EQ(Init(), HORIVO_OK) << "a library that was freed starts again";
    ExpectWindowLives(CreateMap());
    EXPECT_TRUE(WaitForTiles());
}

TEST_F(ResultCodesTest, SecondInitReplacesTheCitiesAndReportsTheClass) {
    PutPatternMap(64, 32);
    CityRecord first = {};
    first.latitude = first.longitude = 10.0;
    CityRecord second = first;
    {
        const FakedImport<"RegisterClassExW", decltype(RegisterClassExW)> failing(
            library.module, [](const WNDCLASSEXW*) { return Refuse<ATOM>(); });
        EXPECT_EQ(Init(), HORIVO_CLASS_FAILED);
        EXPECT_EQ(library.GetLastSysError(), kReason);
        library.FreeMap();
    }
    const FakedImport<"CreateMutexW", decltype(CreateMutexW)> mutexes(library.module);
    EXPECT_EQ(library.InitMap(&first, 1), HORIVO_OK);
    EXPECT_EQ(library.InitMap(&second, 1), HORIVO_CLASS_FAILED);
    EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_CLASS_ALREADY_EXISTS});
    EXPECT_EQ(mutexes.Calls(), 1) << "a second lock would leak the first";
    ExpectWindowLives(CreateMap());
    EXPECT_EQ(first.markerPoint[3], 0.0) << "no longer the library's";
    EXPECT_EQ(second.markerPoint[3], 1.0);
    EXPECT_TRUE(WaitForTiles());
}

TEST_F(ResultCodesTest, EmptyOrSenselessCityTablesAndTextsDoNothing) {
    PutPatternMap(64, 32);
    CityRecord city = {};
    city.latitude = city.longitude = 10.0;
    Init();
    const struct {
        CityRecord* cities;
        std::int32_t count;
    } tables[] = {{nullptr, 0}, {nullptr, 5}, {&city, -1}, {&city, 0}, {&city, INT32_MIN}};
    library.SetLocalString(2, nullptr);
    library.SetLocalString(INT32_MIN, L"");
    library.SetLocalString(2, std::wstring(100000, L'x').c_str());
    for (const auto& table : tables) {
        library.InitMap(table.cities, table.count);
        const HWND window = CreateMap();
        ExpectWindowLives(window);
        // The whole way of a click: pick, cities near, flight.
        SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(200, 150));
        SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(200, 150));
        ExpectWindowLives(window);
        DestroyWindow(window);
    }
    EXPECT_EQ(city.markerPoint[3], 0.0);
    EXPECT_TRUE(messages.empty());
}

TEST_F(ResultCodesTest, WithoutALockNothingLoadsAndNothingFails) {
    PutPatternMap(64, 32);
    const FakedImport<"CreateMutexW", decltype(CreateMutexW)> none(
        library.module, [](LPSECURITY_ATTRIBUTES, BOOL, LPCWSTR) { return Refuse<HANDLE>(); });
    const FakedImport<"CreateThread", decltype(CreateThread)> threads(library.module);
    EXPECT_EQ(Init(), HORIVO_OK);
    const HWND window = CreateMap();
    ExpectWindowLives(window);
    EXPECT_EQ(library.InstallMap(), HORIVO_OK) << "the self-test needs no lock";
    EXPECT_EQ(SpiedGl().uploads.size(), 8U);
    ExpectWindowLives(window);
    EXPECT_EQ(threads.Calls(), 0);
    DestroyWindow(window);
    EXPECT_NE(library.FreeMap(), 0U) << "the class is unregistered";
}

TEST_F(ResultCodesTest, WithoutADataFolderTheWindowStillLives) {
    const FakedImport<"SHGetFolderPathW", decltype(SHGetFolderPathW)> none(
        library.module, [](HWND, int, HANDLE, DWORD, LPWSTR) -> HRESULT { return E_FAIL; });
    PutPatternMap(64, 32);  // where the library would have looked
    EXPECT_EQ(Init(), HORIVO_OK);
    EXPECT_EQ(library.InstallMap(), HORIVO_COPY_FAILED);
    EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_PATH_NOT_FOUND});
    HWND window = CreateMap();
    ASSERT_TRUE(PumpUntil([this] { return !boxes.empty(); }));
    ExpectWindowLives(window);
    EXPECT_TRUE(SpiedGl().uploads.empty());
    // A host may do away with the window while the user still reads.
    window = CreateMap();
    boxes.clear();
    whileBoxIsOpen = [=] { DestroyWindow(window); };
    ASSERT_TRUE(PumpUntil([this] { return !boxes.empty(); }));
    PumpPending();
    EXPECT_FALSE(IsWindow(window));
    EXPECT_NE(library.FreeMap(), 0U);
}

TEST_F(ResultCodesTest, MapThatCannotBeLoadedShowsOneBoxAndABareGlobe) {
    Init();
    SpiedGl().keepFrame = true;
    const struct {
        const char* why;
        std::string picture;
    } cases[] = {{"missing", ""}, {"no JPEG", "text"}, {"no pixels", JpegHeaderBytes(64, 32, 3)}};
    for (const auto& c : cases) {
        boxes.clear();
        std::filesystem::remove(MapPath());
        if (!c.picture.empty()) std::ofstream(MapPath(), std::ios::binary) << c.picture;
        const HWND window = CreateMap();
        // Further loads that fail while the user still reads must not pile up boxes.
        whileBoxIsOpen = [=] {
            SendMessageW(window, WM_USER + 1, 0, FALSE);
            SendMessageW(window, WM_USER + 1, 1, FALSE);
        };
        ASSERT_TRUE(PumpUntil([this] { return !boxes.empty(); })) << c.why;
        PumpPending();
        ASSERT_EQ(boxes.size(), 1U) << c.why;
        EXPECT_EQ(boxes[0].owner, host) << c.why;
        EXPECT_EQ(boxes[0].text,
                  L"Can not load textures.\n Check for the \"map.jpg\" presence or make it "
                  L"smaller.");
        EXPECT_EQ(boxes[0].caption, L"Error");
        EXPECT_EQ(boxes[0].style, UINT{MB_ICONERROR});
        ExpectWindowLives(window);
        EXPECT_TRUE(SpiedGl().uploads.empty()) << c.why;
        const unsigned char* middle = SpiedGl().frame.At(200, 150);
        EXPECT_GT(middle[0] + middle[1] + middle[2], 0) << c.why << ": no globe to be seen";
        whileBoxIsOpen = [] {};
        Key(window, 'L');
        EXPECT_TRUE(PumpUntil([this] { return boxes.size() == 2; })) << "asked again, told again";
        DestroyWindow(window);
    }
}

}  // namespace
