#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "horivo_map.h"

/// Texts that the host has put into its user's language, by number. Window thread.
class LocalStrings {
public:
    /// Copies `text`; null is ignored and leaves an earlier text in place.
    void Set(std::int32_t id, const HorivoWideChar* text);
    /// The text of `id`, or `fallback` when it was never set.
    const HorivoWideChar* Get(std::int32_t id, const HorivoWideChar* fallback) const noexcept;

private:
    std::map<std::int32_t, std::basic_string<HorivoWideChar>> texts_;
};
