#include "window/loader_win.h"

#include <memory>
#include <string>

#include "render/current_context_win.h"
#include "window/scene_life_win.h"
#include "window/texture_road.h"

namespace {

constexpr DWORD kWorkerWaitMs = 5000;
constexpr DWORD kWindowWaitMs = 1000;

/// What a worker takes along. It owns a handle of its own to the mutex and a use of GDI+, so that
/// FreeMap may let go of the library's while the worker still waits or decodes.
struct WorkerTask {
    HWND window;
    UniqueHandle mutex;
    std::uint32_t freed;  ///< the generation of the store that the task was made for
    std::wstring dataDirectory;
    GdiplusUse gdiplus;
    HMODULE module = nullptr;  ///< a reference that keeps this code loaded; given back at the end
};

bool IsStale(const WorkerTask& task) noexcept { return task.freed != Map().textures.freed; }

void PostStage(const WorkerTask& task, WPARAM stage, bool success) noexcept {
    if (task.window != nullptr)
        PostMessageW(task.window, kStageDoneMessage, stage, success ? TRUE : FALSE);
}

bool LoadSafely(const WorkerTask& task) noexcept {
    try {
        TextureRoad& road = Map().textures;
        return LoadTexture(road.store, road.limits, task.dataDirectory) != kLoadFailed;
    } catch (...) {
        return false;  // out of memory: reported like a picture that cannot be read
    }
}

void RunLoad(const WorkerTask& task) noexcept {
    bool success = false;
    {
        const MutexHold hold = AcquireMutex(task.mutex.get(), kWorkerWaitMs);
        // Deliberate: a load that waited too long is lost without a word, a split is not.
        if (!hold || IsStale(task)) return;
        success = LoadSafely(task);
    }
    PostStage(task, kLoadStage, success);
}

void RunSplit(const WorkerTask& task) noexcept {
    bool success = false;
    {
        const MutexHold hold = AcquireMutex(task.mutex.get(), kWorkerWaitMs);
        if (IsStale(task)) return;
        TextureRoad& road = Map().textures;
        if (hold) success = SplitTextures(road.store, road.limits);
    }
    PostStage(task, kSplitStage, success);
}

/// Runs `Work` on the task and leaves: the last reference to this code goes with the thread, so
/// everything that has a destructor ends in the inner scope.
template <void (*Work)(const WorkerTask&) noexcept>
DWORD WINAPI WorkerProc(void* parameter) {
    HMODULE module = nullptr;
    {
        const std::unique_ptr<WorkerTask> task(static_cast<WorkerTask*>(parameter));
        module = task->module;
        Work(*task);
    }
    FreeLibraryAndExitThread(module, 0);
}

HMODULE ReferenceToLibrary() noexcept {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(&LibraryModule), &module);
    return module;
}

std::unique_ptr<WorkerTask> MakeTask(MapState& map, HWND window) {
    std::unique_ptr<WorkerTask> task(new WorkerTask{window,
                                                    DuplicateOf(map.textures.sceneMutex.get()),
                                                    map.textures.freed,
                                                    map.host.dataDirectory,
                                                    {},
                                                    nullptr});
    if (!task->mutex) return nullptr;
    task->module = ReferenceToLibrary();
    return task->module != nullptr ? std::move(task) : nullptr;
}

bool StartThread(MapState& map, HWND window, LPTHREAD_START_ROUTINE procedure) {
    std::unique_ptr<WorkerTask> task;
    try {
        task = MakeTask(map, window);
    } catch (...) {
        task = nullptr;
    }
    if (task == nullptr) return false;
    const UniqueHandle thread(CreateThread(nullptr, 0, procedure, task.get(), 0, nullptr));
    if (!thread) {
        FreeLibrary(task->module);
        return false;
    }
    static_cast<void>(task.release());  // the thread's now
    return true;
}

/// A worker that cannot be started reports failure as if it had run, so that the user learns why
/// the globe stays empty. Without a lock no worker may run at all.
void StartWorker(HWND window, LPTHREAD_START_ROUTINE procedure, WPARAM stage) {
    MapState& map = Map();
    if (!map.textures.sceneMutex) return;
    if (!StartThread(map, window, procedure) && window != nullptr)
        PostMessageW(window, kStageDoneMessage, stage, FALSE);
}

void ReportFailure(MapState& map, HWND window) {
    if (map.errorBoxShown) return;  // repeated loads that fail show one box
    wchar_t text[128];
    wsprintfW(text, L"Can not load textures.\n Check for the \"%s\" presence or make it smaller.",
              L"map.jpg");
    map.errorBoxShown = true;
    MessageBoxW(GetParent(window), text, L"Error", MB_ICONERROR);
    map.errorBoxShown = false;
}

void OnFailure(MapState& map, HWND window) {
    if (const MutexHold hold = AcquireMutex(map.textures.sceneMutex.get(), kWindowWaitMs);
        // On a time-out a newer worker owns the set. A picture that is there is a newer worker's
        // too: whoever fails leaves none.
        hold && map.textures.store.Stage() == TextureStage::Empty) {
        map.textures.store.ClearTiles(false);
        if (map.textures.pendingFor == window) map.textures.pendingFor = nullptr;
    }
    InvalidateRect(window, nullptr, FALSE);
    ReportFailure(map, window);
}

void OnTilesReady(MapState& map, HDC dc) {
    CurrentContextScope current(map.drawing.context, dc);
    {
        // Deliberate: when the lock cannot be had the message is dropped; the tiles stay unattached
        // until the next load.
        const MutexHold hold = AcquireMutex(map.textures.sceneMutex.get(), kWindowWaitMs);
        // A load that began since then has cleared the set: its own message will attach it.
        if (!hold || !map.textures.store.HasAllTiles()) return;
        if (!current.IsCurrent() || map.drawing.planet == nullptr) return;
        AttachTiles(map);
    }
    map.textures.pendingFor = nullptr;
    CompileScene(map);
    if (map.detail.perfFactor < kCoarsestFactor) StartMeasuring(map.detail);
    map.windows.InvalidateAll();
}

}  // namespace

void StartLoad(HWND window) {
    Map().textures.pendingFor = window;
    StartWorker(window, WorkerProc<RunLoad>, kLoadStage);
}

void OnStageDone(HWND window, WPARAM stage, bool success) {
    MapState& map = Map();
    MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr) return;
    if (!success) {
        OnFailure(map, window);
    } else if (stage == kLoadStage) {
        StartWorker(window, WorkerProc<RunSplit>, kSplitStage);
        InvalidateRect(window, nullptr, FALSE);
    } else if (stage == kSplitStage) {
        OnTilesReady(map, entry->dc.Get());
    }
}
