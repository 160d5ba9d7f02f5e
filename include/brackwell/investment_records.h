// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// What the classes of investments.h have in common: their base, their lists, and the words of closed lists.

#include <brackwell/accounts.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brackwell {

/// What the library keeps of one reading of a document.
namespace investments {
struct Records;
struct RecordAccess;
}  // namespace investments

// ---------------------------------------------------------------------------------------------
// What all of them have

/// A field of an investment object, for programs that list all fields.
struct InvestmentField {
    /// How its text is to be read.
    enum class Kind : std::uint8_t { text, word, flag, amount, date };

    std::string_view name;          ///< the name of its getter, such as "unitPrice"; never destroyed
    Kind kind = Kind::text;         ///< a word is one of a closed list
    std::string_view text;          ///< as the document has it
    std::optional<Decimal> amount;  ///< when the text is an amount
    std::optional<Date> date;       ///< when the text is a date
};

/// The base of the classes of this header. It cannot be made by an application.
class BRACKWELL_EXPORT InvestmentRecord {
public:
    /// @{
    /// A copy stands for the same part of the document, and so does what was moved from.
    InvestmentRecord(const InvestmentRecord&) noexcept = default;
    InvestmentRecord& operator=(const InvestmentRecord&) noexcept = default;
    /// @}

    /// The text of a field as the document has it, by the name of the field's getter ("unitPrice"); nothing
    /// when the document does not have it, or for another name.
    OptionalText text(std::string_view getter) const noexcept;
    /// The fields that the document has, in the order in which the class declares their getters. What is
    /// more than one text (`currency`) is not among them.
    std::vector<InvestmentField> fields() const;
    /// The name of the aggregate: "BUYSTOCK", "POSMF". Valid as long as any object of the document.
    std::string_view elementName() const noexcept;
    /// The aggregate in the parse tree, for what has no getter.
    ParseDictionary originalParseData() const;
    /// The aggregate's source text, from its open tag to the end of its close tag, or of its last text when
    /// it has no close tag of its own; nothing when it cannot be found, as in a tree that code has built.
    /// Where texts hold entities, finding it takes time in proportion to their length.
    OptionalText originalText() const noexcept;

protected:
    /// @{
    /// For the library only.
    InvestmentRecord(std::shared_ptr<const investments::Records> records, std::uint32_t number) noexcept
        : records_(std::move(records)), number_(number) {}
    ~InvestmentRecord() = default;
    /// @}

private:
    friend struct investments::RecordAccess;
    std::shared_ptr<const investments::Records> records_;
    std::uint32_t number_;
};

/// Transactions or positions of one statement, in document order. A value that shares the document; its
/// elements are made when they are asked for.
template <class Object>
class InvestmentList {
public:
    /// Walks the list: `for (const auto& position : statement.positions())`.
    class Iterator {
    public:
        /// @{
        /// An input iterator: what it points at is made when asked for.
        using iterator_category = std::input_iterator_tag;
        using value_type = Object;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = Object;

        Iterator() noexcept = default;
        Iterator(const InvestmentList* list, std::size_t index) noexcept : list_(list), index_(index) {}
        Object operator*() const noexcept { return (*list_)[index_]; }
        Iterator& operator++() noexcept {
            ++index_;
            return *this;
        }
        Iterator operator++(int) noexcept { return {list_, index_++}; }
        bool operator==(const Iterator& other) const noexcept { return index_ == other.index_; }
        /// @}

    private:
        const InvestmentList* list_ = nullptr;
        std::size_t index_ = 0;
    };

    /// For the library only.
    InvestmentList(std::shared_ptr<const investments::Records> records, const std::uint32_t* numbers,
                   std::size_t size) noexcept
        : records_(std::move(records)), numbers_(numbers), size_(size) {}

    std::size_t size() const noexcept { return size_; }    ///< how many there are
    bool isEmpty() const noexcept { return size() == 0; }  ///< true when there is none
    /// The object at this position, made when asked for.
    /// REQUIRES: index < size()
    Object operator[](std::size_t index) const noexcept { return Object(records_, numbers_[index]); }
    /// @{
    /// Valid as long as this list.
    Iterator begin() const noexcept { return {this, 0}; }
    Iterator end() const noexcept { return {this, size()}; }
    /// @}

private:
    std::shared_ptr<const investments::Records> records_;
    const std::uint32_t* numbers_;
    internal::EmptiedByMove<std::size_t> size_;
};

/// The currency of a transaction, position or balance when it is not the statement's.
struct TransactionCurrency {
    std::string symbol;           ///< CURSYM: three letters of ISO 4217, as given; may be empty
    std::optional<Decimal> rate;  ///< CURRATE: what one unit of it is worth in the statement's currency
    /// False for CURRENCY: the amounts are in this currency. True for ORIGCURRENCY: the amounts are in the
    /// statement's currency, into which they were converted from this one.
    bool isConverted = false;

    bool operator==(const TransactionCurrency&) const = default;  ///< the same in all three
};

// ---------------------------------------------------------------------------------------------
// Words of closed lists

