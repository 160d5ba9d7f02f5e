// SPDX-License-Identifier: Apache-2.0
#include "open/root_name.h"

#include <algorithm>
#include <cstddef>

#include "text/ascii_case.h"
#include "text/comment_marks.h"
#include "text/name_byte.h"
#include "text/size_until.h"
#include "text/text_parts.h"

namespace brackwell::opening {
namespace {

constexpr std::string_view kRootName = "OFX";
constexpr std::size_t kLongestRootName = 40;  // what is longer is no name, and would spoil a message

/// Walks over the open tags of a text.
class OpenTags {
public:
    explicit OpenTags(std::string_view text) noexcept : text_(text) {}

    /// The name of the next open tag; empty at the end.
    std::string_view next() noexcept {
        for (at_ = text_.find('<', at_); at_ < text_.size(); at_ = text_.find('<', at_ + 1)) {
            const std::string_view rest = text_.substr(at_ + 1);
            if (rest.starts_with('?') || rest.starts_with('!')) {
                at_ = std::min(
                    text_.find(rest.starts_with(kCommentBegin.substr(1)) ? kCommentEnd : ">", at_ + 1),
                    text_.size() - 1);
                continue;
            }
            const std::size_t size = sizeUntil(rest, [](char c) { return !isInASCIIName(c); });
            if (size == 0 || size > kLongestRootName) continue;
            at_ += size;
            return rest.substr(0, size);
        }
        return {};
    }

private:
    std::string_view text_;
    std::size_t at_ = 0;
};

}  // namespace

std::string_view firstElementName(std::string_view text) noexcept { return OpenTags(text).next(); }

std::string_view withoutPrefix(std::string_view name) noexcept { return afterLast(name, ":"); }

std::string_view rootNameOf(std::string_view text, std::string_view first) noexcept {
    if (equalsIgnoringCase(first, kRootName)) return kRootName;
    OpenTags names(text);
    for (std::string_view name = names.next(); !name.empty(); name = names.next()) {
        if (equalsIgnoringCase(name, kRootName)) return kRootName;
        if (equalsIgnoringCase(withoutPrefix(name), kRootName)) return name;
    }
    return first.empty() ? kRootName : first;
}

}  // namespace brackwell::opening
