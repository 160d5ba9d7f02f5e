// SPDX-License-Identifier: Apache-2.0
#include "support/transcript.h"

#include "support/documents.h"
#include "support/shown.h"
#include "support/value_text.h"

namespace brackwell::tests {
namespace {

/// Appends answers. An object is asked for everything that its class answers.
class Transcript {
public:
    std::string text;

    void add(const OptionalText& value) { line(shown(value)); }
    void add(const std::string& value) { line(value); }
    void add(std::string_view value) { line(value); }
    void add(std::optional<Date> value) { line(shown(value)); }
    void add(const std::optional<Decimal>& value) { line(shown(value)); }
    void add(const ParseValue& value) { line(treeText(value)); }
    void add(std::optional<bool> value) { line(value ? (*value ? "yes" : "no") : "nothing"); }
    template <class Number>
    requires std::is_integral_v<Number> || std::is_enum_v<Number>
    void add(Number value) { line(std::to_string(static_cast<long long>(value))); }
    template <class Value>
    void add(const std::vector<Value>& values) {
        line("list of " + std::to_string(values.size()));
        for (const Value& value : values) add(value);
    }
    template <class Value>
    void add(const std::optional<std::vector<Value>>& values) {
        values ? add(*values) : line("nothing");
    }
    template <class Object>
    void add(const std::shared_ptr<Object>& object) {
        object ? add(*object) : line("nothing");
    }
    template <class First, class Second, class... More>
    void add(const First& first, const Second& second, const More&... more) {
        add(first);
        add(second);
        (add(more), ...);
    }

    void add(const TvOFXStatus& o) { aggregate(o), add(o.code(), o.severity(), o.message()); }
    void add(const TvOFXBankAccount& o) {
        aggregate(o);
        add(o.bankID(), o.branchID(), o.accountID(), o.accountType(), o.acctKeyChecksum());
        add(o.isEqualToOFXBankAccount(&o));
    }
    void add(const TvOFXCreditCardAccount& o) {
        aggregate(o);
        add(o.accountID(), o.acctKeyChecksum(), o.isEqualToOFXCreditCardAccount(&o));
    }
    void add(const TvOFXInvestmentAccount& o) { aggregate(o), add(o.brokerID(), o.accountID()); }
    void add(const TvOFXPayee& o) {
        aggregate(o);
        add(o.name(), o.city(), o.state(), o.zipCode(), o.country(), o.phoneNumber(), o.address(),
            o.addressLines(), o.isEqualToOFXPayee(&o));
    }
    void add(TvOFXStatementTransaction& o) {
        aggregate(o);
        for (const TvOFXStatementTransaction::Field& field : TvOFXStatementTransaction::fields())
            std::visit([&](const auto get) { add((o.*get)()); }, field.get);
        add(o.sort_date(), o.isEqualOFXStatementTransaction(&o));
    }

    void add(const TvOFXBankAccountInfo& o) {
        add(o.bankAcctFrom(), o.supportsTransactionDownload(), o.isTransferSourceAccount(),
            o.isTransferDestinationAccount(), o.serviceStatus(), o.bankID(), o.branchID(), o.accountID(),
            o.accountType(), o.acctKeyChecksum());
    }
    void add(const TvOFXCreditCardAccountInfo& o) {
        add(o.creditCardAccountFrom(), o.supportsTransactionDownload(), o.isTransferSourceAccount(),
            o.isTransferDestinationAccount(), o.serviceStatus(), o.accountID(), o.acctKeyChecksum());
    }
    void add(const TvOFXInvestmentAccountInfo& o) {
        add(o.investmentAccount(), o.usproductType(), o.hasCheckWritingPrivileges(), o.accountType(),
            o.optionLevel(), o.serviceStatus());
    }
    void add(const TvOFXPaymentsAccountInfo& o) { add(o.serviceStatus()); }
    void add(const TvOFXAccountInfo& o) {
        add(o.accountDescription(), o.accountPhone(), o.bankAccountInfo(), o.creditCardAccountInfo(),
            o.paymentsAccountInfo(), o.investmentAccountInfo(), o.serviceStatus());
    }
    void add(const TvOFXAccount& o) {
        add(o.description(), o.country(), o.serviceStatus(), o.accountDescription(), o.accountPhone(),
            o.bankAccount(), o.bankingServiceStatus(), o.supportsTransactionDownload(),
            o.isTransferSourceAccount(), o.isTransferDestinationAccount(), o.bankingBankID(),
            o.bankingBranchID(), o.bankingAccountID(), o.bankingAcctKeyChecksum(), o.bankingAccountType(),
            o.creditCardServiceStatus(), o.paymentsServiceStatus(), o.investmentServiceStatus());
    }

