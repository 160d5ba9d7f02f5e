// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>
#include <nanobind/nanobind.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "field.h"

namespace brackwell::python {

/// An opened file with what is needed to open it once more elsewhere.
struct Document {  // without objects of Python, since a table may be released where their lock is not held
    OpenedFile file;
    OpenOptions options;
    std::optional<std::string> path;  ///< as the system has it; nothing when it was opened from bytes
};

/// @{
/// A statement of a document, which is found again by its place in it.
struct AccountHandle {
    std::shared_ptr<Document> document;
    std::size_t index;
};
struct InvestmentHandle {
    std::shared_ptr<Document> document;
    std::size_t index;
};
template <>
struct HandleOf<TvOFXAccountStatement> {
    using type = AccountHandle;
    static const TvOFXAccountStatement& object(const type& handle) {
        return *handle.document->file.statements()[handle.index];
    }
};
template <>
struct HandleOf<InvestmentStatement> {
    using type = InvestmentHandle;
    static const InvestmentStatement& object(const type& handle) {
        return handle.document->file.investmentStatements()[handle.index];
    }
};
/// @}

/// @{
/// Objects that the library shares.
template <class T>
struct SharedHandle {
    using type = std::shared_ptr<const T>;
    static const T& object(const type& handle) { return *handle; }
};
template <>
struct HandleOf<TvOFXStatementTransaction> : SharedHandle<TvOFXStatementTransaction> {};
template <>
struct HandleOf<TvOFXPayee> : SharedHandle<TvOFXPayee> {};
template <>
struct HandleOf<TvOFXBankAccount> : SharedHandle<TvOFXBankAccount> {};
template <>
struct HandleOf<TvOFXCreditCardAccount> : SharedHandle<TvOFXCreditCardAccount> {};
template <>
struct HandleOf<TvOFXInvestmentAccount> : SharedHandle<TvOFXInvestmentAccount> {};
template <>
struct HandleOf<TvOFXStatus> : SharedHandle<TvOFXStatus> {};
template <>
struct HandleOf<TvOFXSignOnResponse> : SharedHandle<TvOFXSignOnResponse> {};
template <>
struct HandleOf<TvOFXFinancialInstitutionIdentification>
    : SharedHandle<TvOFXFinancialInstitutionIdentification> {};
template <>
struct HandleOf<TvOFXFIProfileResponse> : SharedHandle<TvOFXFIProfileResponse> {};
template <>
struct HandleOf<TvOFXSignOnInfo> : SharedHandle<TvOFXSignOnInfo> {};
template <>
struct HandleOf<TvOFXMessageSetCore> : SharedHandle<TvOFXMessageSetCore> {};
template <>
struct HandleOf<TvOFXMessageSetProfileSignOn> : SharedHandle<TvOFXMessageSetProfileSignOn> {};
template <>
struct HandleOf<TvOFXMessageSetProfileSignUp> : SharedHandle<TvOFXMessageSetProfileSignUp> {};
template <>
struct HandleOf<TvOFXMessageSetProfileBanking> : SharedHandle<TvOFXMessageSetProfileBanking> {};
template <>
struct HandleOf<TvOFXMessageSetProfileCreditCard> : SharedHandle<TvOFXMessageSetProfileCreditCard> {};
/// @}

// clang-format off
/// @{
/// The names of the classes in Python.
template <> struct NameOf<TvOFXAccountStatement> { static constexpr const char* value = "Account"; };
template <> struct NameOf<TvOFXStatementTransaction> { static constexpr const char* value = "Transaction"; };
template <> struct NameOf<TvOFXPayee> { static constexpr const char* value = "Payee"; };
template <> struct NameOf<TvOFXBankAccount> { static constexpr const char* value = "BankAccount"; };
template <> struct NameOf<TvOFXCreditCardAccount> { static constexpr const char* value = "CreditCardAccount"; };
template <> struct NameOf<TvOFXInvestmentAccount> { static constexpr const char* value = "BrokerAccount"; };
template <> struct NameOf<TvOFXStatus> { static constexpr const char* value = "Status"; };
template <> struct NameOf<ListedAccount> { static constexpr const char* value = "ListedAccount"; };
template <> struct NameOf<TransactionCurrency> { static constexpr const char* value = "Currency"; };
template <> struct NameOf<InvestmentStatement> { static constexpr const char* value = "InvestmentAccount"; };
template <> struct NameOf<InvestmentTransaction> { static constexpr const char* value = "InvestmentTransaction"; };
template <> struct NameOf<Position> { static constexpr const char* value = "Position"; };
template <> struct NameOf<InvestmentBalance> { static constexpr const char* value = "InvestmentBalance"; };
template <> struct NameOf<ListedBalance> { static constexpr const char* value = "ListedBalance"; };
template <> struct NameOf<Amounts401k> { static constexpr const char* value = "Amounts401k"; };
template <> struct NameOf<Period401k> { static constexpr const char* value = "Period401k"; };
template <> struct NameOf<Loan401k> { static constexpr const char* value = "Loan401k"; };
template <> struct NameOf<Plan401k> { static constexpr const char* value = "Plan401k"; };
template <> struct NameOf<Security> { static constexpr const char* value = "Security"; };
template <> struct NameOf<AssetPortion> { static constexpr const char* value = "AssetPortion"; };
template <> struct NameOf<TvOFXSignOnResponse> { static constexpr const char* value = "SignOn"; };
template <> struct NameOf<TvOFXFinancialInstitutionIdentification> { static constexpr const char* value = "Institution"; };
template <> struct NameOf<TvOFXFIProfileResponse> { static constexpr const char* value = "Profile"; };
template <> struct NameOf<TvOFXSignOnInfo> { static constexpr const char* value = "SignOnRealm"; };
template <> struct NameOf<TvOFXMessageSetCore> { static constexpr const char* value = "MessageSetCore"; };
template <> struct NameOf<TvOFXMessageSetProfileSignOn> { static constexpr const char* value = "SignOnMessageSet"; };
template <> struct NameOf<TvOFXMessageSetProfileSignUp> { static constexpr const char* value = "SignUpMessageSet"; };
template <> struct NameOf<TvOFXMessageSetProfileBanking> { static constexpr const char* value = "BankingMessageSet"; };
template <> struct NameOf<TvOFXMessageSetProfileCreditCard> { static constexpr const char* value = "CreditCardMessageSet"; };
template <> struct NameOf<Finding> { static constexpr const char* value = "Finding"; };
template <> struct NameOf<RepairChange> { static constexpr const char* value = "Change"; };
template <> struct NameOf<OpenError> { static constexpr const char* value = "Failure"; };
/// @}
// clang-format on

// clang-format off
/// @{
/// The fields of each class stand in the source that is named after what it is.
template <> const std::vector<Field<TvOFXAccountStatement>>& fieldsOf<TvOFXAccountStatement>();
template <> const std::vector<Field<TvOFXStatementTransaction>>& fieldsOf<TvOFXStatementTransaction>();
template <> const std::vector<Field<TvOFXPayee>>& fieldsOf<TvOFXPayee>();
template <> const std::vector<Field<TvOFXBankAccount>>& fieldsOf<TvOFXBankAccount>();
template <> const std::vector<Field<TvOFXCreditCardAccount>>& fieldsOf<TvOFXCreditCardAccount>();
template <> const std::vector<Field<TvOFXInvestmentAccount>>& fieldsOf<TvOFXInvestmentAccount>();
template <> const std::vector<Field<TvOFXStatus>>& fieldsOf<TvOFXStatus>();
template <> const std::vector<Field<ListedAccount>>& fieldsOf<ListedAccount>();
template <> const std::vector<Field<TransactionCurrency>>& fieldsOf<TransactionCurrency>();
template <> const std::vector<Field<InvestmentStatement>>& fieldsOf<InvestmentStatement>();
template <> const std::vector<Field<InvestmentTransaction>>& fieldsOf<InvestmentTransaction>();
template <> const std::vector<Field<Position>>& fieldsOf<Position>();
template <> const std::vector<Field<InvestmentBalance>>& fieldsOf<InvestmentBalance>();
template <> const std::vector<Field<ListedBalance>>& fieldsOf<ListedBalance>();
template <> const std::vector<Field<Amounts401k>>& fieldsOf<Amounts401k>();
template <> const std::vector<Field<Period401k>>& fieldsOf<Period401k>();
template <> const std::vector<Field<Loan401k>>& fieldsOf<Loan401k>();
template <> const std::vector<Field<Plan401k>>& fieldsOf<Plan401k>();
template <> const std::vector<Field<Security>>& fieldsOf<Security>();
template <> const std::vector<Field<AssetPortion>>& fieldsOf<AssetPortion>();
template <> const std::vector<Field<TvOFXSignOnResponse>>& fieldsOf<TvOFXSignOnResponse>();
template <> const std::vector<Field<TvOFXFinancialInstitutionIdentification>>& fieldsOf<TvOFXFinancialInstitutionIdentification>();
template <> const std::vector<Field<TvOFXFIProfileResponse>>& fieldsOf<TvOFXFIProfileResponse>();
template <> const std::vector<Field<TvOFXSignOnInfo>>& fieldsOf<TvOFXSignOnInfo>();
template <> const std::vector<Field<TvOFXMessageSetCore>>& fieldsOf<TvOFXMessageSetCore>();
template <> const std::vector<Field<TvOFXMessageSetProfileSignOn>>& fieldsOf<TvOFXMessageSetProfileSignOn>();
template <> const std::vector<Field<TvOFXMessageSetProfileSignUp>>& fieldsOf<TvOFXMessageSetProfileSignUp>();
template <> const std::vector<Field<TvOFXMessageSetProfileBanking>>& fieldsOf<TvOFXMessageSetProfileBanking>();
template <> const std::vector<Field<TvOFXMessageSetProfileCreditCard>>& fieldsOf<TvOFXMessageSetProfileCreditCard>();
template <> const std::vector<Field<Finding>>& fieldsOf<Finding>();
template <> const std::vector<Field<RepairChange>>& fieldsOf<RepairChange>();
template <> const std::vector<Field<OpenError>>& fieldsOf<OpenError>();
/// @}
// clang-format on

/// @{
/// Each adds its classes to the module.
void bindTransactions(nb::module_& module);
void bindAccounts(nb::module_& module);
void bindInvestmentTransactions(nb::module_& module);
void bindHoldings(nb::module_& module);
void bindPlans(nb::module_& module);
void bindSecurities(nb::module_& module);
void bindInvestmentAccounts(nb::module_& module);
void bindProfile(nb::module_& module);
void bindFindings(nb::module_& module);
void bindDocument(nb::module_& module);
/// @}

}  // namespace brackwell::python
