// SPDX-License-Identifier: Apache-2.0
#include "anonymize/document_walk.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>

#include "anonymize/value_kind.h"
#include "elements/header_fields.h"
#include "memory/unpredictable_hash.h"
#include "repair/remains.h"
#include "text/ascii_case.h"
#include "text/ascii_space.h"
#include "text/byte_order_marks.h"
#include "text/comment_marks.h"
#include "text/name_byte.h"
#include "text/size_until.h"
#include "text/text_parts.h"

namespace brackwell::anonymizing {
namespace {

using elements::Element;

constexpr std::string_view kCharacterDataBegin = "<![CDATA[";

/// The field of a header of OFX 1, "NAME:", that a text begins with; "" when it begins with none.
std::string_view fieldAt(std::string_view text) noexcept {
    for (const std::string_view name : elements::kHeaderFields)
        if (text.size() > name.size() && text[name.size()] == ':' &&
            equalsIgnoringCase(text.substr(0, name.size()), name))
            return name;
    return {};
}

class Walk {
public:
    Walk(std::string_view text, PartVisitor& visitor) : rest_(text), visitor_(visitor) {}

    void run() {
        if (rest_.starts_with(kUTF8Mark)) visitor_.onMarkup(take(kUTF8Mark.size()));
        while (!rest_.empty()) {
            if (rest_.starts_with('<') && readMarkup()) continue;
            // The "<" that begins nothing is a part of the text.
            readText(take(std::min(rest_.find('<', 1), rest_.size())));
        }
    }

private:
    std::string_view take(std::size_t size) noexcept {
        const std::string_view part = rest_.substr(0, size);
        rest_.remove_prefix(part.size());
        return part;
    }

    /// What an open or close tag changes.
    void pass(Element element, bool isClose) noexcept {
        element_ = isClose ? elements::kUnknown : element;
        if (element == elements::kRoot) isInDocument_ = !isClose;
    }

    /// The text between two tags, in which some may stand that have lost their "<": "INFO/SEVERITY>".
    void readText(std::string_view text) {
        std::size_t end = text.find('>');
        while (end != text.npos) {
            const auto name = repair::possibleNameWithoutBegin(text.substr(0, end), element_);
            if (name.empty()) {
                end = text.find('>', end + 1);
                continue;
            }
            readPlainText(text.substr(0, end - name.size()));
            readNameWithoutBegin(name);
            visitor_.onMarkup(text.substr(end, 1));
            text.remove_prefix(end + 1);
            end = text.find('>');
        }
        readPlainText(text);
    }

    void readNameWithoutBegin(std::string_view name) {
        const bool isClose = name.starts_with('/');
        visitor_.onMarkup(name.substr(0, isClose ? 1 : 0));
        name.remove_prefix(isClose ? 1 : 0);
        const Element element = elementMeantBy(name);
        visitor_.onName(name, element, isClose);
        pass(element, isClose);
    }

    /// A value, or what stands before a document and after it. A header may come after tags of HTML there, of
    /// which some have names that OFX has, too (CODE).
    void readPlainText(std::string_view text) {
        if (text.empty()) return;
        const bool isFree = !isInDocument_ && (element_ == elements::kUnknown || holdsHeader(text));
        if (isFree)
            readFreeText(text);
        else
            visitor_.onValue(text, element_);
    }

    static bool holdsHeader(std::string_view text) noexcept {
        return text.find("OFXHEADER:") != std::string_view::npos;
    }

    /// Text in no element, with the fields of a header of OFX 1 in it, each in a line or all in one.
    void readFreeText(std::string_view text) {
        while (!text.empty()) {
            const std::string_view field = fieldAt(text);
            std::size_t end = field.empty() ? 1 : field.size() + 1;
            const std::size_t begin = field.empty() ? 0 : end;
            while (end < text.size() && !isASCIIWhiteSpace(text[end]) && fieldAt(text.substr(end)).empty())
                ++end;
            if (field.empty()) {
                visitor_.onOtherText(text.substr(0, end));
            } else {
                visitor_.onMarkup(text.substr(0, begin));
                visitor_.onHeaderValue(field, text.substr(begin, end - begin));
            }
            text.remove_prefix(end);
        }
    }

    // -----------------------------------------------------------------------------------------
    // From a "<" on

    /// False when the "<" begins no markup.
    bool readMarkup() {
        if (rest_.starts_with(kCharacterDataBegin)) {  // what is in it may be elements
            visitor_.onMarkup(take(kCharacterDataBegin.size()));
        } else if (rest_.starts_with(kCommentBegin)) {  // what is in it may be a header
            visitor_.onMarkup(take(kCommentBegin.size()));
            readFreeText(take(std::min(rest_.find(kCommentEnd), rest_.size())));
            visitor_.onMarkup(take(kCommentEnd.size()));
        } else if (rest_.starts_with("<?")) {
            const std::string_view text = take(std::min(rest_.find("?>"), rest_.size()));
            if (isHeader(text))
                readInstruction(text);
            else
                visitor_.onOtherText(text);
        } else if (rest_.starts_with("<!")) {
            visitor_.onMarkup(take(2));
            visitor_.onOtherText(take(std::min(rest_.find_first_of("<>"), rest_.size())));
        } else {
            return readTag();
        }
        return true;
    }