    void add(const TvOFXFinancialInstitutionIdentification& o) {
        aggregate(o);
        add(o.organization(), o.fid());
    }
    void add(const TvOFXMessageSetCore& o) {
        aggregate(o);
        add(o.version(), o.serviceProviderName(), o.url(), o.security(), o.usesTransportLevelSecurity(),
            o.signonRealm(), o.languages(), o.syncMode(), o.supportsErrorRecovery());
    }
    void add(const TvOFXMessageSetProfile& o) {
        aggregate(o);
        add(o.messageSetCore());
    }
    void add(const TvOFXMessageSetProfileBanking& o) {
        add(static_cast<const TvOFXMessageSetProfile&>(o));
        add(o.closingStatementInformationAvailable(), o.noProcessingDays(), o.processingEndTime(),
            o.supportsScheduledTransfers(), o.supportsRecurringTransfers(), o.supportsModifyTransfers(),
            o.supportsModifyModels(), o.modelWindow(), o.daysWith(), o.defaultNumberOfDaysToPay(),
            o.supportsEMail(), o.supportsNotification());
    }
    void add(const TvOFXMessageSetProfileCreditCard& o) {
        add(static_cast<const TvOFXMessageSetProfile&>(o));
        add(o.closingStatementInformationAvailable());
    }
    void add(const TvOFXMessageSetProfileSignUp& o) {
        add(static_cast<const TvOFXMessageSetProfile&>(o));
        add(o.clientEnrollAccountRequired(), o.webEnrollUrl(), o.otherEnrollMessage(),
            o.serverSupportsClientBasedUserInformationChange(), o.serverProvidesAccountInfos(),
            o.serverAllowsServiceActivationRequest());
    }
    void add(const TvOFXSignOnInfo& o) {
        aggregate(o);
        add(o.signonRealm(), o.minPasswordChars(), o.maxPasswordChars(), o.allowedPasswordCharacters(),
            o.passwordIsCaseSensitive(), o.passwordAllowsSpecialChars(), o.passwordAllowsSpaces(),
            o.passwordChangeAllowed(), o.passwordChangeRequiredAtFirstSignon());
    }

    void add(const TvOFXResponse& o) {
        aggregate(o);
        add(o.className(), o.status(), o.transactionUID(), o.transactionWrapperName());
        if (const auto* statement = dynamic_cast<const TvOFXAccountStatement*>(&o)) statementOf(*statement);
        if (const auto* signOn = dynamic_cast<const TvOFXSignOnResponse*>(&o)) signOnOf(*signOn);
        if (const auto* profile = dynamic_cast<const TvOFXFIProfileResponse*>(&o)) profileOf(*profile);
        if (const auto* accounts = dynamic_cast<const TvOFXAccountInfoResponse*>(&o)) accountsOf(*accounts);
    }
    void add(TvOFXAggregate& o) {
        if (auto* transaction = dynamic_cast<TvOFXStatementTransaction*>(&o)) return add(*transaction);
        if (const auto* payee = dynamic_cast<const TvOFXPayee*>(&o)) return add(*payee);
        if (const auto* account = dynamic_cast<const TvOFXBankAccount*>(&o)) return add(*account);
        if (const auto* account = dynamic_cast<const TvOFXCreditCardAccount*>(&o)) return add(*account);
        if (const auto* response = dynamic_cast<const TvOFXResponse*>(&o)) return add(*response);
        aggregate(o);
    }

private:
    void line(std::string_view value) { text.append(value).append("\n"); }

