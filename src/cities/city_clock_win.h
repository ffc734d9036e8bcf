#pragma once

#include "base/windows_types.h"
#include "cities/city_clock.h"
#include "horivo_host.h"

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
