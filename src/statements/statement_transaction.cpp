// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>

#include <algorithm>
#include <array>
#include <utility>

#include "dates/civil_time.h"
#include "fields/element_table.h"
#include "memory/rollback.h"

namespace brackwell {

/// Apart from the transaction and made on demand: most transactions have none of it, and a statement has
/// very many transactions.
struct BRACKWELL_INTERNAL TvOFXStatementTransaction::Apart {
    std::shared_ptr<TvOFXPayee> payee;
    std::shared_ptr<TvOFXBankAccount> bankAccountTo;
    std::shared_ptr<TvOFXCreditCardAccount> creditCardAccountTo;
    std::array<char, 8> sortDate{};  ///< begins with NUL until somebody asks for it

    bool hasParties() const noexcept { return payee || bankAccountTo || creditCardAccountTo; }
};

struct BRACKWELL_INTERNAL TvOFXStatementTransaction::Elements {
    using Self = TvOFXStatementTransaction;

    template <DateField field>
    static void date(Self& self, const NodeRef& value) {
        if (!value.isText()) return;
        std::optional<Date> date;
        readDate(helperOf(self), value.text(), date);
        self.dates_.set(field, date);
    }
    static void datePosted(Self& self, const NodeRef& value) {
        date<datePosted_>(self, value);
        text<&Self::texts_, originalDatePostedString_>(self, value);
    }
    static void payee(Self& self, const NodeRef& value) {
        if (value.isDictionary()) self.apart().payee = TvOFXPayee::initWithParseDict(value.dictionary());
    }
    static void bankAccountTo(Self& self, const NodeRef& value) {
        if (value.isDictionary())
            self.apart().bankAccountTo = TvOFXBankAccount::initWithParserDict(value.dictionary());
    }
    static void creditCardAccountTo(Self& self, const NodeRef& value) {
        if (value.isDictionary())
            self.apart().creditCardAccountTo = TvOFXCreditCardAccount::initWithParseDict(value.dictionary());
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
        {element("DTUSER"), date<dateUserInit_>},
        {element("DTAVAIL"), date<dateFundsAvailable_>},
        {element("TRNAMT"), brackwell::amount<&Self::amount_>},
        {element("PAYEE"), payee},
        {element("BANKACCTTO"), bankAccountTo},
        {element("CCACCTTO"), creditCardAccountTo},
    });

    struct DateKey {
        DateField field;
        std::string_view key;
    };
    static constexpr auto kDates = std::to_array<DateKey>({
        {datePosted_, "dP"},
        {dateUserInit_, "dUI"},
        {dateFundsAvailable_, "dFA"},
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
    for (const auto& [field, key] : Elements::kDates) dates_.set(field, coder.decodeDate(key));
    amount_ = coder.decodeDecimal(Elements::kAmountKey);
    Apart restored{decodeObject<TvOFXPayee>(coder, Elements::kPayeeKey),
                   decodeObject<TvOFXBankAccount>(coder, Elements::kBankAccountKey),
                   decodeObject<TvOFXCreditCardAccount>(coder, Elements::kCreditCardAccountKey),
                   {}};
    if (restored.hasParties()) apart() = std::move(restored);
}

TvOFXStatementTransaction::~TvOFXStatementTransaction() = default;

void TvOFXStatementTransaction::parseDictionary(const std::optional<ParseDictionary>& node) {
    if (!node) return setOriginalParseData(std::nullopt);
    Rollback before(texts_, dates_, amount_);
    // What is read goes into a copy.
    Exchange copied(apart_, apart_ ? std::make_unique<Apart>(*apart_) : nullptr);
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
    if (datePosted()) append("date posted", dateDescription(*datePosted()));
    return text;
}

void TvOFXStatementTransaction::encodeWithCoder(KeyedArchiver& coder) const {
    encodeTexts(coder, texts_, Elements::kTexts);
    for (const auto& [field, key] : Elements::kDates)
        if (const std::optional<Date> date = dates_.get(field)) coder.encodeDate(key, *date);
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
    if (date == datePosted()) return;
    dates_.set(datePosted_, date);
    if (apart_) apart_->sortDate = {};  // made again when it is next asked for
}

std::shared_ptr<TvOFXPayee> TvOFXStatementTransaction::payee() const noexcept {
    return apart_ ? apart_->payee : nullptr;
}

std::shared_ptr<TvOFXBankAccount> TvOFXStatementTransaction::bankAccountTo() const noexcept {
    return apart_ ? apart_->bankAccountTo : nullptr;
}

std::shared_ptr<TvOFXCreditCardAccount> TvOFXStatementTransaction::creditCardAccountTo() const noexcept {
    return apart_ ? apart_->creditCardAccountTo : nullptr;
}

OptionalText TvOFXStatementTransaction::sort_date() {
    if (!apart_ || apart_->sortDate.front() == '\0') {
        const std::optional<Date> posted = datePosted();
        if (!posted) return std::nullopt;
        // The locale is prescribed; with digits only it makes no difference.
        const PatternDateFormatter formatter("yyyyMMdd", TimeZone::system(), "de_DE");
        const std::string written = formatter.stringFromDate(*posted);
        std::string_view day = written;
        // A year that has a sign, or more than four digits, gives the nearest day without: cutting its digits
        // would change the order.
        if (day.size() > kLastDay.size()) day = *posted < Date() ? kFirstDay : kLastDay;
        std::max(day, kFirstDay).copy(apart().sortDate.data(), apart().sortDate.size());
    }
    return std::string_view(apart_->sortDate.data(), apart_->sortDate.size());
}

std::optional<std::chrono::year_month_day> TvOFXStatementTransaction::dayPosted(const TimeZone& zone) const {
    const std::optional<Date> posted = datePosted();
    if (!posted) return std::nullopt;
    const CivilTime time = civilTime(*posted, zone.offsetAt(*posted).fromUTC);
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
    for (const auto& [field, key] : Elements::kDates)
        if (!agree(dates_.get(field), other->dates_.get(field))) return false;
    return agreeOnTexts(texts_, other->texts_, Elements::kTexts) && agreesOnParties(*other);
}

TvOFXStatementTransaction::Apart& TvOFXStatementTransaction::apart() {
    if (!apart_) apart_ = std::make_unique<Apart>();
    return *apart_;
}

bool TvOFXStatementTransaction::agreesOnParties(const TvOFXStatementTransaction& other) const {
    if (!apart_ || !other.apart_) return true;
    const Apart& a = *apart_;
    const Apart& b = *other.apart_;
    if (a.payee && b.payee && !a.payee->isEqualToOFXPayee(b.payee.get())) return false;
    if (a.bankAccountTo && b.bankAccountTo &&
        !a.bankAccountTo->isEqualToOFXBankAccount(b.bankAccountTo.get()))
        return false;
    return !a.creditCardAccountTo || !b.creditCardAccountTo ||
           a.creditCardAccountTo->isEqualToOFXCreditCardAccount(b.creditCardAccountTo.get());
}

}  // namespace brackwell
