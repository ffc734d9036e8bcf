// The public header as a host in C sees it: it compiles alone and first and agrees with windows.h
// coming after it. The compiler is the test; nothing here runs.
#include "horivo_map.h"
// The order is what is tested here.
#include <windows.h>
