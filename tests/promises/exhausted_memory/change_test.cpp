// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>

#include "support/tree_text.h"
#include "survival.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

TvOFXParserResult parserResult(const char* example) {
    TvOFXParser parser(exampleData(example));
    return *parser.parseWithError();
}

ParseDictionary longTexts(const std::string& mark) {
    const ParseDictionary payee{{"NAME", mark + " of a length that asks for memory"}};
    const ParseDictionary account{{"ACCTID", mark + " of a length that asks for memory"}};
    return {{"FITID", mark + " of a length that asks for memory"},
            {"DTPOSTED", "20240131"},
            {"TRNAMT", "1.5"},
            {"MEMO", mark},
            {"PAYEE", payee},
            {"BANKACCTTO", account},
            {"CCACCTTO", account}};
}

std::string listOf(const TvOFXMessage& message) {
    std::string text;
    if (!message.allRequests()) return "no requests";
    for (const auto& request : *message.allRequests()) text.append(request->className()).append("\n");
    return text;
}

}  // namespace

TEST_CASE("a message that cannot take a document for want of memory is as before") {
    Tally tally("documents taken by a message that has one");
    const TvOFXParserResult second = parserResult("household.ofx");
    surviveChanging(
        tally, [] { return importedExample("checking.ofx"); },
        [&](TvOFXMessage& message) { message.processParserResult(second); },
        [](TvOFXMessage& message) {
            // Not by the transcript, which makes the message remember its accounts.
            std::string text = std::string(message.headerData().value_or("")) +
                               std::string(message.charset().value_or("")) +
                               std::to_string(message.ofxVersion());
            for (const auto& response : message.bankingMsgSet()) text += transcriptOf(*response);
            for (const auto& account : message.creditCardAccountsFound()) text += transcriptOf(*account);
            return text;
        });
}

TEST_CASE("a message that cannot take a request for want of memory is as before") {
    Tally tally("requests added to a message");
    const std::shared_ptr<TvOFXRequest> accounts = TvOFXAccountInfoRequest::initWithUpdateDateTime();
    const std::shared_ptr<TvOFXRequest> profile = TvOFXFIProfileRequest::initWithUpdateDateTime();
    for (int earlier = 0; earlier < 5; ++earlier) {
        CAPTURE(earlier);
        for (const auto& request : {accounts, profile})
            surviveChanging(
                tally,
                [&] {
                    auto message = TvOFXMessage::initWithUserSettings();
                    for (int i = 0; i < earlier; ++i) message->addRequest(accounts);
                    return message;
                },
                [&](TvOFXMessage& message) { message.addRequest(request); }, listOf);
    }
}

TEST_CASE("accounts are listed again after memory was exhausted") {
    Tally tally("accounts found in a message");
    surviveChanging(
        tally, [] { return importedExample("household.ofx"); },
        [](TvOFXMessage& message) { message.accountsFound(); },
        [](TvOFXMessage& message) { return std::to_string(message.bankAccountsFound().size()); });
}

TEST_CASE("an interpreter that runs out of memory keeps its results") {
    Tally tally("interpretation, of a tree and of one response");
    const auto made = [] { return interpreted(exampleData("every_element.ofx").bytes()); };
    const auto transcript = [](const TvOFXInterpreter& interpreter) { return transcriptOf(interpreter); };
    surviveChanging(
        tally, made, [](TvOFXInterpreter& interpreter) { interpreter.interpret(); }, transcript);

    const ParseDictionary status{{"CODE", "0"}, {"SEVERITY", "A severity of some length"}};
    const ParseDictionary wrapper{{"TRNUID", "A transaction identifier of some length"},
                                  {"STATUS", status},
                                  {"A.RESPONSE.OF.SOME.LENGTH.RS", status}};
    const ParseDictionary signOn{{"STATUS", status}, {"LANGUAGE", "ENG"}};
    for (const std::string name : {"A.RESPONSE.OF.SOME.LENGTH.TRNRS", "STMTTRNRS", "SONRS"})
        surviveChanging(
            tally, made,
            [&](TvOFXInterpreter& interpreter) {
                interpreter.interpretResponseDict(name == "SONRS" ? signOn : wrapper, name);
            },
            [&](const TvOFXInterpreter& interpreter) {
                const auto& last = interpreter.signOnResponse();
                return transcriptOf(interpreter) + std::string(last ? last->language().value_or("") : "");
            });
}

