// SPDX-License-Identifier: Apache-2.0
#include <brackwell/convert.h>

#include "lines.h"
#include "support/elements_text.h"
#include "target.h"

/// \file
/// Indented text: of a tree, which is read as the same tree; and of a text, whose lines follow tabs.

namespace brackwell::fuzz {
namespace {

/// The longest that a text becomes is a leaf of three bytes, "<>x" after a name of 64 bytes: that name twice
/// and sixteen tabs.
constexpr std::size_t kMostGrowth = 52;

void requireSameElements(const std::optional<ParseDictionary>& read, const ParseDictionary& tree) {
    require(read.has_value(), "the text of a tree can be read");
    require(tests::elementsText(*read) == tests::elementsText(tree),
            "the text of a tree is read as the same tree");
}

void tryTree(const ParseDictionary& tree, std::size_t size) {
    const std::string text = indentedOFXText(tree);
    require(text.size() <= kMostGrowth * (size + 4), "a text grows no faster than its document");
    require(text.empty() || text.ends_with('\n'), "a text ends with a line");
    requireSameElements(TvOFXParser::parseOFXDataString(text), tree);
}

/// The text of a tree is a document of its own where it begins with <OFX>.
void tryDocument(std::string_view bytes) {
    const auto result = TvOFXParser(Data::view(bytes)).parseWithError();
    if (!result || !result->ofxData) return;
    const std::string text = indentedOFXText(*result->ofxData);
    if (!text.starts_with("<OFX>")) return;
    const auto read = TvOFXParser(Data::view(text)).parseWithError();
    require(read != nullptr, "the text of a document can be decoded");
    requireSameElements(read->ofxData, *result->ofxData);
}

/// The lines of the text after tabs, and nothing else.
void tryLines(std::string_view bytes) {
    const std::string pretty = TvOFXHelper::prettyPrintOfxMessageString(bytes);
    require(pretty.ends_with('\n'), "every line gets its line feed");
    Lines lines(pretty);
    Lines wanted(bytes);
    bool isLast = false;
    while (!isLast) {
        isLast = wanted.rest().find('\n') == std::string_view::npos;
        const std::string_view line = wanted.next();
        const std::string_view indented = lines.next();
        require(indented.ends_with(line), "a line stays as it was");
        const std::string_view tabs = indented.substr(0, indented.size() - line.size());
        require(tabs.find_first_not_of('\t') == std::string_view::npos, "only tabs are put before a line");
    }
    require(lines.rest().empty(), "there are as many lines as before");
}

}  // namespace

void tryBytes(std::string_view bytes) {
    tryLines(bytes);
    if (const auto tree = TvOFXParser::parseOFXDataString(bytes)) tryTree(*tree, bytes.size());
    tryDocument(bytes);
}

}  // namespace brackwell::fuzz
