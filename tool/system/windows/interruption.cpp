// SPDX-License-Identifier: Apache-2.0
#include "console/interruption.h"

#include <windows.h>

#include <atomic>

#include "system/windows/wide_text.h"

namespace tool {
namespace {

// The handler runs in a thread of its own and at any time, so it reads memory that is never released.
constexpr std::size_t kLongestPath = 32767;
std::array<wchar_t, kLongestPath + 1> pathToRemove{};
std::atomic<bool> isToBeRemoved{false};
std::atomic<bool> isHeld{false};

/// Ctrl-C, a closed console, the end of a session. The system then ends the program.
BOOL WINAPI removeAndEnd(DWORD /*event*/) {
    while (isHeld) ::Sleep(1);
    if (isToBeRemoved) ::DeleteFileW(pathToRemove.data());
    return FALSE;
}

}  // namespace

SignalsHeld::SignalsHeld() noexcept { isHeld = true; }

SignalsHeld::~SignalsHeld() { isHeld = false; }

void removeWhenInterrupted(const std::string& path) noexcept {
    isToBeRemoved = false;
    const std::wstring name = system::wide(path).wstring();
    const std::size_t size = name.copy(pathToRemove.data(), kLongestPath);
    pathToRemove[size] = L'\0';
    isToBeRemoved = true;
    ::SetConsoleCtrlHandler(removeAndEnd, TRUE);
}

void keepWhenInterrupted() noexcept { isToBeRemoved = false; }

}  // namespace tool
