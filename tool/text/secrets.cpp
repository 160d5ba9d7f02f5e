// SPDX-License-Identifier: Apache-2.0
#include "text/secrets.h"

#include <algorithm>
#include <array>

namespace tool {
namespace {

using namespace std::string_view_literals;

constexpr std::array kSecretNames = {"USERKEY"sv,   "SESSCOOKIE"sv,  "ACCESSKEY"sv,
                                     "USERPASS"sv,  "NEWUSERPASS"sv, "AUTHTOKEN"sv,
                                     "USERCRED1"sv, "USERCRED2"sv,   "MFAPHRASEA"sv};

char asCapital(char c) noexcept { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

bool isNameCharacter(char c) noexcept {
    const char capital = asCapital(c);
    return (capital >= 'A' && capital <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '_' || c == '-';
}

std::size_t nameEnd(std::string_view text, std::size_t begin) noexcept {
    while (begin < text.size() && isNameCharacter(text[begin])) ++begin;
    return begin;
}

/// True when a tag at a "<" has the name of a secret, in whatever case and behind whatever blanks.
bool opensSecret(std::string_view text, std::size_t lessThan) noexcept {
    std::size_t begin = lessThan + 1;
    while (begin < text.size() && text[begin] == ' ') ++begin;
    const std::string_view name = text.substr(begin, nameEnd(text, begin) - begin);
    return std::ranges::any_of(kSecretNames, [name](std::string_view secret) {
        return std::ranges::equal(name, secret, {}, asCapital);
    });
}

/// True when a tag begins at a "<"; false where that is more likely a part of a value.
bool isTag(std::string_view text, std::size_t lessThan) noexcept {
    if (text.substr(lessThan).starts_with("</")) return true;
    const std::size_t end = nameEnd(text, lessThan + 1);
    return end > lessThan + 1 && end < text.size() && text[end] == '>';
}

}  // namespace

std::vector<TextRange> secretsIn(std::string_view document) {
    std::vector<TextRange> secrets;
    bool isSecret = false;  // the last of the secrets has no end yet
    for (std::size_t at = document.find('<'); at != document.npos; at = document.find('<', at + 1)) {
        if (isSecret && isTag(document, at)) {
            secrets.back().end = at;
            isSecret = false;
        }
        if (isSecret || !opensSecret(document, at)) continue;
        const std::size_t tagEnd = std::min(document.find('>', at), document.size() - 1) + 1;
        secrets.push_back({tagEnd, document.size()});
        isSecret = true;
        at = tagEnd - 1;
    }
    return secrets;
}

bool touchesSecret(const std::vector<TextRange>& secrets, TextRange part) noexcept {
    const auto secret = std::ranges::upper_bound(secrets, part.begin, {}, &TextRange::end);
    return secret != secrets.end() && secret->begin < part.end;
}

}  // namespace tool
