#pragma once

#include <cstdio>
#include <exception>

/// Runs a step of a tour, which returns whether all was right, or throws. What it throws is printed
/// under `name`. @return whether all was right
template <class Step>
bool Attempt(const wchar_t* name, const Step& step) {
    try {
        return step();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "horivo_tour: %ls: %s\n", name, failure.what());
        return false;
    }
}
