// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>

#include "support/tree_text.h"
#include "survival.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

const char* const kExamples[] = {"account_information.ofx", "card.ofx",    "every_element.ofx",
                                 "household.ofx",           "profile.ofx", "errors.ofx"};

std::shared_ptr<TvOFXInterpreter> interpretedExample(const char* name) {
    return interpreted(exampleData(name).bytes());
}

}  // namespace

TEST_CASE("all that objects answer survives exhausted memory at every allocation") {
    Tally tally("every getter and text of every response");
    for (const char* name : kExamples) {
        CAPTURE(name);
        const auto interpreter = interpretedExample(name);
        surviveMaking(tally, [&] { return transcriptOf(*interpreter); });
    }
}

TEST_CASE("OFX text survives exhausted memory at every allocation") {
    Tally tally("trees as text, and indented text");
    for (const char* name : kExamples) {
        CAPTURE(name);
        const ParseDictionary tree = *interpretedExample(name)->parserDict();
        surviveMaking(tally, [&] { return TvOFXHelper::ofxDictionaryToString(tree); });
        surviveMaking(tally, [&] { return indentedOFXText(tree); });
        const std::string text = TvOFXHelper::ofxDictionaryToString(tree);
        surviveMaking(tally, [&] { return TvOFXHelper::prettyPrintOfxMessageString(text); });
    }
}

TEST_CASE("a description of an object without parse data survives exhausted memory") {
    Tally tally("descriptions that are addresses");
    const TvOFXFinancialInstitutionIdentification identification;
    const TvOFXStatementTransaction transaction;
    const TvOFXAggregate aggregate;
    for (const TvOFXAggregate* object :
         std::initializer_list<const TvOFXAggregate*>{&identification, &transaction, &aggregate})
        surviveMaking(tally, [&] { return object->description(); });
}

TEST_CASE("requests survive exhausted memory at every allocation") {
    Tally tally("requests and their text");
    const auto textOf = [](const std::shared_ptr<TvOFXRequest>& request) {
        std::string text = request->ofxString();  // with a transaction UID of its own
        const std::size_t uid = text.find("<TRNUID>");
        return uid == std::string::npos ? text : text.erase(uid, 8 + 36);
    };
    surviveMaking(
        tally,
        []() -> std::shared_ptr<TvOFXRequest> {
            return TvOFXAccountInfoRequest::initWithUpdateDateTime("20240101120000.000");
        },
        textOf);
    surviveMaking(
        tally,
        []() -> std::shared_ptr<TvOFXRequest> { return TvOFXFIProfileRequest::initWithUpdateDateTime(); },
        textOf);
    surviveMaking(
        tally, [] { return TvOFXRequest::initWithTransactionWrapperName("A_NAME_OF_SOME_LENGTH"); },
        [](const auto& request) { return std::string(request->transactionWrapperName().value_or("")); });
    for (const std::uint64_t version : {102U, 211U}) {
        const auto accounts = TvOFXAccountInfoRequest::initWithUpdateDateTime("20240101120000.000");
        const auto profile = TvOFXFIProfileRequest::initWithUpdateDateTime("20240101120000.000");
        accounts->setOfxVersion(version);
        profile->setOfxVersion(version);
        surviveMaking(tally, [&] { return accounts->ofxString(); });
        surviveMaking(tally, [&] { return profile->description() + profile->ofxString(); });
    }
}

TEST_CASE("trees are copied, compared and built in spite of exhausted memory") {
    Tally tally("trees built, copied, compared");
    for (const char* name : kExamples) {
        CAPTURE(name);
        const ParseDictionary one = *interpretedExample(name)->parserDict();
        const ParseDictionary other = *interpretedExample(name)->parserDict();
        surviveMaking(tally, [&] { return std::string(one == other ? "equal" : "different"); });
        surviveMaking(
            tally,
            [&] {
                return ParseDictionary{{"COPY", one}, {"UNKNOWN.NAME", "text"}, {"COPY", other}};
            },
            [](const ParseDictionary& tree) { return treeText(tree); });
        surviveMaking(tally, [&] { return treeText(one); });
    }
}

