// SPDX-License-Identifier: Apache-2.0
#include "parser/entities.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace brackwell::reading {
namespace {

struct Entity {
    std::string_view text;
    char character;
};
constexpr std::array<Entity, 3> kEntities{{{"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}}};

/// The entity that the text begins with, or null.
const Entity* entityAt(std::string_view text) noexcept {
    for (const Entity& entity : kEntities)
        if (text.starts_with(entity.text)) return &entity;
    return nullptr;
}

}  // namespace

std::size_t unescape(std::string_view text, char* out) noexcept {
    char* const begin = out;
    while (!text.empty()) {
        if (const Entity* entity = entityAt(text)) {
            *out++ = entity->character;
            text.remove_prefix(entity->text.size());
        } else {
            const std::size_t plain = std::min(text.find('&', 1), text.size());
            std::memcpy(out, text.data(), plain);
            out += plain;
            text.remove_prefix(plain);
        }
    }
    return static_cast<std::size_t>(out - begin);
}

}  // namespace brackwell::reading
