// SPDX-License-Identifier: Apache-2.0
#include "repair/markup.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "repair/remains.h"
#include "text/ascii_case.h"
#include "text/ascii_space.h"
#include "text/comment_marks.h"
#include "text/size_until.h"
#include "text/text_parts.h"

namespace brackwell::repair {
namespace {

constexpr std::string_view kDataBegin = "<![CDATA[";
constexpr std::string_view kDataEnd = "]]>";

bool isBeyondASCII(char c) noexcept { return static_cast<unsigned char>(c) >= 0x80; }
bool beginsName(char c) noexcept { return isASCIILetter(c) || isBeyondASCII(c) || c == '_'; }
bool isInName(char c) noexcept {
    return beginsName(c) || (c >= '0' && c <= '9') || c == '.' || c == '-' || c == ':';
}

std::string inCapitals(std::string_view name) {
    std::string capitals(name);
    std::ranges::transform(capitals, capitals.begin(), capitalLetter);
    return capitals;
}

bool isKnown(std::string_view name) noexcept { return elements::findElement(name) != elements::kUnknown; }

/// True for a name in small letters that would be known in capitals.
bool isKnownInCapitals(std::string_view name) { return hasSmallLetter(name) && isKnown(inCapitals(name)); }

/// The name without the prefix of a namespace, when it then is one that the standard has.
std::string_view withoutPrefix(std::string_view name) {
    const std::string_view local = afterLast(name, ":");
    return local.size() == name.size() || (!isKnown(local) && !isKnownInCapitals(local)) ? name : local;
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else
            result += c;
    }
    return result;
}

/// What stands between the brackets of a tag, taken apart.
struct Inside {
    explicit Inside(std::string_view text)
        : beginsWithBlank(!text.empty() && isASCIIWhiteSpace(text.front())), name(trimWhiteSpace(text)) {
        if (name.starts_with('/')) {
            form = Tag::Form::close;
            name = trimWhiteSpace(name.substr(1));
            return;
        }
        if (name.ends_with('/')) {
            form = Tag::Form::selfClosed;
            name = trimWhiteSpace(name.substr(0, name.size() - 1));
        }
        const std::size_t size = sizeUntil(name, isASCIIWhiteSpace);
        // What follows the name is attributes, or this is no tag.
        if (name.find('=', size) != std::string_view::npos) name = name.substr(0, size);
    }

    /// True when this is the inside of a tag that has its ">".
    bool isTag() const noexcept {
        if (form == Tag::Form::close) return true;
        return isName(name) && !(beginsWithBlank && hasSmallLetter(name));
    }
    /// True when this is a tag although another begins before its ">".
    bool isTagWithoutEnd(NameCase nameCase) const {
        if (!isName(name) || beginsWithBlank) return false;
        return form == Tag::Form::close || isKnown(nameCase == NameCase::upper ? name : inCapitals(name));
    }
    /// True when this is a tag that the end of the document has cut off.
    bool isCutOff(NameCase nameCase) const noexcept {
        return name.empty() || (isName(name) && (nameCase != NameCase::upper || !hasSmallLetter(name)));
    }

    bool beginsWithBlank;
    Tag::Form form = Tag::Form::open;
    std::string_view name;
};

/// Says which case a document's names have, by its tags as they stand.
bool isInLowerCase(const std::vector<Tag>& tags, const reading::NameTable& names,
                   bool beginsWithRoot) noexcept {
    constexpr std::string_view root = "OFX";
    if (beginsWithRoot && !tags.empty() && equalsIgnoringCase(names.name(tags.front().name), root))
        return names.name(tags.front().name) != root;
    bool hasLowerRoot = false;
    for (const Tag& tag : tags) {
        const std::string_view name = names.name(tag.name);
        if (name == root && !tag.isClose()) return false;
        if (name != root && equalsIgnoringCase(name, root)) hasLowerRoot = true;
    }
    return hasLowerRoot;
}

/// True for a tag that stands where elements of its document do: at the beginning of a line, or directly
/// after the text before it.
bool standsLikeATag(std::string_view body, const Tag& tag) noexcept {
    std::size_t begin = tag.begin;
    while (begin > 0 && isBlank(body[begin - 1])) --begin;
    return begin == tag.begin || body[begin - 1] == '\n' || body[begin - 1] == '\r';
}

/// True when a document with its root in capitals has known elements in small letters that are no part of
/// a text: the tag before them has none, none follows them, or they stand where a tag may and in one
/// aggregate with the element before them.
bool hasSmallElements(std::string_view body, const std::vector<Tag>& tags, const reading::NameTable& names) {
    for (std::size_t i = 1; i < tags.size(); ++i) {
        const std::string_view name = names.name(tags[i].name);
        if (tags[i].isClose() || !isKnownInCapitals(name)) continue;
        if (!tags[i - 1].hasText || !tags[i].hasText) return true;
        const elements::Element element = elements::findElement(inCapitals(name));
        if (standsLikeATag(body, tags[i]) && areSiblings(tags[i - 1].element, element)) return true;
    }
    return false;
}

class MarkupReader {
public:
    MarkupReader(std::string_view body, NameCase nameCase, reading::NameTable& names)
        : body_(body), names_(names), markup_{nameCase, {}, {}} {
        // Tags take more memory than all else in a repair. While their array grows it is there twice, so that
        // it is made as large as it will be, but for documents that hardly have anything between their tags.
        constexpr std::size_t usualDistance = 8;
        const auto brackets = static_cast<std::size_t>(std::ranges::count(body, '<'));
        markup_.tags.reserve(std::min(brackets, body.size() / usualDistance));
    }

