// SPDX-License-Identifier: Apache-2.0
#include "parser/tag_search.h"

#include <algorithm>

namespace brackwell::reading {

TextEnd findOpenByBytes(std::string_view text, std::size_t from) noexcept {
    TextEnd end{from};
    for (; end.position < text.size() && text[end.position] != '<'; ++end.position)
        end.hasEntity |= text[end.position] == '&';
    return {std::min(end.position, text.size()), end.hasEntity};
}

std::size_t findCloseByBytes(std::string_view text, std::size_t from) noexcept {
    return std::min(text.find('>', from), text.size());
}

std::size_t findInkByBytes(std::string_view text, std::size_t from) noexcept {
    while (from < text.size() && static_cast<unsigned char>(text[from]) < '!') ++from;
    return std::min(from, text.size());
}

}  // namespace brackwell::reading
