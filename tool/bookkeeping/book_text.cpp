// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/book_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "bookkeeping/digest.h"
#include "text/characters.h"
#include "text/visible_text.h"

namespace tool {
namespace {

bool isDigitOrCapital(char c) noexcept { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z'); }
bool isSmallLetter(char c) noexcept { return c >= 'a' && c <= 'z'; }
bool isBeyondASCII(char c) noexcept { return static_cast<unsigned char>(c) >= 0x80; }

std::vector<std::string_view> partsOfName(std::string_view name) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t colon = name.find(':');
        parts.push_back(name.substr(0, colon));
        if (colon == name.npos) return parts;
        name.remove_prefix(colon + 1);
    }
}

bool isBeancountPart(std::string_view part) noexcept {
    const auto mayFollow = [](char c) {
        return isDigitOrCapital(c) || isSmallLetter(c) || c == '-' || isBeyondASCII(c);
    };
    return !part.empty() && (isDigitOrCapital(part.front()) || isBeyondASCII(part.front())) &&
           std::ranges::all_of(part, mayFollow);
}

std::string faultForBeancount(std::string_view name) {
    constexpr std::string_view roots[] = {"Assets", "Liabilities", "Equity", "Income", "Expenses"};
    const std::vector<std::string_view> parts = partsOfName(name);
    if (std::ranges::find(roots, parts.front()) == std::end(roots) || parts.size() < 2)
        return "begins with none of Assets:, Liabilities:, Equity:, Income: and Expenses:";
    if (!std::ranges::all_of(parts, isBeancountPart))
        return "has a part that is not a capital letter or digit followed by letters, digits and hyphens";
    return {};
}

/// Two blanks end a name, a semicolon begins a comment, and the marks are read before it.
std::string faultForLedger(std::string_view name) {
    constexpr std::string_view marks = "([*!~=<@;:\"'+-";
    if (visibleText(name) != name) return "has blanks at an end or beside each other, or is not visible";
    if (marks.find(name.front()) != marks.npos) return "begins with a mark of the format";
    if (name.find(';') != name.npos) return "has a semicolon";
    const std::vector<std::string_view> parts = partsOfName(name);
    if (std::ranges::any_of(parts, [](std::string_view part) {
            return part.empty() || part.front() == ' ' || part.back() == ' ';
        }))
        return "has an empty part, or one with a blank at an end";
    return {};
}

}  // namespace

std::string faultOfAccountName(std::string_view name, BookFormat format) {
    if (name.empty()) return "is empty";
    return format == BookFormat::beancount ? faultForBeancount(name) : faultForLedger(name);
}

bool isCommodityName(std::string_view name) noexcept {
    constexpr std::size_t longest = 24;
    const auto mayFollow = [](char c) { return isDigitOrCapital(c) || c == '-' || c == '.' || c == '_'; };
    return name.size() >= 2 && name.size() <= longest && name.front() >= 'A' && name.front() <= 'Z' &&
           isDigitOrCapital(name.back()) && std::ranges::all_of(name, mayFollow);
}

std::string commodityNameOf(std::string_view text) {
    constexpr std::size_t kept = 17;  // so that six digits and a hyphen still fit
    constexpr std::size_t told = 6;
    std::string name;
    for (const char c : text) {
        const char capital = isSmallLetter(c) ? static_cast<char>(c - 'a' + 'A') : c;
        if (isDigitOrCapital(capital) || ((c == '.' || c == '_') && !name.empty()))
            name += capital;
        else if (!name.empty() && name.back() != '-')
            name += '-';
    }
    while (!name.empty() && !isDigitOrCapital(name.back())) name.pop_back();
    if (name.empty() || isCommodityName(name)) return name;
    if (name.size() == 1 || name.front() < 'A') name.insert(0, "X.");
    if (isCommodityName(name)) return name;
    std::string digest = Digest().add(text).text().substr(0, told);
    std::ranges::transform(digest, digest.begin(),
                           [](char c) { return isSmallLetter(c) ? static_cast<char>(c - 'a' + 'A') : c; });
    return name.substr(0, kept) + "-" + digest;
}

std::string accountPartOf(std::string_view text) {
    constexpr std::size_t longest = 40;
    std::string part;
    for (const char c : text) {
        if (isDigitOrCapital(c) || isSmallLetter(c))
            part += c;
        else if (!part.empty() && part.back() != '-')
            part += '-';
    }
    // However long a number is, its account's name stands in every entry.
    if (part.size() > longest) {
        part.resize(longest);
        part += Digest().add(text).text();
    }
    while (part.ends_with('-')) part.pop_back();
    if (!part.empty() && isSmallLetter(part.front()))
        part.front() = static_cast<char>(part.front() - 'a' + 'A');
    return part;
}

std::string withoutMarks(std::string_view text, std::string_view marks) {
    constexpr char32_t fullWidth = 0xFEE0;  // from '!' to U+FF01
    std::string result;
    for (const char c : visibleText(text)) {
        if (marks.find(c) == marks.npos)
            result += c;
        else
            appendCharacter(result, static_cast<char32_t>(c) + fullWidth);
    }
    return result;
}

std::string inQuotes(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : visibleText(text)) {
        if (c == '"' || c == '\\') quoted += '\\';
        quoted += c;
    }
    return quoted + '"';
}

}  // namespace tool
