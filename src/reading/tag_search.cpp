// SPDX-License-Identifier: Apache-2.0
#include "reading/tag_search.h"

#include <algorithm>

namespace brackwell::reading {

TextEnd findOpenByBytes(std::string_view text, std::size_t from) noexcept {
    TextEnd end{from};
    for (; end.position < text.size() && text[end.position] != '<'; ++end.position)
        end.hasEntity |= text[end.position] == '&';
    return {std::min(end.position, text.size()), end.hasEntity};
}

std::size_t findMarkupByBytes(std::string_view text, std::size_t from) noexcept {
    return std::min(text.find_first_of("<&", from), text.size());
}

std::size_t findCloseByBytes(std::string_view text, std::size_t from) noexcept {
    return std::min(text.find('>', from), text.size());
}

}  // namespace brackwell::reading
