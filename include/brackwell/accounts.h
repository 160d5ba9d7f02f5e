// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Account identifiers: which bank, card or investment account a statement, a transfer or a record
/// speaks of; and account information: the accounts that a user holds at an institution.
///
///     #include <brackwell/statements.h>
///     auto account = brackwell::TvOFXBankAccount::initWithBankID("121000248", "0001",
///                                                                brackwell::TvOFXBankAccountTypeChecking);
///     if (account->isEqualToOFXBankAccount(statement->bankAccountFrom().get())) ...

#include <brackwell/internal/text_fields.h>
#include <brackwell/model.h>

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace brackwell {
class TvOFXBankAccount;
class TvOFXInvestmentAccount;
class TvOFXCreditCardAccount;
}  // namespace brackwell

/// \cond
// Hashes that go with the equality of accounts. They differ from process to process, so that no document can
// choose accounts that make a table slow. (Doxygen knows no namespace std.)
template <>
struct BRACKWELL_EXPORT std::hash<brackwell::TvOFXBankAccount> {
    std::size_t operator()(const brackwell::TvOFXBankAccount& account) const noexcept;
};
template <>
struct BRACKWELL_EXPORT std::hash<brackwell::TvOFXCreditCardAccount> {
    std::size_t operator()(const brackwell::TvOFXCreditCardAccount& account) const noexcept;
};
template <>
struct BRACKWELL_EXPORT std::hash<brackwell::TvOFXInvestmentAccount> {
    std::size_t operator()(const brackwell::TvOFXInvestmentAccount& account) const noexcept;
};
/// \endcond

namespace brackwell {

// ---------------------------------------------------------------------------------------------
// Account identifiers

/// The kind of a bank account (ACCTTYPE). Certificates of deposit and every other text are unknown.
enum TvOFXBankAccountType : std::uint64_t {
    TvOFXBankAccountTypeUnknown = 0,      ///< another text, or no text
    TvOFXBankAccountTypeChecking = 1,     ///< CHECKING
    TvOFXBankAccountTypeSavings = 2,      ///< SAVINGS
    TvOFXBankAccountTypeMoneyMarket = 3,  ///< MONEYMARKET
    TvOFXBankAccountTypeCreditLine = 4,   ///< CREDITLINE
};

/// A bank account (BANKACCTFROM, BANKACCTTO). initWithParserDict reads it, and keeps no parse data, so the
/// ofxString is empty; the description is the OFX text. What the base has for nodes (initWithParseDict,
/// parseDictionary, setOriginalParseData) keeps the node and fills no field.
class BRACKWELL_EXPORT TvOFXBankAccount final : public AggregateClass<TvOFXBankAccount, TvOFXAggregate> {
public:
    TvOFXBankAccount() noexcept = default;

    /// An account with these three fields.
    static std::shared_ptr<TvOFXBankAccount> initWithBankID(TextArgument bankID, TextArgument accountID,
                                                            TvOFXBankAccountType type);
    /// Reads a BANKACCTFROM or BANKACCTTO node. A value that is no text is skipped.
    static std::shared_ptr<TvOFXBankAccount> initWithParserDict(const std::optional<ParseDictionary>& node);
    /// The account as a BANKACCTFROM aggregate, also when it was read from another one. Bank, number
    /// and type are always written, with an empty value when absent.
    std::string description() const override;
    /// Reads what encodeWithCoder wrote; what is missing there stays absent.
    explicit TvOFXBankAccount(const KeyedUnarchiver& coder);
    /// Writes "bID", "branchID", "aID", "aT" and "aKC"; nothing of the base class.
    void encodeWithCoder(KeyedArchiver& coder) const override;
    std::string_view className() const noexcept override;

    /// The type of an ACCTTYPE text, compared exactly.
    static TvOFXBankAccountType accountTypeFromString(std::string_view text) noexcept;
    /// The ACCTTYPE text of a type; "" for an unknown one.
    static std::string_view accountTypeStringFromAccountType(TvOFXBankAccountType type) noexcept;

