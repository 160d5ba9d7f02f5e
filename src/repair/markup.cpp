// SPDX-License-Identifier: Apache-2.0
#include "repair/markup.h"

#include <algorithm>

#include "platform/ascii_case.h"

namespace brackwell::repair {
namespace {

constexpr std::string_view kCommentBegin = "<!--";
constexpr std::string_view kCommentEnd = "-->";
constexpr std::string_view kDataBegin = "<![CDATA[";
constexpr std::string_view kDataEnd = "]]>";

bool isSmallLetter(char c) noexcept { return c >= 'a' && c <= 'z'; }
bool isBlank(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }
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
    const std::string_view local = name.substr(name.rfind(':') + 1);
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
        : beginsWithBlank(!text.empty() && isBlank(text.front())), name(trimWhiteSpace(text)) {
        if (name.starts_with('/')) {
            form = Tag::Form::close;
            name = trimWhiteSpace(name.substr(1));
            return;
        }
        if (name.ends_with('/')) {
            form = Tag::Form::selfClosed;
            name = trimWhiteSpace(name.substr(0, name.size() - 1));
        }
        const auto* const blank = std::ranges::find_if(name, isBlank);
        const auto size = static_cast<std::size_t>(blank - name.begin());
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
bool isInLowerCase(const std::vector<Tag>& tags, bool beginsWithRoot) noexcept {
    constexpr std::string_view root = "OFX";
    if (beginsWithRoot && !tags.empty() && equalsIgnoringCase(tags.front().text, root))
        return tags.front().text != root;
    bool hasLowerRoot = false;
    for (const Tag& tag : tags) {
        if (tag.text == root && !tag.isClose()) return false;
        if (tag.text != root && equalsIgnoringCase(tag.text, root)) hasLowerRoot = true;
    }
    return hasLowerRoot;
}

/// True when a document with its root in capitals has known elements in small letters that are no part of
/// a text: the tag before them has none, or none follows them.
bool hasSmallElements(const std::vector<Tag>& tags) {
    for (std::size_t i = 1; i < tags.size(); ++i)
        if (!tags[i].isClose() && !(tags[i - 1].hasText && tags[i].hasText) &&
            isKnownInCapitals(tags[i].text))
            return true;
    return false;
}

class MarkupReader {
public:
    MarkupReader(std::string_view body, NameCase nameCase, reading::NameTable& names)
        : body_(body), names_(names), markup_{nameCase, {}, {}} {}

    Markup read() {
        for (std::size_t at = 0;;) {
            const std::size_t open = findOrEnd('<', at);
            noteText(at, open);
            if (open == body_.size()) return std::move(markup_);
            at = readMarkupAt(open);
        }
    }

private:
    std::size_t findOrEnd(char wanted, std::size_t from) const noexcept {
        return std::min(body_.find(wanted, from), body_.size());
    }

    /// Notes text of the last tag; true when this is where it begins.
    bool noteText(std::size_t begin, std::size_t end) noexcept {
        if (markup_.tags.empty() || markup_.tags.back().hasText) return false;
        const std::string_view text = trimWhiteSpace(body_.substr(begin, end - begin));
        if (text.empty()) return false;
        markup_.tags.back().hasText = true;
        markup_.tags.back().textBegin = static_cast<std::size_t>(text.data() - body_.data());
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
        if (hasEnd && inside.isTag()) return addTag(inside, open, end + 1, RepairKind::tagForm);
        if (end == body_.size() && inside.isCutOff(markup_.nameCase)) {
            change(open, end, RepairKind::unfinishedTag);
            return end;
        }
        if (!hasEnd && end < body_.size() && inside.isTagWithoutEnd(markup_.nameCase)) {
            const char* const nameEnd = inside.name.data() + inside.name.size();
            return addTag(inside, open, static_cast<std::size_t>(nameEnd - body_.data()),
                          RepairKind::unfinishedTag);
        }
        noteText(open, open + 1);
        change(open, open + 1, RepairKind::lessThan, "&lt;");
        return open + 1;
    }

    std::size_t addTag(Inside inside, std::size_t begin, std::size_t end, RepairKind flaw) {
        inside.name = withoutPrefix(inside.name);
        const bool changesCase = markup_.nameCase == NameCase::upper   ? false
                                 : markup_.nameCase == NameCase::mixed ? isKnownInCapitals(inside.name)
                                                                       : hasSmallLetter(inside.name);
        const reading::NameID name =
            changesCase ? names_.numberOfCopy(inCapitals(inside.name)) : names_.number(inside.name);
        if (changesCase) flaw = RepairKind::lowerCaseTag;
        const std::string_view text = names_.name(name);
        markup_.tags.push_back(
            {begin, end, end, text, name, elements::findElement(text), inside.form, false, flaw});
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
        if (noteText(begin, end)) markup_.tags.back().textBegin = open;
        change(open, end + kDataEnd.size(), RepairKind::characterData,
               escaped(body_.substr(begin, end - begin)));
        return end + kDataEnd.size();
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
};

}  // namespace

Markup readMarkup(std::string_view body, bool beginsWithRoot, reading::NameTable& names) {
    Markup markup = MarkupReader(body, NameCase::upper, names).read();
    if (isInLowerCase(markup.tags, beginsWithRoot)) return MarkupReader(body, NameCase::lower, names).read();
    if (hasSmallElements(markup.tags)) return MarkupReader(body, NameCase::mixed, names).read();
    return markup;
}

bool isName(std::string_view text) noexcept {
    return !text.empty() && beginsName(text.front()) && std::ranges::all_of(text, isInName);
}

bool hasSmallLetter(std::string_view text) noexcept { return std::ranges::any_of(text, isSmallLetter); }

}  // namespace brackwell::repair
