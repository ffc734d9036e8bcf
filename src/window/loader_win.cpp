#include "window/loader_win.h"

#include <memory>
#include <utility>

#include "image/gdiplus_session_win.h"
#include "window/library_module_win.h"

namespace {

constexpr DWORD kWorkerWaitMs = 5000;  // ms that a worker waits for the lock of the picture

/// The data of a worker thread. The worker has its own handle to the mutex and its own GDI+
/// session. So FreeMap may release the handle and the session of the map while the worker still
/// waits or decodes.
struct WorkerTask {
    SharedPicture& shared;
    HWND window;
    UniqueHandle mutex;
    LoadNumber load;
    std::uint32_t generation;  ///< SharedPicture::Generation when the task was made
    std::wstring dataDirectory;
    GdiplusSession gdiplus;
    HMODULE module = nullptr;  ///< reference that keeps this code loaded; the thread releases it
};

bool IsStale(const WorkerTask& task) noexcept {
    return task.generation != task.shared.Generation();
}

/// Posts kStageDoneMessage. Before this call, the caller must report the state of the load to
/// `loads`. When the message cannot be posted (the window is destroyed or its queue is full),
/// reports that the load has ended.
void PostStage(LoadTracker& loads, HWND window, LoadNumber load, WPARAM stage,
               bool success) noexcept {
    const bool posted = window != nullptr && PostMessageW(window, kStageDoneMessage, stage,
                                                          success ? TRUE : FALSE) != FALSE;
    if (!posted) loads.Report(load, LoadState::Ended);
}

/// Loads the picture. @return false when the picture cannot be read or no memory is left
bool LoadSafely(const WorkerTask& task) noexcept {
    try {
        return task.shared.picture.Load(task.shared.limits, task.dataDirectory) != kLoadFailed;
    } catch (...) {
        return false;
    }
}

void RunLoad(const WorkerTask& task) noexcept {
    // Deliberate: a load that does not get the lock in time ends without a message; a split that
    // does not get the lock in time reports failure.
    LoadState state = LoadState::Ended;
    {
        const MutexHold hold = AcquireMutex(task.mutex.get(), kWorkerWaitMs);
        if (hold && !IsStale(task))
            state = LoadSafely(task) ? LoadState::Loaded : LoadState::Failed;
        task.shared.loads.Report(task.load, state);
    }
    if (state == LoadState::Ended) return;
    PostStage(task.shared.loads, task.window, task.load, kLoadStage, state == LoadState::Loaded);
}

void RunSplit(const WorkerTask& task) noexcept {
    LoadState state = LoadState::Failed;
    {
        const MutexHold hold = AcquireMutex(task.mutex.get(), kWorkerWaitMs);
        MapPicture& picture = task.shared.picture;
        if (IsStale(task) || (hold && task.shared.loads.IsSuperseded(task.load, picture.Stage()))) {
            state = LoadState::Ended;
        } else if (hold && picture.Split(task.shared.limits)) {
            state = LoadState::Split;
        }
        task.shared.loads.Report(task.load, state);
    }
    if (state == LoadState::Ended) return;
    PostStage(task.shared.loads, task.window, task.load, kSplitStage, state == LoadState::Split);
}

/// Runs `Work` on the task, then releases the reference to the library and ends the thread. The
/// inner scope destroys the task, because this function does not return.
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

/// Makes the task of a worker. @return null when no handle to the mutex or no reference to the
/// library can be made. Throws std::bad_alloc.
std::unique_ptr<WorkerTask> MakeTask(SharedPicture& shared, HWND window, LoadNumber load,
                                     const std::wstring& dataDirectory) {
    std::unique_ptr<WorkerTask> task(new WorkerTask{shared,
                                                    window,
                                                    shared.DuplicateMutex(),
                                                    load,
                                                    shared.Generation(),
                                                    dataDirectory,
                                                    {},
                                                    nullptr});
    if (!task->mutex) return nullptr;
    task->module = ReferenceToLibrary();
    return task->module != nullptr ? std::move(task) : nullptr;
}

}  // namespace

/// Starts a thread that runs `procedure` on a new task. @return whether the thread has started
bool MapLoader::StartThread(HWND window, LoadNumber load, LPTHREAD_START_ROUTINE procedure) {
    std::unique_ptr<WorkerTask> task;
    try {
        task = MakeTask(shared_, window, load, host_.Folders().data);
    } catch (...) {
        task = nullptr;
    }
    if (task == nullptr) return false;
    const UniqueHandle thread(CreateThread(nullptr, 0, procedure, task.get(), 0, nullptr));
    if (!thread) {
        FreeLibrary(task->module);
        return false;
    }
    static_cast<void>(task.release());  // the thread owns the task now
    return true;
}

/// Starts a worker. A worker that cannot be started is reported like a worker that has failed, so
/// that a message explains to the user why the globe stays empty.
void MapLoader::StartWorker(HWND window, LoadNumber load, LPTHREAD_START_ROUTINE procedure,
                            WPARAM stage) {
    if (StartThread(window, load, procedure)) return;
    shared_.loads.Report(load, LoadState::Failed);
    PostStage(shared_.loads, window, load, stage, false);
}

void MapLoader::StartLoad(HWND window) {
    if (!shared_.HasMutex()) return;
    StartWorker(window, shared_.loads.Start(window), WorkerProc<RunLoad>, kLoadStage);
}

void MapLoader::StartSplit(HWND window) {
    if (!shared_.HasMutex()) return;
    // Find returns kNoLoad when another program has posted the message that a picture is loaded.
    // The worker then splits the picture in memory, if there is one.
    const LoadNumber load = shared_.loads.Find(window, LoadState::Loaded);
    shared_.loads.Report(load, LoadState::Splitting);
    StartWorker(window, load, WorkerProc<RunSplit>, kSplitStage);
}
