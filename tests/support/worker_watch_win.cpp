#include "support/worker_watch_win.h"

#include <algorithm>
#include <utility>

namespace {

constexpr DWORD kPatienceMs = 60000;

bool HasEnded(const UniqueHandle& thread, DWORD patience) {
    return WaitForSingleObject(thread.get(), patience) == WAIT_OBJECT_0;
}

}  // namespace

WorkerWatch::WorkerWatch(HMODULE module)
    : openPicture_(module, [this](auto... arguments) { return Decode(arguments...); }),
      wait_(module, [this](auto... arguments) { return WaitFor(arguments...); }),
      start_(module, [this](auto... arguments) -> HANDLE {
          ++started;
          if (failingStart > 0 && --failingStart == 0) return nullptr;
          HANDLE thread = Start::Real(arguments...);
          threads_.push_back(DuplicateOf(thread));
          return thread;
      }) {}

WorkerWatch::~WorkerWatch() {
    LetGo();
    WaitUntilAllLeft();
}

void WorkerWatch::HoldUp(int place) {
    ResetEvent(open_.get());
    ResetEvent(heldUp_.get());
    workerWaits_ = 0;
    place_ = place;
}

void WorkerWatch::LetGo() {
    place_ = kNowhere;
    SetEvent(open_.get());
}

void WorkerWatch::Pass(int place) {
    if (place_ != place) return;
    SetEvent(heldUp_.get());
    WaitForSingleObject(open_.get(), kPatienceMs);
}

int WorkerWatch::Inside() const {
    // Long runs count handles: those of threads that have ended must not pile up here.
    std::erase_if(threads_, [](const UniqueHandle& thread) { return HasEnded(thread, 0); });
    return static_cast<int>(threads_.size());
}

bool WorkerWatch::WaitUntilAllLeft() const {
    return std::all_of(threads_.begin(), threads_.end(),
                       [](const UniqueHandle& thread) { return HasEnded(thread, kPatienceMs); });
}

int WorkerWatch::Decode(const wchar_t* path, void** bitmap) {
    if (!std::wstring_view(path).ends_with(L"map.jpg")) return OpenPicture::Real(path, bitmap);
    mostDecoding = std::max<int>(mostDecoding, ++decoding_);
    Pass(kDecode);
    const int status = OpenPicture::Real(path, bitmap);
    --decoding_;
    return status;
}

DWORD WorkerWatch::WaitFor(HANDLE handle, DWORD wait) {
    // Waits without an end are those of the C++ runtime, which counts on them.
    if (wait == INFINITE) return Wait::Real(handle, wait);
    if (GetCurrentThreadId() != windowThread_) {
        const int number = ++workerWaits_;
        if (number <= 2) Pass(number == 1 ? kLoadLock : kSplitLock);
    } else if (std::exchange(letGoAtWait, false)) {
        LetGo();
    }
    if (waits == kVain) return WAIT_TIMEOUT;
    const DWORD result = Wait::Real(handle, waits == kPatient ? wait : 0);
    return waits == kOrphaned && result == WAIT_OBJECT_0 ? WAIT_ABANDONED : result;
}
