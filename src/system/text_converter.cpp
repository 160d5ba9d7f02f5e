// SPDX-License-Identifier: Apache-2.0
#include "system/text_converter.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <new>

// The C library of WASI has one that is as large as all of this library, and whose decoders of some encodings
// write outside of their room on bytes that are no text.
#if __has_include(<iconv.h>) && !defined(__wasi__)
#define BRACKWELL_HAS_ICONV
#include <iconv.h>
#endif

namespace brackwell::system {

#if defined(BRACKWELL_HAS_ICONV)

namespace {

/// Throws when there is less memory than it takes to load an encoding.
void requireMemory() {
    constexpr std::size_t enough = std::size_t{1} << 20;
    ::operator delete(::operator new(enough));
}

// NOLINTNEXTLINE(performance-no-int-to-ptr): what POSIX has iconv_open return
const iconv_t kNotOpen = reinterpret_cast<iconv_t>(-1);

}  // namespace

TextConverter::TextConverter(const char* from, const char* to) : handle_(::iconv_open(to, from)) {
    if (isOpen()) return;
    // The C library loads encodings when they are wanted. Without memory for that it mostly says that
    // there is no such encoding; that is so when it says it again and there is memory.
    handle_ = ::iconv_open(to, from);
    if (!isOpen()) requireMemory();
}

TextConverter::~TextConverter() {
    if (isOpen()) ::iconv_close(handle_);
}

bool TextConverter::isOpen() const noexcept { return handle_ != kNotOpen; }

bool TextConverter::convert(std::string_view bytes, std::string& result) const {
    char* input = const_cast<char*>(bytes.data());  // iconv only reads, but its type does not say so
    std::size_t inputSize = bytes.size();
    return run(&input, &inputSize, result) && run(nullptr, nullptr, result);
}

bool TextConverter::run(char** input, std::size_t* inputSize, std::string& result) const {
    constexpr auto failure = static_cast<std::size_t>(-1);
    // Large enough that few calls are needed, small enough for any thread's stack.
    std::array<char, 16384> chunk;
    std::size_t outcome = failure;
    int problem = 0;
    do {
        char* output = chunk.data();
        std::size_t room = chunk.size();
        outcome = ::iconv(handle_, input, inputSize, &output, &room);
        problem = errno;
        result.append(chunk.data(), chunk.size() - room);
    } while (outcome == failure && problem == E2BIG);
    return outcome == 0;  // more than 0 counts characters that were replaced by others
}

#else

TextConverter::TextConverter(const char* /*from*/, const char* /*to*/) : handle_(nullptr) {}
TextConverter::~TextConverter() = default;
bool TextConverter::isOpen() const noexcept { return false; }
bool TextConverter::convert(std::string_view /*bytes*/, std::string& /*result*/) const { return false; }

#endif

}  // namespace brackwell::system
