#include "window/loader_win.h"

#include <memory>
#include <string>
#include <utility>

#include "render/current_context_win.h"
#include "window/level_of_detail.h"
#include "window/tile_upload_win.h"

namespace {

constexpr DWORD kWorkerWaitMs = 5000;
constexpr DWORD kWindowWaitMs = 1000;

/// What a worker takes along. It owns a handle of its own to the mutex and a use of GDI+, so that
/// FreeMap may let go of the library's while the worker still waits or decodes.
struct WorkerTask {
    HWND window;
    UniqueHandle mutex;
    LoadNumber load;
    std::uint32_t generation;  ///< of the picture that the task was made for
    std::wstring dataDirectory;
    GdiplusSession gdiplus;
    HMODULE module = nullptr;  ///< a reference that keeps this code loaded; given back at the end
};

bool IsStale(const WorkerTask& task) noexcept {
    return task.generation != Map().textures.generation;
}

void Report(LoadNumber load, LoadState state) noexcept { Map().textures.loads.Report(load, state); }

/// Tells the window, after the tracker was told. A message that cannot be posted (the window is
/// gone, its queue is full) is lost, and the load with it.
void PostStage(HWND window, LoadNumber load, WPARAM stage, bool success) noexcept {
    const bool posted = window != nullptr && PostMessageW(window, kStageDoneMessage, stage,
                                                          success ? TRUE : FALSE) != FALSE;
    if (!posted) Report(load, LoadState::Ended);
}

bool LoadSafely(const WorkerTask& task) noexcept {
    try {
        SharedPicture& shared = Map().textures;
        return shared.picture.Load(shared.limits, task.dataDirectory) != kLoadFailed;
    } catch (...) {
        return false;  // out of memory: reported like a picture that cannot be read
    }
}

void RunLoad(const WorkerTask& task) noexcept {
    // Deliberate: a load that waited too long is lost without a word, a split reports failure.
    LoadState state = LoadState::Ended;
    {
        const MutexHold hold = AcquireMutex(task.mutex.get(), kWorkerWaitMs);
        if (hold && !IsStale(task))
            state = LoadSafely(task) ? LoadState::Loaded : LoadState::Failed;
        Report(task.load, state);
    }
    if (state == LoadState::Ended) return;
    PostStage(task.window, task.load, kLoadStage, state == LoadState::Loaded);
}

void RunSplit(const WorkerTask& task) noexcept {
    LoadState state = LoadState::Failed;
    {
        const MutexHold hold = AcquireMutex(task.mutex.get(), kWorkerWaitMs);
        SharedPicture& shared = Map().textures;
        if (IsStale(task)) {
            state = LoadState::Ended;
        } else if (hold && shared.picture.Split(shared.limits)) {
            state = LoadState::Split;
        }
        Report(task.load, state);
    }
    if (state == LoadState::Ended) return;
    PostStage(task.window, task.load, kSplitStage, state == LoadState::Split);
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

std::unique_ptr<WorkerTask> MakeTask(MapState& map, HWND window, LoadNumber load) {
    std::unique_ptr<WorkerTask> task(new WorkerTask{window,
                                                    DuplicateOf(map.textures.sceneMutex.get()),
                                                    load,
                                                    map.textures.generation,
                                                    map.host.dataDirectory,
                                                    {},
                                                    nullptr});
    if (!task->mutex) return nullptr;
    task->module = ReferenceToLibrary();
    return task->module != nullptr ? std::move(task) : nullptr;
}

bool StartThread(MapState& map, HWND window, LoadNumber load, LPTHREAD_START_ROUTINE procedure) {
    std::unique_ptr<WorkerTask> task;
    try {
        task = MakeTask(map, window, load);
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
/// the globe stays empty.
void StartWorker(MapState& map, HWND window, LoadNumber load, LPTHREAD_START_ROUTINE procedure,
                 WPARAM stage) {
    if (StartThread(map, window, load, procedure)) return;
    Report(load, LoadState::Failed);
    PostStage(window, load, stage, false);
}

/// Starts the second worker of the load that was read. A message that a stranger has posted starts
/// one of no load, which finds a picture to cut or not.
void StartSplit(MapState& map, HWND window) {
    if (!map.textures.sceneMutex) return;
    const LoadNumber load = map.textures.loads.Find(window, LoadState::Loaded);
    Report(load, LoadState::Splitting);
    StartWorker(map, window, load, WorkerProc<RunSplit>, kSplitStage);
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
    SharedPicture& shared = map.textures;
    // On a time-out another worker owns the textures.
    if (const MutexHold hold = AcquireMutex(shared.sceneMutex.get(), kWindowWaitMs)) {
        const LoadNumber failed = shared.loads.Find(window, LoadState::Failed);
        if (shared.loads.LeavesTextures(failed, shared.picture.Stage()))
            shared.picture.ClearTiles(false);
        Report(failed, LoadState::Ended);
    }
    map.windows.InvalidateAll();  // each may say that a picture is being loaded
    ReportFailure(map, window);
}

void OnTilesReady(MapState& map, const MapWindow& entry) {
    SharedPicture& shared = map.textures;
    Report(shared.loads.Find(entry.window, LoadState::Split), LoadState::Ended);
    if (map.drawing.planet == nullptr) return;
    CurrentContextScope current(map.drawing.context, entry.dc.Get());
    {
        // Deliberate: when the lock cannot be had the message is dropped; the tiles stay unattached
        // until the next load.
        const MutexHold hold = AcquireMutex(shared.sceneMutex.get(), kWindowWaitMs);
        if (!hold || !shared.picture.HasAllTiles()) {
            // The message of the load that has the textures now brings the tiles, but not when its
            // window is gone.
            if (shared.loads.IsNewestForgotten()) StartLoad(entry.window);
            return;
        }
        shared.tilesWaitForContext = !current.IsCurrent();
        if (current.IsCurrent()) AttachTiles(map);
    }
    if (current.IsCurrent()) OnTilesAttached(map);
    map.windows.InvalidateAll();
}

}  // namespace

void StartLoad(HWND window) {
    MapState& map = Map();
    if (!map.textures.sceneMutex) return;  // without a lock no worker may run
    StartWorker(map, window, map.textures.loads.Start(window), WorkerProc<RunLoad>, kLoadStage);
}

void LoadAtDetail(MapState& map, HWND window, std::int32_t factor) {
    const MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr) return;
    SetPerfFactor(map.detail, factor, map.textures.limits, map.drawing.context, map.drawing.scene,
                  *entry);
    StartLoad(window);
}

void OnStageDone(HWND window, WPARAM stage, bool success) {
    MapState& map = Map();
    const MapWindow* entry = map.windows.Find(window);
    if (entry == nullptr) return;
    if (!success) {
        OnFailure(map, window);
    } else if (stage == kLoadStage) {
        StartSplit(map, window);
        InvalidateRect(window, nullptr, FALSE);
    } else if (stage == kSplitStage) {
        OnTilesReady(map, *entry);
    }
}
