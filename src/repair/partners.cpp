// SPDX-License-Identifier: Apache-2.0
#include "repair/partners.h"

#include <algorithm>
#include <utility>

#include "parser/closing.h"

namespace brackwell::repair {

std::vector<std::uint32_t> extendedNames(const std::vector<Tag>& tags, reading::NameTable& names) {
    std::vector<std::pair<std::uint32_t, std::uint32_t>> found;
    for (const Tag& tag : tags)
        if (const std::string_view name = names.name(tag.name);
            !tag.isClose() && name.starts_with(reading::kExtensionPrefix))
            found.emplace_back(names.number(name.substr(reading::kExtensionPrefix.size())), tag.name);
    std::vector<std::uint32_t> extended(names.end(), kNone);
    for (const auto& [plain, long_] : found) extended[plain] = long_;
    return extended;
}

std::vector<std::uint32_t> partnersOf(const std::vector<Tag>& tags,
                                      const std::vector<std::uint32_t>& extended) {
    std::vector<std::uint32_t> partners(tags.size(), kNone);
    std::vector<std::uint32_t> open;                         // tags, the innermost at the end
    std::vector<std::uint32_t> depths(extended.size(), 0);   // of the innermost of each name; 0: none
    std::vector<std::uint32_t> outerDepths(tags.size(), 0);  // of the next one of the same name
    for (std::uint32_t i = 0; i < tags.size(); ++i) {
        const std::uint32_t name = tags[i].name;
        if (tags[i].form == Tag::Form::open) {
            open.push_back(i);
            outerDepths[i] = std::exchange(depths[name], static_cast<std::uint32_t>(open.size()));
        } else if (tags[i].isClose()) {
            const std::uint32_t other = extended[name] == kNone ? 0 : depths[extended[name]];
            const std::uint32_t depth = std::max(depths[name], other);
            if (depth == 0) continue;
            partners[i] = open[depth - 1];
            partners[open[depth - 1]] = i;
            // What is deeper stays without a partner: its close tag is missing.
            for (; open.size() >= depth; open.pop_back())
                depths[tags[open.back()].name] = outerDepths[open.back()];
        }
    }
    return partners;
}

}  // namespace brackwell::repair
