#pragma once

#include "base/windows_types.h"
#include "cities/city_clock.h"
#include "horivo_host.h"

/// Local times of cities, by Windows' time zones, in the user's time format. Window thread.
class SystemCityClock final : public CityClock {
public:
    /// @param zones  is searched for the zone of a city that has only a number; must outlive the
    ///               clock
    explicit SystemCityClock(TimeZoneTable& zones) noexcept : zones_(zones) {}

    void ReadTime() noexcept override;
    /// Writes "Error!" when the local time cannot be computed.
    void WriteTime(CityRecord& city, char (&text)[kLabelTextSize]) noexcept override;

private:
    TimeZoneTable& zones_;
    ZoneRuleCache rules_;
    SYSTEMTIME now_ = {};  ///< UTC
};
