// SPDX-License-Identifier: Apache-2.0
#include <brackwell/convert.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "parser/closing.h"
#include "tree/element_names.h"
#include "tree/node_ref.h"

namespace brackwell {
namespace {

using reading::Document;
using reading::NameID;
using reading::Node;

constexpr NameID kTransaction = reading::element("STMTTRN");
constexpr NameID kOriginalString = reading::element("TVOFX_ORIGINAL_STRING");
constexpr NameID kNothingPending = ~NameID{0};

/// Enough for all that the OFX standard nests. Without an end, the tabs of a document that consists of
/// nothing but open tags would outgrow it.
constexpr std::size_t kMostTabs = 16;

/// A longer name, which no OFX has, is not written again where the parser does not need it. It takes "<>" for
/// the name of the tag before, so that a document can have a long name again and again for two bytes each.
constexpr std::size_t kLongName = 64;

constexpr std::size_t kPiece = std::size_t{1} << 16;

void appendEscaped(std::string& text, std::string_view value) {
    for (;;) {
        const auto plain = static_cast<std::size_t>(
            std::ranges::find_if(value, [](char c) { return c == '&' || c == '<' || c == '>'; }) -
            value.begin());
        text.append(value, 0, plain);
        if (plain == value.size()) return;
        text.append(value[plain] == '&' ? "&amp;" : value[plain] == '<' ? "&lt;" : "&gt;");
        value.remove_prefix(plain + 1);
    }
}

/// Writes the nodes of an aggregate in their order, which is that of the document.
class IndentedText {
public:
    IndentedText(const Document& document, std::uint32_t root,
                 const std::function<bool(std::string_view)>& take)
        : document_(document), take_(take), open_{root} {}

    /// False when the text is not wanted any more.
    bool write() {
        const std::uint32_t end = document_.endOf(open_.front());
        for (std::uint32_t at = firstChild(open_.front()); isWanted_;) {
            const bool mayStayOpen = at == end && isLong(open_.back());
            if (open_.size() == 1 ? at == end : mayStayOpen) break;  // the end of the text closes the rest
            if (at == document_.endOf(open_.back()))
                closeAggregate();
            else
                at = writeElement(at);
        }
        if (isWanted_ && !text_.empty()) handOn();
        return isWanted_;
    }

private:
    /// The first that is written: not the source text that the parser puts first into a transaction.
    std::uint32_t firstChild(std::uint32_t aggregate) const noexcept {
        const std::uint32_t first = aggregate + 1;
        if (first == document_.endOf(aggregate)) return first;
        const Node& node = document_.node(first);
        const bool isSource = document_.node(aggregate).name() == kTransaction && !node.isAggregate() &&
                              node.name() == kOriginalString;
        return isSource ? first + 1 : first;
    }

    std::string_view nameOf(std::uint32_t index) const noexcept {
        return document_.name(document_.node(index));
    }
    bool isLong(std::uint32_t index) const noexcept { return nameOf(index).size() > kLongName; }

    /// Writes a leaf, an empty aggregate or an open tag, and returns the node to go on with.
    std::uint32_t writeElement(std::uint32_t index) {
        const Node& node = document_.node(index);
        indent();
        openTag(node);
        if (!node.isAggregate()) {
            appendEscaped(text_, document_.text(node));
            if (mayClose(index)) closeTag(index);
            endLine();
            return index + 1;
        }
        const std::uint32_t first = firstChild(index);
        if (first == document_.endOf(index))
            closeTag(index);  // a long name, too: a text that ends in an open tag is read otherwise
        else
            open_.push_back(index);
        endLine();
        return first;
    }

    /// False for a leaf whose close tag would close the aggregate around it.
    bool mayClose(std::uint32_t leaf) const noexcept {
        if (isLong(leaf)) return false;
        if (open_.size() == 1) return true;  // the reader's root has no name
        const std::uint32_t around = open_.back();
        return document_.node(leaf).name() != document_.node(around).name() &&
               !reading::closesWithoutPrefix(nameOf(leaf), nameOf(around));
    }

    void closeAggregate() {
        const std::uint32_t closed = open_.back();
        open_.pop_back();
        indent();
        closeTag(closed);
        endLine();
    }

    void indent() { text_.append(std::min(open_.size() - 1, kMostTabs), '\t'); }

    void openTag(const Node& node) {
        const std::string_view name = document_.name(node);
        const bool isKnownToReader = node.name() == pending_ && name.size() > kLongName;
        text_.append("<").append(isKnownToReader ? std::string_view() : name).append(">");
        pending_ = node.name();
    }

    void closeTag(std::uint32_t index) {
        text_.append("</").append(nameOf(index)).append(">");
        pending_ = kNothingPending;
    }

    void endLine() {
        text_.push_back('\n');
        if (text_.size() >= kPiece) handOn();
    }

    void handOn() {
        isWanted_ = take_(text_);
        text_.clear();
    }

    const Document& document_;
    const std::function<bool(std::string_view)>& take_;
    std::vector<std::uint32_t> open_;   ///< the aggregates that are open; the first is the root
    NameID pending_ = kNothingPending;  ///< what the reader takes "<>" for
    std::string text_;
    bool isWanted_ = true;
};

}  // namespace

std::string indentedOFXText(const ParseDictionary& tree) {
    std::string text;
    writeIndentedOFXText(tree, [&text](std::string_view piece) {
        text.append(piece);
        return true;
    });
    return text;
}

bool writeIndentedOFXText(const ParseDictionary& tree, const std::function<bool(std::string_view)>& take) {
    if (!take) return false;
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): `take` may replace it
    const ParseDictionary held = tree;
    const reading::NodeRef root = reading::NodeRef::of(held);
    return !root || IndentedText(root.document(), root.index(), take).write();
}

}  // namespace brackwell
