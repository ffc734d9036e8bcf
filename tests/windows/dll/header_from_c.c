/* The public header as a host in C sees it: it compiles alone and first and agrees with windows.h
 * coming after it. The compiler is the test; nothing here runs. */
#include "horivo_map.h"
/* The order is what is tested here. */
#include <windows.h>

_Static_assert(sizeof(CityRecord) == 376, "hosts pack the records back to back");
_Static_assert(offsetof(CityRecord, nearest) == 369, "as in C++, where the header checks it");
_Static_assert(HORIVO_MSG_CITY == 32968 && HORIVO_MSG_MAY_SHOW_PHOTOS == 32978 &&
                   HORIVO_MSG_PHOTOS_CHANGED == 32979,
               "numbers that hosts were built with");