    /// True for the two instructions that a header of OFX 2 consists of.
    static bool isHeader(std::string_view instruction) noexcept {
        const std::string_view name = instruction.substr(2, instruction.find_first_of(" \t\r\n") - 2);
        return equalsIgnoringCase(name, "xml") || equalsIgnoringCase(name, "OFX");
    }

    /// The fields of a header of OFX 2, "NAME=value" with or without quotation marks.
    void readInstruction(std::string_view text) {
        for (std::size_t equals = text.find('='); equals != text.npos; equals = text.find('=')) {
            std::size_t nameBegin = equals;
            while (nameBegin > 0 && isInASCIIName(text[nameBegin - 1])) --nameBegin;
            std::size_t begin = equals + 1;
            const bool isQuoted = begin < text.size() && (text[begin] == '"' || text[begin] == '\'');
            if (isQuoted) ++begin;
            std::size_t end = begin;
            while (end < text.size() &&
                   (isQuoted ? text[end] != text[begin - 1] : !isASCIIWhiteSpace(text[end])))
                ++end;
            visitor_.onMarkup(text.substr(0, begin));
            visitor_.onHeaderValue(text.substr(nameBegin, equals - nameBegin),
                                   text.substr(begin, end - begin));
            text.remove_prefix(end);
        }
        visitor_.onMarkup(text);
    }

    bool readTag() {
        std::size_t begin = 1;
        const bool isClose = rest_.substr(begin).starts_with('/');
        if (isClose) ++begin;
        while (begin < rest_.size() && isASCIIWhiteSpace(rest_[begin])) ++begin;
        const std::size_t mark = std::min(rest_.find_first_of("<>", begin), rest_.size());
        const bool isFinished = mark < rest_.size() && rest_[mark] == '>';
        const Name name = nameIn(rest_.substr(begin, mark - begin), isFinished);
        if (name.size == 0) return false;
        visitor_.onMarkup(take(begin));
        visitor_.onName(take(name.size), name.element, isClose);
        if (isFinished && name.isWhole) {
            visitor_.onOtherText(take(mark - begin - name.size));
            visitor_.onMarkup(take(1));
        }
        pass(name.element, isClose);
        return true;
    }

    /// The name in a tag.
    struct Name {
        std::size_t size = 0;  ///< 0 for what begins no tag
        Element element = elements::kUnknown;
        bool isWhole = true;  ///< false where a value stands behind it without a ">" before that
    };

    /// `inside` is what stands between the "<" of a tag, or its "/", and the next bracket.
    Name nameIn(std::string_view inside, bool isFinished) {
        const std::string_view name =
            inside.substr(0, sizeUntil(inside, [](char c) { return !isInASCIIName(c); }));
        const std::string_view rest = inside.substr(name.size());
        if (const Element element = elementMeantBy(name); element != elements::kUnknown)
            return {name.size(), element};
        // One that could be an institution's own is none that was misspelt: nobody knows what its values are.
        if (isFinished && !looksLikeElement(inside))
            if (const Element element = elementLike(inside); element != elements::kUnknown)
                return {inside.size(), element};
        // Another name that nobody knows is one only where nothing but blanks follows it, and a ">", or where
        // it was one before, perhaps with a prefix.
        const bool isAlone = rest.empty() || isASCIIWhiteSpace(rest.front()) || rest.front() == '/';
        const std::string_view own = afterLast(name, ".:");
        if (!name.empty() && isAlone && (isFinished || otherNames_.contains(own))) {
            otherNames_.insert(own);
            return {name.size()};
        }
        const std::size_t size = knownPrefix(name);
        return {size, elementMeantBy(name.substr(0, size)), size == name.size()};
    }

    /// The size of the longest name of an element that a name begins with: that of a tag without its ">",
    /// "<TRNAMT-5.00". A name of one letter is rather a word.
    static std::size_t knownPrefix(std::string_view name) noexcept {
        std::size_t size = std::min(name.size(), elements::kLongestName);
        while (size > 1 && elementMeantBy(name.substr(0, size)) == elements::kUnknown) --size;
        return size > 1 ? size : 0;
    }

    std::string_view rest_;
    PartVisitor& visitor_;
    Element element_ = elements::kUnknown;  ///< whose value a text is; unknown after a close tag
    bool isInDocument_ = false;             ///< after <OFX>, until </OFX>
    std::unordered_set<std::string_view, UnpredictableHash> otherNames_;  ///< of no element, without prefixes
};

}  // namespace

void walkThrough(std::string_view text, PartVisitor& visitor) { Walk(text, visitor).run(); }

}  // namespace brackwell::anonymizing
