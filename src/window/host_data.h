#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "cities/city_table.h"
#include "horivo_map.h"

/// Texts that the host has put into its user's language, by number. Window thread.
class LocalStrings {
public:
    /// Copies `text`; null is ignored and leaves an earlier text in place.
    void Set(std::int32_t id, const HorivoWideChar* text) {
        if (text != nullptr) texts_.insert_or_assign(id, text);
    }
    /// The text of `id`, or `fallback` when it was never set.
    const HorivoWideChar* Get(std::int32_t id, const HorivoWideChar* fallback) const noexcept {
        const auto found = texts_.find(id);
        return found != texts_.end() ? found->second.c_str() : fallback;
    }

private:
    std::map<std::int32_t, std::basic_string<HorivoWideChar>> texts_;
};

/// What the host handed over and what it may ask for. Window thread.
struct HostData {
    std::wstring hostDirectory;  ///< folder of the host's executable, with trailing backslash
    std::wstring dataDirectory;  ///< holds "map.jpg", with trailing backslash; empty: none
    std::wstring settingsFile;   ///< path of "horivo.ini"; empty: none
    CityTable cities;            ///< the host's memory
    /// From InitMap until FreeMap; afterwards the host may have given its records back.
    bool citiesInUse = false;
    LocalStrings localStrings;
    std::uint32_t lastSysError = 0;          ///< of the last failure that kept one; never reset
    std::uint32_t createStatus = HORIVO_OK;  ///< of the last window creation
    std::uint32_t createError = 0;  ///< why it was refused without a status; 0: Windows knows
    bool installTest = false;       ///< only while InstallMap tries the picture
};
