// Checks that the C# record has the memory layout of horivo_map.h.
using System;
using System.Runtime.InteropServices;

static class Layout {
    static int Main() {
        var places = new (string field, int offset)[] {
            ("cityName", 0), ("countryName", 128), ("hostBytes", 256), ("latitude", 264),
            ("longitude", 272), ("timeZoneId", 280), ("timeZone", 288), ("markerPoint", 296),
            ("windowPoint", 328), ("distanceSq", 360), ("inRange", 368), ("nearest", 369) };
        int faults = Marshal.SizeOf(typeof(CityRecord)) == 376 ? 0 : 1;
        foreach (var place in places) {
            if (Marshal.OffsetOf(typeof(CityRecord), place.field).ToInt32() == place.offset) continue;
            Console.WriteLine(place.field + " is not at " + place.offset);
            ++faults;
        }
        // A table must have UTF-16 text, and its records must follow each other without gaps.
        IntPtr table = HorivoMap.TableOf(new[] { new CityRecord { cityName = "A" },
                                                 new CityRecord { cityName = "\u00c9", latitude = 1.5 } });
        if (Marshal.ReadInt16(table, 376) != 0xC9) ++faults;
        if (Marshal.ReadInt64(table, 376 + 264) != BitConverter.DoubleToInt64Bits(1.5)) ++faults;
        Marshal.FreeHGlobal(table);
        if (faults > 0) Console.WriteLine("The C# record is not that of the library");
        return faults;
    }
}
