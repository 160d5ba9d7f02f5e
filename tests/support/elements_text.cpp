// SPDX-License-Identifier: Apache-2.0
#include "support/elements_text.h"

#include "support/tree_text.h"

namespace brackwell::tests {
namespace {

using Elements = ParseDictionary::DocumentOrder::Iterator;

struct Open {
    Elements next;
    Elements end;
};

Open opened(std::string_view name, const ParseDictionary& aggregate) {
    const ParseDictionary::DocumentOrder elements = aggregate.inDocumentOrder();
    Open open{elements.begin(), elements.end()};
    if (name != "STMTTRN" || open.next == open.end) return open;
    const auto [first, value] = *open.next;
    if (first == "TVOFX_ORIGINAL_STRING" && value.text()) ++open.next;
    return open;
}

}  // namespace

std::string elementsText(const ParseDictionary& tree) {
    std::string text;
    std::vector<Open> open{opened("", tree)};
    while (!open.empty()) {
        if (open.back().next == open.back().end) {
            open.pop_back();
            if (!open.empty()) text += '}';
            continue;
        }
        const auto [name, value] = *open.back().next;
        ++open.back().next;
        text.append("<").append(name).append(">");
        if (const auto aggregate = value.dictionary()) {
            text += '{';
            open.push_back(opened(name, *aggregate));
        } else {
            text += inQuotes(value.text().value());
        }
    }
    return text;
}

}  // namespace brackwell::tests
