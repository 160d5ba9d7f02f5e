// SPDX-License-Identifier: Apache-2.0
#if defined(_WIN32)
#define _CRT_RAND_S  // makes <stdlib.h> declare rand_s, whose numbers are those of the system's generator
#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): which <cstdlib> need not pass on
#elif defined(__linux__)
#include <sys/random.h>
#else
#if __has_include(<sys/random.h>)
#include <sys/random.h>
#endif
#include <unistd.h>
#endif

#include "system/random_bytes.h"

namespace brackwell::system {

#if defined(_WIN32)

bool tryFillWithRandom(std::span<std::uint8_t> bytes) noexcept {
    for (std::uint8_t& byte : bytes) {
        unsigned number = 0;
        if (::rand_s(&number) != 0) return false;
        byte = static_cast<std::uint8_t>(number);
    }
    return true;
}
void fillWithRandom(std::span<std::uint8_t> bytes) noexcept {
    while (!tryFillWithRandom(bytes)) {
    }
}

#elif defined(__linux__)

bool tryFillWithRandom(std::span<std::uint8_t> bytes) noexcept {
    return ::getrandom(bytes.data(), bytes.size(), GRND_NONBLOCK) == static_cast<ssize_t>(bytes.size());
}
void fillWithRandom(std::span<std::uint8_t> bytes) noexcept {
    // So few bytes come whole. Only while the system starts up, before its generator is ready, a signal may
    // end the call early.
    while (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
    }
}

#else

bool tryFillWithRandom(std::span<std::uint8_t> bytes) noexcept {
    return ::getentropy(bytes.data(), bytes.size()) == 0;
}
void fillWithRandom(std::span<std::uint8_t> bytes) noexcept {
    while (!tryFillWithRandom(bytes)) {
    }
}

#endif

}  // namespace brackwell::system