    void aggregate(const TvOFXAggregate& o) {
        line(o.ofxString());
        const std::string description = o.description();
        // Without parse data the description may be the object's address.
        if (o.originalParseData()) line(description);
    }
    void statementOf(const TvOFXAccountStatement& o) {
        add(o.defaultCurrency(), o.transactionStartDateTime(), o.transactionEndDateTime(),
            o.statementTransactions(), o.ledgerBalanceAmount(), o.ledgerBalanceDateTime(),
            o.availableBalanceAmount(), o.availableBalanceDateTime());
        if (const auto* bank = dynamic_cast<const TvOFXStatementResponse*>(&o)) add(bank->bankAccountFrom());
        if (const auto* card = dynamic_cast<const TvOFXCCStatementResponse*>(&o))
            add(card->creditCardAccountFrom());
    }
    void signOnOf(const TvOFXSignOnResponse& o) {
        add(o.dateOfServer(), o.userKey(), o.tskeyExpire(), o.language(), o.dateOflastProfileInfoUpdate(),
            o.dateOflastAccountInfoUpdate(), o.financialInstitutionID(), o.sessionCookie(), o.accessKey());
    }
    void profileOf(const TvOFXFIProfileResponse& o) {
        add(o.messageSetProfileSignOn(), o.messageSetProfileSignUp(), o.messageSetProfileBanking(),
            o.messageSetProfileCreditCard(), o.signonInfoList(), o.updateTime(), o.fiName(), o.address(),
            o.city(), o.state(), o.postalCode(), o.country(), o.customerServicePhoneNumber(),
            o.technicalSupportPhoneNumber(), o.faxNumber(), o.informationURL(), o.email());
    }
    void accountsOf(const TvOFXAccountInfoResponse& o) {
        add(o.lastUpdateDateTime(), o.accountInfos());
        for (const auto& record : o.accountInfos()) add(TvOFXAccount::initWithAccountInfos(record));
    }
};

/// True when an object's archive brings back an object with the same archive.
template <class Object>
bool comesBack(const Object& object) {
    KeyedArchiver before;
    object.encodeWithCoder(before);
    const auto back = restored(object);
    if (!back) return false;
    KeyedArchiver after;
    back->encodeWithCoder(after);
    return before.archivedData() == after.archivedData();
}

}  // namespace

std::string transcriptOf(TvOFXMessage& message) {
    Transcript transcript;
    transcript.add(message.headerVersion(), message.ofxVersion(), message.ofxSecurity(), message.headerData(),
                   message.encoding(), message.charset(), message.oldFileUID(), message.nuFileUID(),
                   message.compression());
    transcript.add(message.bankingMsgSet());
    transcript.add(message.accountsFound().size());
    for (const auto& account : message.bankAccountsFound())
        transcript.add(account, std::shared_ptr<TvOFXResponse>(message.statementsForBankAccount(account)));
    for (const auto& account : message.creditCardAccountsFound())
        transcript.add(account,
                       std::shared_ptr<TvOFXResponse>(message.statementsForCreditCardAccount(account)));
    const TvOFXResult result(message.bankingMsgSet());
    for (const auto& note : result.allFIMessages()) transcript.add(note->message());
    transcript.add(std::shared_ptr<TvOFXResponse>(result.balance()));
    transcript.add(result.transactions() != nullptr ? result.transactions()->size() : 0);
    return std::move(transcript.text);
}

std::string transcriptOf(const TvOFXInterpreter& interpreter) {
    Transcript transcript;
    transcript.add(interpreter.allResponses());
    for (const auto& [uid, responses] : interpreter.allResponsesWithTransactionUID())
        transcript.add(uid, responses.size());
    for (const auto& [name, responses] : interpreter.responseObjectsPerSGMLKey())
        transcript.add(name, responses.size());
    for (const auto& [uid, status] : interpreter.allStatusObjects()) transcript.add(uid, status);
    for (const TvOFXResponseList* list :
         {&interpreter.signonMsgSetResponses(), &interpreter.signupMsgSetResponses(),
          &interpreter.bankingMsgSetResponses(), &interpreter.creditCardMsgSetResponses(),
          &interpreter.investmentMgsSetResponses(), &interpreter.interbankFundsMsgSetResponses(),
          &interpreter.wireFundsMsgSetResponses(), &interpreter.billPaymentMsgSetResponses(),
          &interpreter.emailMsgSetReponses(), &interpreter.investmentSecListMsgSetResponses()})
        transcript.add(list->size());
    return std::move(transcript.text);
}

std::string transcriptOf(TvOFXAggregate& object) {
    Transcript transcript;
    transcript.add(object);
    return std::move(transcript.text);
}

bool archivesWell(const TvOFXInterpreter& interpreter) {
    for (const auto& response : interpreter.allResponses()) {
        if (!comesBack(static_cast<const TvOFXAggregate&>(*response))) return false;
        const auto* statement = dynamic_cast<const TvOFXAccountStatement*>(response.get());
        if (statement == nullptr) continue;
        for (const auto& transaction : statement->statementTransactions()) {
            if (!comesBack(*transaction)) return false;
            if (!restored(*transaction)->isEqualOFXStatementTransaction(transaction.get())) return false;
        }
    }
    return true;
}

}  // namespace brackwell::tests
