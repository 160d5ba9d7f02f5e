// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Statements of bank and card accounts, their transactions, and the transactions' payees.
///
///     for (const auto& transaction : statement->statementTransactions())
///         if (transaction->amount() && transaction->amount()->isNegative())
///             std::cout << transaction->amount()->toString() << '\n';

#include <brackwell/accounts.h>
#include <brackwell/internal/optional_dates.h>
#include <brackwell/internal/text_fields.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace brackwell {

/// The other party of a transaction (PAYEE).
class BRACKWELL_EXPORT TvOFXPayee final : public AggregateClass<TvOFXPayee, TvOFXAggregate> {
public:
    TvOFXPayee() noexcept = default;

    /// Reads a PAYEE node. A value that is no text is skipped.
    explicit TvOFXPayee(const std::optional<ParseDictionary>& node);
    /// Reads what encodeWithCoder wrote; what is missing there stays absent.
    explicit TvOFXPayee(const KeyedUnarchiver& coder);
    /// Writes the base's archive and the nine texts.
    void encodeWithCoder(KeyedArchiver& coder) const override;
    std::string_view className() const noexcept override;

    /// @{
    /// NAME, CITY, STATE, POSTALCODE and COUNTRY; valid as long as the payee.
    OptionalText name() const noexcept { return texts_.get(name_); }
    OptionalText city() const noexcept { return texts_.get(city_); }
    OptionalText state() const noexcept { return texts_.get(state_); }
    OptionalText zipCode() const noexcept { return texts_.get(postalCode_); }
    OptionalText country() const noexcept { return texts_.get(country_); }
    /// @}
    /// PHONENUMBER; an element PHONE is not read: intended.
    OptionalText phoneNumber() const noexcept { return texts_.get(phoneNumber_); }

    /// The three address lines, the second and third after a line feed each; "" when there are none.
    std::string address() const;
    /// The first line, then the second line twice, and never the third: intended. For all three lines
    /// use address.
    std::vector<std::string> addressLines() const;

    /// True when no text differs that both payees have, and their addresses are the same, absent lines
    /// included. False for null.
    bool isEqualToOFXPayee(const TvOFXPayee* other) const;

private:
    struct Elements;
    enum Text : std::size_t {
        name_,
        addr1_,
        addr2_,
        addr3_,
        city_,
        state_,
        postalCode_,
        country_,
        phoneNumber_,
        textCount
    };
    internal::TextFields<textCount> texts_;
};