    /// @{
    /// BANKID (in many countries a sort or routing number), BRANCHID, ACCTID, ACCTTYPE and ACCTKEY. Texts
    /// are valid until they are set again, and as long as the account.
    OptionalText bankID() const noexcept { return texts_.get(bankID_); }
    void setBankID(TextArgument text) { texts_.set(bankID_, text); }
    OptionalText branchID() const noexcept { return texts_.get(branchID_); }
    void setBranchID(TextArgument text) { texts_.set(branchID_, text); }
    OptionalText accountID() const noexcept { return texts_.get(accountID_); }
    void setAccountID(TextArgument text) { texts_.set(accountID_, text); }
    TvOFXBankAccountType accountType() const noexcept { return accountType_; }
    void setAccountType(TvOFXBankAccountType type) noexcept { accountType_ = type; }
    OptionalText acctKeyChecksum() const noexcept { return texts_.get(acctKeyChecksum_); }
    void setAcctKeyChecksum(TextArgument text) { texts_.set(acctKeyChecksum_, text); }
    /// @}

    /// True when the types are the same and no text differs that both accounts have. An absent text
    /// agrees with any: intended, so this is not transitive. False for null.
    bool isEqualToOFXBankAccount(const TvOFXBankAccount* other) const noexcept;
    /// @{
    /// By bank, branch, number, type and key, each of which counts; absent is before every text. For sorting
    /// and as keys, which the comparison above is not fit for; std::hash goes with it.
    bool operator==(const TvOFXBankAccount& other) const noexcept;
    std::strong_ordering operator<=>(const TvOFXBankAccount& other) const noexcept;
    /// @}

private:
    friend class TvOFXMessage;
    friend class TvOFXStatementResponse;
    struct Elements;
    enum Text : std::size_t { bankID_, branchID_, accountID_, acctKeyChecksum_, textCount };
    internal::TextFields<textCount> texts_;
    TvOFXBankAccountType accountType_ = TvOFXBankAccountTypeUnknown;
    const TvOFXResponse* statement_ = nullptr;  ///< that read it; only compared, as it may be gone
};

/// A card account (CCACCTFROM, CCACCTTO).
class BRACKWELL_EXPORT TvOFXCreditCardAccount final
    : public AggregateClass<TvOFXCreditCardAccount, TvOFXAggregate> {
public:
    TvOFXCreditCardAccount() noexcept = default;

    /// An account with a number and no key.
    static std::shared_ptr<TvOFXCreditCardAccount> initWithAccountID(TextArgument accountID);
    /// Reads a CCACCTFROM or CCACCTTO node. A value that is no text is skipped.
    explicit TvOFXCreditCardAccount(const std::optional<ParseDictionary>& node);
    /// Reads what encodeWithCoder wrote; what is missing there stays absent.
    explicit TvOFXCreditCardAccount(const KeyedUnarchiver& coder);
    /// Writes the base's archive, "aID" and "aKC".
    void encodeWithCoder(KeyedArchiver& coder) const override;
    std::string_view className() const noexcept override;

    /// @{
    /// The card's number (ACCTID) and its checksum (ACCTKEY); valid as long as the account.
    OptionalText accountID() const noexcept { return texts_.get(accountID_); }
    OptionalText acctKeyChecksum() const noexcept { return texts_.get(acctKeyChecksum_); }
    /// @}

    /// True when no text differs that both accounts have. False for null.
    bool isEqualToOFXCreditCardAccount(const TvOFXCreditCardAccount* other) const noexcept;
    /// @{
    /// By number and key, both of which count; absent is before every text. std::hash goes with it.
    bool operator==(const TvOFXCreditCardAccount& other) const noexcept;
    std::strong_ordering operator<=>(const TvOFXCreditCardAccount& other) const noexcept;
    /// @}

private:
    friend class TvOFXMessage;
    friend class TvOFXCCStatementResponse;
    struct Elements;
    enum Text : std::size_t { accountID_, acctKeyChecksum_, textCount };
    internal::TextFields<textCount> texts_;
    const TvOFXResponse* statement_ = nullptr;  ///< that read it; only compared, as it may be gone
};

/// An investment account (INVACCTFROM). Its fields are kept as the document has them, whatever their
/// kind, so they are parse values.
class BRACKWELL_EXPORT TvOFXInvestmentAccount final
    : public AggregateClass<TvOFXInvestmentAccount, TvOFXAggregate> {
public:
    TvOFXInvestmentAccount() noexcept = default;

    /// Reads an INVACCTFROM node.
    explicit TvOFXInvestmentAccount(const std::optional<ParseDictionary>& node);
    std::string_view className() const noexcept override;

    /// @{
    /// The broker (BROKERID) and the account's number there (ACCTID); nothing when the document has none.
    const ParseValue& brokerID() const noexcept { return brokerID_; }
    const ParseValue& accountID() const noexcept { return accountID_; }
    /// @}
    /// @{
    /// By the texts of broker and number; absent, and what is no text, is before every text. std::hash goes
    /// with it.
    bool operator==(const TvOFXInvestmentAccount& other) const noexcept;
    std::strong_ordering operator<=>(const TvOFXInvestmentAccount& other) const noexcept;
    /// @}

private:
    ParseValue brokerID_;
    ParseValue accountID_;
};

/// The order of the accounts that pointers of any kind point at, null first; for sorting, and for containers,
/// whose accounts must not be changed as long as they are keys:
///
///     std::map<std::shared_ptr<const TvOFXBankAccount>, Decimal, AccountLess> balances;
struct AccountLess {
    using is_transparent = void;  ///< a key need not be of the container's kind of pointer
    /// True when the first is before the second.
    template <class First, class Second>
    bool operator()(const First& a, const Second& b) const noexcept {
        return b && (!a || *a < *b);
    }
};

/// Equality of the accounts that pointers point at; null equals null only.
struct AccountEqual {
    using is_transparent = void;  ///< a key need not be of the container's kind of pointer
    /// True when both are equal.
    template <class First, class Second>
    bool operator()(const First& a, const Second& b) const noexcept {
        return a && b ? *a == *b : !a && !b;
    }
};

/// The hash that goes with AccountEqual.
struct AccountHash {
    using is_transparent = void;  ///< a key need not be of the container's kind of pointer
    /// The hash of the account; 0 for null.
    template <class Pointer>
    std::size_t operator()(const Pointer& account) const noexcept {
        return account ? std::hash<std::remove_cvref_t<decltype(*account)>>()(*account) : 0;
    }
};

// ---------------------------------------------------------------------------------------------
// Account information

/// The status of a service (SVCSTATUS). Any other text, or no text, gives None.
enum TvOFXServiceStatus : std::uint64_t {
    TvOFXServiceStatusNone = 0,       ///< another text, or no text
    TvOFXServiceStatusAvailable = 1,  ///< AVAIL: the user may ask for it
    TvOFXServiceStatusPending = 2,    ///< PEND: asked for, not yet active
    TvOFXServiceStatusActive = 3,     ///< ACTIVE
};

/// The kind of an investment account (INVACCTTYPE). Any other text, or no text, gives Unknown.
enum TvOFXInvestmentAccountType : std::uint64_t {
    TvOFXInvestmentAccountTypeUnknown = 0,     ///< another text, or no text
    TvOFXInvestmentAccountTypeIndividual = 1,  ///< INDIVIDUAL
    TvOFXInvestmentAccountTypeJoint = 2,       ///< JOINT
    TvOFXInvestmentAccountTypeTrust = 3,       ///< TRUST
    TvOFXInvestmentAccountTypeCorporate = 4,   ///< CORPORATE
};

/// The banking block of a record (BANKACCTINFO). Flags are true only for the exact text "Y".
class BRACKWELL_EXPORT TvOFXBankAccountInfo final {
public:
    TvOFXBankAccountInfo() noexcept = default;