    Markup read() {
        for (std::size_t at = 0;;) {
            const std::size_t open = findOrEnd('<', at);
            readText(at, open);
            if (open == body_.size()) return std::move(markup_);
            at = readMarkupAt(open);
        }
    }

private:
    std::size_t findOrEnd(char wanted, std::size_t from) const noexcept {
        return std::min(body_.find(wanted, from), body_.size());
    }

    /// Reads what stands between two tags: a text, with what is left of tags that have lost their "<".
    void readText(std::size_t begin, std::size_t end) {
        if (dataEnd_ < end) {
            const std::size_t at = std::exchange(dataEnd_, std::string_view::npos);
            readText(begin, at);
            change(at, at + kDataEnd.size(), RepairKind::characterData);
            begin = at + kDataEnd.size();
        }
        for (std::size_t at = begin;;) {
            const std::size_t close = body_.substr(0, end).find('>', at);
            if (close == std::string_view::npos) break;
            const bool isOfLeaf = !markup_.tags.empty() && !markup_.tags.back().isClose();
            const elements::Element leaf = isOfLeaf ? markup_.tags.back().element : elements::kUnknown;
            const std::string_view name = nameWithoutBegin(body_.substr(begin, close - begin), leaf);
            at = close + 1;
            if (name.empty()) continue;
            const auto nameBegin = static_cast<std::size_t>(name.data() - body_.data());
            noteText(begin, nameBegin);
            begin = addTag(Inside(name), nameBegin, at, RepairKind::unfinishedTag);
        }
        noteText(begin, end);
    }

    /// Notes text of the last tag; true when this is where it begins.
    bool noteText(std::size_t begin, std::size_t end) noexcept {
        if (markup_.tags.empty() || markup_.tags.back().hasText) return false;
        const std::string_view text = trimWhiteSpace(body_.substr(begin, end - begin));
        if (text.empty()) return false;
        markup_.tags.back().hasText = true;
        markup_.tags.back().textBegin = static_cast<std::uint32_t>(text.data() - body_.data());
        return true;
    }

    void change(std::size_t begin, std::size_t end, RepairKind kind, std::string now = {}) {
        markup_.edits.push_back({begin, end - begin, kind, std::move(now), {}});
    }

    /// Each of these reads what begins with a "<", and returns where it ends.
    std::size_t readMarkupAt(std::size_t open) {
        const std::string_view rest = body_.substr(open);
        if (rest.starts_with(kCommentBegin)) return readComment(open);
        if (rest.starts_with(kDataBegin)) return readCharacterData(open);
        const std::size_t end = std::min(body_.find_first_of("<>", open + 1), body_.size());
        const bool hasEnd = end < body_.size() && body_[end] == '>';
        if (hasEnd && rest.size() > 2 && (rest[1] == '!' || rest[1] == '?') && isASCIILetter(rest[2])) {
            change(open, end + 1, RepairKind::instruction);
            return end + 1;
        }
        const Inside inside(body_.substr(open + 1, end - open - 1));
        if (hasEnd && isWordOfText(inside, open, end + 1)) return readLessThan(open);
        if (hasEnd && inside.isTag()) return addTag(inside, open, end + 1, RepairKind::tagForm);
        if (end == body_.size() && inside.isCutOff(markup_.nameCase)) {
            change(open, end, RepairKind::unfinishedTag);
            return end;
        }
        if (!hasEnd && end < body_.size())
            if (const std::size_t tagEnd = readSplitTag(open, end); tagEnd != 0) return tagEnd;
        if (!hasEnd && end < body_.size() && inside.isTagWithoutEnd(markup_.nameCase)) {
            const char* const nameEnd = inside.name.data() + inside.name.size();
            return addTag(inside, open, static_cast<std::size_t>(nameEnd - body_.data()),
                          RepairKind::unfinishedTag);
        }
        if (!hasEnd && end < body_.size()) {
            const std::string_view name = nameWithoutEnd(rest.substr(1, end - open - 1));
            if (!name.empty())
                return addTag(Inside(name), open, open + 1 + name.size(), RepairKind::unfinishedTag);
        }
        return readLessThan(open);
    }

