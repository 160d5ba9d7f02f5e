// SPDX-License-Identifier: Apache-2.0
#include "support/naive_body_parser.h"

#include "support/tree_text.h"

namespace brackwell::tests {
namespace {

using Node = NaiveNode::Pointer;

const std::vector<std::string>& blanks() {
    static const std::vector<std::string> all{
        "\t",     "\n",     "\v",     "\f",     "\r",     " ",      "\u0085", "\u00A0", "\u1680",
        "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007", "\u2008",
        "\u2009", "\u200A", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"};
    return all;
}

std::string trimmed(std::string text) {
    for (bool again = true; again;) {
        again = false;
        for (const std::string& blank : blanks()) {
            if (text.starts_with(blank)) {
                text.erase(0, blank.size());
                again = true;
            }
            if (text.ends_with(blank)) {
                text.erase(text.size() - blank.size());
                again = true;
            }
        }
    }
    return text;
}

std::string replaced(const std::string& text, const std::string& wanted, const std::string& by) {
    std::string result;
    std::size_t at = 0;
    for (std::size_t found; (found = text.find(wanted, at)) != std::string::npos; at = found + wanted.size())
        result += text.substr(at, found - at) + by;
    return result + text.substr(at);
}

std::string unescaped(const std::string& text) {
    return replaced(replaced(replaced(text, "&lt;", "<"), "&gt;", ">"), "&amp;", "&");
}

Node makeText(const std::string& text) {
    auto node = std::make_shared<NaiveNode>();
    node->kind = NaiveNode::Kind::text;
    node->text = text;
    return node;
}

void store(NaiveNode& dictionary, const std::string& name, const Node& value) {
    for (auto& [key, stored] : dictionary.entries) {
        if (key != name) continue;
        if (stored->kind == NaiveNode::Kind::array) {
            stored->elements.push_back(value);
        } else {
            auto array = std::make_shared<NaiveNode>();
            array->kind = NaiveNode::Kind::array;
            array->elements = {stored, value};
            stored = array;
        }
        return;
    }
    dictionary.entries.emplace_back(name, value);
}

class NaiveParser {
public:
    explicit NaiveParser(const std::string& body) : body_(body) {}

    NaiveResult parse() {
        while (at_ < body_.size()) {
            textStep(readUpTo("<"));
            // A "<" that is the last character ends the body.
            if (at_ + 1 >= body_.size()) break;
            ++at_;
            if (!tagStep(trimmed(readUpTo(">")))) return {nullptr, failure_};
            if (at_ + 1 < body_.size()) ++at_;
        }
        return {root_, ""};
    }

private:
    std::string readUpTo(const std::string& end) {
        const std::size_t begin = at_;
        at_ = std::min(body_.find(end, at_), body_.size());
        return body_.substr(begin, at_ - begin);
    }

    NaiveNode& current() { return dictionaries_.empty() ? *root_ : *dictionaries_.back(); }

    void textStep(const std::string& text) {
        if (pending_.empty()) return;
        if (!trimmed(text).empty()) {
            store(current(), pending_, makeText(unescaped(trimmed(text))));
            return;
        }
        auto opened = std::make_shared<NaiveNode>();
        store(current(), pending_, opened);
        if (pending_ == "STMTTRN") {
            const std::size_t remembered = at_;
            const std::string original = readUpTo("</STMTTRN>");
            if (!original.empty()) store(*opened, "TVOFX_ORIGINAL_STRING", makeText(original));
            at_ = remembered;
        }
        names_.push_back(pending_);
        dictionaries_.push_back(opened);
    }

    bool tagStep(const std::string& tag) {
        if (tag.empty()) return true;
        if (tag[0] != '/') {
            pending_ = tag;
            return true;
        }
        const std::string name = tag.substr(1);
        if (!names_.empty() && (names_.back() == name || names_.back() == "INTU." + name)) {
            names_.pop_back();
            dictionaries_.pop_back();
        } else if (pending_ != name && pending_ != "INTU." + name) {
            failure_ = "Found close tag <" + tag + "> without opening tag.";
            if (!names_.empty())
                failure_ += "\nMaybe there is a close tag missing for <" + names_.back() + ">";
            return false;
        }
        pending_.clear();
        return true;
    }

    const std::string& body_;
    std::size_t at_ = 0;
    Node root_ = std::make_shared<NaiveNode>();
    std::vector<std::string> names_;
    std::vector<Node> dictionaries_;
    std::string pending_;
    std::string failure_;
};

}  // namespace

NaiveResult parseNaively(const std::string& body) { return NaiveParser(body).parse(); }

std::string treeText(const NaiveNode& node) {
    if (node.kind == NaiveNode::Kind::text) return inQuotes(node.text);
    std::string text;
    if (node.kind == NaiveNode::Kind::array) {
        for (const Node& element : node.elements) text += (text.empty() ? "" : ", ") + treeText(*element);
        return "[" + text + "]";
    }
    for (const auto& [name, value] : node.entries)
        text += (text.empty() ? "" : ", ") + inQuotes(name) + ": " + treeText(*value);
    return "{" + text + "}";
}

}  // namespace brackwell::tests
