// SPDX-License-Identifier: Apache-2.0
#include "open/document_split.h"

#include <algorithm>
#include <bit>
#include <cstddef>

#include "memory/byte_block.h"
#include "text/ascii_case.h"

namespace brackwell::opening {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kRootTag = "<OFX>";
constexpr std::string_view kRootEnd = "</OFX>";
constexpr std::string_view kHeader = "OFXHEADER:";

/// Where a tag or header may stand at or after `from`, or the end of the text.
std::size_t findBeginning(std::string_view text, std::size_t from) noexcept {
    using reading::ByteBlock;
    for (; from + ByteBlock::size <= text.size(); from += ByteBlock::size) {
        const ByteBlock block(text.data() + from);
        if (const unsigned found = block.equal('<') | block.equal('O') | block.equal('o'); found != 0)
            return from + static_cast<unsigned>(std::countr_zero(found));
    }
    return std::min(text.find_first_of("<Oo", from), text.size());
}

/// True where a document begins. The root tag is looked for in any case, as a repair finds it.
bool beginsDocument(std::string_view text) noexcept {
    for (const std::string_view begin : {kHeader, "<?xml"sv, "<?OFX"sv, kRootTag})
        if (equalsIgnoringCase(text.substr(0, begin.size()), begin)) return true;
    return false;
}

/// The next place at or after `from` where a document begins, or the end of the text.
std::size_t findDocument(std::string_view text, std::size_t from) noexcept {
    for (std::size_t at = from; at < text.size(); ++at) {
        at = findBeginning(text, at);
        if (at < text.size() && beginsDocument(text.substr(at))) return at;
    }
    return text.size();
}

/// True at the beginning of a line.
bool beginsLine(std::string_view text, std::size_t at) noexcept {
    return at == 0 || text[at - 1] == '\n' || text[at - 1] == '\r';
}

/// True when a root tag, which ends here, is followed by a message set, as that of a document is and one in a
/// text is not.
bool holdsMessageSet(std::string_view afterTag) noexcept {
    const std::size_t begin = afterTag.find_first_not_of(" \t\r\n");
    if (begin == afterTag.npos || afterTag[begin] != '<') return false;
    const std::string_view name = afterTag.substr(begin + 1, 40);
    const std::size_t end = name.find('>');
    return end != name.npos && end > 2 && capitalLetter(name[end - 2]) == 'V' && name[end - 1] >= '1' &&
           name[end - 1] <= '9';
}

/// Finds where a document ends: after its root, or where it was cut off, before the next one. What begins
/// that one is its root, with or without a header before it. A header is one when its root follows, or at the
/// beginning of a line; the same words elsewhere are a text.
class DocumentEnd {
public:
    DocumentEnd(std::string_view text, std::size_t begin) noexcept : text_(text), at_(begin) {}

    std::size_t find() noexcept {
        for (; at_ < text_.size(); ++at_) {
            at_ = findBeginning(text_, at_);
            const std::string_view here = text_.substr(at_);
            if (equalsIgnoringCase(here.substr(0, kRootEnd.size()), kRootEnd)) return at_ + kRootEnd.size();
            if (isInBody_ && here.starts_with(kHeader) && beginsLine(text_, at_)) return begin();
            if (beginsHeader(here))
                header_ = std::min(header_, at_);
            else if (const bool isNext = here.starts_with('<') && isNextRoot(here); isNext)
                return begin();
        }
        return text_.size();
    }

private:
    static bool beginsHeader(std::string_view here) noexcept {
        return here.starts_with(kHeader) || equalsIgnoringCase(here.substr(0, 5), "<?xml") ||
               equalsIgnoringCase(here.substr(0, 5), "<?OFX");
    }

    /// Of the next document.
    std::size_t begin() const noexcept { return std::min(header_, at_); }

    /// Takes a tag; true when it is the root of the next document.
    bool isNextRoot(std::string_view here) noexcept {
        const bool isRoot = equalsIgnoringCase(here.substr(0, kRootTag.size()), kRootTag);
        const bool hasHeader = header_ != kNowhere;
        if (isRoot && isInBody_ &&
            (hasHeader || (hasContent_ && holdsMessageSet(here.substr(kRootTag.size())))))
            return true;
        header_ = kNowhere;
        hasContent_ = hasContent_ || (isInBody_ && !isRoot);
        isInBody_ = isInBody_ || isRoot;
        return false;
    }

    static constexpr std::size_t kNowhere = std::string_view::npos;

    std::string_view text_;
    std::size_t at_;
    std::size_t header_ = kNowhere;  ///< where a header begins after which no other tag came
    bool isInBody_ = false;
    bool hasContent_ = false;  ///< the body has other tags than its root
};

}  // namespace

std::vector<TextRange> splitIntoDocuments(std::string_view text) {
    std::vector<TextRange> parts;
    for (std::size_t begin = 0; parts.empty() || begin < text.size();) {
        const std::size_t end = DocumentEnd(text, findDocument(text, begin)).find();
        const bool isLast = findDocument(text, end) == text.size();
        parts.push_back({begin, isLast ? text.size() : end});
        if (isLast) break;
        begin = end;
    }
    return parts;
}

}  // namespace brackwell::opening
