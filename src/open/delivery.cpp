// SPDX-License-Identifier: Apache-2.0
#include "open/delivery.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include "elements/roles.h"
#include "open/shown_text.h"
#include "tree/node_ref.h"

namespace brackwell::opening {
namespace {

using reading::Document;
using reading::element;
using reading::NameID;
using reading::Node;
using reading::NodeRef;

std::size_t& countOf(ContentCounts& counts, Content content) noexcept {
    return counts[static_cast<std::size_t>(content)];
}

/// Statements, their balances, and the records of lists of accounts.
template <class Use>
void forEachInResponses(const KnownResponses& responses, const Use& use) {
    for (const auto& statement : responses.statements) {
        if (!statement->originalParseData()) continue;
        const NodeRef node = NodeRef::of(*statement->originalParseData());
        if (!node) continue;
        use(Content::statement, node);
        for (const NameID name : {element("LEDGERBAL"), element("AVAILBAL")})
            if (const NodeRef balance = node[name]; balance.isDictionary()) use(Content::balance, balance);
    }
    for (const TvOFXAccountInfoResponse* const list : responses.accountLists) {
        if (!list->originalParseData()) continue;
        for (const NodeRef& record : NodeRef::of(*list->originalParseData())[element("ACCTINFO")].elements())
            if (record.isDictionary()) use(Content::listedAccount, record);
    }
}

void useRecord(const auto& use, Content content, const InvestmentRecord& record) {
    const ParseDictionary node = record.originalParseData();
    use(content, NodeRef::of(node));
}

template <class Use>
void forEachInInvestments(const Delivered& delivered, const Use& use) {
    for (const InvestmentStatement& statement : delivered.investmentStatements) {
        // Where there is no statement, the object is the wrapper that says why.
        if (statement.elementName() == "INVSTMTRS") useRecord(use, Content::investmentStatement, statement);
        for (const InvestmentTransaction& transaction : statement.transactions()) {
            const auto bank = transaction.bankTransaction();
            if (bank && bank->originalParseData())
                use(Content::transaction, NodeRef::of(*bank->originalParseData()));
            if (transaction.kind() != InvestmentTransactionKind::bankTransaction)
                useRecord(use, Content::investmentTransaction, transaction);
        }
        for (const Position& position : statement.positions()) useRecord(use, Content::position, position);
        if (const auto balance = statement.balance())
            for (const ListedBalance& listed : balance->listed())
                useRecord(use, Content::listedBalance, listed);
        if (const auto balance = statement.balance401k())
            for (const ListedBalance& listed : balance->listed())
                useRecord(use, Content::listedBalance, listed);
    }
    for (const Security& security : delivered.securities) useRecord(use, Content::security, security);
}

/// Calls `use` with each delivered element of a tree, except for the transactions of bank and card
/// statements: there are many, and the callers have a quicker way.
template <class Use>
void forEachDelivered(const Delivered& delivered, const Use& use) {
    forEachInResponses(delivered.responses, use);
    forEachInInvestments(delivered, use);
}

/// True for what the library has no class for, wherever it is.
bool hasNoClass(Content content) noexcept {
    return content == Content::pendingTransaction || content == Content::listedBalance;
}

// ---------------------------------------------------------------------------------------------
// Causes

enum class Reason : std::uint8_t { hasNoClass, textOnly, outside, repeated, misplaced };

/// Why something is not delivered: an element in a parent.
struct MissingCause {
    Reason reason = Reason::misplaced;
    std::uint32_t element = 0;  ///< the node
    std::uint32_t parent = 0;   ///< the node
};

struct MissingGroup {
    MissingCause cause;
    ContentCounts counts{};
    std::uint32_t first = 0;  ///< the first node that is missing
};

/// Finds out why each missing element is missing, from the elements that are open around it. What is wrong
/// with an element is noted when it opens, so that the search for a cause does not walk up through all of
/// them.
class MissingWalk {
public:
    MissingWalk(const Document& document, const std::vector<bool>& delivered)
        : document_(document), delivered_(delivered) {}

