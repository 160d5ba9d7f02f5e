// SPDX-License-Identifier: Apache-2.0
#include "open/nesting_error.h"

#include <brackwell/reading.h>

#include <vector>

namespace brackwell::opening {
namespace {

bool isBlank(std::string_view text) noexcept { return trimWhiteSpace(text).empty(); }

/// Where the body begins: behind the header of version 2; that of version 1 has no tags.
std::size_t bodyBegin(std::string_view document) {
    const std::string_view text = trimWhiteSpace(document);
    const auto begin = static_cast<std::size_t>(text.data() - document.data());
    if (!text.starts_with("<?")) return begin;
    ParseDictionary header;
    return begin + TvOFXParser::parseXmlHeader(text, &header);
}

/// The state of the parser without its tree: an open tag is pending until it is known whether text follows,
/// which makes it a leaf, or another tag, which makes it an open aggregate.
class TagWalk {
public:
    TagWalk(std::string_view document, std::size_t begin) : text_(document), at_(begin) {}

    std::optional<NestingError> run() {
        while (at_ < text_.size()) {
            readText();
            if (at_ + 1 >= text_.size()) break;
            const TagPlace tag = readTag();
            if (tag.name.starts_with('/') && !close(tag)) return errorAt(tag);
            if (!tag.name.empty()) pending_ = tag.name.starts_with('/') ? TagPlace() : tag;
        }
        return std::nullopt;
    }

private:
    void readText() {
        const std::size_t begin = at_;
        at_ = std::min(text_.find('<', at_), text_.size());
        if (!pending_.name.empty() && isBlank(text_.substr(begin, at_ - begin))) open_.push_back(pending_);
    }

    TagPlace readTag() {
        const std::size_t begin = at_;
        const std::size_t nameEnd = std::min(text_.find('>', begin), text_.size());
        at_ = std::min(nameEnd + 1, text_.size());
        return {trimWhiteSpace(text_.substr(begin + 1, nameEnd - begin - 1)), begin, at_};
    }

    static bool closes(std::string_view name, std::string_view opened) noexcept {
        if (opened == name) return true;
        constexpr std::string_view extension = "INTU.";
        return opened.starts_with(extension) && opened.substr(extension.size()) == name;
    }

    bool close(const TagPlace& tag) {
        const std::string_view name = tag.name.substr(1);
        if (open_.empty() || !closes(name, open_.back().name)) return closes(name, pending_.name);
        open_.pop_back();
        return true;
    }

    NestingError errorAt(const TagPlace& tag) const {
        return {tag, open_.empty() ? std::nullopt : std::optional(open_.back())};
    }

    std::string_view text_;
    std::size_t at_;
    std::vector<TagPlace> open_;
    TagPlace pending_;  // without a name: none
};

}  // namespace

std::optional<NestingError> findNestingError(std::string_view document) {
    return TagWalk(document, bodyBegin(document)).run();
}

}  // namespace brackwell::opening
