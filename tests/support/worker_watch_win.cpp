#include "support/worker_watch_win.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr DWORD kPatienceMs = 60000;
constexpr DWORD kWorkerWaitMs = 5000;  // what a worker asks for

}  // namespace

WorkerWatch::WorkerWatch(HMODULE module)
    : openPicture_(module,
                   [this](const wchar_t* path, void** bitmap) { return Decode(path, bitmap); }),
      wait_(module, [this](HANDLE handle, DWORD wait) { return WaitFor(handle, wait); }),
      start_(module, [this](auto... arguments) -> HANDLE {
          if (++starts_ == failAt_) return nullptr;
          HANDLE thread = Start::Real(arguments...);
          HANDLE copy = nullptr;
          DuplicateHandle(GetCurrentProcess(), thread, GetCurrentProcess(), &copy, SYNCHRONIZE,
                          FALSE, 0);
          threads_.push_back(copy);
          return thread;
      }) {}

WorkerWatch::~WorkerWatch() {
    LetGo();
    WaitUntilAllLeft();
    for (HANDLE thread : threads_) CloseHandle(thread);
}

void WorkerWatch::HoldUp(At place) {
    ResetEvent(open_.Get());
    ResetEvent(heldUp_.Get());
    workerWaits_ = 0;
    place_ = place;
}

void WorkerWatch::LetGo() {
    place_ = At::Nowhere;
    SetEvent(open_.Get());
}

void WorkerWatch::Pass(At place) {
    if (place_ != place) return;
    SetEvent(heldUp_.Get());
    WaitForSingleObject(open_.Get(), kPatienceMs);
}

bool WorkerWatch::IsHeldUp() const {
    return WaitForSingleObject(heldUp_.Get(), 0) == WAIT_OBJECT_0;
}

int WorkerWatch::Inside() const {
    // Long runs count handles: those of threads that have ended must not pile up here.
    std::erase_if(threads_, [](HANDLE thread) {
        return WaitForSingleObject(thread, 0) == WAIT_OBJECT_0 && CloseHandle(thread) != FALSE;
    });
    return static_cast<int>(threads_.size());
}

bool WorkerWatch::WaitUntilAllLeft() const {
    return std::all_of(threads_.begin(), threads_.end(), [](HANDLE thread) {
        return WaitForSingleObject(thread, kPatienceMs) == WAIT_OBJECT_0;
    });
}

void WorkerWatch::Shorten(DWORD wait) {
    const std::lock_guard lock(mutex_);
    short_.insert(wait);
}

void WorkerWatch::WaitAsAsked() {
    const std::lock_guard lock(mutex_);
    short_.clear();
}

int WorkerWatch::Decode(const wchar_t* path, void** bitmap) {
    if (!std::wstring_view(path).ends_with(L"map.jpg")) return OpenPicture::Real(path, bitmap);
    const int now = ++decoding_;
    if (now > mostDecoding_) mostDecoding_ = now;
    Pass(At::Decode);
    const int status = OpenPicture::Real(path, bitmap);
    --decoding_;
    return status;
}

DWORD WorkerWatch::WaitFor(HANDLE handle, DWORD wait) {
    if (wait == kWorkerWaitMs) {
        const int number = ++workerWaits_;
        if (number <= 2) Pass(number == 1 ? At::LoadLock : At::SplitLock);
    }
    if (wait == letGoAt_) LetGo();
    {
        const std::lock_guard lock(mutex_);
        if (short_.contains(wait)) wait = 0;
    }
    return Wait::Real(handle, wait);
}
