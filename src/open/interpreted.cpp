// SPDX-License-Identifier: Apache-2.0
#include "open/interpreted.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tree/node_ref.h"

namespace brackwell::opening {
namespace {

using Outcome = Parsed::Outcome;
using reading::element;
using reading::NodeRef;

/// Two formatters as one: the second is asked when the first finds nothing.
class NumberFormatters final : public NumberFormatter {
public:
    NumberFormatters(std::shared_ptr<const NumberFormatter> first,
                     std::shared_ptr<const NumberFormatter> second)
        : first_(std::move(first)), second_(std::move(second)) {}
    std::optional<Decimal> numberFromString(std::string_view text) const override {
        const std::optional<Decimal> number = first_->numberFromString(text);
        return number ? number : second_->numberFromString(text);
    }
    std::optional<std::string> stringFromNumber(const Decimal& number) const override {
        return first_->stringFromNumber(number);
    }

private:
    std::shared_ptr<const NumberFormatter> first_;
    std::shared_ptr<const NumberFormatter> second_;
};

/// The same for dates.
class DateFormatters final : public DateFormatter {
public:
    DateFormatters(std::shared_ptr<const DateFormatter> first, std::shared_ptr<const DateFormatter> second)
        : first_(std::move(first)), second_(std::move(second)) {}
    std::optional<Date> dateFromString(std::string_view text) const override {
        const std::optional<Date> date = first_->dateFromString(text);
        return date ? date : second_->dateFromString(text);
    }
    std::string stringFromDate(Date date) const override { return first_->stringFromDate(date); }

private:
    std::shared_ptr<const DateFormatter> first_;
    std::shared_ptr<const DateFormatter> second_;
};

/// The caller's formatter, then the document's; either may be null. One alone needs no wrapper.
template <class Both, class Formatter>
std::shared_ptr<const Formatter> inTurn(const std::shared_ptr<const Formatter>& first,
                                        std::shared_ptr<const Formatter> second) {
    if (!first) return second;
    if (!second) return first;
    return std::make_shared<Both>(first, std::move(second));
}

void interpret(Interpreted& content, const OpenOptions& options, const WrittenDates* datesOfFile) {
    const reading::Document& document = content.document();
    content.survey = surveyOf(document);
    if (datesOfFile != nullptr) content.survey.dates.takeOrdersFrom(*datesOfFile);
    // Only few documents need the second, thorough walk.
    if (content.survey.isOdd || document.leftovers().areAny()) {
        content.accounting = Accounting(document);
        content.survey.misplaced = content.accounting.misplaced();
    }
    const Survey& survey = content.survey;
    const bool helpsNumbers = options.asWritten && !survey.amounts.arePlain();
    const bool helpsDates = options.asWritten && !survey.dates.arePlain();
    content.interpreter = TvOFXInterpreter::initWithParseResult(content.parsed.content);
    auto numbers = inTurn<NumberFormatters>(options.numberFormatter,
                                            helpsNumbers ? survey.amounts.formatter() : nullptr);
    auto dates =
        inTurn<DateFormatters>(options.dateFormatter, helpsDates ? survey.dates.formatter() : nullptr);
    auto helper = TvOFXHelper::defaultHelper();
    if (numbers || dates) {
        helper = std::make_shared<TvOFXHelper>();
        helper->setAmountNumberFormatter(std::move(numbers));
        helper->setDateFormatter(std::move(dates));
    }
    content.interpreter->setHelperObject(helper);
    content.interpreter->interpret();
    content.known = KnownResponses(content.responses());
    const auto& tree = content.parsed.content.ofxData;
    const bool hasStatements =
        content.found(Content::investmentAnswer) + content.found(Content::investmentStatement) != 0;
    if (hasStatements) content.investmentStatements = brackwell::investmentStatements(tree, helper);
    if (content.found(Content::security) != 0) content.securities = brackwell::securities(tree, helper);
    const Delivery delivery = content.delivery();
    content.missing = delivery.missing();
    content.repairable = delivery.repairable();
}

}  // namespace

Interpreted interpreted(Parsed parsed, const OpenOptions& options, const WrittenDates* datesOfFile) {
    Interpreted content;
    content.parsed = std::move(parsed);
    // An XML document without an instruction has an empty tree of no document.
    const bool hasTree =
        content.parsed.outcome == Outcome::read && NodeRef::of(*content.parsed.content.ofxData);
    if (hasTree) interpret(content, options, datesOfFile);
    return content;
}

Worth::Worth(const Interpreted& content) noexcept
    : isRead(content.isRead()),
      hasRoot(content.parsed.hasRoot()),
      repairable(content.repairable),
      furtherLists(content.furtherLists()),
      doubtful(content.doubtful()),
      headerFaults(content.headerFaults) {}

bool isBetter(const Worth& repaired, const Worth& before) noexcept {
    if (!repaired.isRead) return false;
    if (!before.isRead) return true;
    if (repaired.hasRoot != before.hasRoot) return repaired.hasRoot;
    if (repaired.repairable != before.repairable) return repaired.repairable < before.repairable;
    if (repaired.furtherLists != before.furtherLists) return repaired.furtherLists < before.furtherLists;
    if (repaired.doubtful != before.doubtful) return repaired.doubtful < before.doubtful;
    return repaired.headerFaults < before.headerFaults;
}

void setAside(Interpreted& content) {
    if (!content.isRead()) return;
    Interpreted rest;
    rest.parsed = std::move(content.parsed);
    rest.parsed.content.ofxData.reset();
    rest.headerFaults = content.headerFaults;
    content = std::move(rest);
}

void readAgain(Interpreted& content, const OpenOptions& options, const WrittenDates* datesOfFile) {
    if (content.parsed.outcome != Outcome::read || content.parsed.content.ofxData) return;
    const std::size_t headerFaults = content.headerFaults;
    parseAgain(content.parsed);
    content = interpreted(std::move(content.parsed), options, datesOfFile);
    content.headerFaults = headerFaults;
}

std::vector<ListedAccount> accountsOf(const std::vector<const TvOFXAccountInfoResponse*>& lists) {
    std::vector<ListedAccount> accounts;
    for (const TvOFXAccountInfoResponse* const list : lists) {
        if (!list->originalParseData()) continue;
        auto record = list->accountInfos().begin();
        for (const NodeRef& node : NodeRef::of(*list->originalParseData())[element("ACCTINFO")].elements()) {
            if (!node.isDictionary() || record == list->accountInfos().end()) continue;
            ListedAccount& account = accounts.emplace_back();
            account.record = *record++;
            account.bank = account.record->bankAccountInfo();
            if (const NodeRef card = node[element("CCACCTINFO")]; card.isDictionary())
                account.card = TvOFXCreditCardAccountInfo::initWithParserDict(card.dictionary());
            if (const NodeRef investment = node[element("INVACCTINFO")]; investment.isDictionary())
                account.investment = TvOFXInvestmentAccountInfo::initWithParseDict(investment.dictionary());
        }
    }
    return accounts;
}

}  // namespace brackwell::opening
