// The hidden main window, without which the map shows no photos. The globe of Globe.cs has none; a
// host that wants photos calls HiddenWindow.Create once, on the thread of its windows, for example
// before it creates the map. WinForms and WPF programs can use it as it is, with HorivoMap.cs
// and User32.cs.
using System;

static class HiddenWindow {
    public static IntPtr Create() {
        return User32.NewWindow(HorivoMap.HostWindowClass, "", 0, 0, 0, Answer);
    }

    // The result of HorivoMap.MsgMayShowPhotos: 1 allows the photos.
    static IntPtr Answer(IntPtr window, uint message, IntPtr wParam, IntPtr lParam) {
        if (message == HorivoMap.MsgMayShowPhotos) return (IntPtr)1;
        return User32.DefWindowProcW(window, message, wParam, lParam);
    }
}
