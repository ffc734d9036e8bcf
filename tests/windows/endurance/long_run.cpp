#include "long_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "support/resource_count_win.h"

namespace {

/// Wine's and the driver's as well, which no map can keep from growing (BareOpenGlTest): printed.
constexpr const char* kProcessMemory = "process KiB";

/// What a count may differ by without having grown.
double NoiseOf(std::string_view what) {
    // Heaps give pages back when they like, and between two samples the panel may have got or lost
    // six photos.
    if (what == "process committed KiB") return 4096;
    if (what == "library KiB") return 256;
    if (what == "library gl texture") return 24;
    if (what == "process kernel handles") return 4;  // Wine's own threads
    return what.starts_with("library heap") ? 256 : 2;
}

void PrintAll(const std::vector<double>& values) {
    for (const double value : values) std::printf(" %.0f", value);
    std::printf("\n");
}

double Largest(const std::vector<double>& values, std::size_t first, std::size_t last) {
    return *std::max_element(values.begin() + static_cast<std::ptrdiff_t>(first),
                             values.begin() + static_cast<std::ptrdiff_t>(last));
}

}  // namespace

bool IsFullRun() {
    const char* form = std::getenv("HORIVO_ENDURANCE");
    return form != nullptr && std::string_view(form) == "full";
}

int LengthOfRun(int full, int brief) { return IsFullRun() ? full : brief; }

std::uint32_t SeedOfRun() {
    const char* wanted = std::getenv("HORIVO_SEED");
    const auto now = std::chrono::system_clock::now().time_since_epoch().count();
    const auto seed = static_cast<std::uint32_t>(
        wanted != nullptr ? std::strtoul(wanted, nullptr, 10) : static_cast<unsigned long>(now));
    std::printf("HORIVO_SEED=%u repeats this run\n", seed);
    std::fflush(stdout);
    return seed;
}

void GrowthWatch::Take(int step) {
    Sample sample;
    const ResourceCount counts = CountResources();
    sample[kProcessMemory] = static_cast<double>(counts.privateBytes) / 1024;
    sample["process committed KiB"] = static_cast<double>(counts.committedBytes) / 1024;
    sample["process kernel handles"] = static_cast<double>(counts.kernelHandles);
    sample["process gdi objects"] = static_cast<double>(counts.gdiObjects);
    if (calls_ != nullptr) {
        for (const auto& [kind, count] : calls_->Held())
            sample["library " + kind] = static_cast<double>(count);
    }
    if (memory_ != nullptr) {
        sample["library KiB"] = static_cast<double>(memory_->HeldBytes()) / 1024;
        for (const auto& [kind, count] : memory_->Held())
            sample["library " + kind] = static_cast<double>(count);
    }
    steps_.push_back(step);
    samples_.push_back(std::move(sample));
}

void GrowthWatch::Judge(bool strict) const {
    std::map<std::string, std::vector<double>> columns;
    for (std::size_t i = 0; i < samples_.size(); ++i) {
        for (const auto& [what, value] : samples_[i]) {
            columns[what].resize(samples_.size());
            columns[what][i] = value;
        }
    }
    ASSERT_GE(samples_.size(), 10U);
    const std::size_t settled = samples_.size() / 10;
    const std::size_t middle = (settled + samples_.size()) / 2;
    std::printf("%s, %d rounds, %zu samples\n%-28s %12s %12s %12s %12s\n", name_, steps_.back(),
                samples_.size(), "", "first tenth", "to middle", "to the end", "last");
    for (const auto& [what, values] : columns) {
        const double before = Largest(values, settled, middle);
        const double after = Largest(values, middle, values.size());
        std::printf("%-28s %12.0f %12.0f %12.0f %12.0f\n", what.c_str(), values[settled], before,
                    after, values.back());
        if (what.starts_with("process") && what.ends_with("KiB") && IsFullRun()) PrintAll(values);
        if (!strict || what == kProcessMemory) continue;
        EXPECT_LE(after, before + NoiseOf(what)) << name_ << ": " << what << " grows";
    }
    std::fflush(stdout);
}
