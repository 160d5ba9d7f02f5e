// SPDX-License-Identifier: Apache-2.0
#include <brackwell/convert.h>

#include <algorithm>
#include <cstddef>
#include <vector>

#include "tree/node_ref.h"

namespace brackwell {

using reading::NodeRef;

namespace {

/// An aggregate that is being written: what is left of its entries, and of the elements of the entry
/// that is being written.
struct Open {
    std::string_view name;
    NodeRef::Children entries;
    NodeRef::Elements elements;
};

void openTag(std::string& text, std::string_view name) { text.append("<").append(name).append(">"); }

void closeLine(std::string& text, std::string_view name) { text.append("</").append(name).append(">\n"); }

}  // namespace

std::string TvOFXHelper::ofxDictionaryToString(const ParseDictionary& dictionary) {
    std::string text;
    const NodeRef::Elements none{NodeRef()};
    std::vector<Open> open{{{}, NodeRef::of(dictionary).children(), none}};
    while (!open.empty()) {
        Open& at = open.back();
        if (at.elements != nullptr) {
            const NodeRef element = *at.elements;
            ++at.elements;
            // Texts inside an array are left out: intended.
            if (!element.isDictionary()) continue;
            openTag(text, element.name());
            text.append("\n");
            open.push_back({element.name(), element.children(), none});
        } else if (at.entries != nullptr) {
            const NodeRef entry = *at.entries;
            ++at.entries;
            if (entry.isText()) {
                openTag(text, entry.name());
                text.append(entry.text()).append("\n");
            } else {
                at.elements = entry.elements();
            }
        } else {
            if (open.size() > 1) closeLine(text, at.name);
            open.pop_back();
        }
    }
    return text;
}

std::string TvOFXHelper::prettyPrintOfxMessageString(std::string_view text) {
    std::string pretty;
    std::size_t level = 0;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::string_view line = text.substr(begin, end - begin);
        begin = end + 1;
        const bool closes = line.starts_with("</");
        if (closes && level > 0) --level;
        pretty.append(level, '\t').append(line).append("\n");
        // A line that holds a whole leaf ends in ">" as well: intended.
        if (line.starts_with('<') && !closes && !line.starts_with("<?") && line.ends_with('>')) ++level;
    }
    return pretty;
}

}  // namespace brackwell
