// SPDX-License-Identifier: Apache-2.0
#include "anonymize/document_walk.h"

#include <algorithm>
#include <cstddef>

#include "anonymize/value_kind.h"
#include "elements/header_fields.h"
#include "text/ascii_case.h"
#include "text/ascii_space.h"
#include "text/byte_order_marks.h"
#include "text/comment_marks.h"
#include "text/name_byte.h"

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

    /// The text between two tags: a value, or what stands before a document and after it. A header may come
    /// after tags of HTML there, of which some have names that OFX has, too (CODE).
    void readText(std::string_view text) {
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
        std::size_t end = begin;
        while (end < rest_.size() && isInASCIIName(rest_[end])) ++end;
        if (end == begin) return false;
        const std::size_t mark = std::min(rest_.find_first_of("<>", end), rest_.size());
        const bool isFinished = mark < rest_.size() && rest_[mark] == '>';
        const std::string_view name = rest_.substr(begin, end - begin);
        Element element = elementMeantBy(name);
        if (element == elements::kUnknown) {
            // A name that nobody knows is one only where nothing but blanks follows it.
            const bool isName =
                isFinished && (end == mark || isASCIIWhiteSpace(rest_[end]) || rest_[end] == '/');
            if (!isName) end = begin + knownPrefix(name);
            if (end == begin) return false;
            element = elementMeantBy(rest_.substr(begin, end - begin));
        }
        const bool hasInside = isFinished && end >= begin + name.size();
        visitor_.onMarkup(take(begin));
        visitor_.onName(take(end - begin), element, isClose);
        if (hasInside) {
            visitor_.onOtherText(take(mark - end));
            visitor_.onMarkup(take(1));
        }
        pass(element, isClose);
        return true;
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
};

}  // namespace

void walkThrough(std::string_view text, PartVisitor& visitor) { Walk(text, visitor).run(); }

}  // namespace brackwell::anonymizing
