// SPDX-License-Identifier: Apache-2.0
#include "report/finding_owners.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

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

/// Where lines begin, by their numbers.
using LineBegins = std::map<std::size_t, std::size_t>;

/// The lines of findings, of which there are few in however many; one after the last line of the text is
/// taken for that.
LineBegins lineBegins(std::string_view text, const std::vector<Finding>& findings) {
    LineBegins begins;
    for (const Finding& finding : findings)
        if (isAboutPart(finding)) begins[finding.line] = 0;
    std::size_t line = 1;
    std::size_t at = 0;
    for (auto& [wanted, begin] : begins) {
        for (; line < wanted; ++line) {
            const std::size_t end = text.find_first_of("\r\n", at);
            if (end == text.npos) break;
            at = end + (text.substr(end).starts_with("\r\n") ? 2U : 1U);
        }
        begin = at;
    }
    return begins;
}

/// The offset of a place in a text; that of its line when the line has not so many characters.
std::size_t offsetOf(const Finding& finding, std::string_view text, const LineBegins& begins) {
    std::size_t at = begins.at(finding.line);
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

/// Hands on all elements inside an aggregate. Keeps as many places as the aggregate is deep.
template <class Use>
void forEachInside(const ParseDictionary& aggregate, const Use& use) {
    using Iterator = ParseDictionary::DocumentOrder::Iterator;
    std::vector<std::pair<Iterator, Iterator>> open;  // the next element of each, and its end
    const auto enter = [&open](const ParseDictionary& dictionary) {
        const auto elements = dictionary.inDocumentOrder();
        open.emplace_back(elements.begin(), elements.end());
    };
    enter(aggregate);
    while (!open.empty()) {
        auto& [next, end] = open.back();
        if (next == end) {
            open.pop_back();
            continue;
        }
        const auto [name, value] = *next++;
        use(name, value);
        if (const auto inner = value.dictionary()) enter(*inner);
    }
}

/// A part of a text with its owner.
struct OwnedRange {
    std::size_t begin = 0;
    std::size_t end = 0;
    FindingOwner owner = {};
};

/// Finds the owners of some places of a text among ranges that come by: the last one that begins before a
/// place counts. Ranges are not kept, since a document has millions of them and findings at few places.
class OwnersOfPlaces {
public:
    /// The places are in order.
    OwnersOfPlaces(std::string_view text, const std::vector<std::size_t>& places)
        : text_(text), places_(places), last_(places.size()) {}

    void add(OptionalText part, const FindingOwner& owner) {
        if (part) note(rangeOf(*part, owner));
    }
    /// From the tag of the aggregate around its first leaf to the end of its last.
    void add(const std::optional<ParseDictionary>& node, const FindingOwner& owner) {
        if (!node) return;
        std::optional<OwnedRange> all;
        const auto leaves = [&](std::string_view name, const ParseValue& value) {
            if (name != "TVOFX_ORIGINAL_STRING" && value.text()) unite(all, rangeOf(*value.text(), owner));
        };
        forEachInside(*node, leaves);
        if (!all) return;
        for (int tags = 0; tags < 2 && all->begin > 0; ++tags)
            if (const std::size_t tag = text_.rfind('<', all->begin - 1); tag != text_.npos) all->begin = tag;
        note(all);
    }

    /// To be called after the last range.
    void finish() {
        for (std::size_t i = 1; i < last_.size(); ++i)
            if (!last_[i]) last_[i] = last_[i - 1];
    }

    /// Of one of the places, if the range reaches there.
    FindingOwner at(std::size_t place) const {
        const auto index = std::ranges::lower_bound(places_, place) - places_.begin();
        const std::optional<OwnedRange>& range = last_[static_cast<std::size_t>(index)];
        return range && place <= range->end ? range->owner : FindingOwner();
    }

private:
    /// Nothing for a text of the tree's own.
    std::optional<OwnedRange> rangeOf(std::string_view part, const FindingOwner& owner) const {
        if (part.data() < text_.data() || part.data() > text_.data() + text_.size()) return std::nullopt;
        const auto begin = static_cast<std::size_t>(part.data() - text_.data());
        return OwnedRange{begin, begin + part.size(), owner};
    }
    static void unite(std::optional<OwnedRange>& all, const std::optional<OwnedRange>& more) {
        if (!all || !more) {
            if (more) all = more;
            return;
        }
        all->begin = std::min(all->begin, more->begin);
        all->end = std::max(all->end, more->end);
    }
    /// Notes a range at the first place after its beginning.
    void note(const std::optional<OwnedRange>& range) {
        if (!range) return;
        const auto place = std::ranges::lower_bound(places_, range->begin);
        if (place == places_.end()) return;
        std::optional<OwnedRange>& last = last_[static_cast<std::size_t>(place - places_.begin())];
        if (!last || range->begin >= last->begin) last = range;
    }

    std::string_view text_;
    const std::vector<std::size_t>& places_;
    std::vector<std::optional<OwnedRange>>
        last_;  ///< that begins before each place and after the one before it
};

/// Statements, with their statuses before them.
OwnersOfPlaces statementsAt(const std::vector<std::size_t>& places, const OpenedDocument& document) {
    OwnersOfPlaces ranges(document.readText().bytes(), places);
    for (const auto& statement : document.statements()) {
        const FindingOwner owner{identityOf(*statement), nullptr};
        if (statement->status()) ranges.add(statement->status()->originalParseData(), owner);
        ranges.add(statement->originalParseData(), owner);
    }
    for (const InvestmentStatement& statement : document.investmentStatements())
        ranges.add(statement.originalText(), {identityOf(statement), nullptr});
    ranges.finish();
    return ranges;
}

OwnersOfPlaces transactionsAt(const std::vector<std::size_t>& places, const OpenedDocument& document) {
    OwnersOfPlaces ranges(document.readText().bytes(), places);
    for (const auto& statement : document.statements())
        for (const auto& transaction : statement->statementTransactions())
            if (const auto& node = transaction->originalParseData())
                ranges.add((*node)["TVOFX_ORIGINAL_STRING"].text(),
                           {identityOf(*statement), identityOf(*transaction)});
    for (const InvestmentStatement& statement : document.investmentStatements())
        for (const InvestmentTransaction& transaction : statement.transactions())
            ranges.add(transaction.originalText(), {identityOf(statement), identityOf(transaction)});
    ranges.finish();
    return ranges;
}

}  // namespace

