#pragma once

#include <cstdint>

#include "cities/city_table.h"

/// Bytes of a name or time text, terminator included; longer texts are truncated.
inline constexpr std::int32_t kLabelTextSize = 64;

/// Writes the local time of a city for its label. SystemCityClock asks Windows for the time; tests
/// use another clock.
class CityClock {
public:
    /// Reads the current time, which WriteTime uses until the next call.
    virtual void ReadTime() noexcept = 0;
    /// Writes the city's local time into `text`, in the system's ANSI code page; empty when the
    /// city's zone is unknown. May write the city's `timeZone` (see ResolveTimeZone).
    virtual void WriteTime(CityRecord& city, char (&text)[kLabelTextSize]) noexcept = 0;

protected:
    ~CityClock() = default;
};
