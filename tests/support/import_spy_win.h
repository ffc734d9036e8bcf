#pragma once
// Watches what a loaded module calls in other modules, by its import table. The real functions
// still run; the watched module is not changed on disk.

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/windows_types.h"

/// A function's name as a template argument: one hook a name.
template <std::size_t Size>
struct FunctionName {
    char text[Size] = {};
    // NOLINTNEXTLINE(google-explicit-constructor): a literal is to become a template argument
    consteval FunctionName(const char (&name)[Size]) { std::copy_n(name, Size, text); }
    constexpr std::string_view View() const { return {text, Size - 1}; }
};

/// Replaces the import `function` of `module` and says what stood there; null when the module does
/// not import it.
void* ReplaceImport(HMODULE module, std::string_view function, void* replacement);

/// Names of the functions that `module` imports from `library` ("OPENGL32.dll"), by name.
std::vector<std::string> ImportedNames(HMODULE module, std::string_view library);
