// SPDX-License-Identifier: Apache-2.0
#include "json/parse_tree.h"

#include <cstddef>
#include <optional>
#include <stack>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "json/writer.h"

namespace tool {
namespace {

using brackwell::ParseDictionary;
using brackwell::ParseValue;

constexpr std::string_view kOriginalString = "TVOFX_ORIGINAL_STRING";

/// An aggregate that is being written, and its next entry.
struct OpenObject {
    ParseDictionary::Iterator next;
    ParseDictionary::Iterator end;
    std::optional<ParseDictionary::Entry> first = std::nullopt;  ///< comes before the next
};

/// The elements of a repeated name that are being written, and the next of them.
struct OpenArray {
    std::string_view name;
    std::vector<ParseValue> elements;
    std::size_t next;
};

/// Writes a tree level by level. What is open stands on a stack of its own, since a document may be
/// nested deeper than the stack of calls allows.
class JsonTree {
public:
    JsonTree(JsonWriter& json, OriginalStrings originalStrings)
        : json_(json), originalStrings_(originalStrings) {}

    void write(const ParseValue& value) {
        begin({}, value);
        while (!open_.empty() && json_.isGood()) {
            if (auto* object = std::get_if<OpenObject>(&open_.top()))
                advance(*object);
            else
                advance(std::get<OpenArray>(open_.top()));
        }
    }

private:
    void begin(std::string_view name, const ParseValue& value) {
        switch (value.kind()) {
            case ParseValue::Kind::nothing:
                return json_.null();
            case ParseValue::Kind::text:
                return json_.text(*value.text());
            case ParseValue::Kind::dictionary: {
                const std::optional<ParseDictionary> dictionary = value.dictionary();
                json_.beginObject();
                open_.push(OpenObject{dictionary->begin(), dictionary->end()});
                if (name == "STMTTRN" && originalStrings_ == OriginalStrings::leftOut)
                    leaveOutOriginalString(std::get<OpenObject>(open_.top()));
                return;
            }
            case ParseValue::Kind::array:
                json_.beginArray();
                open_.push(OpenArray{name, value.elements(), 0});
                return;
        }
    }

    /// Passes over the first text of a transaction where it is the one that the parser adds. Others of this
    /// name are the document's own.
    void leaveOutOriginalString(OpenObject& transaction) {
        if (transaction.next == transaction.end) return;
        const auto [name, value] = *transaction.next;
        if (name != kOriginalString) return;
        std::vector<ParseValue> own = value.elements();
        if (!(own.empty() ? value : own.front()).text()) return;
        ++transaction.next;
        if (own.empty()) return;
        own.erase(own.begin());
        transaction.first.emplace(name, ParseValue::array(own));
    }

    void advance(OpenObject& object) {
        if (object.first) {
            const auto [name, value] = *std::exchange(object.first, std::nullopt);
            json_.key(name);
            return begin(name, value);
        }
        if (object.next == object.end) {
            open_.pop();
            return json_.endObject();
        }
        const auto [name, value] = *object.next;
        ++object.next;
        json_.key(name);
        begin(name, value);
    }

    void advance(OpenArray& array) {
        if (array.next == array.elements.size()) {
            open_.pop();
            return json_.endArray();
        }
        const std::size_t element = array.next++;
        begin(array.name, array.elements[element]);
    }

    JsonWriter& json_;
    OriginalStrings originalStrings_;
    std::stack<std::variant<OpenObject, OpenArray>> open_;
};

}  // namespace

void writeParseValue(JsonWriter& json, const ParseValue& value, OriginalStrings originalStrings) {
    JsonTree(json, originalStrings).write(value);
}

}  // namespace tool
