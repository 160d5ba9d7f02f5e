// SPDX-License-Identifier: Apache-2.0
#include "json/parse_tree.h"

#include <stack>
#include <variant>

#include "json/writer.h"

namespace tool {
namespace {

using brackwell::ParseDictionary;
using brackwell::ParseValue;

/// An aggregate that is being written, and its next entry.
struct OpenObject {
    ParseDictionary::Iterator next;
    ParseDictionary::Iterator end;
};

/// The elements of a repeated name that are being written, and the next of them.
struct OpenArray {
    std::vector<ParseValue> elements;
    std::size_t next;
};

/// Writes a tree level by level. What is open stands on a stack of its own, since a document may be
/// nested deeper than the stack of calls allows.
class TreeWriter {
public:
    explicit TreeWriter(JsonWriter& json) : json_(json) {}

    void write(const ParseValue& value) {
        begin(value);
        while (!open_.empty() && json_.isGood()) {
            if (auto* object = std::get_if<OpenObject>(&open_.top()))
                advance(*object);
            else
                advance(std::get<OpenArray>(open_.top()));
        }
    }

private:
    void begin(const ParseValue& value) {
        switch (value.kind()) {
            case ParseValue::Kind::nothing:
                return json_.null();
            case ParseValue::Kind::text:
                return json_.text(*value.text());
            case ParseValue::Kind::dictionary: {
                const std::optional<ParseDictionary> dictionary = value.dictionary();
                json_.beginObject();
                open_.push(OpenObject{dictionary->begin(), dictionary->end()});
                return;
            }
            case ParseValue::Kind::array:
                json_.beginArray();
                open_.push(OpenArray{value.elements(), 0});
                return;
        }
    }

    void advance(OpenObject& object) {
        if (object.next == object.end) {
            open_.pop();
            return json_.endObject();
        }
        const auto [name, value] = *object.next;
        ++object.next;
        json_.key(name);
        begin(value);
    }

    void advance(OpenArray& array) {
        if (array.next == array.elements.size()) {
            open_.pop();
            return json_.endArray();
        }
        begin(array.elements[array.next++]);
    }

    JsonWriter& json_;
    std::stack<std::variant<OpenObject, OpenArray>> open_;
};

}  // namespace

void writeParseValue(JsonWriter& json, const ParseValue& value) { TreeWriter(json).write(value); }

void writeParseDictionary(JsonWriter& json, const ParseDictionary& dictionary) {
    writeParseValue(json, dictionary);
}

}  // namespace tool
