// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace brackwell::system {

/// A conversion between two encodings that the system knows; ended on every way out.
class TextConverter {
public:
    /// By the names that the system has for them.
    TextConverter(const char* from, const char* to);
    TextConverter(const TextConverter&) = delete;
    TextConverter& operator=(const TextConverter&) = delete;
    ~TextConverter();

    /// False where the system has no such conversion, or none at all.
    bool isOpen() const noexcept;

    /// Appends all that the bytes become; false when that is not possible without any loss.
    bool convert(std::string_view bytes, std::string& result) const;

private:
    /// Without input, appends what returns to the encoding's first state.
    bool run(char** input, std::size_t* inputSize, std::string& result) const;

    void* handle_;
};

}  // namespace brackwell::system
