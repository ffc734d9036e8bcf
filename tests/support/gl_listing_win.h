#pragma once
// Reads the spy's record: writes a call the way the spy does, cuts listings out of the record and
// walks along them.

#include <gtest/gtest.h>

#include <charconv>
#include <concepts>
#include <cstddef>
#include <initializer_list>
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

/// What was last recorded into display list `name`, glNewList and glEndList included.
GlListing LastList(const GlListing& calls, unsigned name);

/// The two lists of a globe by their names, 0 while there are none.
struct GlobeLists {
    unsigned body = 0;
    unsigned cities = 0;
};
/// Of the last compile: the last two lists recorded.
GlobeLists LastGlobeLists(const GlListing& calls);

/// Walks along a listing and checks call after call. The first that differs fails the test, with
/// its place; the rest is then passed over.
class GlWalk {
public:
    explicit GlWalk(const GlListing& calls) : calls_(calls) {}

    /// Next come exactly these calls.
    void Expect(const GlListing& calls);
    void Expect(const std::string& call) { Expect(GlListing{call}); }
    /// Next comes a call of `function` with these numbers, each within `tolerance`.
    void ExpectNear(std::string_view function, std::initializer_list<double> numbers,
                    double tolerance);
    /// Next comes a call of `function`, whatever its arguments.
    void Skip(std::string_view function);
    void ExpectEnd();
    bool Failed() const noexcept { return failed_; }

private:
    const std::string* Next();
    void Fail(const std::string& expected);

    const GlListing& calls_;
    std::size_t at_ = 0;
    bool failed_ = false;
};
