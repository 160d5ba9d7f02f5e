// SPDX-License-Identifier: Apache-2.0
#include "support/invalid_elements.h"

#include <brackwell/platform.h>
#include <brackwell/reading.h>

#include <algorithm>
#include <set>

#include "support/standard_places.h"

namespace brackwell::tests {
namespace {

std::string inCapitals(std::string_view name) {
    std::string capitals(name);
    for (char& c : capitals)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return capitals;
}

/// An open element of a document, or the document itself, with the names that stand in it.
struct OpenAggregate {
    std::string_view name;
    std::set<std::string_view> children;
};

class Walk {
public:
    explicit Walk(std::string_view body) : body_(body) { open_.push_back({}); }

    std::vector<InvalidElement> run() {
        for (std::size_t tag = body_.find('<'); tag < body_.size();) {
            const std::size_t end = body_.find('>', tag);
            if (end == body_.npos) break;
            const std::size_t next = std::min(body_.find('<', end), body_.size());
            const std::string_view name = trimWhiteSpace(body_.substr(tag + 1, end - tag - 1));
            const std::size_t textBegin = std::min(end + 1, body_.size());
            // A ">" that is the last character counts as text.
            const std::string_view text =
                textBegin == body_.size() ? body_.substr(end) : body_.substr(textBegin, next - textBegin);
            if (name.starts_with('/'))
                close(name.substr(1));
            else if (!name.empty())
                waiting_ = name;
            if (!waiting_.empty()) element(tag, !trimWhiteSpace(text).empty());
            tag = next;
        }
        return std::move(found_);
    }

private:
    void close(std::string_view name) {
        const std::string_view innermost = open_.back().name;
        if (innermost == name || innermost == "INTU." + std::string(name)) {
            if (open_.size() > 1) open_.pop_back();
        }
        waiting_ = {};
    }

    void element(std::size_t tag, bool hasText) {
        const std::string_view name = waiting_;  // "<>" repeats it
        OpenAggregate& parent = open_.back();
        const bool isFirst = parent.children.insert(name).second;
        if (isInvalid(name, parent.name, isFirst, hasText)) found_.push_back({tag, std::string(name)});
        if (!hasText) open_.push_back({name, {}});
    }

    bool isInvalid(std::string_view name, std::string_view parent, bool isFirst, bool hasText) const {
        if (!isKnownElement(name)) return isKnownElement(inCapitals(name));
        if (hasText && isKnownAggregate(name)) return true;
        if (open_.size() == 1) return name != "OFX" || !isFirst;
        const Times times = timesIn(name, parent);
        return times == Times::never || (times == Times::once && !isFirst);
    }

    std::string_view body_;
    std::vector<OpenAggregate> open_;
    std::string_view waiting_;
    std::vector<InvalidElement> found_;
};

}  // namespace

std::vector<InvalidElement> invalidElementsOf(std::string_view document) {
    const std::size_t mark = document.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    const std::string_view whole = trimWhiteSpace(document.substr(mark));
    auto begin = static_cast<std::size_t>(whole.data() - document.data());
    ParseDictionary header;
    if (whole.starts_with("<?")) begin += TvOFXParser::parseXmlHeader(whole, &header);
    std::vector<InvalidElement> found = Walk(document.substr(begin)).run();
    for (InvalidElement& element : found) element.offset += begin;
    return found;
}

std::string untold(const RepairedText& repaired) {
    const std::vector<InvalidElement> invalid = invalidElementsOf(repaired.text);
    auto remark = repaired.remaining.begin();
    for (const InvalidElement& element : invalid) {
        if (remark == repaired.remaining.end() || remark->offset > element.offset)
            return "not told: " + element.name + " at " + std::to_string(element.offset);
        if (remark->offset < element.offset) break;
        ++remark;
    }
    return remark == repaired.remaining.end() ? "" : "told: " + remark->reason;
}

}  // namespace brackwell::tests
