// SPDX-License-Identifier: Apache-2.0
#include "open/shown_text.h"

#include <brackwell/platform.h>

#include <algorithm>

#include "text/ascii_case.h"
#include "text/utf8.h"
#include "tree/document.h"

namespace brackwell::opening {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::string_view kEllipsis = "\u2026";

/// Characters that order what stands around them from right to left, or end such an order.
bool turnsDirection(char32_t c) noexcept {
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069);
}

/// Control characters of ASCII have pictures of their own; no other command of a terminal is shown.
char32_t visible(char32_t c) noexcept {
    constexpr char32_t pictures = 0x2400;
    constexpr char32_t pictureOfDelete = 0x2421;
    if (c < 0x20) return pictures + c;
    if (c == 0x7F) return pictureOfDelete;
    return (c >= 0x80 && c < 0xA0) || turnsDirection(c) ? kReplacement : c;
}

}  // namespace

std::string shownText(std::string_view text, std::size_t longest) {
    std::string shown;
    bool isBlankDue = false;
    // More than this many bytes of white space before the rest are not worth looking at.
    for (text = trimWhiteSpace(text.substr(0, 16 * longest)); !text.empty();) {
        const UTF8Character character = firstCharacter(text);
        text.remove_prefix(character.size != 0 ? character.size : 1);
        if (character.size != 0 && isWhiteSpace(character.value)) {
            isBlankDue = true;
            continue;
        }
        if (shown.size() >= longest) return shown.append(kEllipsis);
        if (isBlankDue) shown += ' ';
        isBlankDue = false;
        appendCharacter(shown, character.size != 0 ? visible(character.value) : kReplacement);
    }
    return shown;
}

std::string quoted(std::string_view text, std::size_t longest) {
    return "\"" + shownText(text, longest) + "\"";
}

std::string tagOfName(std::string_view name) { return "<" + shownText(name, 40) + ">"; }

std::string tagOfNode(const reading::Document& document, std::uint32_t node) {
    return tagOfName(document.name(document.node(node)));
}

std::string counted(std::size_t count, std::string_view one, std::string_view several) {
    return std::to_string(count).append(" ").append(count == 1 ? one : several);
}

std::string enumerated(const std::vector<std::string>& parts) {
    std::string list;
    for (std::size_t i = 0; i < parts.size(); ++i)
        list.append(i == 0 ? "" : i + 1 == parts.size() ? " and " : ", ").append(parts[i]);
    return list;
}

std::string quotedUnlessSecret(std::string_view document, std::size_t offset, std::size_t size) {
    return quotedUnlessSecret(document, offset, size, document.substr(offset, size));
}

std::string quotedUnlessSecret(std::string_view document, std::size_t offset, std::size_t size,
                               std::string_view part) {
    // Where tags are broken, nothing tells where the value of a secret ends. So one near is enough.
    constexpr std::size_t near = 400;
    const std::size_t begin = offset - std::min(offset, near);
    const std::string_view around = document.substr(begin, offset - begin + size);
    for (const std::string_view name : {"KEY", "COOKIE", "PASS", "TOKEN", "CRED", "PHRASE"})
        for (std::size_t i = 0; i + name.size() <= around.size(); ++i)
            if (equalsIgnoringCase(around.substr(i, name.size()), name)) return "(not shown)";
    return quoted(part);
}

}  // namespace brackwell::opening