TEST_CASE("an object that cannot be read for want of memory is as before") {
    Tally tally("transactions and statements read twice");
    surviveChanging(
        tally, [] { return TvOFXStatementTransaction::initWithParserDict(longTexts("before")); },
        [](TvOFXStatementTransaction& transaction) { transaction.parseDictionary(longTexts("after")); },
        [](TvOFXStatementTransaction& transaction) { return transcriptOf(transaction); });

    const ParseDictionary account{{"ACCTID", "An account of some length"}};
    const ParseDictionary list{{"DTSTART", "20240101"},
                               {"STMTTRN", ParseValue::array({longTexts("a"), longTexts("b")})}};
    const ParseDictionary first{{"CURDEF", "A currency of some length"}, {"BANKTRANLIST", list}};
    const ParseDictionary second{{"CURDEF", "Another currency of some length"},
                                 {"BANKTRANLIST", list},
                                 {"BANKACCTFROM", account},
                                 {"LEDGERBAL", ParseDictionary{{"BALAMT", "1"}, {"DTASOF", "20240131"}}}};
    surviveChanging(
        tally, [&] { return TvOFXStatementResponse::initWithParseDict(first); },
        [&](TvOFXStatementResponse& statement) { statement.parseDictionary(second); },
        [](TvOFXStatementResponse& statement) { return transcriptOf(statement); });
}

TEST_CASE("a parser that runs out of memory can parse again") {
    Tally tally("parsers");
    for (const std::string name : {"utf_16.ofx", "card.ofx"}) {
        const Data data = exampleData(name);
        for (const std::size_t size : {data.size(), std::size_t{5}}) {
            const Data part = Data::view(data.bytes().substr(0, size));
            surviveChanging(
                tally, [&] { return TvOFXParser::initWithData(part); },
                [](TvOFXParser& parser) { parser.parseWithError(); },
                [](const TvOFXParser& parser) {
                    return std::to_string(parser.stringEncoding()) + std::string(parser.data()->bytes());
                });
        }
    }
}

TEST_CASE("a builder that runs out of memory is empty and builds again") {
    Tally tally("trees built step by step");
    const ParseDictionary tree = *parserResult("card.ofx").ofxData;
    std::vector<std::string> names;
    for (int i = 0; i < 40; ++i) names.push_back("A NAME OF SOME LENGTH " + std::to_string(i));
    const auto build = [&](ParseDictionaryBuilder& builder) {
        for (const std::string& name : names) {
            builder.open(name);
            builder.leaf(name, "a text of some length");
        }
        builder.value("COPY", tree);
    };
    ParseDictionaryBuilder whole;
    build(whole);
    const std::string expected = treeText(whole.finish());
    tally.add(surviveAll([&](const Point& point) {
        Attempt finding;
        const std::ptrdiff_t live = liveBlocks();
        {
            ParseDictionaryBuilder builder;
            auto operation = [&] { build(builder); };
            refuseAllocation(point.n, point.refusal);
            const Outcome outcome = outcomeOf(operation);
            finding.refused = stopRefusing();
            finding.right = (outcome == Outcome::badAlloc) == finding.refused;
            if (finding.refused) {
                finding.right &= builder.finish().isEmpty();
                build(builder);
            }
            finding.right &= treeText(builder.finish()) == expected;
        }
        finding.leaked = liveBlocks() - live;
        return finding;
    }));
}

TEST_CASE("texts, archives and messages for people change as a whole or not at all") {
    Tally tally("setters, archives, messages for people");
    const std::string text = "A text of a length that asks for memory";
    surviveChanging(
        tally, [] { return TvOFXBankAccount::initWithBankID("A bank of some length", "1", {}); },
        [&](TvOFXBankAccount& account) { account.setBankID(text); },
        [](const TvOFXBankAccount& account) { return account.description(); });
    surviveChanging(
        tally, [] { return std::make_shared<KeyedArchiver>(); },
        [&](KeyedArchiver& coder) { coder.encodeText(text, text); },
        [](const KeyedArchiver& coder) { return std::string(coder.archivedData().bytes()); });
    const auto response = TvOFXResponse::initWithParseDict(std::nullopt);
    response->setStatus(TvOFXStatus::initWithParseDict(
        ParseDictionary{{"CODE", "0"}, {"SEVERITY", "INFO"}, {"MESSAGE", text}}));
    surviveChanging(
        tally,
        [&] {
            return TvOFXResult::initWithResultObjects({response, response, response});
        },
        [](TvOFXResult& result) { result.createMessagesArrayFromStatusObjects(); },
        [](const TvOFXResult& result) { return std::to_string(result.allFIMessages().size()); });
    const auto record = TvOFXAccountInfo::initWithParserDict(ParseDictionary{{"DESC", text}});
    surviveChanging(
        tally, [&] { return TvOFXAccount::initWithAccountInfos(record); },
        [&](TvOFXAccount& account) { account.setCountry(text); },
        [](const TvOFXAccount& account) { return std::string(account.country()); });
}