    std::size_t readLessThan(std::size_t open) {
        noteText(open, open + 1);
        change(open, open + 1, RepairKind::lessThan, "&lt;");
        return open + 1;
    }

    /// Reads a tag with a "<" in its name, "<TRN<AMT>"; returns where it ends, or 0.
    std::size_t readSplitTag(std::size_t open, std::size_t second) {
        const std::size_t end = std::min(body_.find_first_of("<>", second + 1), body_.size());
        constexpr std::size_t longest = 40;  // more than any name of the OFX standard
        if (end == body_.size() || body_[end] != '>' || end - open > longest) return 0;
        std::string joined(body_.substr(open + 1, second - open - 1));
        joined += body_.substr(second + 1, end - second - 1);
        const bool isClose = joined.starts_with('/');
        if (second == open + (isClose ? 2 : 1)) return 0;  // what is split has letters on both sides
        if (!isKnown(std::string_view(joined).substr(isClose ? 1 : 0))) return 0;
        return addTag(Inside(joined), open, end + 1, RepairKind::unfinishedTag, true);
    }

    /// True for what looks like a tag and is a part of a leaf's text, "see <REF> 123": no known name, with
    /// text before and after it in the line, and nothing but the leaf's close tag to follow in the line.
    /// Where a word in brackets is closed, "<b>bold</b>", the close tag is one, too.
    bool isWordOfText(const Inside& inside, std::size_t open, std::size_t end) {
        if (inside.form == Tag::Form::close) {
            const bool closesWord = !wordOfText_.empty() && inside.name == wordOfText_;
            if (closesWord) wordOfText_ = {};
            return closesWord;
        }
        wordOfText_ = {};
        if (markup_.nameCase == NameCase::lower || markup_.tags.empty()) return false;
        const Tag& leaf = markup_.tags.back();
        // Longer than a line of text; the limit keeps searches linear where there are no line breaks.
        constexpr std::size_t farthest = 1000;
        const bool hasLine = leaf.form == Tag::Form::open && leaf.hasText && body_[open - 1] == ' ' &&
                             open - leaf.textBegin < farthest &&
                             elements::kindOf(leaf.element) == elements::Kind::leaf &&
                             body_.substr(leaf.textBegin, open - leaf.textBegin).find_first_of("\r\n") ==
                                 std::string_view::npos;
        if (!hasLine || inside.name.find('.') != std::string_view::npos || isKnown(inCapitals(inside.name)))
            return false;
        const std::string_view ahead = body_.substr(end, farthest);
        const std::size_t lineEnd = ahead.find_first_of("\r\n");
        const std::string_view line = ahead.substr(0, lineEnd);
        const std::string_view after = trimWhiteSpace(line.substr(0, line.find('<')));
        const std::string_view rest = line.substr(std::min(line.find('<'), line.size()));
        const std::string wordEnd = closeTag(inside.name);
        const bool isClosed = rest.starts_with(wordEnd) && rest.substr(wordEnd.size()).find('<') == rest.npos;
        const bool goesOn =
            rest.empty() ? lineEnd != ahead.npos : rest.starts_with(closeTag(names_.name(leaf.name)));
        if (isClosed && !after.empty()) wordOfText_ = inside.name;
        return !after.empty() && (isClosed || goesOn);
    }

