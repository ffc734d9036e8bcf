#include "window/map_state_win.h"

#include <cstddef>
#include <new>

namespace {

// Never destroyed by the runtime: at the end of the process nothing may be touched any more.
MapState*& StateSlot() noexcept {
    static MapState* state = nullptr;
    return state;
}

// Not from the heap: where no memory is left, InitMap still keeps the reason of its refusal.
alignas(MapState) constinit std::byte stateMemory[sizeof(MapState)] = {};

}  // namespace

MapState& Map() {
    MapState*& state = StateSlot();
    if (state == nullptr) state = new (stateMemory) MapState;
    return *state;
}

void DestroyMapState() noexcept {
    MapState*& state = StateSlot();
    if (state == nullptr) return;
    // A host that unloads without FreeMap or with a window still alive leaves these behind; ending
    // them here would call GDI+ and OpenGL under the loader's lock.
    const bool clean = state->gdiplus == nullptr && state->windows.Count() == 0;
    if (clean) {
        state->~MapState();
    } else {
        // The largest that a library can leave behind. No worker runs any more: each holds a
        // reference to the library.
        AbandonPicture(state->textures);
    }
    state = nullptr;
}

HMODULE LibraryModule() noexcept {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&LibraryModule), &module);
    return module;
}
