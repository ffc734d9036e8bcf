#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "cities/city_table.h"
#include "horivo_map.h"

/// Texts that the host has translated into its user's language, by number.
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

/// The folders that the map reads, each with a trailing backslash.
struct MapFolders {
    std::wstring host;          ///< of the host's executable
    std::wstring data;          ///< holds "map.jpg"; empty: none
    std::wstring settingsFile;  ///< path of "horivo.ini"; empty: none
};

/// What the host has handed over.
class HostData {
public:
    const MapFolders& Folders() const noexcept { return folders_; }
    void SetFolders(MapFolders folders) noexcept { folders_ = std::move(folders); }

    /// The table; its records are the host's memory. The reference stays good for the life of this
    /// object, whatever table it refers to.
    const CityTable& Cities() const noexcept { return cities_; }
    void TakeCities(const CityTable& cities) noexcept {
        cities_ = cities;
        citiesInUse_ = true;
    }
    /// Ends the use of the records: after FreeMap the host may free them.
    /// @return whether they were in use
    bool GiveBackCities() noexcept { return std::exchange(citiesInUse_, false); }

    LocalStrings localStrings;

private:
    MapFolders folders_;
    CityTable cities_;
    bool citiesInUse_ = false;
};