    /// Reads a BANKACCTINFO node.
    static std::shared_ptr<TvOFXBankAccountInfo> initWithParserDict(
        const std::optional<ParseDictionary>& node);

    /// The account (BANKACCTFROM); null when the block names none.
    const std::shared_ptr<TvOFXBankAccount>& bankAcctFrom() const noexcept { return bankAcctFrom_; }
    /// @{
    /// What can be done with the account (SUPTXDL, XFERSRC, XFERDEST), and SVCSTATUS.
    bool supportsTransactionDownload() const noexcept { return supportsTransactionDownload_; }
    bool isTransferSourceAccount() const noexcept { return isTransferSourceAccount_; }
    bool isTransferDestinationAccount() const noexcept { return isTransferDestinationAccount_; }
    TvOFXServiceStatus serviceStatus() const noexcept { return serviceStatus_; }
    /// @}

    /// @{
    /// The fields of bankAcctFrom; nothing, or unknown, without an account.
    OptionalText bankID() const noexcept;
    OptionalText branchID() const noexcept;
    OptionalText accountID() const noexcept;
    TvOFXBankAccountType accountType() const noexcept;
    OptionalText acctKeyChecksum() const noexcept;
    /// @}

private:
    struct Elements;
    std::shared_ptr<TvOFXBankAccount> bankAcctFrom_;
    internal::EmptiedByMove<bool> supportsTransactionDownload_;
    internal::EmptiedByMove<bool> isTransferSourceAccount_;
    internal::EmptiedByMove<bool> isTransferDestinationAccount_;
    internal::EmptiedByMove<TvOFXServiceStatus> serviceStatus_;
};

/// The card block of a record (CCACCTINFO). Flags are true only for the exact text "Y".
class BRACKWELL_EXPORT TvOFXCreditCardAccountInfo final {
public:
    TvOFXCreditCardAccountInfo() noexcept = default;

