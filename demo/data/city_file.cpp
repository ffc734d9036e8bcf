#include "data/city_file.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace {

constexpr char32_t kReplacement = 0xFFFD;  // the result for bytes that are not UTF-8
constexpr char32_t kLastCharacter = 0x10FFFF;
constexpr std::size_t kNameSize = sizeof CityRecord{}.cityName / sizeof(HorivoWideChar);

struct ZoneNumber {
    std::uint32_t number;
    std::string_view keyName;
};

#define ZONE_NUMBER(number, keyName) {number, keyName},
constexpr ZoneNumber kZones[] = {HORIVO_TIME_ZONES(ZONE_NUMBER)};
#undef ZONE_NUMBER

/// Removes the text up to the next `separator`, and the separator, from the front of `rest`.
/// @return that text without the separator
std::string_view TakeUntil(std::string_view& rest, char separator) {
    const std::size_t end = rest.find(separator);
    const std::string_view taken = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return taken;
}

/// Decodes one character of UTF-8 and removes it from the front of `text`, which is not empty.
/// @return kReplacement for bytes that are not UTF-8
char32_t TakeCharacter(std::string_view& text) {
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned first = byteAt(0);
    std::size_t length = 1;
    char32_t character = first;
    if (first >= 0xF0 && first < 0xF5) {
        length = 4;
        character = first & 0x07U;
    } else if (first >= 0xE0 && first < 0xF0) {
        length = 3;
        character = first & 0x0FU;
    } else if (first >= 0xC2 && first < 0xE0) {
        length = 2;
        character = first & 0x1FU;
    } else if (first >= 0x80) {
        character = kReplacement;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if (i >= text.size() || (byteAt(i) & 0xC0U) != 0x80U) {
            text.remove_prefix(i);
            return kReplacement;
        }
        character = character << 6U | (byteAt(i) & 0x3FU);
    }
    text.remove_prefix(length);
    // Not UTF-8: overlong forms (more bytes than the character needs) and surrogates.
    constexpr char32_t kMinOfLength[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = character >= 0xD800 && character < 0xE000;
    if (isSurrogate || character < kMinOfLength[length] || character > kLastCharacter) {
        return kReplacement;
    }
    return character;
}

/// Converts `utf8` to UTF-16 in a name of a record, and cuts it between two characters, never
/// inside a surrogate pair.
void StoreName(std::string_view utf8, HorivoWideChar (&name)[kNameSize]) {
    std::size_t length = 0;
    while (!utf8.empty()) {
        const char32_t character = TakeCharacter(utf8);
        const bool pair = character > 0xFFFF;
        if (length + (pair ? 2 : 1) >= kNameSize) return;
        if (pair) {
            const char32_t offset = character - 0x10000;
            name[length++] = static_cast<HorivoWideChar>(0xD800 + (offset >> 10U));
            name[length++] = static_cast<HorivoWideChar>(0xDC00 + (offset & 0x3FFU));
        } else {
            name[length++] = static_cast<HorivoWideChar>(character);
        }
    }
}

/// The whole `text` as a number of at most `limit` degrees either way.
std::optional<double> ParseDegrees(std::string_view text, double limit) {
    double degrees = 0.0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, degrees);
    if (error != std::errc{} || stop != end || !(std::fabs(degrees) <= limit)) return std::nullopt;
    return degrees;
}

std::uint32_t FindZone(std::string_view keyName) {
    for (const ZoneNumber& zone : kZones) {
        if (zone.keyName == keyName) return zone.number;
    }
    return 0;
}

std::optional<CityRecord> ReadCity(std::string_view line) {
    const std::string_view name = TakeUntil(line, '\t');
    const std::string_view country = TakeUntil(line, '\t');
    const std::optional<double> latitude = ParseDegrees(TakeUntil(line, '\t'), 90.0);
    const std::optional<double> longitude = ParseDegrees(TakeUntil(line, '\t'), 180.0);
    if (!latitude || !longitude) return std::nullopt;
    CityRecord city{};
    StoreName(name, city.cityName);
    if (city.cityName[0] == 0) return std::nullopt;
    StoreName(country, city.countryName);
    city.latitude = *latitude;
    city.longitude = *longitude;
    city.timeZoneId = FindZone(TakeUntil(line, '\t'));
    return city;
}

}  // namespace

std::vector<CityRecord> ReadCities(std::string_view text) {
    std::vector<CityRecord> cities;
    while (!text.empty()) {
        std::string_view line = TakeUntil(text, '\n');
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (line.starts_with('#')) continue;
        if (const std::optional<CityRecord> city = ReadCity(line)) cities.push_back(*city);
    }
    return cities;
}
