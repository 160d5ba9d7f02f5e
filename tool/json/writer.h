// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tool {

class Output;

enum class JsonLayout : std::uint8_t {
    oneLine,
    indented,  ///< a line for each key and element; for objects of little depth
};

/// Writes JSON as it goes, without keeping any of it: objects and arrays may be of any size and depth.
/// The caller closes what it opens and gives a key before each value of an object.
class JsonWriter {
public:
    explicit JsonWriter(Output& output, JsonLayout layout = JsonLayout::oneLine) noexcept
        : output_(output), isIndented_(layout == JsonLayout::indented) {}

    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginArray() { begin('['); }
    void endArray() { end(']'); }
    void key(std::string_view name);
    /// A key that is written as it stands: the name of a field, which has no character to escape.
    void field(std::string_view name);

    /// Text that is not UTF-8 is written with U+FFFD for what is not.
    void text(std::string_view value);
    void number(std::uint64_t value);
    void number(std::int64_t value);
    void boolean(bool value) { plain(value ? "true" : "false"); }
    void null() { plain("null"); }

    /// False when writing is of no more use.
    bool isGood() const noexcept;

private:
    void begin(char bracket);
    void end(char bracket);
    void plain(std::string_view value);
    void separate();
    void endKey();
    void beginLine();
    void quoted(std::string_view value);
    void quotedOnTerminal(std::string_view value);

    Output& output_;
    bool isIndented_;
    bool needsComma_ = false;
    bool isAfterKey_ = false;  // of indented JSON
    std::size_t depth_ = 0;    // of the objects and arrays that are open
};

}  // namespace tool
