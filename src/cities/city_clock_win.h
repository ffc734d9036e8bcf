#pragma once

#include "base/windows_types.h"
#include "cities/city_clock.h"
#include "horivo_host.h"

/// Computes local times of cities by Windows' time zones and writes them in the user's time format.
/// Window thread.
class SystemCityClock final : public CityClock {
public:
    /// @param zones  the clock looks up in this table the zone of a city whose record has only the
    ///               number of the zone; must outlive the clock
    explicit SystemCityClock(TimeZoneTable& zones) noexcept : zones_(zones) {}

    void ReadTime() noexcept override;
    /// Writes "Error!" when the local time cannot be computed, and an empty text for a city without
    /// a time zone.
    void WriteTime(CityRecord& city, char (&text)[kLabelTextSize]) noexcept override;

private:
    TimeZoneTable& zones_;
    ZoneRuleCache rules_;
    SYSTEMTIME now_ = {};  ///< the time of the last ReadTime, UTC
};
