// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>

#include <algorithm>
#include <utility>

#include "dates/civil_time.h"
#include "fields/element_table.h"
#include "memory/rollback.h"

namespace brackwell {

/// Apart from the transaction and made on demand: most transactions have none of them, and a statement has
/// very many transactions.
struct TvOFXStatementTransaction::Parties {
    std::shared_ptr<TvOFXPayee> payee;
    std::shared_ptr<TvOFXBankAccount> bankAccountTo;
    std::shared_ptr<TvOFXCreditCardAccount> creditCardAccountTo;
};

struct BRACKWELL_INTERNAL TvOFXStatementTransaction::Elements {
    using Self = TvOFXStatementTransaction;

    static void datePosted(Self& self, const NodeRef& value) {
        date<&Self::datePosted_>(self, value);
        text<&Self::texts_, originalDatePostedString_>(self, value);
    }
    static void payee(Self& self, const NodeRef& value) {
        if (value.isDictionary()) self.parties().payee = TvOFXPayee::initWithParseDict(value.dictionary());
    }
    static void bankAccountTo(Self& self, const NodeRef& value) {
        if (value.isDictionary())
            self.parties().bankAccountTo = TvOFXBankAccount::initWithParserDict(value.dictionary());
    }
    static void creditCardAccountTo(Self& self, const NodeRef& value) {
        if (value.isDictionary())
            self.parties().creditCardAccountTo =
                TvOFXCreditCardAccount::initWithParseDict(value.dictionary());
    }

    static constexpr TextTable<textCount> kTexts{{
        {transactionType_, element("TRNTYPE"), "type"},
        // Once the amounts agree and both have an identifier, it alone decides whether they are equal.
        {fiTransactionID_, element("FITID"), "fiTID", kNotCompared},
        {correctionFITID_, element("CORRECTFITID"), "cFITID"},
        {correctionAction_, element("CORRECTACTION"), "cA"},
        {serverTransactionID_, element("SRVRTID"), "sTID"},
        {checkOrReferenceNumber_, element("CHECKNUM"), "cORN"},
        {referenceNumber_, element("REFNUM"), "rN"},
        {standardIndustrialCode_, element("SIC"), "sIC"},
        {payeeID_, element("PAYEEID"), "pID"},
        {payeeName_, element("NAME"), "pN"},
        {memo_, element("MEMO"), "memo"},
        {currency_, element("CURRENCY"), "cur"},
        {origCurrency_, element("ORIGCURRENCY"), "oCur"},
        {originalDataString_, element("TVOFX_ORIGINAL_STRING"), "oDS", kNotCompared},
        // DTPOSTED fills a date as well.
        {originalDatePostedString_, kNoElement, kNotArchived, kNotCompared},
    }};

    static constexpr auto kTable = elementTable<&Self::texts_, kTexts>({
        {element("DTPOSTED"), datePosted},
        {element("DTUSER"), date<&Self::dateUserInit_>},
        {element("DTAVAIL"), date<&Self::dateFundsAvailable_>},
        {element("TRNAMT"), brackwell::amount<&Self::amount_>},
        {element("PAYEE"), payee},
        {element("BANKACCTTO"), bankAccountTo},
        {element("CCACCTTO"), creditCardAccountTo},
    });

    struct DateKey {
        std::optional<Date> Self::*date;
        std::string_view key;
    };
    static constexpr auto kDates = std::to_array<DateKey>({
        {&Self::datePosted_, "dP"},
        {&Self::dateUserInit_, "dUI"},
        {&Self::dateFundsAvailable_, "dFA"},
    });
    /// In the order of the class's declaration.
    static constexpr auto kFields = std::to_array<Field>({
        {"transactionType", &Self::transactionType},
        {"datePosted", &Self::datePosted},
        {"dateUserInit", &Self::dateUserInit},
        {"dateFundsAvailable", &Self::dateFundsAvailable},
        {"amount", &Self::amount},
        {"fiTransactionID", &Self::fiTransactionID},
        {"correctionFITID", &Self::correctionFITID},
        {"correctionAction", &Self::correctionAction},
        {"serverTransactionID", &Self::serverTransactionID},
        {"checkOrReferenceNumber", &Self::checkOrReferenceNumber},
        {"referenceNumber", &Self::referenceNumber},
        {"standardIndustrialCode", &Self::standardIndustrialCode},
        {"payeeID", &Self::payeeID},
        {"payeeName", &Self::payeeName},
        {"payee", &Self::payee},
        {"bankAccountTo", &Self::bankAccountTo},
        {"creditCardAccountTo", &Self::creditCardAccountTo},
        {"memo", &Self::memo},
        {"currency", &Self::currency},
        {"origCurrency", &Self::origCurrency},
        {"originalDataString", &Self::originalDataString},
        {"originalDatePostedString", &Self::originalDatePostedString},
    });
    static_assert(std::ranges::count(kFields, 0, [](const Field& field) { return field.get.index(); }) ==
                      textCount,
                  "a text has no getter in the list");

