// A window with a globe in it, in C#, with windows of user32. Put horivo_map.dll, map.jpg and, for
// the buttons over the map, buttons.png beside the program.
using System;
using System.IO;
using System.Runtime.InteropServices;

static class Globe {
    static readonly CityRecord[] cities = {
        new CityRecord(),  // the pointer resting on the first city of a table shows nothing
        new CityRecord { cityName = "Paris", countryName = "France", latitude = 48.8667,
                         longitude = 2.3333, timeZoneId = 91 },
        new CityRecord { cityName = "Tokyo", countryName = "Japan", latitude = 35.6544,
                         longitude = 139.7447, timeZoneId = 114 } };

    static IntPtr HostProc(IntPtr window, uint message, IntPtr wParam, IntPtr lParam) {
        IntPtr map = User32.GetWindow(window, User32.GwChild);
        int size = unchecked((int)lParam.ToInt64());
        if (message == User32.WmSize) User32.MoveWindow(map, 0, 0, size & 0xFFFF, size >> 16, true);
        if (message == User32.WmSetFocus) User32.SetFocus(map);
        if (message == HorivoMap.MsgCity) User32.SetWindowTextW(window, cities[(int)wParam].cityName);
        if (message == User32.WmDestroy) User32.PostQuitMessage(0);
        return User32.DefWindowProcW(window, message, wParam, lParam);
    }

    static int Main() {
        IntPtr table = HorivoMap.TableOf(cities);
        if (HorivoMap.InitMap(table, cities.Length) != HorivoMap.Ok) return 1;
        string data = Environment.GetFolderPath(Environment.SpecialFolder.CommonApplicationData);
        string picture = Path.Combine(data, "Zelmo", "Horivo", "map.jpg");  // InitMap creates it
        if (!File.Exists(picture)) {
            File.Copy("map.jpg", picture);
            if (HorivoMap.InstallMap() != HorivoMap.Ok) return 2;
        }
        var hostClass = new WindowClass { procedure = HostProc, className = "Host" };
        User32.RegisterClassW(ref hostClass);
        IntPtr host = User32.CreateWindowExW(0, "Host", "My globe", User32.WsOverlappedWindow |
            User32.WsClipChildren, 80, 80, 900, 700, IntPtr.Zero, IntPtr.Zero, IntPtr.Zero, IntPtr.Zero);
        uint status;
        if (HorivoMap.CreateMapWindow(host, 0, 0, 900, 700, out status) == IntPtr.Zero) return 3;
        User32.ShowWindow(host, 1);
        Message next;
        while (User32.GetMessageW(out next, IntPtr.Zero, 0, 0) > 0) {
            User32.TranslateMessage(ref next);
            User32.DispatchMessageW(ref next);
        }
        GC.KeepAlive(hostClass.procedure);
        HorivoMap.FreeMap();
        Marshal.FreeHGlobal(table);
        return 0;
    }
}
