#include "window/map_state_win.h"

/// Does nothing that the loader's lock forbids: GDI+ starts in InitMap, OpenGL with the first
/// window.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID reserved) {
    // At the end of the process (reserved is not null) nothing is touched: other libraries may be
    // gone already.
    if (reason == DLL_PROCESS_DETACH && reserved == nullptr) DestroyMapState();
    return TRUE;
}
