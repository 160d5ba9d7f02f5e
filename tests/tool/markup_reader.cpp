// SPDX-License-Identifier: Apache-2.0
#include "tool/markup_reader.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace brackwell::tests {
namespace {

/// Goes through a page once.
class Reader {
public:
    Reader(const std::string& page, std::vector<MarkupElement>& elements)
        : page_(page), elements_(elements) {}

    void read() {
        if (!take("<!DOCTYPE html>")) fail("no document type");
        while (place_ < page_.size()) {
            if (take("</"))
                readEnd();
            else if (take("<"))
                readStart();
            else
                addText(readText('<'));
        }
        if (!open_.empty()) fail("not closed: " + elements_[open_.back()].name);
    }

private:
    [[noreturn]] void fail(const std::string& why) const {
        throw std::runtime_error(why + " before " + page_.substr(std::min(place_, page_.size()), 60));
    }
    bool take(const std::string& text) {
        if (page_.compare(place_, text.size(), text) != 0) return false;
        place_ += text.size();
        return true;
    }
    std::string readName() {
        const std::size_t start = place_;
        while (place_ < page_.size() &&
               (std::isalnum(static_cast<unsigned char>(page_[place_])) != 0 || page_[place_] == '-'))
            ++place_;
        if (place_ == start) fail("no name");
        return page_.substr(start, place_ - start);
    }
    char readEntity() {
        for (const auto& [entity, character] : std::map<std::string, char>{{"&amp;", '&'},
                                                                           {"&lt;", '<'},
                                                                           {"&gt;", '>'},
                                                                           {"&quot;", '"'},
                                                                           {"&#39;", '\''},
                                                                           {"&#9;", '\t'},
                                                                           {"&#10;", '\n'},
                                                                           {"&#13;", '\r'}})
            if (take(entity)) return character;
        fail("unknown entity");
    }
    /// Up to a character, which is not taken.
    std::string readText(char end) {
        std::string text;
        while (place_ < page_.size() && page_[place_] != end) {
            const char c = page_[place_];
            if (c == '<' || c == '>') {
                // A ">" alone is allowed in text; scripts and styles have some.
                if (c == '<' || end != '<') fail("a bracket in an attribute");
            }
            if (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') fail("a control character");
            if (c == '&')
                text += readEntity();
            else
                text += page_[place_++];
        }
        return text;
    }
    void addText(const std::string& text) {
        for (const std::size_t element : open_) elements_[element].text += text;
    }
    void readStart() {
        MarkupElement element;
        element.name = readName();
        element.parent = open_.empty() ? MarkupElement::npos : open_.back();
        while (take(" ")) {
            const std::string key = readName();
            if (!take("=\"")) fail("an attribute without a value in quotes");
            if (!element.attributes.emplace(key, readText('"')).second) fail("an attribute twice");
            take("\"");
        }
        const bool isEmpty = take("/");
        if (!take(">")) fail("a tag without end");
        if (!isEmpty) open_.push_back(elements_.size());
        elements_.push_back(element);
    }
    void readEnd() {
        const std::string name = readName();
        if (!take(">")) fail("a close tag without end");
        if (open_.empty() || elements_[open_.back()].name != name) fail("the wrong close tag " + name);
        open_.pop_back();
    }

    const std::string& page_;
    std::vector<MarkupElement>& elements_;
    std::size_t place_ = 0;
    std::vector<std::size_t> open_;
};

bool hasClass(const MarkupElement& element, const std::string& wanted) {
    std::istringstream classes(element.attribute("class"));
    for (std::string one; classes >> one;)
        if (one == wanted) return true;
    return false;
}

}  // namespace

MarkupPage::MarkupPage(const std::string& page) { Reader(page, elements_).read(); }

std::vector<MarkupElement> MarkupPage::all(const std::string& name, const std::string& ofClass) const {
    std::vector<MarkupElement> found;
    for (const MarkupElement& element : elements_)
        if (element.name == name && (ofClass.empty() || hasClass(element, ofClass))) found.push_back(element);
    return found;
}

std::vector<std::string> MarkupPage::texts(const std::string& name, const std::string& ofClass) const {
    std::vector<std::string> found;
    for (const MarkupElement& element : all(name, ofClass)) found.push_back(element.text);
    return found;
}

std::vector<std::vector<std::string>> MarkupPage::rows(const std::string& classOfTable) const {
    std::vector<std::vector<std::string>> rows;
    std::size_t row = MarkupElement::npos;
    for (std::size_t i = 0; i < elements_.size(); ++i) {
        const MarkupElement& element = elements_[i];
        if (element.name == "tr") {
            const MarkupElement& body = elements_[element.parent];
            row = body.name == "tbody" && hasClass(elements_[body.parent], classOfTable)
                      ? i
                      : MarkupElement::npos;
            if (row == i) rows.emplace_back();
        }
        if ((element.name == "td" || element.name == "th") && element.parent == row)
            rows.back().push_back(element.text);
    }
    return rows;
}

}  // namespace brackwell::tests