TEST_CASE("equal transactions are found equal in spite of exhausted memory") {
    Tally tally("transactions, payees and accounts compared");
    const ParseDictionary payee{{"NAME", "A name of some length"}, {"ADDR1", "A street of some length"}};
    const ParseDictionary account{{"BANKID", "121000248"}, {"ACCTID", "1"}};
    const ParseDictionary node{{"PAYEE", payee}, {"BANKACCTTO", account}, {"CCACCTTO", account}};
    const auto one = TvOFXStatementTransaction::initWithParserDict(node);
    const auto other = TvOFXStatementTransaction::initWithParserDict(node);
    surviveMaking(tally, [&] {
        return std::string(one->isEqualOFXStatementTransaction(other.get()) ? "equal" : "different");
    });
    surviveMaking(
        tally, [&] { return TvOFXStatementTransaction::initWithParserDict(node); },
        [](const auto& made) { return transcriptOf(*made); });
}

TEST_CASE("encodings survive exhausted memory at every allocation") {
    Tally tally("texts encoded and decoded");
    const std::string text = "<NAME>Caf\xC3\xA9 \xE6\x97\xA5\xE6\x9C\xAC " + std::string(300, 'a');
    for (const TextEncoding encoding : knownTextEncodings()) {
        CAPTURE(encoding);
        const std::string known = encodeText(text, encoding) ? text : text.substr(0, 9);
        const auto textOf = [](const std::optional<Data>& data) {
            return data ? std::string(data->bytes()) : "nothing";
        };
        const std::optional<Data> bytes = encodeText(known, encoding);
        const std::optional<Data> again = bytes ? decodeText(*bytes, encoding) : std::nullopt;  // loads it
        surviveMaking(
            tally, [&] { return encodeText(known, encoding); }, textOf);
        if (bytes)
            surviveMaking(
                tally, [&] { return decodeText(*bytes, encoding); }, textOf);
    }
}

TEST_CASE("formatters survive exhausted memory at every allocation") {
    Tally tally("formatters, zones, dates and numbers");
    const Date date(std::chrono::milliseconds(1706716800123));
    const Decimal number = *Decimal::fromString("-123456789012345678901234.56");
    // No locale that must be loaded: when the C library has no memory for one, it loses a block of its own
    // and does not find that locale any more.
    surviveMaking(tally, [&] {
        const PatternDateFormatter formatter("EEEE, dd. MMMM yyyy 'at' HH:mm:ss.SSS zzzz",
                                             TimeZone::named("Europe/Berlin").value_or(TimeZone()), "C");
        const std::string text = formatter.stringFromDate(date);
        return text + (formatter.dateFromString(text) == date ? " is read" : " is not read");
    });
    surviveMaking(tally, [&] { return TvOFXHelper::ofxDateTimeStringFromDate(date); });
    surviveMaking(tally, [&] { return dateDescription(date) + number.toString(); });
    surviveMaking(tally, [&] {
        const DecimalNumberFormatter formatter;
        const std::string text = formatter.stringFromNumber(number).value_or("nothing");
        return text + (formatter.numberFromString(text) == number ? " is read" : " is not read");
    });
    surviveMaking(tally, [] {
        const TvOFXHelper helper;
        return helper.ofxDateFormatter().pattern() +
               helper
                   .ofxAmountStringFromDecimalNumber(
                       helper.decimalNumberFromOFXAmountString("1,234,567,890,123,456.5"))
                   .value_or("nothing");
    });
    surviveMaking(tally, [] { return newUUID().substr(8, 1); });
    surviveMaking(tally, [] { return std::string(splitLines("a\nb\nc\nd").back()); });
}