/// INCOMETYPE.
enum class IncomeType : std::uint8_t {
    unknown,        ///< none of the others
    longTermGain,   ///< CGLONG
    shortTermGain,  ///< CGSHORT
    dividend,       ///< DIV
    interest,       ///< INTEREST
    miscellaneous,  ///< MISC
};
/// BUYTYPE, SELLTYPE, OPTBUYTYPE and OPTSELLTYPE.
enum class TradeType : std::uint8_t {
    unknown,      ///< none of the others
    buy,          ///< BUY
    buyToCover,   ///< BUYTOCOVER: ends a short sale
    buyToOpen,    ///< BUYTOOPEN
    buyToClose,   ///< BUYTOCLOSE
    sell,         ///< SELL
    sellShort,    ///< SELLSHORT
    sellToOpen,   ///< SELLTOOPEN
    sellToClose,  ///< SELLTOCLOSE
};
/// OPTACTION: unknown, ASSIGN, EXERCISE, EXPIRE.
enum class OptionAction : std::uint8_t { unknown, assign, exercise, expire };
/// TFERACTION: unknown, IN, OUT.
enum class TransferAction : std::uint8_t { unknown, in, out };
/// POSTYPE: unknown, LONG, SHORT.
enum class PositionType : std::uint8_t { unknown, longPosition, shortPosition };
/// SUBACCTSEC, SUBACCTFUND, SUBACCTTO, SUBACCTFROM and HELDINACCT: unknown, CASH, MARGIN, SHORT, OTHER.
enum class SubAccount : std::uint8_t { unknown, cash, margin, shortSale, other };
/// INV401KSOURCE: where the money of a retirement plan came from.
enum class Source401k : std::uint8_t {
    unknown,         ///< none of the others
    preTax,          ///< PRETAX
    afterTax,        ///< AFTERTAX
    match,           ///< MATCH: of the employer
    profitSharing,   ///< PROFITSHARING
    rollover,        ///< ROLLOVER
    otherVested,     ///< OTHERVEST
    otherNonVested,  ///< OTHERNONVEST
};
/// RELTYPE: unknown, SPREAD, STRADDLE, NONE, OTHER.
enum class RelationType : std::uint8_t { unknown, spread, straddle, none, other };
/// SECURED: unknown, NAKED, COVERED.
enum class OptionSecurity : std::uint8_t { unknown, naked, covered };
/// SELLREASON: unknown, CALL, SELL, MATURITY.
enum class SellReason : std::uint8_t { unknown, call, sell, maturity };
/// BALTYPE: unknown, DOLLAR, PERCENT, NUMBER.
enum class BalanceType : std::uint8_t { unknown, dollar, percent, number };
/// DEBTTYPE: unknown, COUPON, ZERO.
enum class DebtType : std::uint8_t { unknown, coupon, zero };
/// DEBTCLASS: unknown, TREASURY, MUNICIPAL, CORPORATE, OTHER.
enum class DebtClass : std::uint8_t { unknown, treasury, municipal, corporate, other };
/// COUPONFREQ: unknown, MONTHLY, QUARTERLY, SEMIANNUAL, ANNUAL, OTHER.
enum class CouponFrequency : std::uint8_t { unknown, monthly, quarterly, semiannual, annual, other };
/// CALLTYPE: unknown, CALL, PUT, PREFUND, MATURITY.
enum class CallType : std::uint8_t { unknown, call, put, prefund, maturity };
/// OPTTYPE: unknown, PUT, CALL.
enum class OptionType : std::uint8_t { unknown, put, call };
/// MFTYPE: unknown, OPENEND, CLOSEEND, OTHER.
enum class FundType : std::uint8_t { unknown, openEnd, closeEnd, other };
/// STOCKTYPE: unknown, COMMON, PREFERRED, CONVERTIBLE, OTHER.
enum class StockType : std::uint8_t { unknown, common, preferred, convertible, other };
/// ASSETCLASS.
enum class AssetClass : std::uint8_t {
    unknown,             ///< none of the others
    domesticBond,        ///< DOMESTICBOND
    internationalBond,   ///< INTLBOND
    largeStock,          ///< LARGESTOCK
    smallStock,          ///< SMALLSTOCK
    internationalStock,  ///< INTLSTOCK
    moneyMarket,         ///< MONEYMRKT
    other,               ///< OTHER
};
/// LOANPMTFREQ.
enum class LoanPaymentFrequency : std::uint8_t {
    unknown,       ///< none of the others
    weekly,        ///< WEEKLY
    biweekly,      ///< BIWEEKLY: every second week
    twiceMonthly,  ///< TWICEMONTHLY
    monthly,       ///< MONTHLY
    fourWeeks,     ///< FOURWEEKS: every fourth week
    bimonthly,     ///< BIMONTHLY: every second month
    quarterly,     ///< QUARTERLY
    semiannually,  ///< SEMIANNUALLY
    annually,      ///< ANNUALLY
    other,         ///< OTHER
};

}  // namespace brackwell
