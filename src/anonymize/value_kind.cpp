// SPDX-License-Identifier: Apache-2.0
#include "anonymize/value_kind.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "elements/structure_tables.h"
#include "text/ascii_case.h"
#include "text/ascii_digit.h"
#include "text/text_parts.h"

namespace brackwell::anonymizing {
namespace {

struct Named {
    std::string_view name;
    ValueKind kind;
};

/// Elements whose kind does not follow from the type of their values.
constexpr auto kNamed = std::to_array<Named>({
    // Texts of the standard, not of a person.
    {"LANGUAGE", ValueKind::code},
    {"PROCDAYSOFF", ValueKind::code},
    {"UNIQUEIDTYPE", ValueKind::code},
    {"TAXYEARSUPPORTED", ValueKind::code},
    {"INVALIDACCTTYPE", ValueKind::code},
    {"ACCTTYPE2", ValueKind::code},
    {"INVALIDACCTTYPE2", ValueKind::code},
    {"SVC2", ValueKind::code},
    {"SVCSTATUS2", ValueKind::code},
    // The institution's own.
    {"AUTHTOKENINFOURL", ValueKind::institution},
    {"AUTHTOKENLABEL", ValueKind::institution},
    {"BANKID", ValueKind::institution},
    {"BROKERID", ValueKind::institution},
    {"CSPHONE", ValueKind::institution},
    {"FID", ValueKind::institution},
    {"FINAME", ValueKind::institution},
    {"FIROUTINGNUM", ValueKind::institution},
    {"INTU.BID", ValueKind::institution},
    {"MFAPHRASELABEL", ValueKind::institution},
    {"ORG", ValueKind::institution},
    {"SIGNONREALM", ValueKind::institution},
    {"SPNAME", ValueKind::institution},
    {"TSPHONE", ValueKind::institution},
    {"URL", ValueKind::institution},
    {"USERCRED1LABEL", ValueKind::institution},
    {"USERCRED2LABEL", ValueKind::institution},
});

constexpr ValueKind kindOfType(elements::ValueType type) noexcept {
    using enum elements::ValueType;
    switch (type) {
        case amount:
            return ValueKind::amount;
        case date:
            return ValueKind::date;
        case time:
            return ValueKind::time;
        case code:
        case flag:
        case integer:
            return ValueKind::code;
        default:
            return ValueKind::text;
    }
}

/// By element, the last one for all that are not known.
constexpr auto kKinds = [] {
    std::array<ValueKind, elements::kElementCount + 1> kinds{};
    for (std::size_t i = 0; i != elements::kElementCount; ++i)
        kinds[i] = kindOfType(elements::kElementRows[i].type);
    for (const Named& row : kNamed) kinds[elements::tables::find(row.name)] = row.kind;
    kinds.back() = ValueKind::text;
    return kinds;
}();
static_assert(std::ranges::all_of(kNamed, [](const Named& row) {
    return elements::tables::find(row.name) != elements::kUnknown;
}));

/// The elements in the order of the sizes of their names, and where those of each size begin.
struct ElementsBySize {
    std::array<elements::Element, elements::kElementCount> elements{};
    std::array<std::size_t, elements::kLongestName + 2> begins{};
};
constexpr ElementsBySize kBySize = [] {
    ElementsBySize sorted;
    for (const elements::ElementRow& row : elements::kElementRows) ++sorted.begins[row.name.size() + 1];
    for (std::size_t i = 1; i != sorted.begins.size(); ++i) sorted.begins[i] += sorted.begins[i - 1];
    auto ends = sorted.begins;
    for (elements::Element element = 0; element != elements::kElementCount; ++element)
        sorted.elements[ends[elements::kElementRows[element].name.size()]++] = element;
    return sorted;
}();

/// True for two texts of one size that differ in one place.
bool differInOne(std::string_view a, std::string_view b) noexcept {
    const auto [first, second] = std::ranges::mismatch(a, b);
    return first != a.end() && std::equal(first + 1, a.end(), second + 1);
}

}  // namespace

ValueKind kindOf(elements::Element element) noexcept { return kKinds[element]; }

elements::Element elementMeantBy(std::string_view name) noexcept {
    name = afterLast(name, ":");
    std::array<char, elements::kLongestName> capitals{};
    if (name.empty() || name.size() > capitals.size()) return elements::kUnknown;
    std::ranges::transform(name, capitals.begin(), capitalLetter);
    return elements::findElement({capitals.data(), name.size()});
}

elements::Element elementLike(std::string_view name) noexcept {
    if (name.size() > elements::kLongestName || elements::findElement(name) != elements::kUnknown)
        return elements::kUnknown;
    for (std::size_t i = kBySize.begins[name.size()]; i < kBySize.begins[name.size() + 1]; ++i)
        if (differInOne(name, elements::nameOf(kBySize.elements[i]))) return kBySize.elements[i];
    return elements::kUnknown;
}

bool looksLikeElement(std::string_view name) noexcept {
    return std::ranges::all_of(name, [](char c) {
        return (c >= 'A' && c <= 'Z') || isASCIIDigit(c) ||
               std::string_view("._-:").find(c) != std::string_view::npos;
    });
}

bool looksLikeCode(std::string_view text) noexcept {
    constexpr std::size_t longest = 20;
    constexpr std::ptrdiff_t mostDigits = 5;  // a status has them; a telephone number or an account has more
    const auto isPart = [](char c) {
        return (c >= 'A' && c <= 'Z') || isASCIIDigit(c) || c == '_' || c == '-';
    };
    return text.size() <= longest && std::ranges::all_of(text, isPart) &&
           std::ranges::count_if(text, isASCIIDigit) <= mostDigits;
}

bool looksLikeDate(std::string_view text) noexcept {
    constexpr std::size_t longest = 48;
    constexpr std::size_t mostLetters = 4;  // in a row: "Sept", or a zone
    constexpr std::ptrdiff_t mostDigits = 20;
    std::size_t letters = 0;
    for (const char c : text) {
        letters = isASCIILetter(c) ? letters + 1 : 0;
        const bool isPart =
            letters != 0 || isASCIIDigit(c) || std::string_view("+-/.,:[] ").find(c) != text.npos;
        if (!isPart || letters > mostLetters) return false;
    }
    const std::ptrdiff_t digits = std::ranges::count_if(text, isASCIIDigit);
    if (text.size() > longest || digits == 0 || digits > mostDigits) return false;
    if (text.find_first_of("123456789") == text.npos) return true;  // how some write that there is none
    if (!beginsWithDigits(text, 8)) return text.find_first_of("-/.:") != text.npos || digits <= 6;
    const unsigned month = 10 * digitValue(text[4]) + digitValue(text[5]);
    const unsigned day = 10 * digitValue(text[6]) + digitValue(text[7]);
    const bool isYear = text.starts_with("19") || text.starts_with("20") || text.starts_with("21");
    return isYear && month <= 12 && day <= 31;
}

}  // namespace brackwell::anonymizing
