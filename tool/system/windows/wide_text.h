// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>

namespace tool::system {

/// A name in UTF-8 as the system takes it.
inline std::filesystem::path wide(const std::string& name) {
    return {std::u8string(name.begin(), name.end())};
}

/// A text of the system in UTF-8.
inline std::string narrow(const wchar_t* text) {
    const std::u8string name = std::filesystem::path(text).u8string();
    return {name.begin(), name.end()};
}

}  // namespace tool::system
