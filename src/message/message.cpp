// SPDX-License-Identifier: Apache-2.0
#include <brackwell/model.h>
#include <brackwell/requests.h>
#include <brackwell/statements.h>

#include <algorithm>
#include <utility>

#include "memory/make_room.h"
#include "tree/node_ref.h"

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

/// The response at the place that a table has for it; null when it has none. A list may be shorter than its
/// table after it was moved to itself.
template <class Places>
std::shared_ptr<TvOFXResponse> responseAt(const TvOFXResponseList& responses, const Places& places,
                                          const TvOFXResponse* response) {
    const auto place = places.find(response);
    return place != places.end() && place->second < responses.size() ? responses[place->second] : nullptr;
}

/// The response, when it is a statement of a class and its account is this very object; an equal account is
/// another one.
template <class Statement, class Account>
std::shared_ptr<Statement> statementWith(const Account* wanted,
                                         const std::shared_ptr<TvOFXResponse>& response,
                                         const std::shared_ptr<Account>& (Statement::*account)()
                                             const noexcept) {
    auto statement = std::dynamic_pointer_cast<Statement>(response);
    return statement && (*statement.*account)().get() == wanted ? statement : nullptr;
}

/// A header's element as a number; `version` when the header has none.
std::uint64_t versionIn(const NodeRef& header, reading::NameID name, std::uint64_t version) noexcept {
    const NodeRef value = header[name];
    return value.isText() ? static_cast<std::uint64_t>(leadingInteger(value.text())) : version;
}

MessageContent contentOf(const TvOFXInterpreter& interpreter) noexcept {
    if (!interpreter.parserDict()) return MessageContent::notOFX;
    return interpreter.allResponses().empty() ? MessageContent::noResponses : MessageContent::responses;
}

}  // namespace

std::shared_ptr<TvOFXMessage> TvOFXMessage::initWithUserSettings(const TvOFXUserSettings&) {
    auto message = std::make_shared<TvOFXMessage>();
    message->texts_.set(headerData_, "OFXSGML");
    message->headerVersion_ = message->ofxVersion() < 200 ? 100 : 200;  // by OFX 1 or OFX 2
    for (const std::size_t field : {ofxSecurity_, compression_, oldFileUID_, nuFileUID_})
        message->texts_.set(field, "NONE");
    message->texts_.set(encoding_, "USASCII");
    message->texts_.set(charset_, "1252");
    return message;
}

void TvOFXMessage::processParserResult(const TvOFXParserResult& parserResult,
                                       std::shared_ptr<const NumberFormatter> numberFormatter,
                                       std::shared_ptr<const DateFormatter> dateFormatter) {
    std::shared_ptr<TvOFXHelper> helper = TvOFXHelper::defaultHelper();
    if (numberFormatter || dateFormatter) {
        helper = std::make_shared<TvOFXHelper>();
        helper->setAmountNumberFormatter(std::move(numberFormatter));
        helper->setDateFormatter(std::move(dateFormatter));
    }
    TvOFXInterpreter interpreter(parserResult);
    interpreter.setHelperObject(std::move(helper));
    interpreter.interpret();
    take(parserResult.ofxHeader, interpreter);
}

void TvOFXMessage::take(const std::optional<ParseDictionary>& headerDictionary,
                        const TvOFXInterpreter& interpreter) {
    const NodeRef header = headerDictionary ? NodeRef::of(*headerDictionary) : NodeRef();
    internal::TextFields<textCount> texts = headerTexts(header);
    takeResponses(interpreter);  // the last step that can fail
    // The texts are always overwritten, with nothing when the header lacks them.
    texts_ = std::move(texts);
    content_ = std::max(content_.get(), contentOf(interpreter));
    headerVersion_ = versionIn(header, element("OFXHEADER"), headerVersion_);
    ofxVersion_ = versionIn(header, element("VERSION"), ofxVersion_);
}

internal::TextFields<TvOFXMessage::textCount> TvOFXMessage::headerTexts(const NodeRef& header) {
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
    internal::TextFields<textCount> texts;
    for (const auto& [field, name] : names)
        if (const NodeRef value = header[name]; value.isText())
            texts.setLeaf(field, *value.owner, value.index());
    return texts;
}