/// One booked or pending movement of money (STMTTRN). Texts are those of the document, unchanged; they
/// are valid until they are set again, and as long as the transaction.
class BRACKWELL_EXPORT TvOFXStatementTransaction final
    : public AggregateClass<TvOFXStatementTransaction, TvOFXAggregate> {
public:
    TvOFXStatementTransaction() noexcept;
    ~TvOFXStatementTransaction() override;

    /// Fills the fields. A value of another kind than its element should have is skipped.
    void parseDictionary(const std::optional<ParseDictionary>& node) override;
    /// The class's name on a line, then the fields that are present, each after two blanks.
    std::string description() const override;
    /// Reads what encodeWithCoder wrote; what is missing there stays absent.
    explicit TvOFXStatementTransaction(const KeyedUnarchiver& coder);
    /// Writes the fields that are present, but originalDatePostedString and what the base holds.
    void encodeWithCoder(KeyedArchiver& coder) const override;
    std::string_view className() const noexcept override;

    /// A transaction read from an STMTTRN node. (initWithParseDict only keeps the node and fills no field.)
    static std::shared_ptr<TvOFXStatementTransaction> initWithParserDict(
        const std::optional<ParseDictionary>& node);

    /// What kind of movement (TRNTYPE): DEBIT, CREDIT, FEE, XFER and others; no list is enforced.
    OptionalText transactionType() const noexcept { return texts_.get(transactionType_); }
    /// When it was booked (DTPOSTED); nothing when that is no date, see originalDatePostedString. The time is
    /// taken for UTC whatever zone the text names, so "20240131120000.000[-5:EST]" is 12:00 UTC: intended.
    std::optional<Date> datePosted() const noexcept { return dates_.get(datePosted_); }
    /// Another date than the stored one also renews sort_date.
    void setDatePosted(std::optional<Date> date) noexcept;
    /// When the user began it (DTUSER).
    std::optional<Date> dateUserInit() const noexcept { return dates_.get(dateUserInit_); }
    /// From when on the money can be used (DTAVAIL).
    std::optional<Date> dateFundsAvailable() const noexcept { return dates_.get(dateFundsAvailable_); }
    /// The amount (TRNAMT), negative when money leaves the account. It is in the statement's currency unless
    /// the transaction has one of its own, which currencyOf in investments.h tells.
    const std::optional<Decimal>& amount() const noexcept { return amount_; }
    /// @{
    /// The institution's own identifier of the transaction (FITID).
    OptionalText fiTransactionID() const noexcept { return texts_.get(fiTransactionID_); }
    void setFiTransactionID(TextArgument text) { texts_.set(fiTransactionID_, text); }
    /// @}
    /// @{
    /// The identifier of an earlier transaction that this one replaces or deletes (CORRECTFITID), and which
    /// of the two (CORRECTACTION). The library itself corrects nothing.
    OptionalText correctionFITID() const noexcept { return texts_.get(correctionFITID_); }
    OptionalText correctionAction() const noexcept { return texts_.get(correctionAction_); }
    /// @}
    /// @{
    /// The server's identifier (SRVRTID), the number of the check (CHECKNUM), another number that it goes by
    /// (REFNUM), the payee's branch of trade (SIC), and the payee in the user's list of payees (PAYEEID).
    OptionalText serverTransactionID() const noexcept { return texts_.get(serverTransactionID_); }
    OptionalText checkOrReferenceNumber() const noexcept { return texts_.get(checkOrReferenceNumber_); }
    OptionalText referenceNumber() const noexcept { return texts_.get(referenceNumber_); }
    OptionalText standardIndustrialCode() const noexcept { return texts_.get(standardIndustrialCode_); }
    OptionalText payeeID() const noexcept { return texts_.get(payeeID_); }
    /// @}
    /// The other party's name (NAME). A document has this or payee, seldom both.
    OptionalText payeeName() const noexcept { return texts_.get(payeeName_); }
    /// The other party with its address (PAYEE); null when there is none.
    std::shared_ptr<TvOFXPayee> payee() const noexcept;
    /// @{
    /// The other account of a transfer (BANKACCTTO, CCACCTTO); null when there is none.
    std::shared_ptr<TvOFXBankAccount> bankAccountTo() const noexcept;
    std::shared_ptr<TvOFXCreditCardAccount> creditCardAccountTo() const noexcept;
    /// @}
    /// Further text (MEMO).
    OptionalText memo() const noexcept { return texts_.get(memo_); }
    /// @{
    /// Only when the document holds a text here; the aggregate that the OFX standard has is not read, but
    /// by currencyOf.
    OptionalText currency() const noexcept { return texts_.get(currency_); }
    OptionalText origCurrency() const noexcept { return texts_.get(origCurrency_); }
    /// @}
    /// The source text of the transaction, from its first child to its close tag.
    OptionalText originalDataString() const noexcept { return texts_.get(originalDataString_); }
    /// The text of DTPOSTED, also when it is not a date.
    OptionalText originalDatePostedString() const noexcept { return texts_.get(originalDatePostedString_); }

    /// The day of datePosted in the process's time zone as eight digits, made on the first call and
    /// kept; nothing without datePosted. A day before the year 1 is "00010101" and one after the year 9999
    /// "99991231", so that the order of days is never wrong. Valid until datePosted is set; reading another
    /// node does not renew it. The first call changes the transaction, so it is for one thread.
    OptionalText sort_date();
    /// The day of datePosted: in UTC, as which dates are read, unless another zone is given; that of
    /// TimeZone::system() is the day of sort_date. Nothing without datePosted, and outside of the years 1 to
    /// 9999.
    std::optional<std::chrono::year_month_day> dayPosted(const TimeZone& zone = {}) const;

    /// A getter and its name.
    struct Field {
        using Self = TvOFXStatementTransaction;  ///< the class
        using Getter = std::variant<
            OptionalText (Self::*)() const noexcept, std::optional<Date> (Self::*)() const noexcept,
            const std::optional<Decimal>& (Self::*)() const noexcept,
            std::shared_ptr<TvOFXPayee> (Self::*)() const noexcept,
            std::shared_ptr<TvOFXBankAccount> (Self::*)() const noexcept,
            std::shared_ptr<TvOFXCreditCardAccount> (Self::*)() const noexcept>;  ///< one for each type
        std::string_view name;  ///< as in the class: "payeeName"
        Getter get;             ///< for std::visit
    };
    /// The getters of all fields, from transactionType to originalDatePostedString, in their order: for
    /// applications that write or search every field.
    static std::span<const Field> fields() noexcept;

    /// Compares the fields that both transactions have. Different amounts are unequal; then, when both
    /// have a FITID, it alone decides; otherwise every other field counts. Fields that one of them
    /// lacks are skipped, so two transactions without a common field are equal and this is not
    /// transitive: intended. False for null.
    bool isEqualOFXStatementTransaction(const TvOFXStatementTransaction* other) const;

private:
    friend class TvOFXAccountStatement;
    struct Elements;
    struct Apart;
    enum Text : std::size_t {
        transactionType_,
        fiTransactionID_,
        correctionFITID_,
        correctionAction_,
        serverTransactionID_,
        checkOrReferenceNumber_,
        referenceNumber_,
        standardIndustrialCode_,
        payeeID_,
        payeeName_,
        memo_,
        currency_,
        origCurrency_,
        originalDataString_,
        originalDatePostedString_,
        textCount
    };
    enum DateField : std::size_t { datePosted_, dateUserInit_, dateFundsAvailable_, dateCount };
    BRACKWELL_INTERNAL void read(const reading::NodeRef& node);
    BRACKWELL_INTERNAL Apart& apart();
    BRACKWELL_INTERNAL bool agreesOnParties(const TvOFXStatementTransaction& other) const;

    internal::TextFields<textCount> texts_;
    internal::OptionalDates<dateCount> dates_;
    std::optional<Decimal> amount_;
    std::unique_ptr<Apart> apart_;  ///< what most transactions have none of
};

