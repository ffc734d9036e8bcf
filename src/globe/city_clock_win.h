#pragma once

#include "globe/city_labels.h"
#include "host/local_time_win.h"
#include "host/time_zone_table_win.h"

/// The cities' local times as Windows and the user's locale give them. Window thread.
class SystemCityClock final : public CityClock {
public:
    /// @param zones  finds the zones of cities that only have a number; must outlive the clock
    explicit SystemCityClock(TimeZoneTable& zones) noexcept : zones_(zones) {}

    void TakeTime() noexcept override;
    /// A city whose zone makes no time shows "Error!".
    void WriteTime(CityRecord& city, char (&text)[kLabelTextSize]) noexcept override;

private:
    TimeZoneTable& zones_;
    ZoneRuleCache rules_;
    SYSTEMTIME now_ = {};  ///< UTC
};