std::vector<FindingOwner> ownersOfFindings(const OpenedFile& file) {
    const std::vector<Finding>& findings = file.findings();
    std::vector<FindingOwner> owners(findings.size());
    if (file.documents().size() != 1 || std::ranges::none_of(findings, isAboutPart)) return owners;
    const OpenedDocument& document = file.documents().front();
    const std::string_view text = document.text().bytes();
    const LineBegins begins = lineBegins(text, findings);
    const auto placeOf = [&](const Finding& finding) {
        return afterChanges(offsetOf(finding, text, begins), document.changes());
    };
    std::vector<std::size_t> places;
    for (const Finding& finding : findings)
        if (isAboutPart(finding)) places.push_back(placeOf(finding));
    std::ranges::sort(places);
    const OwnersOfPlaces statements = statementsAt(places, document);
    const OwnersOfPlaces transactions = transactionsAt(places, document);
    for (std::size_t i = 0; i < findings.size(); ++i) {
        if (!isAboutPart(findings[i])) continue;
        const std::size_t place = placeOf(findings[i]);
        owners[i] = transactions.at(place);
        if (owners[i].statement == nullptr) owners[i] = statements.at(place);
        // What stands for several things is about more than the one where the first of them is.
        if (findings[i].count != 1) owners[i].transaction = nullptr;
    }
    return owners;
}

}  // namespace tool
