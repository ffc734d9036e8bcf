#pragma once
// Reads the spy's record: writes a call the way the spy does, cuts listings out of the record and
// compares them with what they should be.

#include <charconv>
#include <concepts>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// A listing: calls as the spy writes them.
using GlListing = std::vector<std::string>;

/// Stands for an argument that is an address.
struct GlAddress {};

namespace gl_listing_detail {
inline void Append(std::string& line, GlAddress) { line += " *"; }
inline void Append(std::string& line, std::integral auto value) {
    line.append(1, ' ').append(std::to_string(value));
}
inline void Append(std::string& line, std::floating_point auto value) {
    char text[40];
    const auto end = std::to_chars(text, text + sizeof text, static_cast<float>(value)).ptr;
    line.append(1, ' ').append(text, end);
}
}  // namespace gl_listing_detail

/// The line of a call; arrays element by element.
std::string GlCall(std::string_view function, auto... arguments) {
    std::string line(function);
    (gl_listing_detail::Append(line, arguments), ...);
    return line;
}

/// From the last call that equals `first` up to the next one after it that starts with `last`, both
/// included; empty when there is none.
GlListing LastPart(const GlListing& calls, std::string_view first, std::string_view last);

/// Numbers by their names in a table of calls.
using GlNumbers = std::map<std::string, double, std::less<>>;

/// The listing has to begin with `expected`, numbers within `tolerance` or, behind a '~', what a
/// number says itself; words of `names` stand for numbers. The first call that differs fails the
/// test, with its place.
void ExpectBegins(const GlListing& found, const GlListing& expected, double tolerance,
                  const GlNumbers& names = {});