    std::vector<MissingGroup> run() {
        for (std::uint32_t index = 1; index < document_.size(); ++index) {
            while (!open_.empty() && document_.endOf(open_.back().node) <= index) open_.pop_back();
            const Node& node = document_.node(index);
            const Content content = NameFactsTable::known().contentOf(node.name());
            const bool isMissing = isSought(content) && isCounted(content, node) && !delivered_[index];
            if (node.isAggregate() || isMissing) open(index);
            if (isMissing) add(content, index);
        }
        return std::move(groups_);
    }

private:
    /// Further causes are counted with the last one: a longer list would not be read by anybody.
    static constexpr std::size_t kMostGroups = 16;
    static constexpr std::uint32_t kNone = 0;  ///< no element

    struct Cut {
        std::uint32_t element = kNone;
        std::uint32_t parent = kNone;
    };
    struct Open {
        std::uint32_t node;
        Cut repeated;   ///< the outermost element up to here of which one is read where there are several
        Cut misplaced;  ///< the innermost element up to here that is where it is not read
    };

    std::string_view name(std::uint32_t node) const noexcept { return document_.name(document_.node(node)); }

    void open(std::uint32_t node) {
        const std::size_t level = open_.size();
        const std::uint32_t parent = level == 0 ? kNone : open_.back().node;
        Open opened = level == 0 ? Open{} : open_.back();
        opened.node = node;
        if (opened.repeated.element == kNone && isRepeated(node) && isTakenOnce(node, parent, level))
            opened.repeated = {node, parent};
        if (level > 0 && !isWhereItIsRead(node, parent, level)) opened.misplaced = {node, parent};
        open_.push_back(opened);
    }

    bool isRepeated(std::uint32_t node) const noexcept {
        return document_.node(node).isRepeated() || document_.node(node).next != 0;
    }

    /// Why the innermost open element is not delivered. Everything around it is open, too.
    MissingCause causeOf(Content content) const {
        const Open& missing = open_.back();
        if (hasNoClass(content)) return {Reason::hasNoClass, missing.node, 0};
        if (!document_.node(missing.node).isAggregate()) return {Reason::textOnly, missing.node, 0};
        if (name(open_.front().node) != "OFX") return {Reason::outside, open_.front().node, 0};
        if (missing.repeated.element != kNone)
            return {Reason::repeated, missing.repeated.element, missing.repeated.parent};
        if (missing.misplaced.element != kNone)
            return {Reason::misplaced, missing.misplaced.element, missing.misplaced.parent};
        return {Reason::misplaced, missing.node, open_.size() > 1 ? open_[open_.size() - 2].node : 0};
    }

    /// True for an element that the reader ignores when it is repeated: the root, a message set, what a
    /// wrapper contains, a list of transactions, a balance.
    bool isTakenOnce(std::uint32_t node, std::uint32_t parent, std::size_t level) const noexcept {
        if (level < 2) return true;
        const std::string_view child = name(node);
        return elements::isWrapper(name(parent)) || child == "BANKTRANLIST" || child == "LEDGERBAL" ||
               child == "AVAILBAL";
    }

    bool isWhereItIsRead(std::uint32_t node, std::uint32_t parent, std::size_t level) const noexcept {
        struct Place {
            std::string_view child;
            std::array<std::string_view, 2> parents;
        };
        constexpr Place places[] = {
            {"STMTTRN", {"BANKTRANLIST"}},
            {"BANKTRANLIST", {"STMTRS", "CCSTMTRS"}},
            {"LEDGERBAL", {"STMTRS", "CCSTMTRS"}},
            {"AVAILBAL", {"STMTRS", "CCSTMTRS"}},
            {"STMTRS", {"STMTTRNRS"}},
            {"CCSTMTRS", {"CCSTMTTRNRS"}},
            {"INVTRANLIST", {"INVSTMTRS"}},
            {"INVPOSLIST", {"INVSTMTRS"}},
            {"ACCTINFO", {"ACCTINFORS"}},
            {"ACCTINFORS", {"ACCTINFOTRNRS"}},
        };
        constexpr std::size_t responseLevel = 2;  // OFX, message set, response without a wrapper
        const auto* const place = std::ranges::find(places, name(node), &Place::child);
        if (place == std::end(places)) return true;
        return std::ranges::find(place->parents, name(parent)) != place->parents.end() ||
               (level == responseLevel && place->child.ends_with("RS"));
    }

