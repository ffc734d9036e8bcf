#include "window/map_state_win.h"

/// Frees the state when the DLL is unloaded. Starts neither GDI+ nor OpenGL, because the loader's
/// lock is held here: InitMap starts GDI+, and the first window starts OpenGL.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID reserved) {
    // At the end of the process, `reserved` is not null. Other libraries may then be unloaded
    // already, so nothing is freed.
    if (reason == DLL_PROCESS_DETACH && reserved == nullptr) DestroyMapState();
    return TRUE;
}
