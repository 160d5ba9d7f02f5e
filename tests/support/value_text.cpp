// SPDX-License-Identifier: Apache-2.0
#include "support/value_text.h"

namespace brackwell::tests {
namespace {

constexpr int kDeepest = 200;

void appendValue(std::string& text, const ParseValue& value, int depth);

void appendDictionary(std::string& text, const ParseDictionary& dictionary, int depth) {
    const char* separator = "";
    text += '{';
    for (const auto& [name, value] : dictionary) {
        text.append(separator).append(inQuotes(name)).append(": ");
        appendValue(text, value, depth + 1);
        separator = ", ";
    }
    text += '}';
}

void appendArray(std::string& text, const std::vector<ParseValue>& elements, int depth) {
    const char* separator = "";
    text += '[';
    for (const ParseValue& element : elements) {
        text += separator;
        appendValue(text, element, depth + 1);
        separator = ", ";
    }
    text += ']';
}

void appendValue(std::string& text, const ParseValue& value, int depth) {
    if (depth > kDeepest) {
        text += "...";
        return;
    }
    switch (value.kind()) {
        case ParseValue::Kind::nothing:
            text += "nothing";
            break;
        case ParseValue::Kind::text:
            text += inQuotes(value.text().value());
            break;
        case ParseValue::Kind::dictionary:
            appendDictionary(text, value.dictionary().value(), depth);
            break;
        case ParseValue::Kind::array:
            appendArray(text, value.elements(), depth);
            break;
    }
}

}  // namespace

std::string treeText(const ParseValue& value) {
    std::string text;
    appendValue(text, value, 0);
    return text;
}

std::string treeText(const ParseDictionary& tree) { return treeText(ParseValue(tree)); }

std::string inQuotes(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') quoted += '\\';
        quoted += c;
    }
    return quoted += '"';
}

}  // namespace brackwell::tests
