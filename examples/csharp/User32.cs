// Declarations of the Windows functions that the host calls, and two functions made of them.
using System;
using System.Collections.Generic;
using System.Runtime.InteropServices;

[UnmanagedFunctionPointer(CallingConvention.Winapi)]
delegate IntPtr WindowProcedure(IntPtr window, uint message, IntPtr wParam, IntPtr lParam);

[StructLayout(LayoutKind.Sequential, CharSet = CharSet.Unicode)]
struct WindowClass {
    public uint style;
    public WindowProcedure procedure;
    public int classExtra, windowExtra;
    public IntPtr instance, icon, cursor, background;
    public string menuName, className;
}

[StructLayout(LayoutKind.Sequential)]
struct Message {
    public IntPtr window;
    public uint message;
    public IntPtr wParam, lParam;
    public uint time;
    public int x, y;
}

static class User32 {
    public const uint GwChild = 5, WmDestroy = 0x2, WmSize = 0x5, WmSetFocus = 0x7, WmTimer = 0x113;
    public const uint WsOverlappedWindow = 0xCF0000, WsClipChildren = 0x2000000;
    public static readonly IntPtr PerMonitorAwareV2 = (IntPtr)(-4);

    // Windows keeps no reference to a procedure, so the garbage collector must find one here.
    static readonly List<WindowProcedure> procedures = new List<WindowProcedure>();

    // Registers a window class and creates a window of this class, not yet visible.
    public static IntPtr NewWindow(string className, string title, uint style, int width, int height,
                                   WindowProcedure procedure) {
        procedures.Add(procedure);
        var windowClass = new WindowClass { procedure = procedure, className = className };
        RegisterClassW(ref windowClass);
        return CreateWindowExW(0, className, title, style | WsClipChildren, 80, 80, width, height,
                               IntPtr.Zero, IntPtr.Zero, IntPtr.Zero, IntPtr.Zero);
    }

    // Handles messages until WM_QUIT comes.
    public static void RunMessageLoop() {
        Message next;
        while (GetMessageW(out next, IntPtr.Zero, 0, 0) > 0) {
            TranslateMessage(ref next);
            DispatchMessageW(ref next);
        }
    }

    [DllImport("user32.dll")] public static extern bool SetProcessDpiAwarenessContext(IntPtr awareness);
    [DllImport("user32.dll")] public static extern IntPtr GetWindow(IntPtr window, uint which);
    [DllImport("user32.dll")]
    public static extern bool MoveWindow(IntPtr window, int x, int y, int width, int height, bool paint);
    [DllImport("user32.dll")]
    public static extern bool InvalidateRect(IntPtr window, IntPtr rectangle, bool erase);
    [DllImport("user32.dll")] public static extern IntPtr SetFocus(IntPtr window);
    [DllImport("user32.dll")]
    public static extern IntPtr SetTimer(IntPtr window, IntPtr id, uint ms, IntPtr procedure);
    [DllImport("user32.dll", CharSet = CharSet.Unicode)]
    public static extern bool SetWindowTextW(IntPtr window, string text);
    [DllImport("user32.dll")] public static extern void PostQuitMessage(int code);
    [DllImport("user32.dll")]
    public static extern IntPtr DefWindowProcW(IntPtr window, uint message, IntPtr wParam, IntPtr lParam);
    [DllImport("user32.dll")] public static extern bool ShowWindow(IntPtr window, int how);
    [DllImport("user32.dll")] static extern ushort RegisterClassW(ref WindowClass windowClass);
    [DllImport("user32.dll", CharSet = CharSet.Unicode)]
    static extern IntPtr CreateWindowExW(uint exStyle, string className, string title, uint style,
        int x, int y, int width, int height, IntPtr parent, IntPtr menu, IntPtr instance, IntPtr parameter);
    [DllImport("user32.dll")]
    static extern int GetMessageW(out Message message, IntPtr window, uint first, uint last);
    [DllImport("user32.dll")] static extern bool TranslateMessage(ref Message message);
    [DllImport("user32.dll")] static extern IntPtr DispatchMessageW(ref Message message);
}
