#include "support/map_play_win.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <sstream>

namespace {

/// Parts a text, without blanks around the parts; an empty part is left out.
std::vector<std::string> Split(const std::string& text, char at) {
    std::vector<std::string> parts;
    std::istringstream rest(text);
    for (std::string part; std::getline(rest, part, at);) {
        const std::size_t first = part.find_first_not_of(' ');
        if (first != std::string::npos)
            parts.push_back(part.substr(first, part.find_last_not_of(' ') - first + 1));
    }
    return parts;
}

const std::map<std::string, int> kKeys = {
    {"up", VK_UP},       {"down", VK_DOWN},   {"left", VK_LEFT},    {"right", VK_RIGHT},
    {"home", VK_HOME},   {"clear", VK_CLEAR}, {"plus", VK_ADD},     {"minus", VK_SUBTRACT},
    {"prior", VK_PRIOR}, {"next", VK_NEXT},   {"insert", VK_INSERT}};
/// Other words that stand for numbers: timers, where workers are held up, how waits go, what the
/// library answers, system errors.
const std::map<std::string, int> kWords = {
    {"none", 0},     {"repeat", 1},  {"flight", 2},   {"hover", 3},    {"sun", 4},
    {"host's", 77},  {"load", 1},    {"decode", 2},   {"split", 3},    {"patient", 0},
    {"hurried", 1},  {"vain", 2},    {"orphaned", 3}, {"bad", 3},      {"no-copy", 5},
    {"no-class", 6}, {"no-file", 2}, {"no-path", 3},  {"no-memory", 8}};

/// What follows a verb.
struct Arguments {
    double Number(std::size_t place, double otherwise = 0.0) const {
        if (place >= words.size()) return otherwise;
        const auto known = kWords.find(words[place]);
        return known != kWords.end() ? known->second : std::stod(words[place]);
    }
    int Int(std::size_t i, int none = 0) const { return static_cast<int>(Number(i, none)); }
    LPARAM Long(std::size_t i, int none = 0) const { return static_cast<LPARAM>(Number(i, none)); }
    /// All that is parted at " | "; "none" is no text.
    std::vector<std::string> Texts() const {
        return rest == "none" ? std::vector<std::string>{} : Split(rest, '|');
    }

