// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>

#include "model/element_table.h"
#include "model/text_table.h"
#include "platform/rollback.h"

namespace brackwell {

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

    static constexpr auto kTable = elementTable<Self>({
        {element("TRNTYPE"), text<&Self::texts_, transactionType_>},
        {element("DTPOSTED"), datePosted},
        {element("DTUSER"), date<&Self::dateUserInit_>},
        {element("DTAVAIL"), date<&Self::dateFundsAvailable_>},
        {element("TRNAMT"), brackwell::amount<&Self::amount_>},
        {element("FITID"), text<&Self::texts_, fiTransactionID_>},
        {element("CORRECTFITID"), text<&Self::texts_, correctionFITID_>},
        {element("CORRECTACTION"), text<&Self::texts_, correctionAction_>},
        {element("SRVRTID"), text<&Self::texts_, serverTransactionID_>},
        {element("CHECKNUM"), text<&Self::texts_, checkOrReferenceNumber_>},
        {element("REFNUM"), text<&Self::texts_, referenceNumber_>},
        {element("SIC"), text<&Self::texts_, standardIndustrialCode_>},
        {element("PAYEEID"), text<&Self::texts_, payeeID_>},
        {element("NAME"), text<&Self::texts_, payeeName_>},
        {element("PAYEE"), payee},
        {element("BANKACCTTO"), bankAccountTo},
        {element("CCACCTTO"), creditCardAccountTo},
        {element("MEMO"), text<&Self::texts_, memo_>},
        {element("CURRENCY"), text<&Self::texts_, currency_>},
        {element("ORIGCURRENCY"), text<&Self::texts_, origCurrency_>},
        {element("TVOFX_ORIGINAL_STRING"), text<&Self::texts_, originalDataString_>},
    });

    static constexpr std::array<TextKey, 14> archive{{{transactionType_, "type"},
                                                      {fiTransactionID_, "fiTID"},
                                                      {correctionFITID_, "cFITID"},
                                                      {correctionAction_, "cA"},
                                                      {serverTransactionID_, "sTID"},
                                                      {checkOrReferenceNumber_, "cORN"},
                                                      {referenceNumber_, "rN"},
                                                      {standardIndustrialCode_, "sIC"},
                                                      {payeeID_, "pID"},
                                                      {payeeName_, "pN"},
                                                      {memo_, "memo"},
                                                      {currency_, "cur"},
                                                      {origCurrency_, "oCur"},
                                                      {originalDataString_, "oDS"}}};

    static constexpr std::array<std::size_t, 12> compared{transactionType_,
                                                          serverTransactionID_,
                                                          correctionFITID_,
                                                          correctionAction_,
                                                          checkOrReferenceNumber_,
                                                          referenceNumber_,
                                                          standardIndustrialCode_,
                                                          payeeID_,
                                                          payeeName_,
                                                          memo_,
                                                          currency_,
                                                          origCurrency_};

    struct DateKey {
        std::optional<Date> Self::*date;
        std::string_view key;
    };
    static constexpr std::array<DateKey, 3> dates{
        {{&Self::datePosted_, "dP"}, {&Self::dateUserInit_, "dUI"}, {&Self::dateFundsAvailable_, "dFA"}}};
    static constexpr std::string_view amountKey = "at";
    static constexpr std::string_view payeeKey = "pObj";
    static constexpr std::string_view bankAccountKey = "bAObj";
    static constexpr std::string_view creditCardAccountKey = "cCAObj";
};

namespace {

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
    decodeTexts(coder, texts_, Elements::archive);
    for (const auto& [date, key] : Elements::dates) this->*date = coder.decodeDate(key);
    amount_ = coder.decodeDecimal(Elements::amountKey);
    Parties restored{decodeObject<TvOFXPayee>(coder, Elements::payeeKey),
                     decodeObject<TvOFXBankAccount>(coder, Elements::bankAccountKey),
                     decodeObject<TvOFXCreditCardAccount>(coder, Elements::creditCardAccountKey)};
    if (restored.payee || restored.bankAccountTo || restored.creditCardAccountTo)
        parties() = std::move(restored);
}

TvOFXStatementTransaction::~TvOFXStatementTransaction() = default;

std::shared_ptr<TvOFXStatementTransaction> TvOFXStatementTransaction::initWithParseDict(
    const std::optional<ParseDictionary>& node) {
    auto transaction = std::make_shared<TvOFXStatementTransaction>();
    transaction->setOriginalParseData(node);
    return transaction;
}

void TvOFXStatementTransaction::parseDictionary(const std::optional<ParseDictionary>& node) {
    if (!node) return setOriginalParseData(std::nullopt);
    Rollback before(texts_, datePosted_, dateUserInit_, dateFundsAvailable_, amount_);
    std::unique_ptr<Parties> parties = parties_ ? std::make_unique<Parties>(*parties_) : nullptr;
    std::swap(parties, parties_);  // so that what is read goes into a copy
    try {
        read(NodeRef::of(*node));
    } catch (...) {
        parties_ = std::move(parties);
        throw;
    }
    before.keep();
}

/// The same for an object that nobody has yet, and without a copy of the node but the one that is kept.
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

std::shared_ptr<TvOFXStatementTransaction> TvOFXStatementTransaction::initWithCoder(
    const KeyedUnarchiver& coder) {
    return std::make_shared<TvOFXStatementTransaction>(coder);
}

void TvOFXStatementTransaction::encodeWithCoder(KeyedArchiver& coder) const {
    encodeTexts(coder, texts_, Elements::archive);
    for (const auto& [date, key] : Elements::dates)
        if (this->*date) coder.encodeDate(key, *(this->*date));
    if (amount_) coder.encodeDecimal(Elements::amountKey, *amount_);
    encodeObject(coder, Elements::payeeKey, payee());
    encodeObject(coder, Elements::bankAccountKey, bankAccountTo());
    encodeObject(coder, Elements::creditCardAccountKey, creditCardAccountTo());
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
    cachedSortDateString_ = {};
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
        const PatternDateFormatter formatter("yyyyMMdd", TimeZone::system(), "de_DE");
        const std::string day = formatter.stringFromDate(*datePosted_);
        day.copy(cached.data(), cached.size());
    }
    return std::string_view(cached.data(), cached.size());
}

bool TvOFXStatementTransaction::isEqualOFXStatementTransaction(const TvOFXStatementTransaction* other) const {
    if (other == nullptr || !agree(amount_, other->amount_)) return false;
    // Once the amounts agree, the institution's identifier alone decides: intended.
    if (fiTransactionID() && other->fiTransactionID()) return *fiTransactionID() == *other->fiTransactionID();
    for (const auto& [date, key] : Elements::dates)
        if (!agree(this->*date, other->*date)) return false;
    return agreeOnTexts(texts_, other->texts_, Elements::compared) && agreesOnParties(*other);
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