    std::size_t addTag(Inside inside, std::size_t begin, std::size_t end, RepairKind flaw,
                       bool copiesName = false) {
        inside.name = withoutPrefix(inside.name);
        const bool changesCase = markup_.nameCase == NameCase::upper   ? false
                                 : markup_.nameCase == NameCase::mixed ? isKnownInCapitals(inside.name)
                                                                       : hasSmallLetter(inside.name);
        const reading::NameID name = changesCase  ? names_.numberOfCopy(inCapitals(inside.name))
                                     : copiesName ? names_.numberOfCopy(inside.name)
                                                  : names_.number(inside.name);
        if (changesCase) flaw = RepairKind::lowerCaseTag;
        Tag& tag = markup_.tags.emplace_back();
        tag.begin = static_cast<std::uint32_t>(begin);
        tag.end = tag.textBegin = static_cast<std::uint32_t>(end);
        tag.name = name;
        tag.element = elements::findElement(names_.name(name));
        tag.form = inside.form;
        tag.flaw = flaw;
        return end;
    }

    /// A comment that does not end is no more than its begin, so that it hides no values.
    std::size_t readComment(std::size_t open) {
        std::size_t end = find(kCommentEnd, open + kCommentBegin.size(), hasCommentEnd_);
        if (end != std::string_view::npos) {
            end += kCommentEnd.size();
        } else {
            end = std::min(body_.find_first_of("<>", open + 1), body_.size());
            if (end < body_.size() && body_[end] == '>') ++end;
        }
        change(open, end, RepairKind::comment);
        return end;
    }

    std::size_t readCharacterData(std::size_t open) {
        const std::size_t begin = open + kDataBegin.size();
        const std::size_t end = find(kDataEnd, begin, hasDataEnd_);
        if (end == std::string_view::npos) {  // what follows is read like anything else
            change(open, begin, RepairKind::characterData);
            return begin;
        }
        if (holdsElements(body_.substr(begin, end - begin))) {
            change(open, begin, RepairKind::characterData);
            dataEnd_ = end;
            return begin;
        }
        if (noteText(begin, end)) markup_.tags.back().textBegin = static_cast<std::uint32_t>(open);
        change(open, end + kDataEnd.size(), RepairKind::characterData,
               escaped(body_.substr(begin, end - begin)));
        return end + kDataEnd.size();
    }

    /// True for character data that consists of elements instead of the text of a leaf: it begins with the
    /// open tag of a known one, and all of its tags are whole.
    bool holdsElements(std::string_view data) const {
        if (!markup_.tags.empty() && !markup_.tags.back().isClose() &&
            !elements::isAggregate(markup_.tags.back().element))
            return false;
        data = trimWhiteSpace(data);
        if (!data.starts_with('<')) return false;
        const Inside first(data.substr(1, std::min(data.find('>'), data.size()) - 1));
        if (first.form != Tag::Form::open || !isKnown(inCapitals(first.name))) return false;
        for (std::size_t open = 0; open < data.size();
             open = std::min(data.find('<', open + 1), data.size())) {
            const std::size_t end = data.find_first_of("<>", open + 1);
            if (end == data.npos || data[end] != '>' ||
                !Inside(data.substr(open + 1, end - open - 1)).isTag())
                return false;
        }
        return true;
    }

    /// Looks for an end, but not again after there was none.
    std::size_t find(std::string_view wanted, std::size_t from, bool& isThere) const noexcept {
        const std::size_t found = isThere ? body_.find(wanted, from) : std::string_view::npos;
        isThere = found != std::string_view::npos;
        return found;
    }

    std::string_view body_;
    reading::NameTable& names_;
    Markup markup_;
    bool hasCommentEnd_ = true;
    bool hasDataEnd_ = true;
    std::size_t dataEnd_ = std::string_view::npos;  ///< of character data that holds elements
    std::string_view wordOfText_;                   ///< the name of an open tag that was a word of a text
};

}  // namespace

Markup readMarkup(std::string_view body, bool beginsWithRoot, reading::NameTable& names) {
    Markup markup = MarkupReader(body, NameCase::upper, names).read();
    NameCase nameCase = NameCase::upper;
    if (isInLowerCase(markup.tags, names, beginsWithRoot))
        nameCase = NameCase::lower;
    else if (hasSmallElements(body, markup.tags, names))
        nameCase = NameCase::mixed;
    if (nameCase == NameCase::upper) return markup;
    markup = {};  // before there is another one
    return MarkupReader(body, nameCase, names).read();
}

bool isName(std::string_view text) noexcept {
    return !text.empty() && beginsName(text.front()) && std::ranges::all_of(text, isInName);
}

bool hasSmallLetter(std::string_view text) noexcept { return std::ranges::any_of(text, isSmallASCIILetter); }

}  // namespace brackwell::repair
