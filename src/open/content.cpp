// SPDX-License-Identifier: Apache-2.0
#include "open/content.h"

#include "elements/roles.h"
#include "elements/structure_tables.h"
#include "investments/field_tables.h"
#include "investments/record_names.h"
#include "open/judged_places.h"
#include "open/known_elements.h"
#include "open/odd_names.h"

namespace brackwell::opening {
namespace {

using elements::Element;
using reading::element;
using reading::kKnownElementCount;
using reading::NameID;

struct Named {
    consteval Named(std::string_view text, Content its) : name(reading::element(text)), content(its) {}

    reading::NameID name;
    Content content;
};

/// The elements of bank and card statements that are counted; those of investments have tables of their own.
constexpr Named kNamed[] = {
    {"OFX", Content::root},
    {"INVSTMTTRNRS", Content::investmentAnswer},
    {"STMTTRN", Content::transaction},
    {"STMTTRNP", Content::pendingTransaction},
    {"LEDGERBAL", Content::balance},
    {"AVAILBAL", Content::balance},
    {"STMTRS", Content::statement},
    {"CCSTMTRS", Content::statement},
    {"INVSTMTRS", Content::investmentStatement},
    {"ACCTINFO", Content::listedAccount},
    {"TRNAMT", Content::amount},
    {"BALAMT", Content::amount},
    {"DTPOSTED", Content::date},
    {"DTUSER", Content::date},
    {"DTAVAIL", Content::date},
    {"DTSTART", Content::date},
    {"DTEND", Content::date},
    {"DTASOF", Content::date},
    {"FITID", Content::identifier},
};

Content contentOfRecord(investments::RecordType type) noexcept {
    using investments::RecordType;
    switch (type) {
        case RecordType::transaction:
            return Content::investmentTransaction;
        case RecordType::position:
            return Content::position;
        case RecordType::security:
            return Content::security;
        case RecordType::listedBalance:
            return Content::listedBalance;
        default:
            return Content::none;
    }
}

constexpr const investments::FieldTable* kFieldTables[] = {
    &investments::kStatementFields, &investments::kTransactionFields,   &investments::kPositionFields,
    &investments::kBalanceFields,   &investments::kListedBalanceFields, &investments::kPlanFields,
    &investments::kLoanFields,      &investments::kPeriodFields,        &investments::kAmountsFields,
    &investments::kSecurityFields,  &investments::kPortionFields,
};

/// The name of each element in the list; kKnownElementCount where a tree has no number for it.
constexpr auto kNameOfElement = [] {
    std::array<NameID, elements::kElementCount> found{};
    found.fill(kKnownElementCount);
    for (NameID name = 0; name != kKnownElementCount; ++name) found[kElementOfName[name]] = name;
    return found;
}();

/// The known names of which something holds, and the unknown ones if `withUnknown`.
template <class Predicate>
constexpr NameSet namesThat(Predicate holds, bool withUnknown) {
    NameSet names;
    for (NameID name = 0; name != kKnownElementCount; ++name)
        if (holds(name)) names.add(name);
    if (withUnknown) names.add(kKnownElementCount);
    return names;
}
constexpr NameSet kAllNames = namesThat([](NameID) { return true; }, true);
/// Those that may stand anywhere, since the list does not say where.
constexpr NameSet kUnplacedNames =
    namesThat([](NameID name) { return !elements::tables::knowsPlaces(kElementOfName[name]); }, true);
constexpr NameSet kResponses =
    namesThat([](NameID name) { return elements::isResponse(reading::kElementNames[name]); }, false);

/// What judged_places.h says of all names in an aggregate that it judges, in fewer steps.
ChildFacts placesIn(Element parent) noexcept {
    if (!elements::tables::knowsChildren(parent)) return {kAllNames, kAllNames, {}};
    ChildFacts facts{kUnplacedNames, kUnplacedNames, {}};
    for (const elements::Child& child : elements::tables::childrenInList(parent)) {
        const NameID name = kNameOfElement[child.element];
        if (name == kKnownElementCount) continue;
        facts.standing.add(name);
        if (countsThere({child.element, parent, true})) facts.repeating.add(name);
    }
    if (elements::isMessageSet(elements::nameOf(parent))) {
        facts.standing.add(kResponses);
        facts.repeating.add(kResponses);
    }
    for (const PlaceNames& place : kReadAnyway)
        if (place.parent == elements::nameOf(parent))
            facts.standing.add(reading::findKnownElement(place.child));
    return facts;
}

}  // namespace

NameFactsTable::NameFactsTable() {
    addContents();
    addChildFacts();
}

void NameFactsTable::addContents() noexcept {
    for (const auto* const table : kFieldTables)
        for (const investments::FieldRow& row : table->fields())
            for (std::size_t i = 0; i < row.elementCount; ++i) {
                Content& content = contents_[row.elements[i]];
                if (investments::isAmount(row.rule)) content = Content::amount;
                if (row.rule == investments::FieldRule::date) content = Content::date;
            }
    for (const investments::RecordName& row : investments::kRecordNames)
        contents_[row.element] = contentOfRecord(row.type);
    // It only wraps a transaction of the bank, which is counted itself.
    contents_[element("INVBANKTRAN")] = Content::none;
    for (const Named& row : kNamed) contents_[row.name] = row.content;
}

void NameFactsTable::addChildFacts() {
    childFacts_.push_back({kAllNames, kAllNames, {}});
    for (NameID parent = 0; parent != kKnownElementCount; ++parent) {
        if (!isStrict(kElementOfName[parent])) continue;
        childFactsOf_[parent] = static_cast<std::uint8_t>(childFacts_.size());
        childFacts_.push_back(placesIn(kElementOfName[parent]));
    }
    const NameSet quiet = namesThat(
        [this](NameID name) { return contents_[name] == Content::none && kOddness[name] == Oddness::never; },
        false);
    for (ChildFacts& facts : childFacts_) facts.quiet = facts.standing & quiet;
}

const NameFactsTable& NameFactsTable::known() {
    static const NameFactsTable kTable;
    return kTable;
}

ContentWords wordsFor(Content content) noexcept {
    switch (content) {
        case Content::root:
            return {"document", "documents"};
        case Content::transaction:
            return {"transaction", "transactions"};
        case Content::pendingTransaction:
            return {"pending transaction", "pending transactions"};
        case Content::balance:
            return {"balance", "balances"};
        case Content::listedBalance:
            return {"further balance", "further balances"};
        case Content::statement:
            return {"statement", "statements"};
        case Content::investmentStatement:
            return {"investment statement", "investment statements"};
        case Content::investmentTransaction:
            return {"investment transaction", "investment transactions"};
        case Content::position:
            return {"position", "positions"};
        case Content::security:
            return {"security", "securities"};
        case Content::listedAccount:
            return {"account of an account list", "accounts of an account list"};
        case Content::amount:
            return {"amount", "amounts"};
        case Content::date:
            return {"date", "dates"};
        case Content::identifier:
            return {"identifier", "identifiers"};
        case Content::none:
        case Content::investmentAnswer:
            break;
    }
    return {"element", "elements"};
}

}  // namespace brackwell::opening
