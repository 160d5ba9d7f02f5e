// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

namespace tool {

class Output;

/// A place in a drawing. Drawings alone are in binary floating point.
struct Coordinate {
    double value;
};

/// A text for programs: its blanks and line ends stay as they are.
struct ExactText {
    std::string_view text;
};

/// Writes HTML that is well-formed XML, too. Markup is constants of the program, checked by the compiler;
/// all else takes the place of a "{}" in one, and is escaped there:
///
///     html.write("<td class=\"{}\">{}</td>", kind, transaction->memo().value_or(""));
///
/// One way of escaping does for text between tags, for attribute values in quotes and for text in SVG.
/// Control characters and those that turn the direction of writing are made visible. Nothing is ever put
/// into a script, a style or an address.
class HtmlWriter {
public:
    /// Markup with a "{}" for each argument.
    template <class... Arguments>
    class Pattern {
    public:
        consteval Pattern(const char* text) : text_(text) {
            std::size_t places = 0;
            for (std::size_t at = text_.find("{}"); at != text_.npos; at = text_.find("{}", at + 2)) ++places;
            if (places != sizeof...(Arguments)) throw "not as many {} as arguments";
        }
        std::string_view text() const noexcept { return text_; }

    private:
        std::string_view text_;
    };

    explicit HtmlWriter(Output& output) : output_(output) {}

    template <class... Arguments>
    void write(const Pattern<std::type_identity_t<Arguments>...>& pattern, const Arguments&... arguments) {
        std::string_view rest = pattern.text();
        (writePlace(rest, arguments), ...);
        writePlain(rest);
    }

    bool isGood() const noexcept;

private:
    template <class Argument>
    void writePlace(std::string_view& pattern, const Argument& argument) {
        const std::size_t place = pattern.find("{}");
        writePlain(pattern.substr(0, place));
        writeValue(argument);
        pattern.remove_prefix(place + 2);
    }

    void writePlain(std::string_view markup);
    void writeValue(std::string_view text);
    void writeValue(ExactText text);
    void writeEscaped(std::string_view visible);
    void writeValue(Coordinate coordinate);
    void writeValue(std::integral auto number) {
        std::array<char, 24> digits;
        const auto [end, failure] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
        writePlain({digits.data(), static_cast<std::size_t>(end - digits.data())});
    }

    Output& output_;
};

}  // namespace tool
