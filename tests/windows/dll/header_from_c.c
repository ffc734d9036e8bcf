/* The public header as a host in C sees it: it compiles alone and first and agrees with windows.h
 * coming after it. The compiler is the test; nothing here runs. */
#include "horivo_map.h"
/* The order is what is tested here. */
#include <windows.h>

#define IS(function, type) \
    _Static_assert(_Generic(&(function), type : 1, default : 0), "type of " #function)

_Static_assert(sizeof(CityRecord) == 376, "hosts pack the records back to back");
_Static_assert(offsetof(CityRecord, nearest) == 369, "as in C++, where the header checks it");

IS(InitMap, uint32_t (*)(CityRecord*, int32_t));
IS(SetLocalString, void (*)(int32_t, const wchar_t*));
IS(CreateMapWindow, HWND (*)(HWND, int32_t, int32_t, int32_t, int32_t, uint32_t*));
IS(InstallMap, uint32_t (*)(void));
IS(FreeMap, uint32_t (*)(void));
IS(GetLastSysError, uint32_t (*)(void));
IS(((CityRecord*)0)->timeZone, const DYNAMIC_TIME_ZONE_INFORMATION**);

_Static_assert(HORIVO_MSG_CITY == 32968 && HORIVO_MSG_MAY_SHOW_PHOTOS == 32978 &&
                   HORIVO_MSG_PHOTOS_CHANGED == 32979,
               "numbers that hosts were built with");
