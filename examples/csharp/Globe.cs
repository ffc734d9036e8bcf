// A window with a globe. Beside the program must be horivo_map.dll, map.jpg and buttons.png.
using System;
using System.IO;

static class Globe {
    static readonly CityRecord[] cities = {
        new CityRecord(),  // the pointer resting on the first city of a table shows no photos
        new CityRecord("Paris", "France", 48.8667, 2.3333, 91),     // 91: "Romance Standard Time"
        new CityRecord("Tokyo", "Japan", 35.6544, 139.7447, 114)};  // 114: "Tokyo Standard Time"

    static IntPtr HostProc(IntPtr window, uint message, IntPtr wParam, IntPtr lParam) {
        IntPtr map = User32.GetWindow(window, User32.GwChild);
        int size = unchecked((int)lParam.ToInt64());
        if (message == User32.WmSize) User32.MoveWindow(map, 0, 0, size & 0xFFFF, size >> 16, true);
        if (message == User32.WmSetFocus) User32.SetFocus(map);
        if (message == User32.WmTimer) User32.InvalidateRect(map, IntPtr.Zero, false);  // once a minute
        if (message == HorivoMap.MsgCity) User32.SetWindowTextW(window, cities[(int)wParam].cityName);
        if (message == User32.WmDestroy) User32.PostQuitMessage(0);
        return User32.DefWindowProcW(window, message, wParam, lParam);
    }

    static int Main() {
        User32.SetProcessDpiAwarenessContext(User32.PerMonitorAwareV2);
        IntPtr table = HorivoMap.TableOf(cities);  // the end of the program frees it
        if (HorivoMap.InitMap(table, cities.Length) != HorivoMap.Ok) return 1;
        string data = Environment.GetFolderPath(Environment.SpecialFolder.CommonApplicationData);
        string folder = Path.Combine(data, "Zelmo", "Horivo");  // InitMap has made it
        string picture = Path.Combine(AppDomain.CurrentDomain.BaseDirectory, "map.jpg");
        string map = Path.Combine(folder, "map.jpg");
        if (File.Exists(picture) && !File.Exists(map)) {
            File.Copy(picture, map);
            if (HorivoMap.InstallMap() != HorivoMap.Ok) {
                foreach (var name in new[] { "map.jpg", "map0.jpg" }) File.Delete(Path.Combine(folder, name));
                return 2;  // without the refused picture and its copy the next start tries again
            }
        }
        IntPtr host = User32.NewWindow("Host", "My globe", User32.WsOverlappedWindow, 900, 700, HostProc);
        uint status;
        if (HorivoMap.CreateMapWindow(host, 0, 0, 900, 700, out status) == IntPtr.Zero) return 3;
        User32.SetTimer(host, (IntPtr)1, 60000, IntPtr.Zero);  // ms
        User32.ShowWindow(host, 1);
        User32.RunMessageLoop();
        return HorivoMap.FreeMap() != 0 ? 0 : 4;
    }
}
