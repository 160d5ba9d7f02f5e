// SPDX-License-Identifier: Apache-2.0
#include <brackwell/open.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include "text/ascii_case.h"
#include "text/name_byte.h"
#include "text/utf8.h"

namespace brackwell {
namespace {

using namespace std::string_view_literals;

constexpr std::array kSecretNames = {"USERKEY"sv,   "SESSCOOKIE"sv,  "ACCESSKEY"sv,
                                     "USERPASS"sv,  "NEWUSERPASS"sv, "AUTHTOKEN"sv,
                                     "USERCRED1"sv, "USERCRED2"sv,   "MFAPHRASEA"sv};

/// The bytes of the shortest of them.
constexpr std::size_t kShortest = std::ranges::min(kSecretNames, {}, &std::string_view::size).size();

/// One bit for each letter that a secret's name begins with.
constexpr std::uint32_t kFirstLetters = [] {
    std::uint32_t letters = 0;
    for (const std::string_view name : kSecretNames) letters |= 1U << (name.front() - 'A');
    return letters;
}();

std::size_t nameEnd(std::string_view text, std::size_t begin) noexcept {
    while (begin < text.size() && isInASCIIName(text[begin])) ++begin;
    return begin;
}

/// After the white space, all of which the parser drops around a name.
std::size_t afterBlanks(std::string_view text, std::size_t begin) noexcept {
    const auto isInk = [](char c) { return c > ' ' && c < '\x7F'; };  // the usual case
    while (begin < text.size() && !isInk(text[begin])) {
        const UTF8Character character = firstCharacter(text.substr(begin));
        if (!isWhiteSpace(character.value)) break;
        begin += character.size;
    }
    return begin;
}

/// False for most names of a document.
bool mayHoldSecret(std::string_view name) noexcept {
    for (std::size_t at = 0; at + kShortest <= name.size(); ++at) {
        const char capital = capitalLetter(name[at]);
        if (isASCIICapital(capital) && (kFirstLetters >> (capital - 'A') & 1U) != 0) return true;
    }
    return false;
}

/// Where the name of a secret ends, in whatever case and with whatever is before or after it: a
/// prefix, or the value when the ">" is missing.
std::optional<std::size_t> secretNameEnd(std::string_view text, std::size_t begin, std::size_t end) noexcept {
    const std::string_view name = text.substr(begin, end - begin);
    if (!mayHoldSecret(name)) return std::nullopt;
    for (const std::string_view secret : kSecretNames) {
        const auto isSame = [](char c, char capital) { return capitalLetter(c) == capital; };
        const std::string_view::const_iterator found =
            std::search(name.begin(), name.end(), secret.begin(), secret.end(), isSame);
        if (found != name.end())
            return begin + static_cast<std::size_t>(found - name.begin()) + secret.size();
    }
    return std::nullopt;
}

/// Where the value of a secret begins whose tag begins at a "<": after the tag, or after the name where the
/// tag has more in it than that.
std::optional<std::size_t> valueBegin(std::string_view text, std::size_t lessThan) noexcept {
    const std::size_t begin = afterBlanks(text, lessThan + 1);
    const std::size_t end = nameEnd(text, begin);
    const std::optional<std::size_t> secretEnd = secretNameEnd(text, begin, end);
    if (secretEnd != end) return secretEnd;
    const std::size_t next = afterBlanks(text, end);
    return next < text.size() && text[next] == '>' ? next + 1 : end;
}

/// True when a tag begins at a "<"; false where that is more likely a part of a value.
bool isTag(std::string_view text, std::size_t lessThan) noexcept {
    if (text.substr(lessThan).starts_with("</")) return true;
    const std::size_t end = nameEnd(text, lessThan + 1);
    return end > lessThan + 1 && end < text.size() && text[end] == '>';
}

}  // namespace

std::vector<TextRange> secretsInOFXText(std::string_view document) {
    std::vector<TextRange> secrets;
    bool isSecret = false;  // the last of the secrets has no end yet
    for (std::size_t at = document.find('<'); at != document.npos; at = document.find('<', at + 1)) {
        if (isSecret && isTag(document, at)) {
            secrets.back().end = at;
            isSecret = false;
        }
        const auto begin = isSecret ? std::nullopt : valueBegin(document, at);
        if (!begin) continue;
        secrets.push_back({*begin, document.size()});
        isSecret = true;
        at = *begin - 1;
    }
    return secrets;
}

bool overlapsAny(const std::vector<TextRange>& ranges, TextRange part) noexcept {
    const auto range = std::ranges::upper_bound(ranges, part.begin, {}, &TextRange::end);
    return range != ranges.end() && range->begin < part.end;
}

}  // namespace brackwell
