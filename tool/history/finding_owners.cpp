// SPDX-License-Identifier: Apache-2.0
#include "history/finding_owners.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>

namespace tool {
namespace {

using namespace brackwell;

/// True for what is said of a part of a document and not of the document.
bool isAboutPart(const Finding& finding) noexcept {
    using enum FindingKind;
    constexpr FindingKind ofDocuments[] = {cutOff,    severalDocuments, unreadDocument, textAround,
                                           noContent, encodingGuessed,  repaired,       looseText};
    return finding.line != 0 && std::ranges::find(ofDocuments, finding.kind) == std::end(ofDocuments);
}

// ---------------------------------------------------------------------------------------------
// Places of findings

/// Where each line of a text begins.
std::vector<std::size_t> lineBegins(std::string_view text) {
    std::vector<std::size_t> begins{0};
    for (std::size_t at = text.find_first_of("\r\n"); at != text.npos; at = text.find_first_of("\r\n", at)) {
        at += text.substr(at).starts_with("\r\n") ? 2U : 1U;
        begins.push_back(at);
    }
    return begins;
}

/// The offset of a place in a text; that of its line when the line has not so many characters.
std::size_t offsetOf(const Finding& finding, std::string_view text, const std::vector<std::size_t>& begins) {
    std::size_t at = begins[std::min(finding.line, begins.size()) - 1];
    for (std::size_t column = 1; column < finding.column && at < text.size();) {
        ++at;
        const bool isWithinCharacter =
            at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
        if (!isWithinCharacter) ++column;
    }
    return at;
}

/// The same place in the text after the repair.
std::size_t afterChanges(std::size_t offset, const std::vector<RepairChange>& changes) {
    std::size_t added = 0;
    std::size_t dropped = 0;
    for (const RepairChange& change : changes) {
        if (change.offset + change.was.size() > offset) break;
        added += change.now.size();
        dropped += change.was.size();
    }
    return offset + added - std::min(dropped, offset + added);
}

// ---------------------------------------------------------------------------------------------
// Places of statements and transactions

/// A part of a text with its owner.
struct OwnedRange {
    std::size_t begin;
    std::size_t end;
    FindingOwner owner;
};

/// The ranges of a document, gathered and then asked.
class OwnedRanges {
public:
    explicit OwnedRanges(std::string_view text) : text_(text) {}

    void add(OptionalText part, const FindingOwner& owner) {
        if (!part || part->data() < text_.data() || part->data() > text_.data() + text_.size()) return;
        const auto begin = static_cast<std::size_t>(part->data() - text_.data());
        ranges_.push_back({begin, begin + part->size(), owner});
    }
    /// From the tag of the aggregate around its first leaf to the end of its last.
    void add(const std::optional<ParseDictionary>& node, const FindingOwner& owner) {
        if (!node) return;
        const std::size_t before = ranges_.size();
        std::vector<ParseDictionary> waiting{*node};
        while (!waiting.empty()) {
            const ParseDictionary dictionary = std::move(waiting.back());
            waiting.pop_back();
            for (const auto& [name, value] : dictionary.inDocumentOrder()) {
                if (const auto inner = value.dictionary()) waiting.push_back(*inner);
                if (name != "TVOFX_ORIGINAL_STRING") add(value.text(), owner);
            }
        }
        unite(before);
    }

    void sort() { std::ranges::stable_sort(ranges_, {}, &OwnedRange::begin); }

    /// The owner of a place: the last range that begins before it, if it reaches there.
    FindingOwner at(std::size_t offset) const {
        auto next = std::ranges::upper_bound(ranges_, offset, {}, &OwnedRange::begin);
        if (next == ranges_.begin()) return {};
        --next;
        return offset <= next->end ? next->owner : FindingOwner();
    }

private:
    /// Makes one range of those from a place on, with the tags before its beginning.
    void unite(std::size_t from) {
        if (ranges_.size() == from) return;
        OwnedRange all = ranges_[from];
        for (std::size_t i = from; i < ranges_.size(); ++i) {
            all.begin = std::min(all.begin, ranges_[i].begin);
            all.end = std::max(all.end, ranges_[i].end);
        }
        for (int tags = 0; tags < 2 && all.begin > 0; ++tags)
            if (const std::size_t tag = text_.rfind('<', all.begin - 1); tag != text_.npos) all.begin = tag;
        ranges_.resize(from);
        ranges_.push_back(all);
    }

    std::string_view text_;
    std::vector<OwnedRange> ranges_;
};

/// Statements, with their statuses before them.
OwnedRanges statementRanges(const OpenedDocument& document) {
    OwnedRanges ranges(document.readText().bytes());
    for (const auto& statement : document.statements()) {
        const FindingOwner owner{identityOf(*statement), nullptr};
        if (statement->status()) ranges.add(statement->status()->originalParseData(), owner);
        ranges.add(statement->originalParseData(), owner);
    }
    for (const InvestmentStatement& statement : document.investmentStatements())
        ranges.add(statement.originalText(), {identityOf(statement), nullptr});
    ranges.sort();
    return ranges;
}

OwnedRanges transactionRanges(const OpenedDocument& document) {
    OwnedRanges ranges(document.readText().bytes());
    for (const auto& statement : document.statements())
        for (const auto& transaction : statement->statementTransactions())
            if (const auto& node = transaction->originalParseData())
                ranges.add((*node)["TVOFX_ORIGINAL_STRING"].text(),
                           {identityOf(*statement), identityOf(*transaction)});
    for (const InvestmentStatement& statement : document.investmentStatements())
        for (const InvestmentTransaction& transaction : statement.transactions())
            ranges.add(transaction.originalText(), {identityOf(statement), identityOf(transaction)});
    ranges.sort();
    return ranges;
}

}  // namespace

std::vector<FindingOwner> ownersOfFindings(const OpenedFile& file) {
    const std::vector<Finding>& findings = file.findings();
    std::vector<FindingOwner> owners(findings.size());
    if (file.documents().size() != 1 || std::ranges::none_of(findings, isAboutPart)) return owners;
    const OpenedDocument& document = file.documents().front();
    const std::string_view text = document.text().bytes();
    const std::vector<std::size_t> begins = lineBegins(text);
    const OwnedRanges statements = statementRanges(document);
    const OwnedRanges transactions = transactionRanges(document);
    for (std::size_t i = 0; i < findings.size(); ++i) {
        if (!isAboutPart(findings[i])) continue;
        const std::size_t place = afterChanges(offsetOf(findings[i], text, begins), document.changes());
        owners[i] = transactions.at(place);
        if (owners[i].statement == nullptr) owners[i] = statements.at(place);
        // What stands for several things is about more than the one where the first of them is.
        if (findings[i].count != 1) owners[i].transaction = nullptr;
    }
    return owners;
}

}  // namespace tool
