#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "cities/city_table.h"
#include "horivo_map.h"

/// Texts that the host has translated into the language of its user. Each text has a number.
class LocalStrings {
public:
    /// Copies `text`; null is ignored and leaves an earlier text in place.
    void Set(std::int32_t id, const HorivoWideChar* text) {
        if (text != nullptr) texts_.insert_or_assign(id, text);
    }
    /// The text of `id`, or `fallback` when this text was never set.
    const HorivoWideChar* Get(std::int32_t id, const HorivoWideChar* fallback) const noexcept {
        const auto found = texts_.find(id);
        return found != texts_.end() ? found->second.c_str() : fallback;
    }

private:
    std::map<std::int32_t, std::basic_string<HorivoWideChar>> texts_;
};

/// The folders that the map reads, each with a trailing backslash, and the settings file.
struct MapFolders {
    std::wstring host;          ///< folder of the host's executable
    std::wstring data;          ///< folder of "map.jpg"; empty: there is no folder
    std::wstring settingsFile;  ///< path of "horivo.ini"; empty: no settings are read
};

/// The folders, and the data that the host has handed over: city table and translated texts.
class HostData {
public:
    const MapFolders& Folders() const noexcept { return folders_; }
    void SetFolders(MapFolders folders) noexcept { folders_ = std::move(folders); }

    /// The city table. Its records are in the memory of the host. The reference is valid as long as
    /// this object exists, also after SetCities.
    const CityTable& Cities() const noexcept { return cities_; }
    void SetCities(const CityTable& cities) noexcept {
        cities_ = cities;
        citiesInUse_ = true;
    }
    /// Marks the records as not in use, because the host may free them after FreeMap.
    /// @return whether the records were in use
    bool StopUsingCities() noexcept { return std::exchange(citiesInUse_, false); }

    LocalStrings localStrings;

private:
    MapFolders folders_;
    CityTable cities_;
    bool citiesInUse_ = false;
};
