// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Investment statements, their transactions, positions and balances, and the securities that they speak of.
///
///     brackwell::TvOFXParser parser(bytes);
///     const auto document = parser.parseWithError()->ofxData;
///     const brackwell::SecurityList securities(brackwell::securities(document));
///     for (const auto& statement : brackwell::investmentStatements(document))
///         for (const auto& position : statement.positions())
///             if (const auto security = securities.find(position))
///                 std::cout << security->name().value_or("?") << '\n';
///
/// Each object is a value that shares the document: a copy costs a reference count, and any of them keeps
/// the whole text alive. Nothing in it changes, so threads may share it. Texts are valid as long as any
/// object of the document.
///
/// Fields are flat, however the document nests them (INVBUY, INVTRAN, SECINFO), and may stand in any order.
/// What the document does not have is absent; of a field that it has twice the first one counts, or the
/// longer form (MEMO2) that the OFX standard has for it, and the other is in originalParseData. An amount or
/// date whose text is not one is absent as well, but text() has it. A word of a closed list (BUYTYPE) that
/// the list does not have is `unknown`; text() has the word.

#include <brackwell/investment_records.h>
#include <brackwell/statements.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace brackwell {

// ---------------------------------------------------------------------------------------------
// Transactions

/// What an investment transaction is, by the name of its aggregate.
enum class InvestmentTransactionKind : std::uint8_t {
    buyDebt,          ///< BUYDEBT
    buyFund,          ///< BUYMF
    buyOption,        ///< BUYOPT
    buyOther,         ///< BUYOTHER
    buyStock,         ///< BUYSTOCK
    optionClosure,    ///< CLOSUREOPT: exercised, assigned or expired
    income,           ///< INCOME
    expense,          ///< INVEXPENSE
    journalFund,      ///< JRNLFUND: money between sub-accounts
    journalSecurity,  ///< JRNLSEC: a security between sub-accounts
    marginInterest,   ///< MARGININTEREST
    reinvestment,     ///< REINVEST: income that bought more of the security
    returnOfCapital,  ///< RETOFCAP
    sellDebt,         ///< SELLDEBT
    sellFund,         ///< SELLMF
    sellOption,       ///< SELLOPT
    sellOther,        ///< SELLOTHER
    sellStock,        ///< SELLSTOCK
    split,            ///< SPLIT
    transfer,         ///< TRANSFER: into or out of the account
    bankTransaction,  ///< INVBANKTRAN: money; see InvestmentTransaction::bankTransaction
};

/// A transaction of an investment statement, whatever its kind. Money and units have the signs of the
/// document: by the OFX standard a total is negative when money leaves the account, units when a security
/// does. Amounts are in the statement's currency unless currency() says otherwise.
class BRACKWELL_EXPORT InvestmentTransaction final : public InvestmentRecord {
public:
    /// For the library only.
    InvestmentTransaction(std::shared_ptr<const investments::Records> records, std::uint32_t number) noexcept
        : InvestmentRecord(std::move(records), number) {}

