#include "window/map_state_win.h"

#include <cstddef>
#include <new>

namespace {

// Returns the pointer to the state. It is a plain pointer, so that the C++ runtime never destroys
// the state: at the end of the process the libraries that the state uses may be unloaded already.
MapState*& StateSlot() noexcept {
    static MapState* state = nullptr;
    return state;
}

// Memory of the state. This memory is not on the heap, because InitMap must be able to store its
// error in the state when no memory is left.
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
    // Destroy the state only when it uses neither GDI+ nor OpenGL, because they must not be called
    // under the loader's lock. The state still uses them when the host unloads the library before
    // FreeMap or before the last window is destroyed.
    const bool clean = state->gdiplus == nullptr && state->windows.Count() == 0;
    if (clean) {
        state->~MapState();
    } else {
        // Free at least the picture, which is the largest part. No worker can be running, because
        // each worker holds a reference to the library.
        state->textures.Abandon();
    }
    state = nullptr;
}
