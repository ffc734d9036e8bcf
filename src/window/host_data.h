#pragma once

#include <cstdint>
#include <string>

#include "globe/city_table.h"
#include "horivo_map.h"
#include "window/local_strings.h"

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