    InvestmentTransactionKind kind() const noexcept;        ///< the aggregate
    OptionalText fiTransactionID() const noexcept;          ///< FITID: the institution's identifier
    OptionalText serverTransactionID() const noexcept;      ///< SRVRTID2, else SRVRTID
    std::optional<Date> tradeDate() const noexcept;         ///< DTTRADE
    std::optional<Date> settleDate() const noexcept;        ///< DTSETTLE
    OptionalText memo() const noexcept;                     ///< MEMO2, else MEMO
    OptionalText reversalFITID() const noexcept;            ///< REVERSALFITID: of what this one reverses
    OptionalText securityID() const noexcept;               ///< UNIQUEID; see SecurityList
    OptionalText securityIDType() const noexcept;           ///< UNIQUEIDTYPE: CUSIP, ISIN and others
    std::optional<TradeType> tradeType() const noexcept;    ///< BUYTYPE, SELLTYPE, OPTBUYTYPE, OPTSELLTYPE
    std::optional<IncomeType> incomeType() const noexcept;  ///< INCOMETYPE
    std::optional<OptionAction> optionAction() const noexcept;      ///< OPTACTION
    std::optional<TransferAction> transferAction() const noexcept;  ///< TFERACTION
    std::optional<PositionType> positionType() const noexcept;      ///< POSTYPE
    std::optional<SellReason> sellReason() const noexcept;          ///< SELLREASON
    std::optional<Decimal> units() const noexcept;        ///< UNITS: shares, contracts, or face value
    std::optional<Decimal> unitPrice() const noexcept;    ///< UNITPRICE; of debts for 100 of face value
    std::optional<Decimal> total() const noexcept;        ///< TOTAL: what went into or out of the account
    std::optional<Decimal> commission() const noexcept;   ///< COMMISSION
    std::optional<Decimal> fees() const noexcept;         ///< FEES
    std::optional<Decimal> taxes() const noexcept;        ///< TAXES
    std::optional<Decimal> load() const noexcept;         ///< LOAD: what a fund charges
    std::optional<Decimal> markup() const noexcept;       ///< MARKUP: part of the unit price
    std::optional<Decimal> markdown() const noexcept;     ///< MARKDOWN: part of the unit price
    std::optional<Decimal> withholding() const noexcept;  ///< WITHHOLDING: of federal taxes
    std::optional<Decimal> stateWithholding() const noexcept;       ///< STATEWITHHOLDING
    std::optional<Decimal> penalty() const noexcept;                ///< PENALTY
    std::optional<Decimal> accruedInterest() const noexcept;        ///< ACCRDINT: not in the total
    std::optional<Decimal> gain() const noexcept;                   ///< GAIN
    std::optional<Decimal> averageCostBasis() const noexcept;       ///< AVGCOSTBASIS
    std::optional<Decimal> reversalFees() const noexcept;           ///< REVERSALFEES
    std::optional<bool> isTaxExempt() const noexcept;               ///< TAXEXEMPT: "Y" or "N"
    std::optional<SubAccount> securitySubAccount() const noexcept;  ///< SUBACCTSEC
    std::optional<SubAccount> fundSubAccount() const noexcept;      ///< SUBACCTFUND
    std::optional<SubAccount> fromSubAccount() const noexcept;      ///< SUBACCTFROM
    std::optional<SubAccount> toSubAccount() const noexcept;        ///< SUBACCTTO
    std::optional<Decimal> sharesPerContract() const noexcept;      ///< SHPERCTRCT
    std::optional<OptionSecurity> secured() const noexcept;         ///< SECURED
    OptionalText relatedFITID() const noexcept;  ///< RELFITID: of a transaction that belongs to it
    std::optional<RelationType> relationType() const noexcept;  ///< RELTYPE
    std::optional<Decimal> oldUnits() const noexcept;           ///< OLDUNITS: before a split
    std::optional<Decimal> newUnits() const noexcept;           ///< NEWUNITS: after it
    std::optional<Decimal> numerator() const noexcept;          ///< NUMERATOR of the split's ratio
    std::optional<Decimal> denominator() const noexcept;        ///< DENOMINATOR of the split's ratio
    std::optional<Decimal> cashForFractions() const noexcept;   ///< FRACCASH
    std::optional<Date> purchaseDate() const noexcept;          ///< DTPURCHASE
    std::optional<Source401k> source401k() const noexcept;      ///< INV401KSOURCE
    OptionalText loanID() const noexcept;                       ///< LOANID: the plan's loan that is repaid
    std::optional<Decimal> loanPrincipal() const noexcept;      ///< LOANPRINCIPAL: the part that repays it
    std::optional<Decimal> loanInterest() const noexcept;       ///< LOANINTEREST: the part that is interest
    std::optional<Date> payrollDate() const noexcept;           ///< DTPAYROLL
    std::optional<bool> isPriorYearContribution() const noexcept;  ///< PRIORYEARCONTRIB: "Y" or "N"
    std::optional<TransactionCurrency> currency() const;           ///< CURRENCY or ORIGCURRENCY
    /// The other account of a transfer (INVACCTFROM); a new object on each call, null when there is none.
    std::shared_ptr<TvOFXInvestmentAccount> transferAccount() const;
    /// Of a bankTransaction the transaction itself (STMTTRN); null for every other kind, and when the
    /// document has none in it. An STMTTRN that stands alone among investment transactions, or is not the
    /// first in its INVBANKTRAN, is a bankTransaction as well.
    std::shared_ptr<TvOFXStatementTransaction> bankTransaction() const noexcept;
};

