// SPDX-License-Identifier: Apache-2.0
#include "open/content.h"

#include "elements/roles.h"
#include "elements/structure_tables.h"
#include "investments/field_tables.h"
#include "investments/record_names.h"
#include "open/known_elements.h"
#include "open/odd_names.h"

namespace brackwell::opening {
namespace {

using reading::element;

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

/// The aggregates whose children are examined: those that objects are made of, and those around them.
/// ACCTINFO is not among them, since a SVCSTATUS directly in it is read.
constexpr auto kParents = std::to_array<reading::NameID>({
    element("OFX"),
    element("SIGNONMSGSRSV1"),
    element("SONRS"),
    element("STATUS"),
    element("FI"),
    element("SIGNUPMSGSRSV1"),
    element("ACCTINFOTRNRS"),
    element("ACCTINFORS"),
    element("BANKACCTINFO"),
    element("BANKMSGSRSV1"),
    element("STMTTRNRS"),
    element("STMTRS"),
    element("BANKACCTFROM"),
    element("BANKTRANLIST"),
    element("STMTTRN"),
    element("PAYEE"),
    element("BANKACCTTO"),
    element("LEDGERBAL"),
    element("AVAILBAL"),
    element("CREDITCARDMSGSRSV1"),
    element("CCSTMTTRNRS"),
    element("CCSTMTRS"),
    element("CCACCTFROM"),
    element("INVSTMTMSGSRSV1"),
    element("INVSTMTTRNRS"),
    element("INVSTMTRS"),
    element("INVACCTFROM"),
    element("SECLISTMSGSRSV1"),
    element("INVTRANLIST"),
    element("INVPOSLIST"),
    element("SECLIST"),
});
static_assert(kParents.size() < 32, "a set of parents has 32 bits, of which one is for all others");

/// The name of each element in the list; kKnownElementCount where a tree has no number for it.
constexpr auto kNameOfElement = [] {
    std::array<reading::NameID, elements::kElementCount> found{};
    found.fill(reading::kKnownElementCount);
    for (reading::NameID name = 0; name != reading::kKnownElementCount; ++name)
        found[kElementOfName[name]] = name;
    return found;
}();

}  // namespace

constexpr NameFactsTable::Facts NameFactsTable::kPlacements = [] {
    Facts facts{};
    facts.fill(NameFacts());  // again, since g++ 12 would leave zeros in what is not assigned
    NameFacts::Parents unlisted = NameFacts::kOtherParent;
    NameFacts::Parents messageSets = 0;
    for (std::size_t i = 0; i != kParents.size(); ++i) {
        const NameFacts::Parents bit = NameFacts::Parents{1} << i;
        facts[kParents[i]].asParent = bit;
        if (!elements::tables::knowsChildren(kElementOfName[kParents[i]])) unlisted |= bit;
        if (elements::isMessageSet(reading::kElementNames[kParents[i]])) messageSets |= bit;
    }
    for (reading::NameID name = 0; name != reading::kKnownElementCount; ++name) {
        if (!elements::tables::knowsPlaces(kElementOfName[name])) continue;
        const bool isBare = elements::isResponse(reading::kElementNames[name]);
        facts[name].standing = facts[name].repeating = unlisted | (isBare ? messageSets : 0);
    }
    for (const reading::NameID parent : kParents)
        for (const elements::Child& child : elements::tables::childrenInList(kElementOfName[parent])) {
            const reading::NameID name = kNameOfElement[child.element];
            if (name == reading::kKnownElementCount) continue;
            facts[name].standing |= facts[parent].asParent;
            if (child.mayRepeat) facts[name].repeating |= facts[parent].asParent;
        }
    return facts;
}();

NameFactsTable::NameFactsTable() noexcept {
    addContents();
    addQuietLeaves();
}

void NameFactsTable::addContents() noexcept {
    for (const auto* const table : kFieldTables)
        for (const investments::FieldRow& row : table->fields())
            for (std::size_t i = 0; i < row.elementCount; ++i) {
                Content& content = facts_[row.elements[i]].content;
                if (investments::isAmount(row.rule)) content = Content::amount;
                if (row.rule == investments::FieldRule::date) content = Content::date;
            }
    for (const investments::RecordName& row : investments::kRecordNames)
        facts_[row.element].content = contentOfRecord(row.type);
    // It only wraps a transaction of the bank, which is counted itself.
    facts_[element("INVBANKTRAN")].content = Content::none;
    for (const Named& row : kNamed) facts_[row.name].content = row.content;
}

void NameFactsTable::addQuietLeaves() noexcept {
    for (reading::NameID name = 0; name < reading::kKnownElementCount; ++name)
        if (facts_[name].content == Content::none && kOddness[name] == Oddness::never)
            quietIn_[name] = facts_[name].standing;
}

const NameFactsTable& NameFactsTable::known() noexcept {
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
