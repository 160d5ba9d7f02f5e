// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/known_journal.h"

#include <brackwell/platform.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <vector>

#include "bookkeeping/digest.h"
#include "system/matching_files.h"
#include "text/visible_text.h"

namespace tool {
namespace {

constexpr std::string_view kBlankMarks = " \t\r";

bool isBlankMark(char c) noexcept { return kBlankMarks.find(c) != kBlankMarks.npos; }

std::string_view withoutBlanks(std::string_view text) noexcept {
    while (!text.empty() && isBlankMark(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlankMark(text.back())) text.remove_suffix(1);
    return text;
}

/// The text before one of some marks, or all of it.
std::string_view textUntil(std::string_view text, std::string_view marks) noexcept {
    return text.substr(0, text.find_first_of(marks));
}

/// Takes a word and the blanks after it off a text.
std::string_view takeWord(std::string_view& text) noexcept {
    const std::string_view word = textUntil(text, kBlankMarks);
    text = withoutBlanks(text.substr(word.size()));
    return word;
}

/// A name of an account in hledger and Ledger, where it ends at two blanks, a tab or a comment.
std::string_view nameUntilTwoBlanks(std::string_view text) noexcept {
    text = textUntil(text, "\t;");
    return withoutBlanks(text.substr(0, text.find("  ")));
}

/// A name of a commodity, which may stand in quotes, before or after an amount.
std::string_view commodityIn(std::string_view text) noexcept {
    const std::size_t quote = text.find('"');
    if (quote != text.npos) return textUntil(text.substr(quote + 1), "\"");
    text = withoutBlanks(textUntil(text, ";"));
    constexpr std::string_view ofNumbers = "0123456789., -'";
    while (!text.empty() && ofNumbers.find(text.front()) != ofNumbers.npos) text.remove_prefix(1);
    return textUntil(text, " \t");
}

bool isDay(std::string_view word) noexcept {
    return word.size() >= 8 && word.front() >= '0' && word.front() <= '9' &&
           word.find_first_not_of("0123456789-/.") == word.npos;
}

/// The files that an include names, which may be a pattern. It is a path from where the journal is.
std::vector<std::string> includedFiles(std::string_view line, const std::string& journal) {
    std::string_view name = withoutBlanks(line.substr(line.find(' ')));
    if (name.starts_with('"')) name = textUntil(name.substr(1), "\"");
    const std::filesystem::path path = std::filesystem::path(journal).parent_path() / std::string(name);
    return system::filesMatching(path.string());
}

std::string canonicalPath(const std::string& path) {
    std::error_code unknown;
    const std::filesystem::path canonical = std::filesystem::weakly_canonical(path, unknown);
    return unknown ? path : canonical.string();
}

bool isInclude(std::string_view line) noexcept {
    return line.starts_with("include ") || line.starts_with("!include ");
}

}  // namespace

bool KnownJournal::read(const std::string& path, std::string& error) {
    std::vector<std::string> waiting{path};
    std::set<std::string> met{canonicalPath(path)};
    while (!waiting.empty()) {
        const std::string journal = std::move(waiting.back());
        waiting.pop_back();
        const auto bytes =
            std::filesystem::is_directory(journal) ? std::nullopt : brackwell::Data::fromFile(journal);
        if (!bytes) {
            error = "The journal at " + journal + " cannot be read.";
            return false;
        }
        std::string_view rest = bytes->bytes();
        while (!rest.empty()) {
            const std::string_view line = textUntil(rest, "\n");
            rest.remove_prefix(std::min(line.size() + 1, rest.size()));
            takeLine(line);
            if (!isInclude(line)) continue;
            for (std::string& file : includedFiles(line, journal))
                if (met.insert(canonicalPath(file)).second) waiting.push_back(std::move(file));
        }
    }
    return true;
}

void KnownJournal::takeLine(std::string_view line) {
    std::string_view text = withoutBlanks(line);
    if (text.empty()) return;
    const bool isIndented = isBlankMark(line.front());
    constexpr std::string_view commentMarks = ";#*|% \t";
    const std::size_t begin = text.find_first_not_of(commentMarks);
    if (begin == text.npos || takeIdentity(text.substr(begin)) || text.front() == ';') return;
    if (isIndented)
        takePosting(text);
    else
        takeDirective(text);
}

bool KnownJournal::takeIdentity(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == text.npos) return false;
    const std::string_view name = text.substr(0, colon);
    if (name != kIdentifierName && name != kDigestName && name != kOpeningName) return false;
    std::string_view value = withoutBlanks(text.substr(colon + 1));
    if (value.starts_with('"')) value.remove_prefix(1);
    value = textUntil(value, "\" \t,;");
    if (name == kOpeningName)
        openings_[account_] = value;
    else if (!value.empty())
        ++(name == kDigestName ? digests_ : identifiers_)[Digest().add(value).value()];
    return true;
}

void KnownJournal::takePosting(std::string_view line) {
    const std::size_t comment = line.find(';');
    const bool hasComment = comment != line.npos && line.substr(0, comment).find('"') == line.npos;
    const std::string_view commentText = hasComment ? withoutBlanks(line.substr(comment + 1)) : "";
    if (line.starts_with("* ") || line.starts_with("! ")) line = withoutBlanks(line.substr(1));
    std::string_view name = nameUntilTwoBlanks(line);
    if ((name.starts_with('(') && name.ends_with(')')) || (name.starts_with('[') && name.ends_with(']')))
        name = name.substr(1, name.size() - 2);
    used_.emplace(name);
    used_.emplace(textUntil(line, kBlankMarks));
    account_ = name;
    // A comment after the posting, as programs print it; what stands in quotes is none.
    takeIdentity(commentText);
}

void KnownJournal::takeDirective(std::string_view line) {
    std::string_view rest = line;
    std::string_view word = takeWord(rest);
    if (word == "P") prices_.insert(visibleText(line));
    const bool isDated = isDay(word);
    if (isDated) word = takeWord(rest);
    if (isDated && word == "price") prices_.insert(visibleText(line));
    if (word == "commodity") declared_.emplace(commodityIn(rest));
    if (word == "account") declared_.emplace(nameUntilTwoBlanks(rest));
    if (isDated && word == "open") declared_.emplace(textUntil(rest, kBlankMarks));
}

bool KnownJournal::take(Counts& counts, std::string_view identity) {
    if (identity.empty()) return false;
    const auto found = counts.find(Digest().add(identity).value());
    if (found == counts.end() || found->second == 0) return false;
    --found->second;
    return true;
}

bool KnownJournal::takeDigest(const BookIdentity& identity) {
    if (!take(digests_, identity.digest)) return false;
    take(identifiers_, identity.identifier);
    return true;
}

bool KnownJournal::takeIdentifier(const BookIdentity& identity) {
    return take(identifiers_, identity.identifier);
}

std::string_view KnownJournal::openingDay(std::string_view account) const {
    const auto found = openings_.find(account);
    return found == openings_.end() ? std::string_view() : found->second;
}

bool KnownJournal::hasPrice(std::string_view line) const { return prices_.contains(visibleText(line)); }

}  // namespace tool
