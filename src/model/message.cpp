// SPDX-License-Identifier: Apache-2.0
#include <brackwell/requests.h>
#include <brackwell/statements.h>

#include "reading/node_ref.h"

namespace brackwell {

using reading::element;
using reading::NodeRef;

namespace {

/// Appends the account of each statement of a class, in order.
template <class Statement, class Account>
void appendAccounts(std::vector<std::shared_ptr<Account>>& accounts, const TvOFXResponseList& responses,
                    const std::shared_ptr<Account>& (Statement::*account)() const noexcept) {
    for (const auto& response : responses)
        if (const auto* statement = dynamic_cast<const Statement*>(response.get()))
            if ((statement->*account)()) accounts.push_back((statement->*account)());
}

/// The first statement of a class whose account is this very object.
template <class Statement, class Account>
std::shared_ptr<Statement> statementOf(const TvOFXAggregate* wanted, const TvOFXResponseList& responses,
                                       const std::shared_ptr<Account>& (Statement::*account)()
                                           const noexcept) {
    if (wanted == nullptr) return nullptr;
    for (const auto& response : responses)
        if (auto statement = std::dynamic_pointer_cast<Statement>(response))
            if ((*statement.*account)().get() == wanted) return statement;
    return nullptr;
}

void append(TvOFXResponseList& list, const TvOFXResponseList& more) {
    list.insert(list.end(), more.begin(), more.end());
}

}  // namespace

std::shared_ptr<TvOFXMessage> TvOFXMessage::initWithUserSettings(const TvOFXUserSettings&) {
    auto message = std::make_shared<TvOFXMessage>();
    message->texts_.set(headerData_, "OFXSGML");
    message->headerVersion_ = message->ofxVersion_ < 200 ? 100 : 200;
    for (const std::size_t field : {ofxSecurity_, compression_, oldFileUID_, nuFileUID_})
        message->texts_.set(field, "NONE");
    message->texts_.set(encoding_, "USASCII");
    message->texts_.set(charset_, "1252");
    return message;
}

void TvOFXMessage::processParserResult(const TvOFXParserResult& parserResult,
                                       std::shared_ptr<const NumberFormatter> numberFormatter,
                                       std::shared_ptr<const DateFormatter> dateFormatter) {
    copyHeader(parserResult.ofxHeader);
    std::shared_ptr<TvOFXHelper> helper = TvOFXHelper::defaultHelper();
    if (numberFormatter || dateFormatter) {
        helper = std::make_shared<TvOFXHelper>();
        helper->setAmountNumberFormatter(std::move(numberFormatter));
        helper->setDateFormatter(std::move(dateFormatter));
    }
    TvOFXInterpreter interpreter(parserResult);
    interpreter.setHelperObject(std::move(helper));
    interpreter.interpret();
    takeResponses(interpreter);
}

void TvOFXMessage::copyHeader(const std::optional<ParseDictionary>& header) {
    struct HeaderText {
        Text field;
        reading::NameID name;
    };
    constexpr std::array<HeaderText, textCount> names{{{headerData_, element("DATA")},
                                                       {oldFileUID_, element("OLDFILEUID")},
                                                       {nuFileUID_, element("NEWFILEUID")},
                                                       {encoding_, element("ENCODING")},
                                                       {charset_, element("CHARSET")},
                                                       {ofxSecurity_, element("SECURITY")},
                                                       {compression_, element("COMPRESSION")}}};
    const NodeRef values = header ? NodeRef::of(*header) : NodeRef();
    const auto copyVersion = [&values](reading::NameID name, std::uint64_t& version) {
        if (const NodeRef value = values[name]; value.isText())
            version = static_cast<std::uint64_t>(leadingInteger(value.text()));
    };
    copyVersion(element("OFXHEADER"), headerVersion_);
    copyVersion(element("VERSION"), ofxVersion_);
    // The texts are always overwritten, with nothing when the header lacks them.
    for (const auto& [field, name] : names) {
        texts_.set(field, std::nullopt);
        if (const NodeRef value = values[name]; value.isText())
            texts_.setLeaf(field, *value.owner, value.index());
    }
}

void TvOFXMessage::takeResponses(const TvOFXInterpreter& interpreter) {
    signonResponse_ = interpreter.signOnResponse();
    profileResponse_ = interpreter.fiProfileResponse();
    // The sign-on and sign-up lists are not taken, so account information is not carried along:
    // intended.
    append(bankingMsgSet_, interpreter.bankingMsgSetResponses());
    append(creditCardMsgSet_, interpreter.creditCardMsgSetResponses());
    append(investmentMsgSet_, interpreter.investmentMgsSetResponses());
    append(interbankFundsMsgSet_, interpreter.interbankFundsMsgSetResponses());
    append(wireFundsMsgSet_, interpreter.wireFundsMsgSetResponses());
    append(billPaymentMsgSet_, interpreter.billPaymentMsgSetResponses());
    append(emailMsgSet_, interpreter.emailMsgSetReponses());
    append(secListMsgSet_, interpreter.investmentSecListMsgSetResponses());
}

void TvOFXMessage::addRequest(const std::shared_ptr<TvOFXRequest>& request) {
    if (!request) return;
    if (!allRequests_) allRequests_.emplace();
    request->setOfxVersion(ofxVersion_);
    allRequests_->push_back(request);
    if (auto profile = std::dynamic_pointer_cast<TvOFXFIProfileRequest>(request))
        profileRequest_ = std::move(profile);
    if (std::dynamic_pointer_cast<TvOFXAccountInfoRequest>(request)) signupMsgSet_.push_back(request);
}

const std::vector<std::shared_ptr<TvOFXAggregate>>& TvOFXMessage::accountsFound() {
    if (!accountsFound_) {
        const auto banks = bankAccountsFound();
        const auto cards = creditCardAccountsFound();
        std::vector<std::shared_ptr<TvOFXAggregate>> accounts(banks.begin(), banks.end());
        accounts.insert(accounts.end(), cards.begin(), cards.end());
        accountsFound_ = std::move(accounts);
    }
    return *accountsFound_;
}

std::vector<std::shared_ptr<TvOFXBankAccount>> TvOFXMessage::bankAccountsFound() const {
    std::vector<std::shared_ptr<TvOFXBankAccount>> accounts;
    for (const auto& aggregate : signupMsgSet_)
        if (const auto* response = dynamic_cast<const TvOFXAccountInfoResponse*>(aggregate.get()))
            for (const auto& record : response->accountInfos())
                if (const auto& block = record->bankAccountInfo(); block && block->bankAcctFrom())
                    accounts.push_back(block->bankAcctFrom());
    appendAccounts(accounts, bankingMsgSet_, &TvOFXStatementResponse::bankAccountFrom);
    return accounts;
}

std::vector<std::shared_ptr<TvOFXCreditCardAccount>> TvOFXMessage::creditCardAccountsFound() const {
    std::vector<std::shared_ptr<TvOFXCreditCardAccount>> accounts;
    for (const auto& aggregate : signupMsgSet_)
        if (const auto* response = dynamic_cast<const TvOFXAccountInfoResponse*>(aggregate.get()))
            for (const auto& record : response->accountInfos())
                if (const auto& block = record->creditCardAccountInfo();
                    block && block->creditCardAccountFrom())
                    accounts.push_back(block->creditCardAccountFrom());
    appendAccounts(accounts, creditCardMsgSet_, &TvOFXCCStatementResponse::creditCardAccountFrom);
    return accounts;
}

std::shared_ptr<TvOFXStatementResponse> TvOFXMessage::statementsForBankAccount(
    const std::shared_ptr<const TvOFXAggregate>& account) const {
    return statementOf(account.get(), bankingMsgSet_, &TvOFXStatementResponse::bankAccountFrom);
}

std::shared_ptr<TvOFXCCStatementResponse> TvOFXMessage::statementsForCreditCardAccount(
    const std::shared_ptr<const TvOFXAggregate>& account) const {
    return statementOf(account.get(), creditCardMsgSet_, &TvOFXCCStatementResponse::creditCardAccountFrom);
}

}  // namespace brackwell
