#pragma once

#include <cstdio>
#include <exception>

/// Runs a step of a tour and prints the exception, after `name`, when the step throws.
/// @return what the step returned (true: it succeeded); false when it threw
template <class Step>
bool Attempt(const wchar_t* name, const Step& step) {
    try {
        return step();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "horivo_tour: %ls: %s\n", name, failure.what());
        return false;
    }
}
