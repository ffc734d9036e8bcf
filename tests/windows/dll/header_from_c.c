/* The public header as a host in C sees it: it compiles alone and first, agrees with windows.h
 * coming after it, and lays the city record out as the library reads it. The compiler is the test;
 * nothing here runs. */
#include "horivo_map.h"
/* The order is what is tested here. */
#include <windows.h>

#define AT(field, offset) \
    _Static_assert(offsetof(CityRecord, field) == (offset), "place of " #field)
#define SIZE(field, bytes) \
    _Static_assert(sizeof(((CityRecord*)0)->field) == (bytes), "size of " #field)
#define IS(function, type) \
    _Static_assert(_Generic(&(function), type : 1, default : 0), "type of " #function)

_Static_assert(sizeof(CityRecord) == 376, "hosts pack the records back to back");
_Static_assert(_Alignof(CityRecord) == 8, "alignment of the record");
AT(cityName, 0);
AT(countryName, 128);
AT(hostBytes, 256);
AT(latitude, 264);
AT(longitude, 272);
AT(timeZoneId, 280);
AT(timeZone, 288);
AT(markerPoint, 296);
AT(windowPoint, 328);
AT(distanceSq, 360);
AT(inRange, 368);
AT(nearest, 369);
SIZE(cityName, 128);
SIZE(countryName, 128);
SIZE(timeZone, 8);
SIZE(markerPoint, 32);
SIZE(windowPoint, 32);
SIZE(inRange, 1);
SIZE(nearest, 1);

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