    /// Reads a CCACCTINFO node.
    static std::shared_ptr<TvOFXCreditCardAccountInfo> initWithParserDict(
        const std::optional<ParseDictionary>& node);

    /// The account (CCACCTFROM); null when the block names none.
    const std::shared_ptr<TvOFXCreditCardAccount>& creditCardAccountFrom() const noexcept {
        return creditCardAccountFrom_;
    }
    /// @{
    /// What can be done with the account (SUPTXDL, XFERSRC, XFERDEST), and SVCSTATUS.
    bool supportsTransactionDownload() const noexcept { return supportsTransactionDownload_; }
    bool isTransferSourceAccount() const noexcept { return isTransferSourceAccount_; }
    bool isTransferDestinationAccount() const noexcept { return isTransferDestinationAccount_; }
    TvOFXServiceStatus serviceStatus() const noexcept { return serviceStatus_; }
    /// @}

    /// @{
    /// The fields of creditCardAccountFrom; nothing without an account.
    OptionalText accountID() const noexcept;
    OptionalText acctKeyChecksum() const noexcept;
    /// @}

private:
    struct Elements;
    std::shared_ptr<TvOFXCreditCardAccount> creditCardAccountFrom_;
    internal::EmptiedByMove<bool> supportsTransactionDownload_;
    internal::EmptiedByMove<bool> isTransferSourceAccount_;
    internal::EmptiedByMove<bool> isTransferDestinationAccount_;
    internal::EmptiedByMove<TvOFXServiceStatus> serviceStatus_;
};

/// The investment block of a record (INVACCTINFO).
class BRACKWELL_EXPORT TvOFXInvestmentAccountInfo final
    : public AggregateClass<TvOFXInvestmentAccountInfo, TvOFXAggregate> {
public:
    TvOFXInvestmentAccountInfo() noexcept = default;

    /// Reads an INVACCTINFO node.
    explicit TvOFXInvestmentAccountInfo(const std::optional<ParseDictionary>& node);
    std::string_view className() const noexcept override;

    /// The account (INVACCTFROM); null when the block names none.
    const std::shared_ptr<TvOFXInvestmentAccount>& investmentAccount() const noexcept {
        return investmentAccount_;
    }
    /// @{
    /// The kind of plan in the United States (USPRODUCTTYPE), whether checks can be written (CHECKING, true
    /// only for "Y"), who holds the account (INVACCTTYPE), what is said of trading options (OPTIONLEVEL) and
    /// SVCSTATUS. Texts are valid as long as the object.
    OptionalText usproductType() const noexcept { return texts_.get(usproductType_); }
    bool hasCheckWritingPrivileges() const noexcept { return hasCheckWritingPrivileges_; }
    TvOFXInvestmentAccountType accountType() const noexcept { return accountType_; }
    OptionalText optionLevel() const noexcept { return texts_.get(optionLevel_); }
    TvOFXServiceStatus serviceStatus() const noexcept { return serviceStatus_; }
    /// @}

private:
    struct Elements;
    enum Text : std::size_t { usproductType_, optionLevel_, textCount };
    std::shared_ptr<TvOFXInvestmentAccount> investmentAccount_;
    internal::TextFields<textCount> texts_;
    bool hasCheckWritingPrivileges_ = false;
    TvOFXInvestmentAccountType accountType_ = TvOFXInvestmentAccountTypeUnknown;
    TvOFXServiceStatus serviceStatus_ = TvOFXServiceStatusNone;
};

/// The payments block of a record. Nothing fills it; it exists so that a record can name one.
class BRACKWELL_EXPORT TvOFXPaymentsAccountInfo final {
public:
    TvOFXServiceStatus serviceStatus() const noexcept { return TvOFXServiceStatusNone; }  ///< always none
};

/// One record of an account-information response (ACCTINFO). Only bank blocks are read: the other
/// blocks are recognised and left empty, which is intended.
class BRACKWELL_EXPORT TvOFXAccountInfo final {
public:
    TvOFXAccountInfo() noexcept = default;

