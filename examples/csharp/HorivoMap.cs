// Declarations of horivo_map.h for C#: record, messages and functions. For 64-bit programs.
using System;
using System.Runtime.InteropServices;

[StructLayout(LayoutKind.Sequential, CharSet = CharSet.Unicode)]
public struct CityRecord {  // 376 bytes
    [MarshalAs(UnmanagedType.ByValTStr, SizeConst = 64)] public string cityName;
    [MarshalAs(UnmanagedType.ByValTStr, SizeConst = 64)] public string countryName;
    public ulong hostBytes;
    public double latitude, longitude;  // degrees; 0 means no position
    public uint timeZoneId, padding;
    public IntPtr timeZone;
    [MarshalAs(UnmanagedType.ByValArray, SizeConst = 4)] public double[] markerPoint;
    [MarshalAs(UnmanagedType.ByValArray, SizeConst = 4)] public double[] windowPoint;
    public double distanceSq;
    public byte inRange, nearest;
    [MarshalAs(UnmanagedType.ByValArray, SizeConst = 6)] public byte[] tail;

    public CityRecord(string city, string country, double latitude, double longitude, uint timeZoneId)
        : this() {
        cityName = city;
        countryName = country;
        this.latitude = latitude;
        this.longitude = longitude;
        this.timeZoneId = timeZoneId;
    }
}

public static class HorivoMap {
    public const uint Ok = 0, MsgCity = 0x80C8, MsgMayShowPhotos = 0x80D2, MsgPhotosChanged = 0x80D3;
    public const int TextAddPhoto = 2;
    public const string HostWindowClass = "zhv_MainHidden";

    // The library uses the table until FreeMap, so the table must not move in memory. Pass a table
    // that TableOf has made.
    [DllImport("horivo_map.dll")] public static extern uint InitMap(IntPtr cities, int cityCount);
    [DllImport("horivo_map.dll", CharSet = CharSet.Unicode)]
    public static extern void SetLocalString(int id, string text);
    [DllImport("horivo_map.dll")]
    public static extern IntPtr CreateMapWindow(IntPtr parent, int x, int y, int width, int height,
                                                out uint status);
    [DllImport("horivo_map.dll")] public static extern uint InstallMap();
    [DllImport("horivo_map.dll")] public static extern uint FreeMap();
    [DllImport("horivo_map.dll")] public static extern uint GetLastSysError();

    // Copies the records into memory that does not move. Call Marshal.FreeHGlobal for it after
    // FreeMap.
    public static IntPtr TableOf(CityRecord[] cities) {
        int size = Marshal.SizeOf(typeof(CityRecord));
        IntPtr table = Marshal.AllocHGlobal(size * cities.Length);
        for (int i = 0; i < cities.Length; ++i)
            Marshal.StructureToPtr(cities[i], IntPtr.Add(table, i * size), false);
        return table;
    }
}