    // Keys in archives, which can never change.
    static constexpr std::string_view kAmountKey = "at";
    static constexpr std::string_view kPayeeKey = "pObj";
    static constexpr std::string_view kBankAccountKey = "bAObj";
    static constexpr std::string_view kCreditCardAccountKey = "cCAObj";
};

namespace {

/// @{
/// The first and the last day that a calendar with years of four digits has.
constexpr std::string_view kFirstDay = "00010101";
constexpr std::string_view kLastDay = "99991231";
/// @}

template <class Object>
void encodeObject(KeyedArchiver& coder, std::string_view key, const std::shared_ptr<Object>& object) {
    if (!object) return;
    KeyedArchiver nested;
    object->encodeWithCoder(nested);
    coder.encodeObject(key, nested);
}

template <class Object>
std::shared_ptr<Object> decodeObject(const KeyedUnarchiver& coder, std::string_view key) {
    const std::optional<KeyedUnarchiver> nested = coder.decodeObject(key);
    return nested ? Object::initWithCoder(*nested) : nullptr;
}

}  // namespace

TvOFXStatementTransaction::TvOFXStatementTransaction() noexcept = default;

TvOFXStatementTransaction::TvOFXStatementTransaction(const KeyedUnarchiver& coder) {
    decodeTexts(coder, texts_, Elements::kTexts);
    for (const auto& [date, key] : Elements::kDates) this->*date = coder.decodeDate(key);
    amount_ = coder.decodeDecimal(Elements::kAmountKey);
    Parties restored{decodeObject<TvOFXPayee>(coder, Elements::kPayeeKey),
                     decodeObject<TvOFXBankAccount>(coder, Elements::kBankAccountKey),
                     decodeObject<TvOFXCreditCardAccount>(coder, Elements::kCreditCardAccountKey)};
    if (restored.payee || restored.bankAccountTo || restored.creditCardAccountTo)
        parties() = std::move(restored);
}

TvOFXStatementTransaction::~TvOFXStatementTransaction() = default;

void TvOFXStatementTransaction::parseDictionary(const std::optional<ParseDictionary>& node) {
    if (!node) return setOriginalParseData(std::nullopt);
    Rollback before(texts_, datePosted_, dateUserInit_, dateFundsAvailable_, amount_);
    // What is read goes into a copy.
    Exchange copied(parties_, parties_ ? std::make_unique<Parties>(*parties_) : nullptr);
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): a formatter may replace it
    const ParseDictionary held = *node;
    read(NodeRef::of(held));
    copied.keep();
    before.keep();
}

/// The same for an object that nobody has yet: there is nothing to restore, so it needs no copies.
void TvOFXStatementTransaction::read(const NodeRef& node) {
    Elements::kTable.read(*this, node);
    setOriginalParseData(node ? node.dictionary() : ParseDictionary());
}

std::string TvOFXStatementTransaction::description() const {
    std::string text(className());
    text.append(":\n");
    const auto append = [&text](std::string_view label, std::string_view value) {
        text.append("  ").append(label).append(": ").append(value);
    };
    if (transactionType()) append("type", *transactionType());
    if (amount_) append("amount", amount_->toString());
    if (payeeName()) append("payee", *payeeName());
    if (payee()) append("payee", payee()->description());
    if (datePosted_) append("date posted", dateDescription(*datePosted_));
    return text;
}

void TvOFXStatementTransaction::encodeWithCoder(KeyedArchiver& coder) const {
    encodeTexts(coder, texts_, Elements::kTexts);
    for (const auto& [date, key] : Elements::kDates)
        if (this->*date) coder.encodeDate(key, *(this->*date));
    if (amount_) coder.encodeDecimal(Elements::kAmountKey, *amount_);
    encodeObject(coder, Elements::kPayeeKey, payee());
    encodeObject(coder, Elements::kBankAccountKey, bankAccountTo());
    encodeObject(coder, Elements::kCreditCardAccountKey, creditCardAccountTo());
}

