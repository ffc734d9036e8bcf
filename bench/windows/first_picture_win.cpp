// A host from its start to the first frame with the whole map: first_picture [WIDTH HEIGHT].
// bench/table.py runs it in turns with bare_map.
#include <cstdlib>

#include "map_host_win.h"
#include "shown_line_win.h"

int wmain(int count, wchar_t** arguments) {
    std::vector<CityRecord> noCities;
    const int width = count > 2 ? _wtoi(arguments[1]) : 1920;
    const int height = count > 2 ? _wtoi(arguments[2]) : 1080;
    BenchHost host(noCities, width, height);
    if (!PumpUntilTextured(host.Map())) return 1;
    PrintShown();
    std::_Exit(0);  // work after the first picture is not measured
}
