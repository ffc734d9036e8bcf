#pragma once

#include <cstdint>

#include "cities/city_table.h"

/// Bytes of a name or time text, terminator included; longer ones are cut.
inline constexpr std::int32_t kLabelTextSize = 64;

/// Tells the labels what time it is in a city. SystemCityClock asks Windows; tests use their own.
class CityClock {
public:
    /// Takes the instant that all texts show until the next call.
    virtual void TakeTime() noexcept = 0;
    /// Writes the city's local time into `text`, in the system's ANSI code page; empty when the
    /// city's zone is unknown. May write the city's `timeZone`.
    virtual void WriteTime(CityRecord& city, char (&text)[kLabelTextSize]) noexcept = 0;

protected:
    ~CityClock() = default;
};