// ---------------------------------------------------------------------------------------------
// Positions and balances

/// What is held, by the name of its aggregate: POSDEBT, POSMF, POSOPT, POSOTHER, POSSTOCK.
enum class PositionKind : std::uint8_t { debt, fund, option, other, stock };

/// A security that is held.
class BRACKWELL_EXPORT Position final : public InvestmentRecord {
public:
    /// For the library only.
    Position(std::shared_ptr<const investments::Records> records, std::uint32_t number) noexcept
        : InvestmentRecord(std::move(records), number) {}

    PositionKind kind() const noexcept;                         ///< the aggregate
    OptionalText securityID() const noexcept;                   ///< UNIQUEID; see SecurityList
    OptionalText securityIDType() const noexcept;               ///< UNIQUEIDTYPE: CUSIP, ISIN and others
    std::optional<SubAccount> subAccount() const noexcept;      ///< HELDINACCT
    std::optional<PositionType> positionType() const noexcept;  ///< POSTYPE
    std::optional<Decimal> units() const noexcept;              ///< UNITS: shares, contracts, or face value
    std::optional<Decimal> unitPrice() const noexcept;          ///< UNITPRICE; of debts for 100 of face value
    std::optional<Decimal> marketValue() const noexcept;        ///< MKTVAL
    std::optional<Date> priceDate() const noexcept;             ///< DTPRICEASOF
    std::optional<Decimal> averageCostBasis() const noexcept;   ///< AVGCOSTBASIS
    OptionalText memo() const noexcept;                         ///< MEMO2, else MEMO
    std::optional<Source401k> source401k() const noexcept;      ///< INV401KSOURCE
    std::optional<OptionSecurity> secured() const noexcept;     ///< SECURED
    std::optional<Decimal> unitsStreet() const noexcept;        ///< UNITSSTREET: held by the institution
    std::optional<Decimal> unitsUser() const noexcept;          ///< UNITSUSER: held by the user
    std::optional<bool> reinvestsDividends() const noexcept;    ///< REINVDIV: "Y" or "N"
    std::optional<bool> reinvestsGains() const noexcept;        ///< REINVCG: "Y" or "N"
    std::optional<TransactionCurrency> currency() const;        ///< CURRENCY
};

/// One of the balances that an institution adds (BAL).
class BRACKWELL_EXPORT ListedBalance final : public InvestmentRecord {
public:
    /// For the library only.
    ListedBalance(std::shared_ptr<const investments::Records> records, std::uint32_t number) noexcept
        : InvestmentRecord(std::move(records), number) {}

    OptionalText name() const noexcept;                   ///< NAME
    OptionalText explanation() const noexcept;            ///< DESC
    std::optional<BalanceType> type() const noexcept;     ///< BALTYPE
    std::optional<Decimal> value() const noexcept;        ///< VALUE
    std::optional<Date> asOf() const noexcept;            ///< DTASOF
    std::optional<TransactionCurrency> currency() const;  ///< CURRENCY
};

/// The balances of an investment account (INVBAL).
class BRACKWELL_EXPORT InvestmentBalance final : public InvestmentRecord {
public:
    /// For the library only.
    InvestmentBalance(std::shared_ptr<const investments::Records> records, std::uint32_t number) noexcept
        : InvestmentRecord(std::move(records), number) {}

