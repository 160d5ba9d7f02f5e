// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

/// \file
/// How much a test with a free size may do in this build.

namespace brackwell::tests {

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define BRACKWELL_TESTS_SANITIZED
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define BRACKWELL_TESTS_SANITIZED
#endif

#ifdef BRACKWELL_TESTS_SANITIZED
inline constexpr bool kSanitized = true;
#else
inline constexpr bool kSanitized = false;
#endif

#ifdef NDEBUG
inline constexpr bool kOptimized = true;
#else
inline constexpr bool kOptimized = false;
#endif

/// What an optimised build does, made smaller for the slower ones. Those without optimisation often also
/// count the lines that they run.
constexpr std::size_t scaled(std::size_t count) {
    const unsigned divisor = (kSanitized ? 4U : 1U) * (kOptimized ? 1U : 16U);
    return count / divisor;
}

}  // namespace brackwell::tests