std::string_view TvOFXStatementTransaction::className() const noexcept { return "TvOFXStatementTransaction"; }

std::shared_ptr<TvOFXStatementTransaction> TvOFXStatementTransaction::initWithParserDict(
    const std::optional<ParseDictionary>& node) {
    auto transaction = std::make_shared<TvOFXStatementTransaction>();
    if (node) transaction->parseDictionary(node);
    return transaction;
}

void TvOFXStatementTransaction::setDatePosted(std::optional<Date> date) noexcept {
    if (date == datePosted_) return;
    datePosted_ = date;
    cachedSortDateString_ = {};  // made again when it is next asked for
}

std::shared_ptr<TvOFXPayee> TvOFXStatementTransaction::payee() const noexcept {
    return parties_ ? parties_->payee : nullptr;
}

std::shared_ptr<TvOFXBankAccount> TvOFXStatementTransaction::bankAccountTo() const noexcept {
    return parties_ ? parties_->bankAccountTo : nullptr;
}

std::shared_ptr<TvOFXCreditCardAccount> TvOFXStatementTransaction::creditCardAccountTo() const noexcept {
    return parties_ ? parties_->creditCardAccountTo : nullptr;
}

OptionalText TvOFXStatementTransaction::sort_date() {
    std::array<char, 8>& cached = cachedSortDateString_;
    if (cached.front() == '\0') {
        if (!datePosted_) return std::nullopt;
        // The locale is prescribed; with digits only it makes no difference.
        const PatternDateFormatter formatter("yyyyMMdd", TimeZone::system(), "de_DE");
        const std::string written = formatter.stringFromDate(*datePosted_);
        std::string_view day = written;
        // A year that has a sign, or more than four digits, gives the nearest day without: cutting its digits
        // would change the order.
        if (day.size() > cached.size()) day = *datePosted_ < Date() ? kFirstDay : kLastDay;
        std::max(day, kFirstDay).copy(cached.data(), cached.size());
    }
    return std::string_view(cached.data(), cached.size());
}

std::optional<std::chrono::year_month_day> TvOFXStatementTransaction::dayPosted(const TimeZone& zone) const {
    if (!datePosted_) return std::nullopt;
    const CivilTime time = civilTime(*datePosted_, zone.offsetAt(*datePosted_).fromUTC);
    if (time.year < 1 || time.year > 9999) return std::nullopt;
    return std::chrono::year_month_day{std::chrono::year{static_cast<int>(time.year)},
                                       std::chrono::month{time.month}, std::chrono::day{time.day}};
}

std::span<const TvOFXStatementTransaction::Field> TvOFXStatementTransaction::fields() noexcept {
    return Elements::kFields;
}

bool TvOFXStatementTransaction::isEqualOFXStatementTransaction(const TvOFXStatementTransaction* other) const {
    if (other == nullptr || !agree(amount_, other->amount_)) return false;
    // Once the amounts agree, the institution's identifier alone decides: intended.
    if (fiTransactionID() && other->fiTransactionID()) return *fiTransactionID() == *other->fiTransactionID();
    for (const auto& [date, key] : Elements::kDates)
        if (!agree(this->*date, other->*date)) return false;
    return agreeOnTexts(texts_, other->texts_, Elements::kTexts) && agreesOnParties(*other);
}

TvOFXStatementTransaction::Parties& TvOFXStatementTransaction::parties() {
    if (!parties_) parties_ = std::make_unique<Parties>();
    return *parties_;
}

bool TvOFXStatementTransaction::agreesOnParties(const TvOFXStatementTransaction& other) const {
    if (!parties_ || !other.parties_) return true;
    const Parties& a = *parties_;
    const Parties& b = *other.parties_;
    if (a.payee && b.payee && !a.payee->isEqualToOFXPayee(b.payee.get())) return false;
    if (a.bankAccountTo && b.bankAccountTo &&
        !a.bankAccountTo->isEqualToOFXBankAccount(b.bankAccountTo.get()))
        return false;
    return !a.creditCardAccountTo || !b.creditCardAccountTo ||
           a.creditCardAccountTo->isEqualToOFXCreditCardAccount(b.creditCardAccountTo.get());
}

}  // namespace brackwell