    std::optional<Decimal> cash() const noexcept;          ///< AVAILCASH, in all sub-accounts
    std::optional<Decimal> margin() const noexcept;        ///< MARGINBALANCE; positive is what the user has
    std::optional<Decimal> shortBalance() const noexcept;  ///< SHORTBALANCE: market value of short positions
    std::optional<Decimal> buyingPower() const noexcept;   ///< BUYPOWER
    std::vector<ListedBalance> listed() const;             ///< BAL, in document order
};

// ---------------------------------------------------------------------------------------------
// Retirement plans (401(k))

/// Money of a plan by its source: the plan's balance (INV401KBAL), or what was paid in, taken out or earned
/// in a period (CONTRIBUTIONS, WITHDRAWALS, EARNINGS).
class BRACKWELL_EXPORT Amounts401k final : public InvestmentRecord {
public:
    /// For the library only.
    Amounts401k(std::shared_ptr<const investments::Records> records, std::uint32_t number) noexcept
        : InvestmentRecord(std::move(records), number) {}

    std::optional<Decimal> cash() const noexcept;            ///< CASHBAL; of a balance only
    std::optional<Decimal> preTax() const noexcept;          ///< PRETAX
    std::optional<Decimal> afterTax() const noexcept;        ///< AFTERTAX
    std::optional<Decimal> match() const noexcept;           ///< MATCH: of the employer
    std::optional<Decimal> profitSharing() const noexcept;   ///< PROFITSHARING
    std::optional<Decimal> rollover() const noexcept;        ///< ROLLOVER
    std::optional<Decimal> otherVested() const noexcept;     ///< OTHERVEST
    std::optional<Decimal> otherNonVested() const noexcept;  ///< OTHERNONVEST
    std::optional<Decimal> total() const noexcept;           ///< TOTAL
    std::vector<ListedBalance> listed() const;               ///< BAL, in document order; of a balance only
};

/// What happened in a period: YEARTODATE, INCEPTODATE, also written INCEPTTODATE, or PERIODTODATE, which
/// elementName tells.
class BRACKWELL_EXPORT Period401k final : public InvestmentRecord {
public:
    /// For the library only.
    Period401k(std::shared_ptr<const investments::Records> records, std::uint32_t number) noexcept
        : InvestmentRecord(std::move(records), number) {}

    std::optional<Date> start() const noexcept;        ///< DTSTART
    std::optional<Date> end() const noexcept;          ///< DTEND
    std::optional<Amounts401k> contributions() const;  ///< CONTRIBUTIONS
    std::optional<Amounts401k> withdrawals() const;    ///< WITHDRAWALS
    std::optional<Amounts401k> earnings() const;       ///< EARNINGS
};

/// A loan that a plan gave to its member (LOANINFO).
class BRACKWELL_EXPORT Loan401k final : public InvestmentRecord {
public:
    /// For the library only.
    Loan401k(std::shared_ptr<const investments::Records> records, std::uint32_t number) noexcept
        : InvestmentRecord(std::move(records), number) {}

    OptionalText loanID() const noexcept;                            ///< LOANID
    OptionalText explanation() const noexcept;                       ///< LOANDESC
    std::optional<Decimal> initialBalance() const noexcept;          ///< INITIALLOANBAL
    std::optional<Date> startDate() const noexcept;                  ///< LOANSTARTDATE
    std::optional<Decimal> currentBalance() const noexcept;          ///< CURRENTLOANBAL
    std::optional<Date> asOf() const noexcept;                       ///< DTASOF
    std::optional<Decimal> rate() const noexcept;                    ///< LOANRATE: percent a year
    std::optional<Decimal> payment() const noexcept;                 ///< LOANPMTAMT
    std::optional<LoanPaymentFrequency> frequency() const noexcept;  ///< LOANPMTFREQ
    std::optional<Decimal> initialPayments() const noexcept;         ///< LOANPMTSINITIAL: how many
    std::optional<Decimal> remainingPayments() const noexcept;       ///< LOANPMTSREMAINING: how many
    std::optional<Date> maturityDate() const noexcept;               ///< LOANMATURITYDATE
    std::optional<Decimal> projectedInterest() const noexcept;       ///< LOANTOTALPROJINTEREST
    std::optional<Decimal> interestToDate() const noexcept;          ///< LOANINTERESTTODATE
    std::optional<Date> nextPaymentDate() const noexcept;            ///< LOANNEXTPMTDATE
};