    /// Reads an ACCTINFO node.
    static std::shared_ptr<TvOFXAccountInfo> initWithParserDict(const std::optional<ParseDictionary>& node);

    /// @{
    /// What the institution calls the account (DESC), and whom to telephone about it (PHONE); valid as long
    /// as the record.
    OptionalText accountDescription() const noexcept { return texts_.get(accountDescription_); }
    OptionalText accountPhone() const noexcept { return texts_.get(accountPhone_); }
    /// @}
    /// @{
    /// The blocks. That of a bank account is null when the record has none, the others always are.
    const std::shared_ptr<TvOFXBankAccountInfo>& bankAccountInfo() const noexcept { return bankAccountInfo_; }
    const std::shared_ptr<TvOFXCreditCardAccountInfo>& creditCardAccountInfo() const noexcept {
        return creditCardAccountInfo_;
    }
    const std::shared_ptr<TvOFXPaymentsAccountInfo>& paymentsAccountInfo() const noexcept {
        return paymentsAccountInfo_;
    }
    const std::shared_ptr<TvOFXInvestmentAccountInfo>& investmentAccountInfo() const noexcept {
        return investmentAccountInfo_;
    }
    /// @}
    /// The SVCSTATUS that stands directly in the record, not in one of its blocks.
    TvOFXServiceStatus serviceStatus() const noexcept { return serviceStatus_; }

private:
    struct Elements;
    enum Text : std::size_t { accountDescription_, accountPhone_, textCount };
    internal::TextFields<textCount> texts_;
    std::shared_ptr<TvOFXBankAccountInfo> bankAccountInfo_;
    std::shared_ptr<TvOFXCreditCardAccountInfo> creditCardAccountInfo_;
    std::shared_ptr<TvOFXPaymentsAccountInfo> paymentsAccountInfo_;
    std::shared_ptr<TvOFXInvestmentAccountInfo> investmentAccountInfo_;
    internal::EmptiedByMove<TvOFXServiceStatus> serviceStatus_;
};

/// The account-information response (ACCTINFORS): the accounts that the user holds.
class BRACKWELL_EXPORT TvOFXAccountInfoResponse final
    : public AggregateClass<TvOFXAccountInfoResponse, TvOFXResponse> {
public:
    TvOFXAccountInfoResponse() noexcept = default;

    /// Reads an ACCTINFORS node. The date is converted by the shared helper.
    explicit TvOFXAccountInfoResponse(const std::optional<ParseDictionary>& node);
    /// "TvOFXAccountInfoResponse containing 3 accounts."
    std::string description() const override;
    std::string_view className() const noexcept override;

    /// When the list last changed (DTACCTUP).
    std::optional<Date> lastUpdateDateTime() const noexcept { return lastUpdateDateTime_; }
    /// The records in document order.
    const std::vector<std::shared_ptr<TvOFXAccountInfo>>& accountInfos() const noexcept {
        return accountInfos_;
    }

private:
    struct Elements;
    std::optional<Date> lastUpdateDateTime_;
    std::vector<std::shared_ptr<TvOFXAccountInfo>> accountInfos_;
};

/// The accounts of a response as flat views, and the response as bytes: an application stores `data`
/// and later gets the same accounts back with `initWithData`, as long as no text of the response has "<" or
/// an entity in it. The bytes are OFX text without escapes: intended. So a text with "<" comes back cut off
/// there, or takes its record or the whole response with it, and one that reads like an entity ("&lt;") comes
/// back as another. How an application notices before it stores them:
///
///     auto restored = brackwell::TvOFXUserAccountInfo::initWithData(info->data());
///     bool isWhole = restored->acctInfoResponse()->originalParseData() ==
///                    info->acctInfoResponse()->originalParseData();
///
/// A keyed archive of the response gives every text back:
///
///     brackwell::KeyedArchiver archiver;
///     info->acctInfoResponse()->encodeWithCoder(archiver);
///     store(archiver.archivedData());                                 // later:
///     auto archive = brackwell::KeyedUnarchiver::open(*bytes);
///     auto response = brackwell::TvOFXAccountInfoResponse::initWithParseDict(
///         brackwell::TvOFXAggregate::initWithCoder(*archive)->originalParseData());
///     info = brackwell::TvOFXUserAccountInfo::initWithAccountInfoResponse(response);
class BRACKWELL_EXPORT TvOFXUserAccountInfo final {
public:
    /// No response and no accounts.
    TvOFXUserAccountInfo() noexcept = default;

