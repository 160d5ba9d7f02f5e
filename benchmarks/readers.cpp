// SPDX-License-Identifier: Apache-2.0
#include "readers.h"

#include <brackwell/investments.h>
#include <brackwell/profile.h>
#include <brackwell/statements.h>

#include <charconv>
#include <chrono>
#include <cstdlib>
#include <iostream>

namespace brackwell::benchmarks {
namespace {

TextEncoding presetEncoding(const Shape& shape) {
    return shape.encoding == TextEncodingWindows1252 ? shape.encoding : TextEncodingNone;
}

[[noreturn]] void fail(const Case& document, std::string_view what) {
    std::cerr << document.name << ": " << what << '\n';
    std::exit(1);
}

/// Whole cents of an amount in plain notation, such as "-12.5".
std::int64_t centsOf(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    if (isNegative) text.remove_prefix(1);
    const std::size_t point = std::min(text.find('.'), text.size());
    std::string digits(text.substr(0, point));
    if (point < text.size()) digits += text.substr(point + 1);
    digits.append(point + 2 - std::min(point + 2, digits.size()), '0');
    std::int64_t cents = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), cents);
    return isNegative ? -cents : cents;
}

void add(Totals& totals, const TvOFXResponse& response) {
    if (const auto* profile = dynamic_cast<const TvOFXFIProfileResponse*>(&response))
        totals.realms += profile->signonInfoList() ? profile->signonInfoList()->size() : 0;
    const auto* statement = dynamic_cast<const TvOFXStatementResponse*>(&response);
    if (statement == nullptr) return;
    for (const auto& transaction : statement->statementTransactions()) {
        ++totals.transactions;
        if (const auto& amount = transaction->amount()) totals.cents += centsOf(amount->toString());
    }
}

void add(Totals& totals, const InvestmentStatement& statement) {
    for (const InvestmentTransaction& transaction : statement.transactions()) {
        ++totals.transactions;
        if (const auto total = transaction.total()) totals.cents += centsOf(total->toString());
    }
}

/// The import with the investments, which a message does not hold.
std::shared_ptr<TvOFXMessage> importInvestments(const Data& data, Totals* totals) {
    const auto result = TvOFXParser(data).parseWithError();
    if (!result) return nullptr;
    auto message = std::make_shared<TvOFXMessage>();
    message->processParserResult(*result);
    const auto statements = investmentStatements(result->ofxData);
    const SecurityList list(securities(result->ofxData));
    if (totals == nullptr) return message;
    for (const InvestmentStatement& statement : statements) add(*totals, statement);
    return message;
}

/// The days from 1970-01-01 to a day that is written as "yyyyMMdd".
std::int64_t daysOf(std::string_view date) {
    const auto number = [date](std::size_t begin, std::size_t size) {
        unsigned value = 0;
        std::from_chars(date.data() + begin, date.data() + begin + size, value);
        return value;
    };
    if (date.size() < 8) return 0;
    const std::chrono::year_month_day day(std::chrono::year(static_cast<int>(number(0, 4))),
                                          std::chrono::month(number(4, 2)), std::chrono::day(number(6, 2)));
    return std::chrono::sys_days(day).time_since_epoch().count();
}

void checkWalks(const Case& document, std::string_view bytes) {
    pugi::xml_document tree;
    if (!loadTree(tree, bytes, document.shape)) fail(document, "no tree of the peer's");
    const Walk walk = walkOf(*importDocument(Data::view(bytes), document.shape));
    if (document.hasBankTransactions() && (walk.days == 0 || walk.outgoing == 0 || walk.nameBytes == 0))
        fail(document, "nothing to walk over");
    if (walk != walkOf(tree)) fail(document, "the walks disagree");
}

}  // namespace

Walk walkOf(const TvOFXMessage& message) {
    Walk walk;
    for (const auto& response : message.bankingMsgSet()) {
        const auto* statement = dynamic_cast<const TvOFXStatementResponse*>(response.get());
        if (statement == nullptr) continue;
        for (const auto& transaction : statement->statementTransactions()) {
            if (const auto day = transaction->dayPosted())
                walk.days += std::chrono::sys_days(*day).time_since_epoch().count();
            walk.outgoing += transaction->amount() && transaction->amount()->isNegative();
            walk.nameBytes += transaction->payeeName().value_or("").size();
        }
    }
    return walk;
}