/// The plan itself (INV401K). What is paid into which security (CONTRIBINFO) is in originalParseData.
class BRACKWELL_EXPORT Plan401k final : public InvestmentRecord {
public:
    /// For the library only.
    Plan401k(std::shared_ptr<const investments::Records> records, std::uint32_t number) noexcept
        : InvestmentRecord(std::move(records), number) {}

    OptionalText employerName() const noexcept;                   ///< EMPLOYERNAME
    OptionalText planID() const noexcept;                         ///< PLANID
    std::optional<Date> joinDate() const noexcept;                ///< PLANJOINDATE
    OptionalText employerContact() const noexcept;                ///< EMPLOYERCONTACTINFO
    OptionalText brokerContact() const noexcept;                  ///< BROKERCONTACTINFO
    std::optional<Decimal> preTaxDeferral() const noexcept;       ///< DEFERPCTPRETAX: percent of pay
    std::optional<Decimal> afterTaxDeferral() const noexcept;     ///< DEFERPCTAFTERTAX: percent of pay
    std::optional<Decimal> matchPercent() const noexcept;         ///< MATCHPCT
    std::optional<Decimal> maximumMatchAmount() const noexcept;   ///< MAXMATCHAMT
    std::optional<Decimal> maximumMatchPercent() const noexcept;  ///< MAXMATCHPCT
    std::optional<Date> matchYearStart() const noexcept;          ///< STARTOFYEAR
    std::optional<Decimal> baseMatchAmount() const noexcept;      ///< BASEMATCHAMT
    std::optional<Decimal> baseMatchPercent() const noexcept;     ///< BASEMATCHPCT
    std::optional<Decimal> vestedPercent() const noexcept;        ///< CURRENTVESTPCT
    std::optional<Date> nextVestDate() const noexcept;            ///< VESTDATE
    std::optional<Decimal> nextVestedPercent() const noexcept;    ///< VESTPCT, from that date on
    std::vector<Loan401k> loans() const;                          ///< LOANINFO, in document order
    std::vector<Period401k> periods() const;                      ///< of INV401KSUMMARY, in document order
};

// ---------------------------------------------------------------------------------------------
// Securities

/// What a security is, by the name of its aggregate: DEBTINFO, MFINFO, OPTINFO, OTHERINFO, STOCKINFO.
enum class SecurityKind : std::uint8_t { debt, fund, option, other, stock };

/// How much of a fund is in one class of assets: PORTION (the OFX standard's classes) or FIPORTION (the
/// institution's own).
class BRACKWELL_EXPORT AssetPortion final : public InvestmentRecord {
public:
    /// For the library only.
    AssetPortion(std::shared_ptr<const investments::Records> records, std::uint32_t number) noexcept
        : InvestmentRecord(std::move(records), number) {}

    std::optional<AssetClass> assetClass() const noexcept;  ///< ASSETCLASS
    OptionalText institutionAssetClass() const noexcept;    ///< FIASSETCLASS
    std::optional<Decimal> percent() const noexcept;        ///< PERCENT
};

/// An identifier of a security.
struct SecurityIdentifier {
    OptionalText id;      ///< UNIQUEID, valid as long as any object of the document
    OptionalText idType;  ///< UNIQUEIDTYPE
};

/// A security of the list that a document brings along.
class BRACKWELL_EXPORT Security final : public InvestmentRecord {
public:
    /// For the library only.
    Security(std::shared_ptr<const investments::Records> records, std::uint32_t number) noexcept
        : InvestmentRecord(std::move(records), number) {}

