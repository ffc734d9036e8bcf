// The public header as a host in C++ sees it when it includes the header first; the tests that
// include windows.h first are the other order. The compiler is the test; nothing here runs.
#include "horivo_map.h"
// The order is what is tested here.
#include "base/windows_types.h"

static_assert(std::is_same_v<decltype(&CreateMapWindow),
                             HWND (*)(HWND, int32_t, int32_t, int32_t, int32_t, uint32_t*)>);
static_assert(std::is_same_v<decltype(CityRecord::timeZone), const DYNAMIC_TIME_ZONE_INFORMATION*>);
static_assert(std::is_same_v<decltype(&SetLocalString), void (*)(int32_t, const wchar_t*)>);
static_assert(sizeof(CityRecord) == 376 && std::is_trivially_copyable_v<CityRecord>);
