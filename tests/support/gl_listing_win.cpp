#include "support/gl_listing_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

namespace {

bool IsWordAsExpected(const std::string& found, const std::string& expected, double tolerance,
                      const GlNumbers& names) {
    if (found == expected) return true;
    const auto named = names.find(expected);
    const std::size_t mark = expected.find('~');
    char* end = nullptr;
    const double number = std::strtod(found.c_str(), &end);
    if (end == found.c_str()) return false;
    const double wanted = named != names.end() ? named->second : std::stod(expected);
    if (mark != std::string::npos) tolerance = std::stod(expected.substr(mark + 1));
    return std::abs(number - wanted) <= tolerance;
}

std::vector<std::string> Words(const std::string& call) {
    std::istringstream words(call);
    return {std::istream_iterator<std::string>(words), {}};
}

}  // namespace

GlListing LastPart(const GlListing& calls, std::string_view first, std::string_view last) {
    const auto begin = std::find(calls.rbegin(), calls.rend(), first);
    if (begin == calls.rend()) return {};
    const auto from = begin.base() - 1;
    const auto end = std::find_if(from + 1, calls.end(), [=](const std::string& call) {
        return call.substr(0, call.find(' ')) == last;
    });
    return end == calls.end() ? GlListing{} : GlListing(from, end + 1);
}

void ExpectBegins(const GlListing& found, const GlListing& expected, double tolerance,
                  const GlNumbers& names) {
    const auto isSame = [&](const std::string& call, const std::string& wanted) {
        if (call == wanted) return true;
        const auto words = Words(call);
        const auto wantedWords = Words(wanted);
        return std::equal(words.begin(), words.end(), wantedWords.begin(), wantedWords.end(),
                          [&](const std::string& word, const std::string& wantedWord) {
                              return IsWordAsExpected(word, wantedWord, tolerance, names);
                          });
    };
    const auto [call, wanted] =
        std::mismatch(found.begin(), found.end(), expected.begin(), expected.end(), isSame);
    if (wanted == expected.end()) return;
    ADD_FAILURE() << "call " << wanted - expected.begin() << " is "
                  << (call != found.end() ? *call : "missing") << "\n  expected: " << *wanted;
}
