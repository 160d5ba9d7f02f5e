// SPDX-License-Identifier: Apache-2.0
#include "system/output_files.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <system_error>

#include "system/windows/wide_text.h"

namespace tool::system {

const std::string_view kSeparators = "/\\:";

int makeTemporary(std::string& name) noexcept {
    constexpr unsigned kTries = 100;
    constexpr unsigned kSixDigits = 100'000;  // the least number with so many
    for (unsigned i = 0; i < kTries; ++i) {
        const unsigned long long number = ::GetTickCount64() * 7919 + ::GetCurrentProcessId() + i;
        name.replace(name.size() - 6, 6, std::to_string(kSixDigits + number % (9 * kSixDigits)));
        // It may be removed while it is open, as it is when somebody ends the program.
        const HANDLE file =
            ::CreateFileW(wide(name).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                          CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE)
            return ::_open_osfhandle(reinterpret_cast<std::intptr_t>(file), _O_WRONLY | _O_BINARY);
        if (::GetLastError() != ERROR_FILE_EXISTS) break;
    }
    errno = EACCES;
    return -1;
}

bool store(int descriptor) noexcept { return ::_commit(descriptor) == 0; }

bool takePlace(const std::string& file, const std::string& of) noexcept {
    if (::MoveFileExW(wide(file).c_str(), wide(of).c_str(), MOVEFILE_REPLACE_EXISTING) != 0) return true;
    errno = EACCES;
    return false;
}

void removeFile(const std::string& path) noexcept { static_cast<void>(::_wunlink(wide(path).c_str())); }

int openDevice(const std::string& path) noexcept {
    return ::_wopen(wide(path).c_str(), _O_WRONLY | _O_BINARY | _O_NOINHERIT);
}

/// Descriptors have no names here.
int openDescriptor(const std::string& path) noexcept { return openDevice(path); }

std::optional<FileIdentity> identityOf(const std::string& name) noexcept {
    std::error_code unknown;
    if (name == "-" || !std::filesystem::is_regular_file(wide(name), unknown)) return std::nullopt;
    constexpr DWORD everybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = ::CreateFileW(wide(name).c_str(), 0, everybody, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return std::nullopt;
    BY_HANDLE_FILE_INFORMATION about{};
    const bool isKnown = ::GetFileInformationByHandle(file, &about) != 0;
    ::CloseHandle(file);
    if (!isKnown) return std::nullopt;
    return FileIdentity{about.dwVolumeSerialNumber,
                        std::uint64_t{about.nFileIndexHigh} << 32 | about.nFileIndexLow};
}

}  // namespace tool::system