    std::string rest;
    std::vector<std::string> words = Split(rest, ' ');
};

std::wstring Wide(const std::string& text) { return {text.begin(), text.end()}; }

void ExpectView(MapPlay& m, const SeenView& expected, double miss = 1e-3) {
    const SeenView seen = m.LookAtView();
    EXPECT_NEAR(std::remainder(seen.tilt - expected.tilt, 360.0), 0.0, miss) << seen.tilt;
    EXPECT_NEAR(std::remainder(seen.spin - expected.spin, 360.0), 0.0, miss) << seen.spin;
    EXPECT_NEAR(seen.distance, expected.distance, miss);
}

/// @param a  a number, "some" for at least one, or "any"
void ExpectCount(std::size_t count, const Arguments& a) {
    if (a.rest == "any") return;
    EXPECT_TRUE(a.rest == "some" ? count > 0 : count == std::size_t(a.Long(0))) << count;
}

void ExpectWords(MapPlay& m, const Arguments& a, bool there) {
    const SeenOverlay seen = m.Look();
    EXPECT_EQ(seen.openMatrices, 0) << "an empty text leaves its level behind";
    for (const std::string& text : a.Texts())
        EXPECT_EQ(seen.Has(text), there) << text << " in " << testing::PrintToString(seen.Words());
}

/// What covers a client point; buttons stand twice on their sheet, in its lower half as they are
/// lit.
std::string ButtonAt(MapPlay& m, POINT at) {
    const int y = m.ClientHeight() - 1 - at.y;
    std::string seen = "bare";
    for (const SeenImage& i : m.Look().images) {
        if (at.x >= i.x && at.x < i.x + i.width && y >= i.y && y < i.y + i.height)
            seen = i.t < 0.5 ? "lit" : "dark";
    }
    return seen;
}

/// @param seen  a blank before each
void ExpectList(std::string& seen, const Arguments& a) {
    EXPECT_EQ(std::exchange(seen, ""), a.rest == "none" ? "" : ' ' + a.rest);
}

/// Clicks on all photos: their numbers are in the pages that open.
void ExpectPhotos(MapPlay& m, const Arguments& a) {
    std::string numbers;
    for (std::size_t i = m.Photos().size(), place = 1; place <= i; ++place) {
        m.Click(m.At("photo" + std::to_string(place)));
        numbers += ' ' + std::to_string(std::stoi(std::exchange(m.opened, "").substr(2)));
    }
    ExpectList(numbers, a);
}

void ExpectLives(MapPlay& m) {
    const int before = SpiedGl().frames;
    MapPlay::Paint(m.window);
    EXPECT_EQ(SpiedGl().frames, before + 1);
}

/// The host's loop finds a timer, or "none", and dispatches it.
void ExpectInQueue(MapPlay& m, const Arguments& a) {
    MSG message = {};
    PeekMessageW(&message, m.window, WM_TIMER, WM_TIMER, PM_REMOVE);
    EXPECT_EQ(message.wParam, a.Int(0));
    DispatchMessageW(&message);
}

/// What happens once at a moment; an empty action expects that the moment has come.
void When(MapPlay& m, const Arguments& a) {
    const std::string moment = a.words.at(0);
    EXPECT_EQ(m.acts[moment], nullptr) << "the moment never came";
    if (a.words.size() > 1)
        m.acts[moment] = [&m, action = a.rest.substr(moment.size())] { m.Play(action); };
}

void PressKeys(MapPlay& m, const Arguments& a, LPARAM state) {
    const std::string name = a.words.at(0);
    const WPARAM key = name.size() == 1 ? std::toupper(name[0]) : kKeys.at(name);
    for (int i = 0; i < a.Int(1, 1); ++i) m.Send(WM_KEYDOWN, key, state);
}

std::uint32_t CodeOf(const Arguments& a) { return a.Int(0) == 0 ? 0 : 0x20000000U + a.Int(0); }

/// Waits for `done`, with the messages or, "unheard", without them.
void Await(const Arguments& a, const std::function<bool()>& done) {
    while (a.rest.ends_with("unheard") && !done()) Sleep(1);
    EXPECT_TRUE(MapPlay::PumpUntil(done));
}

const std::map<std::string, void (*)(MapPlay& m, const Arguments& a)> kVerbs = {
    // The pointer. Points are written as MapPlay::At has them.
    {"move", [](auto& m, auto& a) { m.Hover(m.At(a.rest)); }},
    {"drag", [](auto& m, auto& a) { m.Pointer(WM_MOUSEMOVE, MK_LBUTTON, m.At(a.rest)); }},
    {"press", [](auto& m, auto& a) { m.Pointer(WM_LBUTTONDOWN, MK_LBUTTON, m.At(a.rest)); }},
    {"release", [](auto& m, auto& a) { m.Pointer(WM_LBUTTONUP, 0, m.At(a.rest)); }},
    {"click", [](auto& m, auto& a) { m.Click(m.At(a.rest)); }},
    {"cursor", [](auto& m, auto& a) { m.cursor = m.At(a.rest); }},
    {"leave", [](auto& m, auto&) { m.Send(WM_MOUSELEAVE, 0, 0); }},
    {"wheel", [](auto& m, auto& a) { m.Send(WM_MOUSEWHEEL, MAKEWPARAM(0, a.Int(0)), 0); }},
    {"zoom", [](auto& m, auto&) { m.ZoomIn(); }},
    // Keys, "key up 3" is three presses; timers, "tick flight 3"; what Windows sends.
    {"key", [](auto& m, auto& a) { PressKeys(m, a, 1); }},
    // Bit 30 says that the key was down before.
    {"held key", [](auto& m, auto& a) { PressKeys(m, a, 0x40000001); }},
    {"home", [](auto& m, auto&) { m.Home(); }},
    {"tick",
     [](auto& m, auto& a) {
         for (int i = 0; i < a.Int(1, 1); ++i) m.Tick(a.Int(0));
     }},
    {"fly", [](auto& m, auto&) { m.Play("tick flight 100; stops flight"); }},
    {"post", [](auto& m, auto& a) { PostMessageW(m.window, WM_TIMER, a.Int(0), 0); }},
    {"queue", ExpectInQueue},
    {"paint", [](auto& m, auto&) { m.Paint(m.window); }},
    {"size", [](auto& m, auto& a) { MoveWindow(m.window, 0, 0, a.Int(0), a.Int(1), FALSE); }},
    // The host.
    {"city",  // "Paris/France", or "Paris"
     [](auto& m, auto& a) {
         CityRecord city = {};
         std::swscanf(Wide(a.rest).c_str(), L"%63l[^/]/%63l[^/]", city.cityName, city.countryName);
         m.ShowCity(city);
     }},
    // Signed index, number of new photos.
    {"photos changed", [](auto& m, auto& a) { m.Send(m.kNewPhotos, a.Long(0), a.Long(1, 1)); }},
    {"answer", [](auto& m, auto& a) { m.consent = a.Long(0); }},
    {"when", When},
    {"do", [](auto& m, auto& a) { m.acts.at(a.rest)(); }},
    {"take capture", [](auto& m, auto&) { SetCapture(m.host); }},
    {"lose capture", [](auto&, auto&) { ReleaseCapture(); }},
    // The library and its windows, "create b 130 220": further windows have names.
    {"cities", [](auto& m, auto&) { m.Init(); }},
    {"no cities", [](auto& m, auto&) { m.library.InitMap(nullptr, 5); }},
    {"free", [](auto& m, auto& a) { EXPECT_EQ(m.library.FreeMap() != 0, a.rest != "again"); }},
    {"install", [](auto& m, auto& a) { EXPECT_EQ(m.library.InstallMap(), CodeOf(a)); }},
    {"init", [](auto& m, auto& a) { EXPECT_EQ(m.Init(), CodeOf(a)); }},
    {"error", [](auto& m, auto& a) { ExpectCount(m.library.GetLastSysError(), a); }},
    // A window, without a code.
    {"refused", [](auto& m, auto&) { EXPECT_TRUE(m.CreateMap() == nullptr && m.status == 0); }},
    {"restart", [](auto& m, auto&) { m.Play("close all; free; tiles any; cities"); }},
    {"open", [](auto& m, auto& a) { m.Open(a.Int(0, m.kOpenWidth), a.Int(1, m.kOpenHeight)); }},
    {"create",
     [](auto& m, auto& a) {
         m.window = m.windows[a.words[0]] = m.CreateMap(a.Int(1, 160), a.Int(2, 120));
         EXPECT_NE(m.window, nullptr);
     }},
    {"passing window", [](auto& m, auto&) { DestroyWindow(m.CreateMap(50, 50)); }},
    {"use", [](auto& m, auto& a) { m.window = m.windows.at(a.rest); }},
    {"close", [](auto& m, auto&) { DestroyWindow(m.window); }},
    {"close all", [](auto& m, auto&) { m.CloseAll(); }},
    {"context lost", [](auto& m, auto&) { m.contextLost = wglMakeCurrent(nullptr, nullptr); }},
    {"context back", [](auto& m, auto&) { m.contextLost = false; }},
    // Workers: hold them up at a place, let them go, wait for them with or without messages.
    {"hold", [](auto& m, auto& a) { m.workers.HoldUp(a.Int(0)); }},
    {"held", [](auto& m, auto& a) { Await(a, [&] { return m.workers.IsHeldUp(); }); }},
    {"go", [](auto& m, auto&) { m.workers.LetGo(); }},
    {"go at wait", [](auto& m, auto&) { m.workers.letGoAtWait = true; }},
    {"wait", [](auto& m, auto& a) { m.workers.waits = a.Int(0); }},
    {"settle", [](auto& m, auto&) { EXPECT_TRUE(m.Settle(m.workers)); }},
    {"settle tiles", [](auto& m, auto&) { EXPECT_TRUE(m.WaitForTiles()); }},
    {"inside", [](auto& m, auto& a) { Await(a, [&] { return m.workers.Inside() == a.Int(0); }); }},
    {"start fails", [](auto& m, auto& a) { m.workers.failingStart = a.Int(0); }},
    // The message of a worker, sent by nobody.
    {"stage", [](auto& m, auto& a) { m.Send(WM_USER + 1, a.Long(0), a.Int(1)); }},
    // What is expected. Lists end what they compare: the next "asked" sees what came since.
    {"asked", [](auto& m, auto& a) { ExpectList(m.asked, a); }},
    {"told", [](auto& m, auto& a) { ExpectList(m.heard, a); }},
    {"opened", [](auto& m, auto& a) { ExpectList(m.opened, a); }},
    // And its period in ms.
    {"runs",
     [](auto& m, auto& a) {
         ASSERT_TRUE(m.timers.contains(a.Int(0)));
         EXPECT_EQ(m.timers[a.Int(0)], a.Number(1, m.timers[a.Int(0)]));
     }},
    {"stops", [](auto& m, auto& a) { EXPECT_FALSE(m.timers.contains(a.Int(0))); }},
    {"no timers", [](auto& m, auto&) { EXPECT_TRUE(m.timers.empty()); }},
    {"unpainted", [](auto& m, auto&) { ValidateRect(m.window, nullptr); }},
    {"repaint", [](auto& m, auto&) { EXPECT_TRUE(GetUpdateRect(m.window, nullptr, FALSE)); }},
    {"no repaint", [](auto& m, auto&) { EXPECT_FALSE(GetUpdateRect(m.window, nullptr, FALSE)); }},
    {"capture", [](auto& m, auto&) { EXPECT_EQ(GetCapture(), m.window); }},
    {"no capture", [](auto&, auto&) { EXPECT_EQ(GetCapture(), nullptr); }},
    {"focus", [](auto& m, auto&) { EXPECT_EQ(GetFocus(), m.window); }},
    {"lives", [](auto& m, auto&) { ExpectLives(m); }},
    {"gone", [](auto& m, auto&) { EXPECT_FALSE(IsWindow(m.window)); }},
    // Tilt, spin, distance.
    {"view",
     [](auto& m, auto& a) { ExpectView(m, {a.Number(2, -12.2), a.Number(0), a.Number(1)}); }},
    {"mark", [](auto& m, auto&) { m.marked = m.LookAtView(); }},
    // By how much it may miss.
    {"at mark", [](auto& m, auto& a) { ExpectView(m, m.marked, a.Number(0, 1e-3)); }},
    {"same",  // client point, to a pixel
     [](auto& m, auto& a) {
         const POINT one = m.At(a.words[0]);
         const POINT other = m.At(a.words[1]);
         EXPECT_LE(std::hypot(one.x - other.x, one.y - other.y), 1.0) << one.x << ' ' << one.y;
     }},
    // Of the panel: city, country.
    {"titles", [](auto& m, auto& a) { EXPECT_EQ(m.Look().Words(m.kPanelX), a.Texts()); }},
    {"labels", [](auto& m, auto& a) { EXPECT_EQ(m.Labels(), a.Texts()); }},
    {"says", [](auto& m, auto& a) { ExpectWords(m, a, true); }},
    {"says not", [](auto& m, auto& a) { ExpectWords(m, a, false); }},
    {"photos", ExpectPhotos},
    {"stack", [](auto& m, auto& a) { ExpectCount(m.Photos().size(), a); }},
    {"lit", [](auto& m, auto& a) { EXPECT_EQ(ButtonAt(m, m.At(a.rest)), "lit"); }},
    {"dark", [](auto& m, auto& a) { EXPECT_EQ(ButtonAt(m, m.At(a.rest)), "dark"); }},
    {"bare", [](auto& m, auto& a) { EXPECT_EQ(ButtonAt(m, m.At(a.rest)), "bare"); }},
    {"boxes", [](auto& m, auto& a) { EXPECT_EQ(std::exchange(m.boxes, 0), a.Int(0)); }},
    {"tiles", [](auto& m, auto& a) { ExpectCount(m.TakeTileSets(), a); }},
    {"started", [](auto& m, auto& a) { ExpectCount(std::exchange(m.workers.started, 0), a); }},
    {"decoded at once", [](auto& m, auto& a) { ExpectCount(m.workers.mostDecoding, a); }},
};

}  // namespace

