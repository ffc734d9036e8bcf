#include <algorithm>
#include <cmath>

#include "support/gl_listing_win.h"
#include "support/gl_spy_win.h"

namespace {

bool IsCallOf(const std::string& call, std::string_view function) {
    return call.starts_with(function) &&
           (call.size() == function.size() || call[function.size()] == ' ');
}

}  // namespace

GlListing LastPart(const GlListing& calls, std::string_view first, std::string_view last) {
    const auto begin = std::find(calls.rbegin(), calls.rend(), first);
    if (begin == calls.rend()) return {};
    const auto from = begin.base() - 1;
    const auto end = std::find_if(from + 1, calls.end(),
                                  [=](const std::string& call) { return IsCallOf(call, last); });
    return end == calls.end() ? GlListing{} : GlListing(from, end + 1);
}

GlListing LastList(const GlListing& calls, unsigned name) {
    constexpr unsigned kCompile = 0x1300;
    return LastPart(calls, GlCall("glNewList", name, kCompile), "glEndList");
}

GlobeLists LastGlobeLists(const GlListing& calls) {
    std::vector<unsigned> names;
    for (const std::string& call : calls) {
        if (IsCallOf(call, "glNewList"))
            names.push_back(static_cast<unsigned>(SpiedNumbers(call).at(0)));
    }
    if (names.size() < 2) return {};
    return {names[names.size() - 2], names.back()};
}

void GlWalk::Expect(const GlListing& calls) {
    for (const std::string& call : calls) {
        const std::string* next = Next();
        if (next == nullptr || *next != call) Fail(call);
    }
}

void GlWalk::ExpectNear(std::string_view function, std::initializer_list<double> numbers,
                        double tolerance) {
    const auto close = [=](double a, double b) { return std::abs(a - b) <= tolerance; };
    const std::string* next = Next();
    if (next != nullptr && IsCallOf(*next, function)) {
        const std::vector<double> found = SpiedNumbers(*next);
        if (std::equal(found.begin(), found.end(), numbers.begin(), numbers.end(), close)) return;
    }
    std::string expected = "about " + std::string(function);
    for (const double number : numbers) expected += ' ' + std::to_string(number);
    Fail(expected);
}

void GlWalk::Skip(std::string_view function) {
    const std::string* next = Next();
    if (next == nullptr || !IsCallOf(*next, function)) Fail(std::string(function));
}

void GlWalk::ExpectEnd() {
    if (Next() != nullptr) Fail("the end");
}

const std::string* GlWalk::Next() {
    const std::size_t at = at_++;
    return at < calls_.size() ? &calls_[at] : nullptr;
}

void GlWalk::Fail(const std::string& expected) {
    if (failed_) return;
    failed_ = true;
    const std::size_t at = at_ - 1;
    ADD_FAILURE() << "call " << at << " is " << (at < calls_.size() ? calls_[at] : "missing")
                  << "\n  expected: " << expected;
}