/// What bank and card statements have in common: all but the account.
class BRACKWELL_EXPORT TvOFXAccountStatement : public AggregateClass<TvOFXAccountStatement, TvOFXResponse> {
public:
    /// Reads a STMTRS or CCSTMTRS node, but no STATUS or TRNUID; the interpreter sets these. Run a second
    /// time, it appends the transactions again.
    void parseDictionary(const std::optional<ParseDictionary>& node) override;
    /// The class's name, the two balances and the number of transactions.
    std::string description() const override;

    /// CURDEF as given.
    OptionalText defaultCurrency() const noexcept { return texts_.get(defaultCurrency_); }
    /// @{
    /// The period of the transaction list (DTSTART, DTEND).
    std::optional<Date> transactionStartDateTime() const noexcept { return transactionStartDateTime_; }
    std::optional<Date> transactionEndDateTime() const noexcept { return transactionEndDateTime_; }
    /// @}
    /// In document order, nothing sorted, merged or removed. The transactions of one statement share
    /// one block of memory, which lives as long as any of them.
    const std::vector<std::shared_ptr<TvOFXStatementTransaction>>& statementTransactions() const noexcept {
        return statementTransactions_;
    }
    /// @{
    /// What is booked (LEDGERBAL) and what can be spent (AVAILBAL), each with its moment. Each of the four
    /// may be absent without the others; none is computed.
    const std::optional<Decimal>& ledgerBalanceAmount() const noexcept { return ledgerBalanceAmount_; }
    std::optional<Date> ledgerBalanceDateTime() const noexcept { return ledgerBalanceDateTime_; }
    const std::optional<Decimal>& availableBalanceAmount() const noexcept { return availableBalanceAmount_; }
    std::optional<Date> availableBalanceDateTime() const noexcept { return availableBalanceDateTime_; }
    /// @}

protected:
    TvOFXAccountStatement() noexcept = default;

private:
    struct Elements;
    enum Text : std::size_t { defaultCurrency_, textCount };
    /// @{
    /// The number of the element that names the account, and what to do with its aggregate.
    BRACKWELL_INTERNAL virtual std::uint32_t accountElement() const noexcept = 0;
    BRACKWELL_INTERNAL virtual void readAccount(const ParseDictionary& node) = 0;
    /// @}
    BRACKWELL_INTERNAL void readTransactions(const reading::NodeRef& list);

    internal::TextFields<textCount> texts_;
    std::optional<Date> transactionStartDateTime_;
    std::optional<Date> transactionEndDateTime_;
    std::vector<std::shared_ptr<TvOFXStatementTransaction>> statementTransactions_;
    std::optional<Decimal> ledgerBalanceAmount_;
    std::optional<Date> ledgerBalanceDateTime_;
    std::optional<Decimal> availableBalanceAmount_;
    std::optional<Date> availableBalanceDateTime_;
};

/// The statement of a bank account (STMTRS).
class BRACKWELL_EXPORT TvOFXStatementResponse final
    : public AggregateClass<TvOFXStatementResponse, TvOFXAccountStatement> {
public:
    TvOFXStatementResponse() noexcept = default;
    /// Reads a STMTRS node, with the shared helper.
    static std::shared_ptr<TvOFXStatementResponse> initWithParseDict(
        const std::optional<ParseDictionary>& node);
    std::string_view className() const noexcept override;

    /// The account of the statement; null when the document names none.
    const std::shared_ptr<TvOFXBankAccount>& bankAccountFrom() const noexcept { return bankAccountFrom_; }

private:
    BRACKWELL_INTERNAL std::uint32_t accountElement() const noexcept override;
    BRACKWELL_INTERNAL void readAccount(const ParseDictionary& node) override;

    std::shared_ptr<TvOFXBankAccount> bankAccountFrom_;
};

/// The statement of a card account (CCSTMTRS).
class BRACKWELL_EXPORT TvOFXCCStatementResponse final
    : public AggregateClass<TvOFXCCStatementResponse, TvOFXAccountStatement> {
public:
    TvOFXCCStatementResponse() noexcept = default;
    /// Reads a CCSTMTRS node, with the shared helper.
    static std::shared_ptr<TvOFXCCStatementResponse> initWithParseDict(
        const std::optional<ParseDictionary>& node);
    std::string_view className() const noexcept override;

    /// The account of the statement; null when the document names none.
    const std::shared_ptr<TvOFXCreditCardAccount>& creditCardAccountFrom() const noexcept {
        return creditCardAccountFrom_;
    }

private:
    BRACKWELL_INTERNAL std::uint32_t accountElement() const noexcept override;
    BRACKWELL_INTERNAL void readAccount(const ParseDictionary& node) override;

    std::shared_ptr<TvOFXCreditCardAccount> creditCardAccountFrom_;
};

}  // namespace brackwell
