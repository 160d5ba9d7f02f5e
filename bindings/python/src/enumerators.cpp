// SPDX-License-Identifier: Apache-2.0
#include "enumerators.h"

namespace brackwell::python {
namespace {

bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }
bool isSmall(char c) { return c >= 'a' && c <= 'z'; }

/// A word begins at a capital after a small letter or a digit, and at the last capital of a run.
bool beginsWord(std::string_view name, std::size_t i) {
    if (i == 0 || !isCapital(name[i])) return false;
    return !isCapital(name[i - 1]) || (i + 1 < name.size() && isSmall(name[i + 1]));
}

std::string separated(std::string_view name, char first, char shift) {
    std::string result;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (beginsWord(name, i)) result += '_';
        const bool changes = name[i] >= first && name[i] <= first + ('z' - 'a');
        result += changes ? static_cast<char>(name[i] + shift) : name[i];
    }
    return result;
}

}  // namespace

std::string snakeCase(std::string_view name) { return separated(name, 'A', 'a' - 'A'); }
std::string upperSnakeCase(std::string_view name) { return separated(name, 'a', 'A' - 'a'); }

}  // namespace brackwell::python
