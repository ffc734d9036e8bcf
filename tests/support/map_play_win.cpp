#include "support/map_play_win.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <sstream>

#include "support/gl_spy_win.h"

namespace {

using At = WorkerWatch::At;

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
const std::map<std::string, WPARAM> kTimers = {
    {"repeat", 1}, {"flight", 2}, {"hover", 3}, {"sun", 4}};
const std::map<std::string, At> kPlaces = {
    {"load", At::LoadLock}, {"decode", At::Decode}, {"split", At::SplitLock}};

/// The value of a word; the test fails when it has none.
template <class Values>
auto Meaning(const Values& values, const std::string& word) {
    const auto found = values.find(word);
    EXPECT_TRUE(found != values.end()) << "unknown word '" << word << "'";
    return found != values.end() ? found->second : typename Values::mapped_type{};
}

int KeyCode(const std::string& word) {
    return word.size() == 1 ? std::toupper(static_cast<unsigned char>(word[0]))
                            : Meaning(kKeys, word);
}

std::wstring Wide(const std::string& text) { return {text.begin(), text.end()}; }

/// A record that asks for a city: "Paris/France", or "Paris".
CityRecord Asked(const std::string& text) {
    CityRecord record = {};
    const std::size_t slash = std::min(text.find('/'), text.size());
    Wide(text.substr(0, slash)).copy(record.cityName, 63);
    if (slash < text.size()) Wide(text.substr(slash + 1)).copy(record.countryName, 63);
    return record;
}

bool IsSame(const SeenView& a, const SeenView& b, double miss = 1e-3) {
    return std::abs(a.tilt - b.tilt) < miss && std::abs(a.spin - b.spin) < miss &&
           std::abs(a.distance - b.distance) < miss;
}

std::string Written(const SeenView& view) {
    std::ostringstream out;
    out << "tilt " << view.tilt << ", spin " << view.spin << ", distance " << view.distance;
    return out.str();
}

void ExpectSameView(const SeenView& seen, const SeenView& expected, double miss = 1e-3) {
    EXPECT_TRUE(IsSame(seen, expected, miss)) << Written(seen) << "\nnot " << Written(expected);
}

bool Holds(const std::vector<std::string>& words, const std::string& word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// The image that covers a client point: the last drawn.
std::optional<SeenImage> ImageAt(MapPlay& m, POINT at) {
    const int y = m.ClientHeight() - 1 - at.y;
    const std::vector<SeenImage> images = m.Look().images;
    const auto found = std::find_if(images.rbegin(), images.rend(), [&](const SeenImage& i) {
        return at.x >= i.x && at.x < i.x + i.width && y >= i.y && y < i.y + i.height;
    });
    return found != images.rend() ? std::optional(*found) : std::nullopt;
}

/// Buttons stand twice on their sheet, in its lower half as they are lit.
void ExpectButton(MapPlay& m, const PlayAction& a, bool lit) {
    const auto image = ImageAt(m, m.At(a.Word(0)));
    ASSERT_TRUE(image.has_value()) << "no button";
    EXPECT_EQ(image->t < 0.5, lit);
}

/// The numbers of the photos, by the pages that a click on each opens.
std::vector<int> ClickAllPhotos(MapPlay& m) {
    std::vector<int> numbers;
    for (std::size_t i = m.Photos().size(), place = 1; place <= i; ++place) {
        m.opened.clear();
        m.Click(m.At("photo" + std::to_string(place)));
        numbers.push_back(
            m.opened.size() == 1 ? std::stoi(m.opened[0].substr(m.opened[0].rfind(L'/') + 1)) : -1);
    }
    m.opened.clear();
    return numbers;
}

void ExpectOpened(MapPlay& m, const PlayAction& a) {
    const std::vector<std::string> pages = a.Texts();
    EXPECT_EQ(m.opened.size(), pages.size());
    for (std::size_t i = 0; i < std::min(pages.size(), m.opened.size()); ++i)
        EXPECT_TRUE(m.opened[i].ends_with(Wide(pages[i]))) << testing::PrintToString(m.opened[i]);
    m.opened.clear();
}

std::vector<int> TakeIndices(std::vector<HostMessage>& messages) {
    std::vector<int> indices;
    for (const HostMessage& message : std::exchange(messages, {}))
        indices.push_back(static_cast<int>(message.wParam));
    return indices;
}

void ExpectAsked(MapPlay& m, const PlayAction& a) {
    for (const HostMessage& message : m.asked)
        EXPECT_EQ(message.lParam, reinterpret_cast<LPARAM>(m.window));
    EXPECT_EQ(TakeIndices(m.asked), a.Numbers());
}

void ExpectTold(MapPlay& m, const PlayAction& a) {
    for (const HostMessage& message : m.messages)
        EXPECT_EQ(message.lParam, reinterpret_cast<LPARAM>(&m.cities[message.wParam]));
    EXPECT_EQ(TakeIndices(m.messages), a.Numbers());
}

void ExpectRuns(MapPlay& m, const PlayAction& a) {
    const WPARAM timer = Meaning(kTimers, a.Word(0));
    ASSERT_TRUE(m.Runs(timer));
    EXPECT_EQ(m.timers[timer], static_cast<UINT>(a.Number(1, m.timers[timer])));
}

void ExpectLives(MapPlay& m) {
    const int before = SpiedGl().frames;
    MapPlay::Paint(m.window);
    EXPECT_GT(SpiedGl().frames, before);
}

/// Puts a timer into the queue and lets the window paint, which looks for timers that are due.
void FallDue(MapPlay& m, const PlayAction& a) {
    const auto known = kTimers.find(a.Word(0));
    const WPARAM id = known != kTimers.end() ? known->second : static_cast<WPARAM>(a.Number(0));
    PostMessageW(m.window, WM_TIMER, id, 0);
    MapPlay::Paint(m.window);
}

/// The host's loop finds a timer, or "none", and dispatches it.
void ExpectInQueue(MapPlay& m, const PlayAction& a) {
    MSG message = {};
    const bool found = PeekMessageW(&message, m.window, WM_TIMER, WM_TIMER, PM_REMOVE) != FALSE;
    ASSERT_EQ(found, a.Word(0) != "none");
    if (!found) return;
    const auto known = kTimers.find(a.Word(0));
    EXPECT_EQ(message.wParam,
              known != kTimers.end() ? known->second : static_cast<WPARAM>(a.Number(0)));
    DispatchMessageW(&message);
}

/// What happens once at a moment; an empty action expects that the moment has come.
void When(MapPlay& m, const PlayAction& a) {
    std::function<void()>& moment = a.Word(0) == "asked"  ? m.whileAsked
                                    : a.Word(0) == "told" ? m.whileTold
                                    : a.Word(0) == "key"  ? m.beforeKey
                                                          : m.whileOpening;
    if (a.words.size() == 1) {
        EXPECT_EQ(std::exchange(moment, nullptr), nullptr) << "the moment never came";
        return;
    }
    const std::string action = a.rest.substr(a.rest.find(' ') + 1);
    moment = [&m, action] { m.Play(action); };
}

void CloseAll(MapPlay& m) {
    while (const HWND child = GetWindow(m.host, GW_CHILD)) DestroyWindow(child);
}

void SendKeys(const MapPlay& m, const PlayAction& a, LPARAM state) {
    const int times = static_cast<int>(a.Number(1, 1));
    for (int i = 0; i < times; ++i)
        SendMessageW(m.window, WM_KEYDOWN, static_cast<WPARAM>(KeyCode(a.Word(0))), state);
}

constexpr LPARAM kHeldBit = LPARAM{1} << 30;

using Verb = void (*)(MapPlay& m, const PlayAction& a);
const std::map<std::string, Verb> kVerbs = {
    // The pointer. Points are written as MapPlay::At has them.
    {"move", [](auto& m, auto& a) { m.Hover(m.At(a.Word(0))); }},
    {"drag", [](auto& m, auto& a) { m.Drag(m.At(a.Word(0))); }},
    {"press", [](auto& m, auto& a) { m.Press(m.At(a.Word(0))); }},
    {"release", [](auto& m, auto& a) { m.Release(m.At(a.Word(0))); }},
    {"click", [](auto& m, auto& a) { m.Click(m.At(a.Word(0))); }},
    {"cursor", [](auto& m, auto& a) { m.cursor = m.At(a.Word(0)); }},
    {"rest",  // until the hover's timer has come
     [](auto& m, auto& a) {
         m.Hover(m.cursor = m.At(a.Word(0)));
         m.Tick(m.kHoverTimer);
     }},
    {"leave", [](auto& m, auto&) { SendMessageW(m.window, WM_MOUSELEAVE, 0, 0); }},
    {"wheel", [](auto& m, auto& a) { m.Wheel(static_cast<int>(a.Number(0))); }},
    {"zoom", [](auto& m, auto&) { m.ZoomIn(); }},
    // Keys, "key up 3" is three presses; timers; what Windows sends.
    {"key", [](auto& m, auto& a) { SendKeys(m, a, 1); }},
    {"held key", [](auto& m, auto& a) { SendKeys(m, a, kHeldBit | 1); }},
    {"home", [](auto& m, auto&) { m.Home(); }},
    {"tick",  // "tick flight 3" lets it come three times
     [](auto& m, auto& a) {
         for (int i = 0; i < a.Number(1, 1); ++i) m.Tick(Meaning(kTimers, a.Word(0)));
     }},
    {"fly", [](auto& m, auto&) { EXPECT_LT(m.Fly(), 100) << "it ends by itself"; }},
    {"due", FallDue},
    {"queue", ExpectInQueue},
    {"paint", [](auto& m, auto&) { m.Paint(m.window); }},
    {"size",
     [](auto& m, auto& a) {
         MoveWindow(m.window, 0, 0, static_cast<int>(a.Number(0)), static_cast<int>(a.Number(1)),
                    FALSE);
     }},
    // The host.
    {"city", [](auto& m, auto& a) { m.ShowCity(Asked(a.rest)); }},
    {"photos changed",  // signed index, number of new photos
     [](auto& m, auto& a) {
         SendMessageW(m.window, HORIVO_MSG_PHOTOS_CHANGED,
                      static_cast<WPARAM>(std::stoll(a.Word(0))),
                      static_cast<LPARAM>(a.Number(1, 1)));
     }},
    {"answer", [](auto& m, auto& a) { m.consent = std::stoll(a.Word(0), nullptr, 0); }},
    {"hidden", [](auto& m, auto& a) { m.hasHidden = a.Word(0) == "yes"; }},
    {"when", When},
    {"do", [](auto& m, auto& a) { m.acts.at(a.rest)(); }},
    {"take capture", [](auto& m, auto&) { SetCapture(m.host); }},
    {"lose capture", [](auto&, auto&) { ReleaseCapture(); }},
    // The library and its windows, "create b 130 220": further windows have names.
    {"cities",  // "cities none" hands over an empty table
     [](auto& m, auto& a) {
         if (a.Word(0) == "none") m.library.InitMap(nullptr, 0);
         else m.Init();
     }},
    {"free", [](auto& m, auto&) { EXPECT_NE(m.library.FreeMap(), 0U); }},
    {"free again", [](auto& m, auto&) { m.library.FreeMap(); }},
    {"install", [](auto& m, auto&) { EXPECT_EQ(m.library.InstallMap(), HORIVO_OK); }},
    {"restart",  // no windows, no picture
     [](auto& m, auto&) {
         CloseAll(m);
         EXPECT_NE(m.library.FreeMap(), 0U);
         SpiedGl().uploads.clear();
         m.Init();
     }},
    {"open",
     [](auto& m, auto& a) {
         m.Open(static_cast<int>(a.Number(0, m.kOpenWidth)),
                static_cast<int>(a.Number(1, m.kOpenHeight)));
     }},
    {"create",
     [](auto& m, auto& a) {
         m.window = m.CreateMap(static_cast<int>(a.Number(1, 160)),
                                static_cast<int>(a.Number(2, 120)));
         EXPECT_NE(m.window, nullptr);
         m.windows[a.Word(0)] = m.window;
     }},
    {"passing window", [](auto& m, auto&) { DestroyWindow(m.CreateMap(50, 50)); }},
    {"refused window",
     [](auto& m, auto& a) {
         m.failingContexts = static_cast<int>(a.Number(0, 1));
         EXPECT_EQ(m.CreateMap(50, 60), nullptr);
         EXPECT_EQ(m.status, HORIVO_CONTEXT_FAILED);
         m.failingContexts = 0;
     }},
    {"use", [](auto& m, auto& a) { m.window = Meaning(m.windows, a.Word(0)); }},
    {"close", [](auto& m, auto&) { DestroyWindow(m.window); }},
    {"close all", [](auto& m, auto&) { CloseAll(m); }},
    {"context lost",
     [](auto& m, auto&) {
         wglMakeCurrent(nullptr, nullptr);
         m.contextLost = true;
     }},
    {"context back", [](auto& m, auto&) { m.contextLost = false; }},
    // Workers: hold them up at a place, let them go, wait for them with or without messages.
    {"hold", [](auto& m, auto& a) { m.workers.HoldUp(Meaning(kPlaces, a.Word(0))); }},
    {"held", [](auto& m, auto&) { EXPECT_TRUE(m.PumpUntil([&] { return m.workers.IsHeldUp(); })); }},
    {"held unheard",
     [](auto& m, auto&) {
         while (!m.workers.IsHeldUp()) Sleep(1);
     }},
    {"go", [](auto& m, auto&) { m.workers.LetGo(); }},
    {"go at wait", [](auto& m, auto&) { m.workers.LetGoAtWait(); }},
    {"hurry", [](auto& m, auto&) { m.workers.HurryWaits(true); }},
    {"patience", [](auto& m, auto&) { m.workers.HurryWaits(false); }},
    {"settle", [](auto& m, auto&) { EXPECT_TRUE(m.Settle(m.workers)); }},
    {"settle tiles", [](auto& m, auto&) { EXPECT_TRUE(m.WaitForTiles()); }},
    {"left", [](auto& m, auto&) { EXPECT_TRUE(m.workers.WaitUntilAllLeft()); }},
    {"inside",  // workers, "inside 1 unheard": without messages
     [](auto& m, auto& a) {
         const auto rest = [&] { return m.workers.Inside() == a.Number(0); };
         while (a.Word(1) == "unheard" && !rest()) Sleep(1);
         EXPECT_TRUE(m.PumpUntil(rest));
     }},
    {"start fails", [](auto& m, auto& a) { m.workers.FailStart(static_cast<int>(a.Number(0))); }},
    {"stage",  // the message of a worker, sent by nobody
     [](auto& m, auto& a) {
         SendMessageW(m.window, WM_USER + 1, static_cast<WPARAM>(std::stoull(a.Word(0))),
                      static_cast<LPARAM>(a.Number(1)));
     }},
    {"lock", [](auto& m, auto&) { m.HoldLock(true); }},
    {"unlock", [](auto& m, auto&) { m.HoldLock(false); }},
    {"lock dies", [](auto& m, auto&) { m.HoldLock(true, true), m.HoldLock(false); }},
    // What is expected. Lists end what they compare: the next "asked" sees what came since.
    {"asked", ExpectAsked},
    {"told", ExpectTold},
    {"opened", ExpectOpened},
    {"boxes", [](auto& m, auto& a) { EXPECT_EQ(std::exchange(m.boxes, 0), a.Number(0)); }},
    {"runs", ExpectRuns},
    {"stops", [](auto& m, auto& a) { EXPECT_FALSE(m.Runs(Meaning(kTimers, a.Word(0)))); }},
    {"no timers", [](auto& m, auto&) { EXPECT_TRUE(m.timers.empty()); }},
    {"unpainted", [](auto& m, auto&) { m.TakeRepaintRequest(); }},
    {"repaint", [](auto& m, auto&) { EXPECT_TRUE(m.TakeRepaintRequest()); }},
    {"no repaint", [](auto& m, auto&) { EXPECT_FALSE(m.TakeRepaintRequest()); }},
    {"capture", [](auto& m, auto&) { EXPECT_EQ(GetCapture(), m.window); }},
    {"no capture", [](auto&, auto&) { EXPECT_EQ(GetCapture(), nullptr); }},
    {"focus", [](auto& m, auto&) { EXPECT_EQ(GetFocus(), m.window); }},
    {"lives", [](auto& m, auto&) { ExpectLives(m); }},
    {"gone", [](auto& m, auto&) { EXPECT_FALSE(IsWindow(m.window)); }},
    {"view",  // tilt, spin, distance
     [](auto& m, auto& a) {
         ExpectSameView(m.LookAtView(), {a.Number(2, -12.2), a.Number(0), a.Number(1)});
     }},
    {"mark", [](auto& m, auto&) { m.marked = m.LookAtView(); }},
    {"at mark",  // by how much it may miss
     [](auto& m, auto& a) { ExpectSameView(m.LookAtView(), m.marked, a.Number(0, 1e-3)); }},
    {"off mark", [](auto& m, auto&) { EXPECT_FALSE(IsSame(m.LookAtView(), m.marked)); }},
    {"above",  // latitude, longitude of the place in the middle, by how much it may miss, degrees
     [](auto& m, auto& a) {
         const SeenView v = m.LookAtView();
         const double miss = a.Number(2, 0.01);
         EXPECT_NEAR(std::remainder(v.tilt - a.Number(0), 360.0), 0.0, miss);
         EXPECT_NEAR(std::remainder(v.spin + a.Number(1), 360.0), 0.0, miss);
     }},
    {"titles", [](auto& m, auto& a) { EXPECT_EQ(m.Titles(), a.Texts()); }},
    {"labels", [](auto& m, auto& a) { EXPECT_EQ(m.Labels(), a.Texts()); }},
    {"says",
     [](auto& m, auto& a) {
         const SeenOverlay seen = m.Look();
         const auto words = seen.Words();
         EXPECT_EQ(seen.openMatrices, 0) << "an empty text leaves its level behind";
         for (const std::string& text : a.Texts())
             EXPECT_TRUE(Holds(words, text)) << text << " not in " << testing::PrintToString(words);
     }},
    {"says not",
     [](auto& m, auto& a) {
         const auto words = m.Look().Words();
         for (const std::string& text : a.Texts()) EXPECT_FALSE(Holds(words, text)) << text;
     }},
    {"photos", [](auto& m, auto& a) { EXPECT_EQ(ClickAllPhotos(m), a.Numbers()); }},
    {"stack", [](auto& m, auto& a) { EXPECT_EQ(m.Photos().size(), a.Number(0)); }},
    {"lit", [](auto& m, auto& a) { ExpectButton(m, a, true); }},
    {"dark", [](auto& m, auto& a) { ExpectButton(m, a, false); }},
    {"bare", [](auto& m, auto& a) { EXPECT_FALSE(ImageAt(m, m.At(a.Word(0))).has_value()); }},
    {"tiles",  // sets since the last look, "some" is at least one
     [](auto& m, auto& a) {
         const std::size_t sets = m.TakeTileSets();
         const bool right = a.Word(0) == "any" || (a.Word(0) == "some" && sets > 0) ||
                            std::to_string(sets) == a.Word(0);
         EXPECT_TRUE(right) << sets;
     }},
    {"started",  // workers since the last look
     [](auto& m, auto& a) {
         const int before = std::exchange(m.startsSeen, m.workers.Started());
         const int now = m.workers.Started() - before;
         EXPECT_TRUE(a.Word(0) == "any" || now == a.Number(0)) << now;
     }},
    {"decoded at once",
     [](auto& m, auto& a) { EXPECT_EQ(m.workers.MostDecoding(), a.Number(0)); }},
};

}  // namespace

PlayAction::PlayAction(const std::string& text) {
    // Of two verbs the longer: "no repaint" before "no".
    words = Split(text, ' ');
    const std::size_t second = text.find(' ', text.find(' ') + 1);
    const std::size_t third = text.find(' ', std::min(second, text.size() - 1) + 1);
    for (const std::size_t end : {third, second, text.find(' ')}) {
        verb = text.substr(0, end);
        if (!kVerbs.contains(verb)) continue;
        rest = end < text.size() ? text.substr(end + 1) : "";
        words = Split(rest, ' ');
        return;
    }
}

std::string PlayAction::Word(std::size_t place) const {
    return place < words.size() ? words[place] : "";
}

double PlayAction::Number(std::size_t place, double otherwise) const {
    return place < words.size() ? std::stod(words[place]) : otherwise;
}

std::vector<int> PlayAction::Numbers() const {
    std::vector<int> numbers;
    for (const std::string& word : words)
        if (word != "none") numbers.push_back(std::stoi(word));
    return numbers;
}

std::vector<std::string> PlayAction::Texts() const {
    return rest == "none" ? std::vector<std::string>{} : Split(rest, '|');
}

void MapPlay::Play(const std::string& actions, const std::string& why) {
    int place = 0;
    for (const std::string& action : Split(actions, ';')) {
        const testing::ScopedTrace trace("", ++place, why + ": '" + action + "' of " + actions);
        const PlayAction parsed(action);
        const auto verb = kVerbs.find(parsed.verb);
        ASSERT_TRUE(verb != kVerbs.end()) << "unknown verb";
        verb->second(*this, parsed);
        if (HasFatalFailure()) return;
    }
}

void MapPlay::PlayRows(const std::string& first, std::initializer_list<Row> rows) {
    for (const Row& row : rows) Play(first + ';' + row.actions, row.why);
}

std::size_t MapPlay::IndexOf(const std::string& city) const {
    const auto found = std::find_if(cities.begin(), cities.end(), [&](const CityRecord& record) {
        return record.cityName == Wide(city);
    });
    EXPECT_TRUE(found != cities.end()) << "no point '" << city << "'";
    return static_cast<std::size_t>(found != cities.end() ? found - cities.begin() : 0);
}

POINT MapPlay::At(const std::string& word) {
    if (const auto named = points.find(word); named != points.end()) return named->second;
    double x = 0.0;
    double y = 0.0;
    unsigned number = 0;
    const auto client = [this](double left, double up) {
        return POINT{std::lround(left), ClientHeight() - 1 - std::lround(up)};
    };
    const int parts = std::sscanf(word.c_str(), "photo%u+%lf,%lf", &number, &x, &y);
    if (parts == 1 || parts == 3) {
        const std::vector<SeenImage> stack = Photos();
        EXPECT_LE(number, stack.size());
        const SeenImage photo = number <= stack.size() ? stack[number - 1] : SeenImage{};
        if (parts == 1) return client(photo.x + photo.width / 2, photo.y + photo.height / 2);
        return client(photo.x + x, photo.y + y);
    }
    if (std::sscanf(word.c_str(), "p%lf,%lf", &x, &y) == 2) return client(kPanelX + x, y);
    if (std::sscanf(word.c_str(), "%lf,%lf", &x, &y) == 2) return {std::lround(x), std::lround(y)};
    if (std::sscanf(word.c_str(), "%lf:%lf", &x, &y) == 2) return PixelOf(x, y);
    const CityRecord& city = cities[IndexOf(word)];
    return PixelOf(city.latitude, city.longitude);
}

int MapPlay::ClientHeight() const {
    RECT client = {};
    GetClientRect(window, &client);
    return client.bottom;
}

std::vector<SeenImage> MapPlay::Photos() {
    std::vector<SeenImage> images = Look().images;
    // A photo that does not fit stands above the window. Buttons have another size.
    std::erase_if(images, [&](const SeenImage& image) {
        return image.y >= ClientHeight() || image.y < 0 || image.width <= 32 || image.t != 0;
    });
    return images;
}

std::vector<std::string> MapPlay::Labels() {
    const SeenOverlay seen = Look();
    EXPECT_EQ(seen.openMatrices, 0) << "an empty text leaves its level behind";
    std::vector<std::string> words = seen.Words();
    std::erase_if(words, [](const std::string& word) { return word.starts_with("Lat "); });
    return words;
}

std::size_t MapPlay::TakeTileSets() {
    const std::vector<SpiedUpload> uploads = std::exchange(SpiedGl().uploads, {});
    EXPECT_EQ(uploads.size() % 8, 0U);
    if (rightTiles.empty()) rightTiles = uploads;
    for (std::size_t i = 0; i < uploads.size(); ++i)
        EXPECT_TRUE(uploads[i].pixels == rightTiles[i % 8].pixels) << "tile " << i % 8;
    return uploads.size() / 8;
}

void MapPlay::HoldLock(bool held, bool dies) {
    if (!held) {
        SetEvent(lockGoes_.get());
        lockHolder_.join();
        return;
    }
    const UniqueHandle taken(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    lockGoes_.reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    lockHolder_ = std::thread([=, this, has = taken.get()] {
        WaitForSingleObject(lock_, INFINITE);
        SetEvent(has);
        WaitForSingleObject(lockGoes_.get(), INFINITE);
        if (!dies) ReleaseMutex(lock_);
    });
    WaitForSingleObject(taken.get(), INFINITE);
}
