// SPDX-License-Identifier: Apache-2.0
#include "open/content.h"

#include "elements/structure.h"
#include "investments/field_tables.h"
#include "investments/record_names.h"

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
};

using Contents = std::array<Content, reading::kKnownElementCount>;
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

/// The aggregates whose children are looked at: those of which objects are made, and those around them.
/// ACCTINFO is not among them, since a SVCSTATUS that stands directly in it is read.
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

/// True for a response in a message set without its wrapper, which the standard does not have and the reader
/// takes.
bool isBareResponse(std::string_view name, std::string_view around) noexcept {
    return around.find("MSGSRSV") != around.npos && name.ends_with("RS") && !name.ends_with("TRNRS");
}

}  // namespace

NameFactsTable::NameFactsTable() noexcept {
    addContents();
    addPlacements();
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
    // It stands for the bank's transaction in it, which is counted itself.
    facts_[element("INVBANKTRAN")].content = Content::none;
    for (const Named& row : kNamed) facts_[row.name].content = row.content;
}

void NameFactsTable::addPlacements() noexcept {
    for (NameFacts& facts : facts_) facts.standing = facts.repeating = NameFacts::kOtherParent;
    std::array<elements::Element, kParents.size()> around{};
    for (std::size_t i = 0; i < kParents.size(); ++i) {
        facts_[kParents[i]].asParent = NameFacts::Parents{1} << i;
        around[i] = elements::findElement(reading::kElementNames[kParents[i]]);
    }
    for (reading::NameID name = 0; name < reading::kKnownElementCount; ++name) {
        const std::string_view childName = reading::kElementNames[name];
        const elements::Element child = elements::findElement(childName);
        for (std::size_t i = 0; i < kParents.size(); ++i) {
            const bool isBare = isBareResponse(childName, reading::kElementNames[kParents[i]]);
            const NameFacts::Parents bit = NameFacts::Parents{1} << i;
            if (isBare || elements::mayStandIn(child, around[i])) facts_[name].standing |= bit;
            if (isBare || elements::mayRepeatIn(child, around[i])) facts_[name].repeating |= bit;
        }
    }
    facts_.back() = {};
}

const NameFactsTable& NameFactsTable::known() noexcept {
    static const NameFactsTable table;
    return table;
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
        case Content::none:
        case Content::investmentAnswer:
            break;
    }
    return {"element", "elements"};
}

}  // namespace brackwell::opening