void TvOFXMessage::takeResponses(const TvOFXInterpreter& interpreter) {
    struct Taken {
        TvOFXResponseList& list;
        const TvOFXResponseList& more;
    };
    // The sign-on and sign-up lists are not taken, so account information is not carried along:
    // intended.
    const std::array<Taken, 8> all{{{bankingMsgSet_, interpreter.bankingMsgSetResponses()},
                                    {creditCardMsgSet_, interpreter.creditCardMsgSetResponses()},
                                    {investmentMsgSet_, interpreter.investmentMgsSetResponses()},
                                    {interbankFundsMsgSet_, interpreter.interbankFundsMsgSetResponses()},
                                    {wireFundsMsgSet_, interpreter.wireFundsMsgSetResponses()},
                                    {billPaymentMsgSet_, interpreter.billPaymentMsgSetResponses()},
                                    {emailMsgSet_, interpreter.emailMsgSetReponses()},
                                    {secListMsgSet_, interpreter.investmentSecListMsgSetResponses()}}};
    Places banking = placesOf(interpreter.bankingMsgSetResponses(), bankingMsgSet_.size());
    Places creditCard = placesOf(interpreter.creditCardMsgSetResponses(), creditCardMsgSet_.size());
    // Room in all of them first, so that none has changed when memory runs out.
    bankingPlaces_.reserve(bankingPlaces_.size() + banking.size());
    creditCardPlaces_.reserve(creditCardPlaces_.size() + creditCard.size());
    for (const auto& [list, more] : all) makeRoom(list, more.size());
    for (const auto& [list, more] : all) list.insert(list.end(), more.begin(), more.end());
    bankingPlaces_.merge(banking);
    creditCardPlaces_.merge(creditCard);
    signonResponse_ = interpreter.signOnResponse();
    profileResponse_ = interpreter.fiProfileResponse();
}

TvOFXMessage::Places TvOFXMessage::placesOf(const TvOFXResponseList& more, std::size_t first) {
    Places places;
    places.reserve(more.size());
    for (std::size_t i = 0; i < more.size(); ++i) places.try_emplace(more[i].get(), first + i);
    return places;
}

void TvOFXMessage::addRequest(const std::shared_ptr<TvOFXRequest>& request) {
    if (!request) return;
    const bool isSignUp = dynamic_cast<const TvOFXAccountInfoRequest*>(request.get()) != nullptr;
    // Room in every list first, so that a request is in all of them or in none.
    if (isSignUp) makeRoom(signupMsgSet_, 1);
    auto& requests = allRequests_.get();
    std::vector<std::shared_ptr<TvOFXRequest>> first;
    makeRoom(requests ? *requests : first, 1);
    if (!requests) requests = std::move(first);
    requests->push_back(request);
    if (isSignUp) signupMsgSet_.push_back(request);
    if (auto profile = std::dynamic_pointer_cast<TvOFXFIProfileRequest>(request))
        profileRequest_ = std::move(profile);
    request->setOfxVersion(ofxVersion_);
}

const std::vector<std::shared_ptr<TvOFXAggregate>>& TvOFXMessage::accountsFound() {
    // Kept from the first call on: later requests and responses do not change the answer.
    auto& found = accountsFound_.get();
    if (!found) found = std::as_const(*this).accountsFound();
    return *found;
}

std::vector<std::shared_ptr<TvOFXAggregate>> TvOFXMessage::accountsFound() const {
    if (const auto& found = accountsFound_.get()) return *found;
    const auto banks = bankAccountsFound();
    const auto cards = creditCardAccountsFound();
    std::vector<std::shared_ptr<TvOFXAggregate>> accounts(banks.begin(), banks.end());
    accounts.insert(accounts.end(), cards.begin(), cards.end());
    return accounts;
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
    // A statement makes its accounts itself and shares them with no other, so an account has one statement at
    // most, which it knows. That one may have read another account since, or be none of this message's.
    const auto* wanted = dynamic_cast<const TvOFXBankAccount*>(account.get());
    if (wanted == nullptr) return nullptr;
    return statementWith(wanted, responseAt(bankingMsgSet_, bankingPlaces_, wanted->statement_),
                         &TvOFXStatementResponse::bankAccountFrom);
}

std::shared_ptr<TvOFXCCStatementResponse> TvOFXMessage::statementsForCreditCardAccount(
    const std::shared_ptr<const TvOFXAggregate>& account) const {
    const auto* wanted = dynamic_cast<const TvOFXCreditCardAccount*>(account.get());
    if (wanted == nullptr) return nullptr;
    return statementWith(wanted, responseAt(creditCardMsgSet_, creditCardPlaces_, wanted->statement_),
                         &TvOFXCCStatementResponse::creditCardAccountFrom);
}

}  // namespace brackwell
