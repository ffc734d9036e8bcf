#include "cities/city_clock_win.h"

#include <algorithm>
#include <iterator>

#include "base/narrow_text.h"
#include "cities/city_zone.h"

void SystemCityClock::ReadTime() noexcept { GetSystemTime(&now_); }

void SystemCityClock::WriteTime(CityRecord& city, char (&text)[kLabelTextSize]) noexcept {
    text[0] = '\0';
    const DYNAMIC_TIME_ZONE_INFORMATION* zone = ResolveTimeZone(city, zones_);
    if (zone == nullptr) return;
    wchar_t wide[kTimeTextChars];
    SYSTEMTIME local;
    if (UtcToZoneTime(now_, *zone, rules_, local)) {
        FormatShortTime(local, wide);
    } else {
        std::copy(std::begin(kTimeErrorText), std::end(kTimeErrorText), wide);
    }
    NarrowText(wide, -1, text, kLabelTextSize);
}
