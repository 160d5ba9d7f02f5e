// SPDX-License-Identifier: Apache-2.0
#include "variants.h"

#include <cstddef>
#include <cstdint>
#include <random>

namespace brackwell::tests {
namespace {

/// Each byte as a character of that many bytes, after a byte order mark where one is wanted.
std::string widened(std::string_view bytes, std::size_t width, bool isBigEndian, bool hasMark) {
    std::string result;
    const auto append = [&](std::uint32_t code) {
        for (std::size_t i = 0; i < width; ++i)
            result += static_cast<char>(code >> 8 * (isBigEndian ? width - 1 - i : i));
    };
    if (hasMark) append(0xFEFF);
    for (const char c : bytes) append(static_cast<unsigned char>(c));
    return result;
}

/// With one byte in two hundred put out, doubled or replaced by something that documents are made of.
std::string damaged(std::string_view bytes, std::uint32_t seed) {
    constexpr std::string_view replacements = "<>/&; \n,.-0Z\xE4\xFF";
    std::mt19937 random(seed);  // whose numbers are the same everywhere, which those of distributions are not
    std::string result;
    for (const char c : bytes) {
        const auto fate = random() % 600;
        if (fate == 0) continue;
        result += fate == 1 ? replacements[random() % replacements.size()] : c;
        if (fate == 2) result += c;
    }
    return result;
}

/// Without one angle bracket in thirty.
std::string withoutBrackets(std::string_view bytes, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::string result;
    for (const char c : bytes)
        if ((c != '<' && c != '>') || random() % 30 != 0) result += c;
    return result;
}

}  // namespace

std::vector<std::string> variantsOf(std::string_view bytes) {
    std::vector<std::string> variants = {std::string(bytes.substr(0, bytes.size() / 3)),
                                         std::string(bytes.substr(0, bytes.size() - bytes.size() / 5))};
    for (const std::uint32_t seed : {1U, 2U, 3U}) variants.push_back(damaged(bytes, seed));
    variants.push_back(withoutBrackets(bytes, 4));
    variants.push_back(widened(bytes, 2, true, true));
    variants.push_back(
        widened(bytes, 2, false, true));  // without a mark it is the machine's order that counts
    variants.push_back(widened(bytes, 4, true, false));
    variants.push_back(widened(bytes, 4, false, true));
    return variants;
}

}  // namespace brackwell::tests
