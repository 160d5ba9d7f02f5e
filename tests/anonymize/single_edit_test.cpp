// SPDX-License-Identifier: Apache-2.0
#include <brackwell/anonymize.h>
#include <brackwell/open.h>
#include <doctest/doctest.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "support/documents.h"

using namespace brackwell;

namespace {

/// What an anonymous form has in common with its document.
struct Reading {
    OpenErrorCode error{};
    std::vector<std::size_t> counts;
    std::map<FindingKind, std::size_t> findings;
};

Reading readingOf(const Data& bytes) {
    const OpenedFile file = openData(bytes);
    Reading reading;
    reading.error = file.error().code;
    reading.counts = {file.documents().size(), file.securities().all().size()};
    for (const auto& statement : file.statements())
        reading.counts.push_back(statement->statementTransactions().size());
    for (const auto& statement : file.investmentStatements())
        reading.counts.push_back(statement.transactions().size());
    for (const Finding& finding : file.findings())
        // The totals of investments cannot be true.
        if (finding.kind != FindingKind::doesNotAddUp || file.investmentStatements().empty())
            reading.findings[finding.kind] += finding.count;
    return reading;
}

std::string describe(const Reading& reading) {
    std::string text = "error " + std::to_string(static_cast<int>(reading.error)) + ", counts";
    for (const std::size_t count : reading.counts) text += " " + std::to_string(count);
    text += ", findings";
    for (const auto& [kind, count] : reading.findings)
        text.append(" ").append(nameOf(kind)).append(" " + std::to_string(count));
    return text;
}

Data anonymousForm(const Data& bytes) {
    const OpenedFile file = openData(bytes);
    const auto& documents = file.documents();
    return Anonymizer()
        .anonymize(bytes, documents.empty() ? TextEncodingNone : documents[0].encoding())
        .bytes;
}

/// Four letters and digits or more in a row.
struct Word {
    std::size_t begin = 0;
    std::string_view text;
};

/// The words of a document that its anonymous form replaces.
std::vector<Word> secretsOf(const Data& bytes) {
    const auto isPart = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; };
    const Data replaced = anonymousForm(bytes);
    std::vector<Word> words;
    const std::string_view text = bytes.bytes();
    for (std::size_t begin = 0; begin < text.size(); ++begin) {
        std::size_t end = begin;
        while (end < text.size() && isPart(text[end])) ++end;
        const std::string_view word = text.substr(begin, end - begin);
        if (word.size() >= 4 && replaced.bytes().substr(begin, word.size()) != word)
            words.push_back({begin, word});
        begin = end;
    }
    return words;
}

/// Takes a bracket or a slash away, or writes another character into the name of a tag.
void spoil(std::string& text, std::mt19937& random) {
    const std::string_view marks = "</>?";
    const char mark = marks[random() % marks.size()];
    const std::size_t begin = text.find("<OFX>");
    const std::size_t from = begin + random() % (text.size() - begin);
    const std::size_t at = text.find(mark == '?' ? '<' : mark, from);
    if (at == text.npos) return;
    if (mark != '?') {
        text.erase(at, 1);
        return;
    }
    const std::size_t name = at + (text[at + 1] == '/' ? 2 : 1);
    const std::size_t end = std::min(text.find('>', name), text.size());
    if (end > name) text[name + random() % (end - name)] = "qjxB=7"[random() % 6];
}

bool stays(const Word& word, const Data& form) {
    return form.bytes().substr(word.begin, word.text.size()) == word.text;
}

/// A part of a text for messages.
std::string around(std::string_view text, std::size_t place) {
    const std::size_t begin = place - std::min<std::size_t>(place, 30);
    return std::string(text.substr(begin, 70));
}

/// Holds a document with a mistake against its anonymous form. The secrets are those of the document without
/// the mistake.
void checkSpoilt(std::string_view original, const std::string& text, const std::vector<Word>& secrets) {
    const auto place = static_cast<std::size_t>(std::ranges::mismatch(text, original).in1 - text.begin());
    const Data document = Data::view(text);
    const Data after = anonymousForm(document);
    const std::string where = around(text, place);
    CAPTURE(where);
    const std::string result = around(after.bytes(), place);
    CAPTURE(result);
    CHECK(describe(readingOf(after)) == describe(readingOf(document)));
    const std::size_t lost = original.size() - text.size();
    for (Word secret : secrets) {
        if (secret.begin > place) secret.begin -= lost;
        // The beginning of an amount may by chance be what it was.
        if (stays(secret, after) && stays(secret, anonymousForm(document)) &&
            stays(secret, anonymousForm(document)))
            FAIL_CHECK(secret.text);
    }
}

}  // namespace

TEST_CASE("a document with one mistake in its tags reads as its anonymous form does, which tells no secret") {
    std::mt19937 random(1);  // NOLINT(cert-msc51-cpp): the same documents each time
    std::size_t spoilt = 0;
    for (const tests::Example& example : tests::examples()) {
        CAPTURE(example.name);
        const Data bytes = tests::exampleData(example.name);
        if (bytes.bytes().find("<OFX>") == std::string_view::npos) continue;
        const std::vector<Word> secrets = secretsOf(bytes);
        CHECK_FALSE(secrets.empty());
        for (int i = 0; i < 100; ++i) {
            std::string text(bytes.bytes());
            spoil(text, random);
            if (text == bytes.bytes()) continue;
            checkSpoilt(bytes.bytes(), text, secrets);
            ++spoilt;
        }
    }
    CHECK(spoilt > 1000);
}