void MapPlay::Play(const std::string& actions, const std::string& why) {
    int place = 0;
    for (const std::string& action : Split(actions, ';')) {
        const testing::ScopedTrace trace("", ++place, why + ": '" + action + "' of " + actions);
        // From the last verb on: of two that fit, the longer.
        const auto verb = std::find_if(kVerbs.rbegin(), kVerbs.rend(), [&](const auto& known) {
            return (action + ' ').starts_with(known.first + ' ');
        });
        ASSERT_TRUE(verb != kVerbs.rend()) << "unknown verb";
        const std::size_t rest = std::min(verb->first.size() + 1, action.size());
        verb->second(*this, {action.substr(rest)});
        if (HasFatalFailure()) return;
    }
}

void MapPlay::PlayRows(const std::string& first, Rows rows) {
    for (const auto& [why, actions] : rows) Play(first + ';' + actions, why);
}

POINT MapPlay::At(const std::string& word) {
    if (points.contains(word)) return points[word];
    double x = 0.0;
    double y = 0.0;
    unsigned number = 0;
    const auto client = [this](double left, double up) {
        return POINT{std::lround(left), ClientHeight() - 1 - std::lround(up)};
    };
    const int parts = std::sscanf(word.c_str(), "photo%u+%lf,%lf", &number, &x, &y);
    if (parts > 0) {
        const SeenImage photo = Photos().at(number - 1);
        if (parts == 3) return client(photo.x + x, photo.y + y);
        return client(photo.x + photo.width / 2, photo.y + photo.height / 2);
    }
    if (std::sscanf(word.c_str(), "p%lf,%lf", &x, &y) == 2) return client(kPanelX + x, y);
    if (std::sscanf(word.c_str(), "%lf,%lf", &x, &y) == 2) return {std::lround(x), std::lround(y)};
    if (std::sscanf(word.c_str(), "%lf:%lf", &x, &y) == 2) return PixelOf(x, y);
    for (const CityRecord& city : cities) {
        if (city.cityName == Wide(word)) return PixelOf(city.latitude, city.longitude);
    }
    ADD_FAILURE() << "no point '" << word << "'";
    return {};
}