    bool isSameCause(const MissingCause& a, const MissingCause& b) const noexcept {
        return a.reason == b.reason && document_.node(a.element).name() == document_.node(b.element).name() &&
               document_.node(a.parent).name() == document_.node(b.parent).name();
    }

    void add(Content content, std::uint32_t node) {
        const MissingCause cause = causeOf(content);
        auto group = std::ranges::find_if(
            groups_, [&](const MissingGroup& known) { return isSameCause(known.cause, cause); });
        if (group == groups_.end() && groups_.size() == kMostGroups) group = groups_.end() - 1;
        if (group == groups_.end()) group = groups_.insert(group, {cause, {}, node});
        ++countOf(group->counts, content);
    }

    const Document& document_;
    const std::vector<bool>& delivered_;
    std::vector<Open> open_;
    std::vector<MissingGroup> groups_;
};

// ---------------------------------------------------------------------------------------------
// Sentences

/// "1 statement, 3 transactions and 2 balances".
std::string listOf(const ContentCounts& counts) {
    std::vector<std::string> parts;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const ContentWords words = wordsFor(static_cast<Content>(i));
        if (counts[i] != 0) parts.push_back(counted(counts[i], words.one, words.several));
    }
    return enumerated(parts);
}

std::string sentenceFor(const Document& document, const MissingGroup& group) {
    std::size_t total = 0;
    for (const std::size_t count : group.counts) total += count;
    const std::string verb = total == 1 ? " is" : " are";
    const std::string what = listOf(group.counts) + verb + " left out: ";
    const MissingCause& cause = group.cause;
    switch (cause.reason) {
        case Reason::hasNoClass:
            return what + tagOfNode(document, cause.element) + " is available only in the parse tree.";
        case Reason::textOnly:
            return what + tagOfNode(document, cause.element) +
                   " has text instead of elements: " + quoted(document.text(document.node(cause.element))) +
                   ".";
        case Reason::outside:
            return what + tagOfNode(document, cause.element) + " is outside <OFX>.";
        case Reason::repeated: {
            const std::string where = cause.parent == 0 ? "document" : tagOfNode(document, cause.parent);
            return what + "there is more than one " + tagOfNode(document, cause.element) + " in one " +
                   where + "; only a single one can be read.";
        }
        case Reason::misplaced:
            break;
    }
    return what + tagOfNode(document, cause.element) + " is in " + tagOfNode(document, cause.parent) +
           ", where it is not read.";
}

}  // namespace

Delivery::Delivery(const Delivered& objects, const ContentCounts& found) : delivered_(objects) {
    ContentCounts delivered{};
    for (const auto& statement : objects.responses.statements)
        countOf(delivered, Content::transaction) += statement->statementTransactions().size();
    forEachDelivered(objects, [&](Content content, const NodeRef& node) {
        countOf(delivered, content) += isCounted(content, node.node());
    });
    for (std::size_t i = 0; i < kContentCount; ++i) {
        const auto content = static_cast<Content>(i);
        if (!isSought(content) || found[i] <= delivered[i]) continue;
        missing_ += found[i] - delivered[i];
        if (!hasNoClass(content)) repairable_ += found[i] - delivered[i];
    }
}

void Delivery::addFindings(FindingList& findings, const Document& document, const TreePlaces& places) const {
    if (missing_ == 0) return;
    std::vector<bool> delivered(document.size());
    forEachDelivered(delivered_, [&](Content, const NodeRef& node) { delivered[node.index()] = true; });
    for (const auto& statement : delivered_.responses.statements)
        for (const auto& transaction : statement->statementTransactions())
            delivered[NodeRef::of(*transaction->originalParseData()).index()] = true;
    for (const MissingGroup& group : MissingWalk(document, delivered).run()) {
        std::size_t count = 0;
        for (const std::size_t ofKind : group.counts) count += ofKind;
        findings.add(FindingKind::notDelivered, FindingSeverity::warning, sentenceFor(document, group), count,
                     places.offsetOf(group.first));
    }
}

}  // namespace brackwell::opening
