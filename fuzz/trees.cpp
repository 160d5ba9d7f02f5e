// SPDX-License-Identifier: Apache-2.0
#include "trees.h"

#include <functional>

#include "support/documents.h"
#include "support/tree_text.h"
#include "target.h"

namespace brackwell::fuzz {
namespace {

using tests::treeText;

/// Visits every value that is a text or a dictionary, without recursion.
template <class Visit>
void walk(const ParseDictionary& tree, Visit visit) {
    std::vector<ParseDictionary> left{tree};
    while (!left.empty()) {
        const ParseDictionary at = std::move(left.back());
        left.pop_back();
        for (const auto& [name, value] : at) {
            const bool isRepeated = value.kind() == ParseValue::Kind::array;
            for (const ParseValue& each : isRepeated ? value.elements() : std::vector{value}) {
                visit(name, each, isRepeated);
                if (auto dictionary = each.dictionary()) left.push_back(std::move(*dictionary));
            }
        }
    }
}

bool hasMarkup(std::string_view text) { return text.find_first_of("<>&") != std::string_view::npos; }

bool isSlice(std::string_view part, std::string_view whole) {
    const std::less_equal<> before;
    return before(whole.data(), part.data()) &&
           before(part.data() + part.size(), whole.data() + whole.size());
}

ParseDictionary copyOf(const ParseDictionary& tree) {
    ParseDictionaryBuilder builder;
    for (const auto& [name, value] : tree) builder.value(name, value);
    return builder.finish();
}

void requireEqual(const ParseDictionary& a, const ParseDictionary& b, const char* sentence) {
    require(a == b && b == a && treeText(a) == treeText(b), sentence);
}

}  // namespace

bool isPlain(const ParseDictionary& tree) {
    bool plain = true;
    walk(tree, [&plain](std::string_view name, const ParseValue& value, bool isRepeated) {
        const OptionalText text = value.text();
        if (hasMarkup(name) || (text && (isRepeated || hasMarkup(*text)))) plain = false;
    });
    return plain;
}

void requireSlices(const ParseDictionary& tree, std::string_view source) {
    const bool hasEntities = source.find('&') != std::string_view::npos;
    walk(tree, [&](std::string_view name, const ParseValue& value, bool) {
        const OptionalText text = value.text();
        require(!name.empty() || !text, "a leaf has a name");
        if (!text) return;
        require(isSlice(*text, source) || hasEntities, "a text is a slice of the source");
        if (name == "TVOFX_ORIGINAL_STRING")
            require(source.find(*text) != std::string_view::npos, "a source text stands in the source");
    });
}

void requireSound(const ParseDictionary& tree) {
    requireEqual(tree, tree, "a tree is equal to itself");
    requireEqual(tree, copyOf(tree), "a tree is equal to its copy");

    const auto restored = tests::restored(*TvOFXAggregate::initWithParseDict(tree));
    require(restored && restored->originalParseData(), "a tree comes back from an archive");
    requireEqual(tree, *restored->originalParseData(), "a tree comes back from an archive as it was");
}

void requireReadable(const ParseDictionary& tree) {
    const std::string text = TvOFXHelper::ofxDictionaryToString(tree);
    if (!isPlain(tree)) return;
    const std::optional<ParseDictionary> read = TvOFXParser::parseOFXDataString(text);
    require(read.has_value(), "the text of a plain tree can be read");
    requireEqual(tree, *read, "the text of a plain tree is read as the same tree");
}

}  // namespace brackwell::fuzz