    SecurityKind kind() const noexcept;                 ///< the aggregate
    OptionalText id() const noexcept;                   ///< UNIQUEID
    OptionalText idType() const noexcept;               ///< UNIQUEIDTYPE: CUSIP, ISIN and others
    OptionalText name() const noexcept;                 ///< SECNAME
    OptionalText ticker() const noexcept;               ///< TICKER
    OptionalText institutionID() const noexcept;        ///< FIID: the institution's own name of it
    OptionalText rating() const noexcept;               ///< RATING
    std::optional<Decimal> unitPrice() const noexcept;  ///< UNITPRICE; of debts for 100 of face value
    std::optional<Date> priceDate() const noexcept;     ///< DTASOF
    OptionalText memo() const noexcept;                 ///< MEMO2, else MEMO

    std::optional<AssetClass> assetClass() const noexcept;  ///< ASSETCLASS; of a fund see assetPortions
    OptionalText institutionAssetClass() const noexcept;    ///< FIASSETCLASS
    OptionalText typeDescription() const noexcept;          ///< TYPEDESC: what an OTHERINFO is

    std::optional<OptionType> optionType() const noexcept;      ///< OPTTYPE
    std::optional<Decimal> strikePrice() const noexcept;        ///< STRIKEPRICE
    std::optional<Date> expiryDate() const noexcept;            ///< DTEXPIRE
    std::optional<Decimal> sharesPerContract() const noexcept;  ///< SHPERCTRCT

    std::optional<Decimal> parValue() const noexcept;                 ///< PARVALUE
    std::optional<DebtType> debtType() const noexcept;                ///< DEBTTYPE
    std::optional<DebtClass> debtClass() const noexcept;              ///< DEBTCLASS
    std::optional<Decimal> couponRate() const noexcept;               ///< COUPONRT: percent a year
    std::optional<Date> couponDate() const noexcept;                  ///< DTCOUPON: of the next one
    std::optional<CouponFrequency> couponFrequency() const noexcept;  ///< COUPONFREQ
    std::optional<Decimal> callPrice() const noexcept;                ///< CALLPRICE
    std::optional<Decimal> yieldToCall() const noexcept;              ///< YIELDTOCALL
    std::optional<Date> callDate() const noexcept;                    ///< DTCALL: of the next one
    std::optional<CallType> callType() const noexcept;                ///< CALLTYPE
    std::optional<Decimal> yieldToMaturity() const noexcept;          ///< YIELDTOMAT
    std::optional<Date> maturityDate() const noexcept;                ///< DTMAT

    std::optional<FundType> fundType() const noexcept;    ///< MFTYPE
    std::optional<StockType> stockType() const noexcept;  ///< STOCKTYPE
    std::optional<Decimal> yield() const noexcept;        ///< YIELD, YLD: of the dividends, percent
    std::optional<Date> yieldDate() const noexcept;       ///< DTYIELDASOF

    std::optional<TransactionCurrency> currency() const;  ///< CURRENCY, of the price
    /// What an option is on: the SECID that stands beside its own description.
    SecurityIdentifier underlying() const noexcept;
    /// What a fund is made of (MFASSETCLASS and FIMFASSETCLASS), in document order.
    std::vector<AssetPortion> assetPortions() const;
};

// ---------------------------------------------------------------------------------------------
// Statements

/// The statement of an investment account: INVSTMTRS, with what its INVSTMTTRNRS says of it. A server that
/// could not answer sends the latter alone; then there is a statement with a status and nothing else.
class BRACKWELL_EXPORT InvestmentStatement final : public InvestmentRecord {
public:
    /// For the library only.
    InvestmentStatement(std::shared_ptr<const investments::Records> records, std::uint32_t number) noexcept
        : InvestmentRecord(std::move(records), number) {}

    /// The client's transaction identifier (TRNUID).
    OptionalText transactionUID() const noexcept;
    /// Whether the server could answer (STATUS); null when the document does not say.
    std::shared_ptr<TvOFXStatus> status() const noexcept;
    /// The account (INVACCTFROM); null when the document names none.
    std::shared_ptr<TvOFXInvestmentAccount> account() const noexcept;
    std::optional<Date> asOf() const noexcept;    ///< DTASOF
    OptionalText currency() const noexcept;       ///< CURDEF, as given
    std::optional<Date> start() const noexcept;   ///< DTSTART: of the period of the transactions
    std::optional<Date> end() const noexcept;     ///< DTEND
    OptionalText marketingInfo() const noexcept;  ///< MKTGINFO

