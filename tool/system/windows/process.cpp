// SPDX-License-Identifier: Apache-2.0
#include "system/process.h"

#include <fcntl.h>
#include <io.h>
// The next two go in this order.
#include <windows.h>
// clang-format off
#include <shellapi.h>
// clang-format on

#include <cstdio>

#include "system/descriptors.h"
#include "system/windows/wide_text.h"

namespace tool::system {

void prepareProcess() noexcept {
    for (const int descriptor : {kStandardInput, kStandardOutput, kStandardError})
        static_cast<void>(::_setmode(descriptor, _O_BINARY));
    ::SetConsoleOutputCP(CP_UTF8);
    for (const DWORD output : {STD_OUTPUT_HANDLE, STD_ERROR_HANDLE}) {
        const HANDLE console = ::GetStdHandle(output);
        DWORD mode = 0;
        // Without it, a console shows the sequences of colours as they are written.
        if (::GetConsoleMode(console, &mode) != 0)
            ::SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
}

// What main gets is in the encoding of the machine, which has not every name.
std::vector<std::string> commandLine(int count, char** arguments) {
    int wideCount = 0;
    wchar_t** words = ::CommandLineToArgvW(::GetCommandLineW(), &wideCount);
    if (words == nullptr) return {arguments, arguments + count};
    std::vector<std::string> line;
    for (int i = 0; i < wideCount; ++i) line.push_back(narrow(words[i]));
    ::LocalFree(static_cast<void*>(words));
    return line;
}

}  // namespace tool::system
