#include "window/map_state_win.h"

/// Frees the MapState when the DLL is unloaded. Does not start GDI+ and OpenGL, because Windows
/// calls DllMain under the loader lock. InitMap starts GDI+, and the first map window starts
/// OpenGL.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID reserved) {
    // At the end of the process, `reserved` is not null. Other libraries may then be unloaded
    // already, so nothing is freed.
    if (reason == DLL_PROCESS_DETACH && reserved == nullptr) DestroyMapState();
    return TRUE;
}
