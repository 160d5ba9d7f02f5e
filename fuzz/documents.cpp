// SPDX-License-Identifier: Apache-2.0
#include "documents.h"

#include <bit>

#include "support/transcript.h"
#include "target.h"
#include "trees.h"

namespace brackwell::fuzz {
namespace {

using tests::transcriptOf;

using Transactions = std::vector<std::shared_ptr<TvOFXStatementTransaction>>;

struct Import {
    std::shared_ptr<TvOFXMessage> message;
    Error error;
};

Import import(const Data& data, const Settings& settings) {
    Import result;
    result.message = TovanaOFXController::importOFXFileFromData(
        data, settings.encoding, settings.numberFormatter, settings.dateFormatter, &result.error);
    return result;
}

/// The text that a parser decoded, made again from what the parser says of it.
std::string decodedText(const TvOFXParser& parser, TextEncoding preset) {
    constexpr TextEncoding host = std::endian::native == std::endian::little ? TextEncodingUTF16LittleEndian
                                                                             : TextEncodingUTF16BigEndian;
    const TextEncoding encoding = preset == TextEncodingUTF16 ? host : parser.stringEncoding();
    const std::optional<Data> text = decodeText(*parser.data(), encoding);
    require(text.has_value(), "the encoding that was chosen decodes the document");
    return std::string(text->bytes());
}

std::shared_ptr<TvOFXInterpreter> interpreted(const TvOFXParserResult& result, const Settings& settings) {
    auto interpreter = TvOFXInterpreter::initWithParseResult(result);
    if (settings.numberFormatter || settings.dateFormatter) {
        auto helper = std::make_shared<TvOFXHelper>();
        helper->setAmountNumberFormatter(settings.numberFormatter);
        helper->setDateFormatter(settings.dateFormatter);
        interpreter->setHelperObject(std::move(helper));
    }
    interpreter->interpret();
    return interpreter;
}

void requireEquality(const TvOFXStatementTransaction& a, const TvOFXStatementTransaction& b) {
    require(a.isEqualOFXStatementTransaction(&a), "a transaction is equal to itself");
    require(a.isEqualOFXStatementTransaction(&b) == b.isEqualOFXStatementTransaction(&a),
            "the equality of transactions is symmetric");
    const auto payee = a.payee();
    const auto other = b.payee();
    if (!payee || !other) return;
    require(payee->isEqualToOFXPayee(other.get()) == other->isEqualToOFXPayee(payee.get()),
            "the equality of payees is symmetric");
}

void requireEquality(const TvOFXMessage& message) {
    const auto banks = message.bankAccountsFound();
    for (const auto& account : banks) {
        require(account->isEqualToOFXBankAccount(account.get()), "a bank account is equal to itself");
        require(account->isEqualToOFXBankAccount(banks.front().get()) ==
                    banks.front()->isEqualToOFXBankAccount(account.get()),
                "the equality of bank accounts is symmetric");
    }
    const auto cards = message.creditCardAccountsFound();
    for (const auto& account : cards) {
        require(account->isEqualToOFXCreditCardAccount(account.get()), "a card account is equal to itself");
        require(account->isEqualToOFXCreditCardAccount(cards.front().get()) ==
                    cards.front()->isEqualToOFXCreditCardAccount(account.get()),
                "the equality of card accounts is symmetric");
    }
}

void requireSoundTransactions(const Transactions& transactions, std::string_view source) {
    for (const auto& transaction : transactions) {
        requireEquality(*transaction, *transactions.front());
        requireEquality(*transaction, *transactions.back());
        if (const OptionalText text = transaction->originalDataString())
            require(source.find(*text) != std::string_view::npos,
                    "originalDataString stands in the document");
        if (const auto& amount = transaction->amount())
            require(Decimal::fromString(amount->toString()) == amount, "an amount's text reads back equal");
    }
}

}  // namespace

void requireSoundImport(std::string_view bytes, const Settings& settings) {
    const Import first = import(Data::copy(bytes), settings);
    const Import second = import(Data::view(bytes), settings);
    require(!first.message == !second.message && first.error == second.error, "two imports end alike");
    if (!first.message) {
        require(first.error.domain == "Brackwell" && !first.error.description.empty(), "a failure says why");
        return;
    }
    require(first.error == Error{}, "a success leaves the error place alone");
    require(transcriptOf(*first.message) == transcriptOf(*second.message), "two imports agree");
    requireEquality(*first.message);

    TvOFXParser parser(Data::copy(bytes));
    parser.setStringEncoding(settings.encoding);
    const auto result = parser.parseWithError();
    require(result != nullptr, "what imports parses");
    const std::string source = decodedText(parser, settings.encoding);
    require(isValidUTF8(source), "decoded text is UTF-8");

    const auto interpreter = interpreted(*result, settings);
    require(transcriptOf(*interpreter) == transcriptOf(*interpreted(*result, settings)),
            "two readings agree");
    require(tests::archivesWell(*interpreter), "what was read comes back from archives");
    for (const auto& response : interpreter->allResponses())
        if (const auto* statement = dynamic_cast<const TvOFXAccountStatement*>(response.get()))
            requireSoundTransactions(statement->statementTransactions(), source);
    if (result->ofxHeader) requireSound(*result->ofxHeader);
    if (!result->ofxData) return;
    requireSound(*result->ofxData);
    requireReadable(*result->ofxData);
}

}  // namespace brackwell::fuzz
