#pragma once
// A map window that is driven by lines of actions, such as
//   Play("move Paris; runs hover 500; tick hover; asked 1; titles Paris | France");
// Verbs act or expect; the table in the source says what each does. A failure names the line, the
// action in it and why it matters.

#include <initializer_list>
#include <map>
#include <optional>
#include <thread>
#include <utility>

#include "support/driven_map_win.h"
#include "support/gl_spy_win.h"
#include "support/worker_watch_win.h"

/// One action of a line: a verb and what follows it.
struct PlayAction {
    explicit PlayAction(const std::string& text);
    /// The word of this place behind the verb; empty when there is none.
    std::string Word(std::size_t place) const;
    double Number(std::size_t place, double otherwise = 0.0) const;
    /// All words as numbers; "none" is no number.
    std::vector<int> Numbers() const;
    /// What follows the verb, parted at " | "; "none" is no text.
    std::vector<std::string> Texts() const;

    std::string verb, rest;
    std::vector<std::string> words;  ///< of `rest`
};

/// Fixture: a driven map whose workers, message boxes and contexts belong to the test as well.
class MapPlay : public DrivenMapTest {
public:
    struct Row {
        const char* why;
        std::string actions;
    };

    /// Plays actions that are parted by semicolons.
    void Play(const std::string& actions, const std::string& why = "");
    /// Plays each row behind `first`.
    void PlayRows(const std::string& first, std::initializer_list<Row> rows);

    /// What a word says: "x,y" is a client point, "px,y" is counted from the panel's left edge and
    /// the window's bottom, "40:-0.2" shows a latitude and a longitude, "photo2" is the middle of
    /// the second photo from the top, "photo2+0,63" a pixel from its lower left corner; else the
    /// name of a point in `points` or of a city.
    POINT At(const std::string& word);
    /// The photos of the picture, from the top.
    std::vector<SeenImage> Photos();
    /// The texts of the picture but for the readout of the pointed place.
    std::vector<std::string> Labels();
    int ClientHeight() const;
    /// The index of a city by name; fails the test when there is none.
    std::size_t IndexOf(const std::string& city) const;
    /// Checks the tiles uploaded since the last look against those of the first set, pixel by pixel
    /// where they are kept. @return the number of sets
    std::size_t TakeTileSets();
    /// Another thread takes the picture's lock until the next call with false, or dies with it.
    void HoldLock(bool held, bool dies = false);

    std::map<std::string, POINT> points;
    std::map<std::string, std::function<void()>> acts;  ///< for "do"
    std::map<std::string, HWND> windows;                ///< for "create" and "use"
    WorkerWatch workers{library.module};
    int startsSeen = 0;  ///< workers that were there at the last "started"
    int boxes = 0;       ///< shown since the last look
    SeenView marked;     ///< the view of "mark"
    int failingContexts = 0;
    bool contextLost = false;
    std::vector<SpiedUpload> rightTiles;

private:
    void Do(const std::string& action);

    using Box = FakedImport<"MessageBoxW", decltype(MessageBoxW)>;
    const Box box_{library.module, [this](HWND owner, LPCWSTR, LPCWSTR title, UINT style) {
                       EXPECT_EQ(owner, host);
                       EXPECT_STREQ(title, L"Error");
                       EXPECT_EQ(style, UINT{MB_ICONERROR});
                       return ++boxes;
                   }};
    using MakeContext = FakedImport<"wglCreateContext", decltype(wglCreateContext)>;
    const MakeContext makeContext_{library.module, [this](HDC dc) {
                                       if (failingContexts == 0) return MakeContext::Real(dc);
                                       --failingContexts;
                                       return HGLRC{};
                                   }};
    using MakeCurrent = FakedImport<"wglMakeCurrent", decltype(wglMakeCurrent)>;
    const MakeCurrent makeCurrent_{library.module, [this](HDC dc, HGLRC context) {
                                       if (contextLost && context != nullptr) return FALSE;
                                       return MakeCurrent::Real(dc, context);
                                   }};
    HANDLE lock_ = nullptr;  ///< of the picture
    UniqueHandle lockGoes_;
    std::thread lockHolder_;
    using MakeLock = FakedImport<"CreateMutexW", decltype(CreateMutexW)>;
    const MakeLock makeLock_{library.module,
                             [this](auto... args) { return lock_ = MakeLock::Real(args...); }};
};
