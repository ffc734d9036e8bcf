// The diagnostic log. The file is opened and closed for every line, so that several threads and
// programs can write to it in turn.

#include <cstdio>
#include <cstring>

#include "base/handles_win.h"
#include "base/narrow_text.h"
#include "horivo_host.h"
#include "host/program_path_win.h"

namespace {

constexpr wchar_t kMutexName[] = L"horivo_log_mutex";
constexpr wchar_t kFileName[] = L"horivo.log";
// Sizes of buffers, terminators included.
constexpr int kPathCapacity = 600;          // characters; the folder has at most MAX_PATH of them
constexpr int kProgramNameCapacity = 512;   // bytes; file names have up to 255 characters
constexpr int kPrefixCapacity = 600;        // bytes; the program's name and 37 other characters
constexpr int kWideMessageCapacity = 2048;  // bytes of a converted message

/// Null until the host creates it.
UniqueHandle logMutex;

bool IsLogging() noexcept { return !IsFeatureEnabled(kLogging); }

bool FormLogPath(wchar_t (&path)[kPathCapacity]) noexcept {
    wchar_t folder[MAX_PATH + 1];
    const DWORD length = GetTempPathW(MAX_PATH + 1, folder);
    if (length == 0 || length > MAX_PATH) return false;
    return std::swprintf(path, kPathCapacity, L"%ls%ls", folder, kFileName) > 0;
}

/// Opens the log file for appending; creates the file when there is none.
UniqueFile OpenLog() noexcept {
    wchar_t path[kPathCapacity];
    if (!FormLogPath(path)) return UniqueFile();
    return UniqueFile(CreateFileW(path, FILE_APPEND_DATA,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

void Write(HANDLE file, const char* text) noexcept {
    DWORD written = 0;
    WriteFile(file, text, static_cast<DWORD>(std::strlen(text)), &written, nullptr);
}

void WritePrefix(HANDLE file) noexcept {
    SYSTEMTIME now;
    GetLocalTime(&now);
    const std::wstring_view name = FindProgramPath().fileName;
    char program[kProgramNameCapacity];
    NarrowText(name.data(), static_cast<std::int32_t>(name.size()), program, kProgramNameCapacity);
    char prefix[kPrefixCapacity];
    std::snprintf(prefix, sizeof prefix, "%02d:%02d:%02d.%03d 0x%08X:0x%08X %s: ", now.wHour,
                  now.wMinute, now.wSecond, now.wMilliseconds,
                  static_cast<unsigned>(GetCurrentProcessId()),
                  static_cast<unsigned>(GetCurrentThreadId()), program);
    Write(file, prefix);
}

}  // namespace

bool CreateLogMutex() noexcept {
    if (!logMutex) logMutex.reset(CreateMutexW(nullptr, FALSE, kMutexName));
    return logMutex != nullptr;
}

void CloseLogMutex() noexcept { logMutex.reset(); }

void WriteLog(const char* message) noexcept {
    if (!IsLogging() || message == nullptr) return;
    // When the host has not created the mutex, this wait ends at once, and the line is written
    // anyway.
    const MutexHold hold = AcquireMutex(logMutex.get(), INFINITE);
    const UniqueFile file = OpenLog();
    if (!file.IsOpen()) return;
    WritePrefix(file.Get());
    Write(file.Get(), message);
    Write(file.Get(), "\r\n");
}

void WriteLogW(const HorivoWideChar* message) noexcept {
    if (!IsLogging() || message == nullptr) return;
    char text[kWideMessageCapacity];
    NarrowText(message, -1, text, kWideMessageCapacity);
    WriteLog(text);
}