    static std::shared_ptr<TvOFXUserAccountInfo> init();  ///< no response and no accounts
    /// Keeps the response and makes a view of each of its records.
    static std::shared_ptr<TvOFXUserAccountInfo> initWithAccountInfoResponse(
        std::shared_ptr<TvOFXAccountInfoResponse> response);
    /// Restores what `data` wrote. Bytes that do not parse give a response without records and without
    /// originalParseData; the comment of the class says which texts make such bytes.
    static std::shared_ptr<TvOFXUserAccountInfo> initWithData(const std::optional<Data>& data);

    /// The response's ofxString as UTF-8; nothing without a response.
    std::optional<Data> data() const;
    /// A view of each record, in their order; empty without a response.
    const std::vector<std::shared_ptr<TvOFXAccount>>& allAccounts() const noexcept { return accounts_; }
    /// The response's records; null without a response. Valid as long as this object.
    const std::vector<std::shared_ptr<TvOFXAccountInfo>>* allAccountInfos() const noexcept;
    /// The response; null when there is none.
    const std::shared_ptr<TvOFXAccountInfoResponse>& acctInfoResponse() const noexcept {
        return acctInfoResponse_;
    }

private:
    std::shared_ptr<TvOFXAccountInfoResponse> acctInfoResponse_;
    std::vector<std::shared_ptr<TvOFXAccount>> accounts_;
};

}  // namespace brackwell
