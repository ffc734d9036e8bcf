#include "window/map_state_win.h"

#include <cstddef>
#include <new>

namespace {

// Returns the pointer to the state. A plain pointer, so that the C++ runtime never destroys the
// state: at the end of the process the libraries that the state uses may be unloaded already.
MapState*& StateSlot() noexcept {
    static MapState* state = nullptr;
    return state;
}

// Not from the heap: when no memory is left, InitMap must still store why it failed.
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
    // A host that unloads without FreeMap, or while a window lives, leaves GDI+ or OpenGL in use:
    // ending them here would call them under the loader's lock.
    const bool clean = state->gdiplus == nullptr && state->windows.Count() == 0;
    if (clean) {
        state->~MapState();
    } else {
        // Frees at least the picture, the largest of what is left. No worker can be running: each
        // holds a reference to the library.
        state->textures.Abandon();
    }
    state = nullptr;
}
