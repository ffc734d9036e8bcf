/* Calls every function of the library. It is only linked, to check the import library; never run. */
__declspec(dllimport) unsigned InitMap(void*, int);
__declspec(dllimport) void SetLocalString(int, const unsigned short*);
__declspec(dllimport) void* CreateMapWindow(void*, int, int, int, int, unsigned*);
__declspec(dllimport) unsigned InstallMap(void);
__declspec(dllimport) unsigned FreeMap(void);
__declspec(dllimport) unsigned GetLastSysError(void);

unsigned start(void) {
    SetLocalString(0, 0);
    return InitMap(0, 0) + (CreateMapWindow(0, 0, 0, 0, 0, 0) != 0) + InstallMap() + FreeMap() +
           GetLastSysError();
}