    /// Of all kinds, in document order. Several lists in one statement count as one.
    InvestmentList<InvestmentTransaction> transactions() const noexcept;
    /// Of all kinds, in document order. Several lists in one statement count as one.
    InvestmentList<Position> positions() const noexcept;
    /// INVBAL; of several the first.
    std::optional<InvestmentBalance> balance() const;
    /// INV401KBAL; of several the first.
    std::optional<Amounts401k> balance401k() const;
    /// INV401K; of several the first.
    std::optional<Plan401k> plan401k() const;
};

/// The investment statements of a document, or of any part of it, in document order. Takes the root of a
/// parse tree (TvOFXParserResult::ofxData) and the helper that amounts and dates are converted with; null is
/// the shared one. Takes time in proportion to the document.
BRACKWELL_EXPORT std::vector<InvestmentStatement> investmentStatements(
    const std::optional<ParseDictionary>& document, const std::shared_ptr<TvOFXHelper>& helper = nullptr);

/// The securities of a document, or of any part of it, in document order; for the rest see
/// investmentStatements.
BRACKWELL_EXPORT std::vector<Security> securities(const std::optional<ParseDictionary>& document,
                                                  const std::shared_ptr<TvOFXHelper>& helper = nullptr);

/// Securities, of one document or of several, that are found by their identifiers.
class BRACKWELL_EXPORT SecurityList {
public:
    SecurityList() = default;                                 ///< without any
    explicit SecurityList(std::vector<Security> securities);  ///< takes them over

    /// In the order in which they were given.
    const std::vector<Security>& all() const& noexcept { return all_; }
    std::vector<Security> all() && { return all_; }  ///< by value, since the list goes

    /// @{
    /// The first security with this identifier and type of it (CUSIP, in any case). Where one of the two
    /// names no type, the identifier alone decides. Nothing when there is none, or no identifier. Takes time
    /// in proportion to the logarithm of the number of securities.
    std::optional<Security> find(TextArgument id, TextArgument idType) const;
    std::optional<Security> find(const Position& position) const;
    std::optional<Security> find(const InvestmentTransaction& transaction) const;
    /// @}

private:
    std::vector<Security> all_;
    std::vector<std::uint32_t> sorted_;  ///< positions in all_, by identifier, type and position
};

/// The currency of a bank or card transaction, which its own getters do not read when it is an aggregate;
/// nothing when its node in the parse tree has none.
BRACKWELL_EXPORT std::optional<TransactionCurrency> currencyOf(const TvOFXStatementTransaction& transaction);

// ---------------------------------------------------------------------------------------------
// Arithmetic

/// What the units and the price of a position make, when that is not its market value; nothing when they
/// agree, or when too little is known to say. Signs are not compared, and what rounding of units, price and
/// value can explain is no difference: half of the last place of units and price, one of the value. A debt's
/// price is for 100 of face value, but one for 1 agrees, too, and so do units that count bonds of the face
/// value that `security` states, or else of 1000. An option's price is for one share, so `security` has to
/// say how many a contract is for.
BRACKWELL_EXPORT std::optional<Decimal> contradictingMarketValue(const Position& position,
                                                                 const Security* security = nullptr);

/// What the parts of a purchase, a sale or a reinvestment make, when that is not its total; nothing when
/// they agree, when too little is known, and for other kinds. To units times price purchases add, and from
/// it sales subtract, commission, fees, taxes and load, sales withholdings and penalty as well. Markup,
/// markdown and accrued interest, which the OFX standard counts in two ways, may be in the total or not, and
/// costs may be written as negative amounts. For rounding, debts and `security` see contradictingMarketValue.
BRACKWELL_EXPORT std::optional<Decimal> contradictingTotal(const InvestmentTransaction& transaction,
                                                           const Security* security = nullptr);

}  // namespace brackwell