Walk walkOf(const pugi::xml_document& tree) {
    Walk walk;
    const pugi::xml_node bank = tree.child("OFX").child("BANKMSGSRSV1");
    for (const pugi::xml_node wrapper : bank.children("STMTTRNRS"))
        for (const pugi::xml_node transaction :
             wrapper.child("STMTRS").child("BANKTRANLIST").children("STMTTRN")) {
            walk.days += daysOf(transaction.child_value("DTPOSTED"));
            walk.outgoing += transaction.child_value("TRNAMT")[0] == '-';
            walk.nameBytes += std::string_view(transaction.child_value("NAME")).size();
        }
    return walk;
}

std::shared_ptr<TvOFXMessage> importDocument(const Data& data, const Shape& shape) {
    if (shape.positions > 0) return importInvestments(data, nullptr);
    return TovanaOFXController::importOFXFileFromData(data, presetEncoding(shape), nullptr, nullptr);
}

OpenedFile openDocument(const Data& data, const Shape& shape) {
    OpenOptions options;
    options.encoding = presetEncoding(shape);
    return openData(data, options);
}

bool loadTree(pugi::xml_document& tree, std::string_view bytes, const Shape& shape) {
    const auto encoding =
        shape.encoding == TextEncodingWindows1252 ? pugi::encoding_latin1 : pugi::encoding_auto;
    return static_cast<bool>(tree.load_buffer(bytes.data(), bytes.size(), pugi::parse_default, encoding));
}

Totals totalsOfImport(const Case& document, std::string_view bytes) {
    const Data data = Data::view(bytes);
    const auto message = importDocument(data, document.shape);
    if (!message) fail(document, "not imported");
    Totals totals;
    if (document.shape.positions > 0) importInvestments(data, &totals);
    for (const auto& response : message->bankingMsgSet()) add(totals, *response);
    if (document.shape.realms == 0) return totals;
    // A message has no way to its profile; the interpreter has.
    TvOFXParser parser(Data::view(bytes));
    TvOFXInterpreter interpreter(*parser.parseWithError());
    interpreter.interpret();
    if (interpreter.fiProfileResponse()) add(totals, *interpreter.fiProfileResponse());
    return totals;
}

Totals totalsOfOpening(const Case& document, std::string_view bytes) {
    const OpenedFile file = openDocument(Data::view(bytes), document.shape);
    if (!file || !file.findings().empty()) fail(document, "not opened without a finding");
    Totals totals;
    for (const auto& response : file.responses()) add(totals, *response);
    for (const InvestmentStatement& statement : file.investmentStatements()) add(totals, statement);
    return totals;
}

Totals totalsOfTree(const Case& document, std::string_view bytes) {
    pugi::xml_document tree;
    if (!loadTree(tree, bytes, document.shape)) fail(document, "no tree of the peer's");
    Totals totals;
    totals.realms = tree.select_nodes("//SIGNONINFO").size();
    for (const auto& found : tree.select_nodes("//STMTTRN/TRNAMT | //INVTRANLIST//TOTAL")) {
        ++totals.transactions;
        totals.cents += centsOf(found.node().child_value());
    }
    return totals;
}

void checkReaders(const Case& document, std::string_view bytes) {
    const Totals totals = totalsOfImport(document, bytes);
    if (totals.transactions + totals.realms != document.items()) fail(document, "not as many as written");
    if (totals.transactions > 0 && totals.cents == 0) fail(document, "no amounts");
    if (totals != totalsOfOpening(document, bytes)) fail(document, "what is opened is not what is imported");
    if (!document.shape.version2) return;
    if (totals != totalsOfTree(document, bytes)) fail(document, "the readers disagree");
    checkWalks(document, bytes);
}

}  // namespace brackwell::benchmarks
