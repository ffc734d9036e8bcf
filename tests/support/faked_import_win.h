#pragma once
// Lets a test watch a loaded module or answer for Windows, one imported function at a time. The
// module is not changed on disk.

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <functional>
#include <string_view>
#include <utility>

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

/// What lies at an offset of a loaded module.
template <class Record>
const Record* InImage(HMODULE module, DWORD offset) {
    return reinterpret_cast<const Record*>(reinterpret_cast<const std::byte*>(module) + offset);
}
/// The first of the libraries that a module needs; one without a name follows the last.
const IMAGE_IMPORT_DESCRIPTOR* FirstImport(HMODULE module);
/// Whether a module that a test knew is still there: it may have unloaded it.
inline bool IsLoaded(HMODULE module) { return GetModuleHandleW(L"horivo_map.dll") == module; }
/// Fails the test when the module turned out not to import the function: whatever the test says
/// about its calls would hold for nothing.
void ExpectImported(std::string_view function, bool imported);

/// Answers an imported function of a module in place of the real one, for as long as this lives;
/// the test fails when the module does not import it. One object at a time for a name and an owner;
/// those of several owners stack, last in first out. The answer runs on the thread that calls.
template <FunctionName Name, class Signature, class Owner = void>
class FakedImport;

template <FunctionName Name, class Result, class... Arguments, class Owner>
class FakedImport<Name, Result(Arguments...), Owner> {
public:
    using Answer = std::function<Result(Arguments...)>;

    FakedImport(HMODULE module, Answer answer) : module_(module) {
        answer_ = std::move(answer);
        calls_ = 0;
        real_ = reinterpret_cast<Function*>(
            ReplaceImport(module, Name.View(), reinterpret_cast<void*>(&Call)));
        ExpectImported(Name.View(), real_ != nullptr);
    }
    /// Only counts the calls.
    explicit FakedImport(HMODULE module) : FakedImport(module, Real) {}
    FakedImport(const FakedImport&) = delete;
    FakedImport& operator=(const FakedImport&) = delete;
    ~FakedImport() {
        if (real_ != nullptr && IsLoaded(module_))
            ReplaceImport(module_, Name.View(), reinterpret_cast<void*>(real_));
    }

    /// How often the module has called it.
    int Calls() const { return calls_; }
    static Result Real(Arguments... arguments) { return real_(arguments...); }

private:
    using Function = Result WINAPI(Arguments...);

    static Result WINAPI Call(Arguments... arguments) {
        ++calls_;
        return answer_(arguments...);
    }

    static inline Answer answer_;
    static inline std::atomic<int> calls_ = 0;
    static inline Function* real_ = nullptr;
    HMODULE module_;
};
