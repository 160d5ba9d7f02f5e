// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::shared_ptr<TvOFXStatementResponse> bankStatement(const TvOFXMessage& message, std::size_t number = 0) {
    const auto accounts = message.bankAccountsFound();
    REQUIRE(number < accounts.size());
    auto statement = message.statementsForBankAccount(accounts[number]);
    REQUIRE(statement);
    return statement;
}

std::shared_ptr<TvOFXCCStatementResponse> cardStatement(const TvOFXMessage& message) {
    const auto accounts = message.creditCardAccountsFound();
    REQUIRE(accounts.size() == 1);
    auto statement = message.statementsForCreditCardAccount(accounts.front());
    REQUIRE(statement);
    return statement;
}

/// The exact sum of the amounts.
std::string total(const TvOFXAccountStatement& statement) {
    Decimal sum;
    for (const auto& transaction : statement.statementTransactions()) {
        REQUIRE(transaction->amount());
        const auto next = sum.plus(*transaction->amount());
        REQUIRE(next);
        sum = *next;
    }
    return sum.toString();
}

const TvOFXStatementTransaction& transaction(const TvOFXAccountStatement& statement, std::size_t number) {
    REQUIRE(number < statement.statementTransactions().size());
    return *statement.statementTransactions()[number];
}

std::shared_ptr<TvOFXInterpreter> interpretedExample(const std::string& name,
                                                     TextEncoding encoding = TextEncodingNone) {
    return interpreted(exampleData(name).bytes(), encoding);
}

}  // namespace

TEST_CASE("every example imports") {
    struct Row {
        std::string name;
        std::uint64_t headerVersion;
        std::uint64_t ofxVersion;
        std::size_t accounts;
        TextEncoding encoding;
    };
    for (const Row& row :
         {Row{"checking.ofx", 100, 103, 1, TextEncodingNone}, Row{"card.ofx", 200, 220, 1, TextEncodingNone},
          Row{"household.ofx", 200, 211, 3, TextEncodingNone},
          Row{"every_element.ofx", 200, 211, 1, TextEncodingNone},
          Row{"errors.ofx", 100, 102, 1, TextEncodingNone},
          Row{"extension_names.ofx", 100, 102, 1, TextEncodingNone},
          Row{"windows_1252.ofx", 100, 102, 1, TextEncodingWindows1252},
          Row{"utf_16.ofx", 200, 202, 1, TextEncodingNone}, Row{"quirks.ofx", 0, 0, 1, TextEncodingNone}}) {
        CAPTURE(row.name);
        const auto message = importedExample(row.name, row.encoding);
        CHECK(message->headerVersion() == row.headerVersion);
        CHECK(message->ofxVersion() == row.ofxVersion);
        CHECK(message->accountsFound().size() == row.accounts);
    }
}

TEST_CASE("the checking account of the demonstration is read to the penny") {
    const auto message = importedExample("checking.ofx");
    CHECK(shown(message->encoding()) == "UTF-8");
    const auto statement = bankStatement(*message);
    CHECK(shown(statement->bankAccountFrom()->bankID()) == "704170042");
    CHECK(shown(statement->bankAccountFrom()->accountID()) == "0081443920");
    CHECK(statement->bankAccountFrom()->accountType() == TvOFXBankAccountTypeChecking);
    CHECK(shown(statement->defaultCurrency()) == "GBP");
    CHECK(shown(statement->transactionStartDateTime()) == "2024-03-01 00:00:00.000");
    CHECK(shown(statement->transactionEndDateTime()) == "2024-03-31 00:00:00.000");
    CHECK(statement->statementTransactions().size() == 26);
    CHECK(total(*statement) == "357.84");
    CHECK(shown(statement->ledgerBalanceAmount()) == "2776.2");
    CHECK(shown(statement->availableBalanceAmount()) == "3276.2");
    CHECK(shown(statement->availableBalanceDateTime()) == "2024-04-01 00:00:00.000");
    CHECK(shown(transaction(*statement, 1).payeeName()) == "Café Lumière");
    CHECK(shown(transaction(*statement, 5).payeeName()) == "Tanner & Daughter Books");
    CHECK(shown(transaction(*statement, 6).checkOrReferenceNumber()) == "1041");
    CHECK(shown(transaction(*statement, 6).payeeName()) == "nothing");
    CHECK(shown(transaction(*statement, 17).payeeName()) == "桜ヌードルハウス");
    REQUIRE(transaction(*statement, 8).bankAccountTo());
    CHECK(shown(transaction(*statement, 8).bankAccountTo()->accountID()) == "0081443938");
    CHECK(shown(transaction(*statement, 0).originalDataString()) ==
          "<TRNTYPE>DIRECTDEBIT\n<DTPOSTED>20240301\n<TRNAMT>-845.00\n<FITID>20240301-001\n"
          "<NAME>Harbour Row Lettings\n<MEMO>Rent March\n");
}

TEST_CASE("the card of the examples keeps moments, codes and escaped names") {
    const auto message = importedExample("card.ofx");
    CHECK(shown(message->nuFileUID()) == "20240301-2290");
    const auto statement = cardStatement(*message);
    CHECK(shown(statement->creditCardAccountFrom()->accountID()) == "5190000000002290");
    CHECK(shown(statement->status()->description()) == "Status: 0 [INFO]");
    CHECK(shown(statement->transactionUID()) == "3F2A7C1E-card");
    CHECK(statement->statementTransactions().size() == 8);
    CHECK(total(*statement) == "-901.7");
    CHECK(shown(statement->ledgerBalanceAmount()) == "-1513.54");
    CHECK(shown(statement->transactionEndDateTime()) == "2024-02-29 23:59:59.999");
    CHECK(shown(transaction(*statement, 0).datePosted()) == "2024-02-02 10:45:00.000");
    CHECK(shown(transaction(*statement, 2).datePosted()) == "2024-02-09 09:12:33.417");
    CHECK(shown(transaction(*statement, 2).standardIndustrialCode()) == "4899");
    CHECK(shown(transaction(*statement, 7).payeeName()) == "Oriel Furniture & Sons");
    CHECK(message->bankAccountsFound().empty());
    CHECK(message->bankingMsgSet().empty());
}

TEST_CASE("the household of the examples has two bank accounts and a card") {
    const auto message = importedExample("household.ofx");
    REQUIRE(message->bankAccountsFound().size() == 2);
    const auto current = bankStatement(*message, 0);
    CHECK(current->bankAccountFrom()->accountType() == TvOFXBankAccountTypeChecking);
    CHECK(shown(current->bankAccountFrom()->branchID()) == "07");
    CHECK(total(*current) == "1730.45");
    CHECK(shown(current->ledgerBalanceAmount()) == "2204.18");
    CHECK(shown(transaction(*current, 0).payeeName()) == "Werkstatt Öztürk GmbH");
    const auto savings = bankStatement(*message, 1);
    CHECK(savings->bankAccountFrom()->accountType() == TvOFXBankAccountTypeSavings);
    CHECK(total(*savings) == "400");
    CHECK(shown(savings->availableBalanceAmount()) == "nothing");
    CHECK(
        transaction(*current, 2).bankAccountTo()->isEqualToOFXBankAccount(savings->bankAccountFrom().get()));
    const auto card = cardStatement(*message);
    CHECK(total(*card) == "-113.25");
    CHECK(card->statementTransactions().size() == 2);
    CHECK(message->accountsFound().back() == card->creditCardAccountFrom());
}

TEST_CASE("the example with every element fills every field of a transaction") {
    const auto message = importedExample("every_element.ofx");
    const auto statement = bankStatement(*message);
    CHECK(statement->bankAccountFrom()->accountType() == TvOFXBankAccountTypeMoneyMarket);
    CHECK(shown(statement->bankAccountFrom()->acctKeyChecksum()) == "7A0F");
    CHECK(statement->statementTransactions().size() == 3);
    CHECK(total(*statement) == "-1484.455");
    const TvOFXStatementTransaction& full = transaction(*statement, 0);
    CHECK(shown(full.transactionType()) == "PAYMENT");
    CHECK(shown(full.datePosted()) == "2023-10-12 14:15:30.125");
    CHECK(shown(full.originalDatePostedString()) == "20231012141530.125[+1:CET]");
    CHECK(shown(full.dateUserInit()) == "2023-10-11 00:00:00.000");
    CHECK(shown(full.dateFundsAvailable()) == "2023-10-13 08:00:00.000");
    CHECK(shown(full.amount()) == "-1234.56");
    CHECK(shown(full.fiTransactionID()) == "AARE-0001");
    CHECK(shown(full.correctionFITID()) == "AARE-0000");
    CHECK(shown(full.correctionAction()) == "REPLACE");
    CHECK(shown(full.serverTransactionID()) == "srv-77120");
    CHECK(shown(full.checkOrReferenceNumber()) == "00412");
    CHECK(shown(full.referenceNumber()) == "RF18 5390 0754");
    CHECK(shown(full.standardIndustrialCode()) == "5942");
    CHECK(shown(full.payeeID()) == "payee-9");
    CHECK(shown(full.payeeName()) == "nothing");
    CHECK(shown(full.memo()) == "Facture 2023/118 <solde> & port");
    CHECK(shown(full.origCurrency()) == "nothing");
    REQUIRE(full.payee());
    CHECK(shown(full.payee()->name()) == "Librairie du Vieux-Pont");
    CHECK(full.payee()->address() == "Quai des Tanneurs 4\n2e étage\nCase postale 12");
    CHECK(full.payee()->addressLines() ==
          std::vector<std::string>{"Quai des Tanneurs 4", "2e étage", "2e étage"});
    CHECK(shown(full.payee()->zipCode()) == "9912");
    CHECK(shown(full.payee()->phoneNumber()) == "nothing");
    REQUIRE(full.bankAccountTo());
    CHECK(shown(full.bankAccountTo()->branchID()) == "Pont");
    CHECK(shown(full.bankAccountTo()->acctKeyChecksum()) == "19C4");
}

TEST_CASE("the example with every element has a transfer to a card and a correction, too") {
    const auto message = importedExample("every_element.ofx");
    const auto statement = bankStatement(*message);
    const TvOFXStatementTransaction& transfer = transaction(*statement, 1);
    REQUIRE(transfer.creditCardAccountTo());
    CHECK(shown(transfer.creditCardAccountTo()->accountID()) == "4999000011112222");
    CHECK(shown(transfer.creditCardAccountTo()->acctKeyChecksum()) == "88");
    CHECK(shown(transfer.currency()) == "nothing");
    REQUIRE(transfer.originalParseData());
    CHECK(shown((*transfer.originalParseData())["CURRENCY"]["CURSYM"].text()) == "CHF");
    const TvOFXStatementTransaction& correction = transaction(*statement, 2);
    CHECK(shown(correction.correctionAction()) == "DELETE");
    CHECK(shown(correction.amount()) == "0.105");
    CHECK(shown(correction.memo()) == "nothing");
}

TEST_CASE("the statuses of the example with errors are read, and nothing is dropped") {
    const auto interpreter = interpretedExample("errors.ofx");
    REQUIRE(interpreter->allResponses().size() == 4);
    const auto describe = [&](const char* uid) {
        const auto found = interpreter->allStatusObjects().find(uid);
        return found == interpreter->allStatusObjects().end() ? "nothing" : found->second->description();
    };
    CHECK(describe("first") == "Status: 2000 [ERROR] - The account ledger is closed for maintenance");
    CHECK(describe("second") == "Status: 2 [WARN] - Statement may be incomplete & will be sent again");
    CHECK(describe("third") == "Status: 2003 [ERROR]");
    CHECK(interpreter->bankingMsgSetResponses().size() == 2);
    CHECK(interpreter->creditCardMsgSetResponses().size() == 1);

    const auto message = importedExample("errors.ofx");
    CHECK(message->accountsFound().size() == 1);
    const auto statement = bankStatement(*message);
    CHECK(statement->bankAccountFrom()->accountType() == TvOFXBankAccountTypeCreditLine);
    CHECK(shown(statement->ledgerBalanceAmount()) == "-75");
    CHECK(shown(statement->ledgerBalanceDateTime()) == "nothing");
    CHECK(statement->statementTransactions().empty());
    CHECK(shown(statement->transactionEndDateTime()) == "2024-01-10 00:00:00.000");
}

TEST_CASE("extension names of the examples stand in the tree as they are written") {
    const auto interpreter = interpretedExample("extension_names.ofx");
    REQUIRE(interpreter->parserDict());
    const ParseValue tree(*interpreter->parserDict());
    const ParseValue signOn = tree["OFX"]["SIGNONMSGSRSV1"]["SONRS"];
    CHECK(shown(signOn["INTU.BID"].text()) == "51200");
    CHECK(shown(signOn["INTU.ORG"].text()) == "Copperline Federal");
    const ParseValue statement = tree["OFX"]["BANKMSGSRSV1"]["STMTTRNRS"]["STMTRS"];
    CHECK(shown(statement["INTU.ACCOUNTINFO"]["INTU.NICKNAME"].text()) == "Holiday fund");
    CHECK(shown(statement["BANKTRANLIST"]["STMTTRN"]["INTU.CATEGORY"].text()) == "Interest income");
    const auto message = importedExample("extension_names.ofx");
    CHECK(total(*bankStatement(*message)) == "4.12");
    CHECK(shown(bankStatement(*message)->ledgerBalanceAmount()) == "1982.6");
}

TEST_CASE("the Windows-1252 example needs its encoding, and then has its characters") {
    Error error;
    CHECK_FALSE(TovanaOFXController::importOFXFileFromData(exampleData("windows_1252.ofx"), &error));
    CHECK(error.description == "Data is not OFX or unknown character encoding.");
    const auto message = importedExample("windows_1252.ofx", TextEncodingWindows1252);
    CHECK(shown(message->charset()) == "1252");
    const auto statement = bankStatement(*message);
    CHECK(total(*statement) == "201.5");
    CHECK(shown(transaction(*statement, 0).payeeName()) == "Pâtisserie “Chez Zoé”");
    CHECK(shown(transaction(*statement, 0).memo()) == "Réglé 18,50 € – merci");
    CHECK(shown(transaction(*statement, 1).payeeName()) == "Frédérique Œuvrard");
    const auto interpreter = interpretedExample("windows_1252.ofx", TextEncodingWindows1252);
    const ParseValue tree(*interpreter->parserDict());
    CHECK(shown(tree["OFX"]["SIGNONMSGSRSV1"]["SONRS"]["FI"]["ORG"].text()) ==
          "Caisse d’Épargne fictive du Lac");
}

TEST_CASE("the UTF-16 example is recognised by its mark") {
    TvOFXParser parser(exampleData("utf_16.ofx"));
    REQUIRE(parser.parseWithError());
    CHECK(parser.stringEncoding() == TextEncodingUTF16LittleEndian);
    const auto message = importedExample("utf_16.ofx");
    CHECK(shown(message->encoding()) == "UTF-16");
    const auto statement = bankStatement(*message);
    CHECK(shown(statement->transactionUID()) == "六月");
    CHECK(total(*statement) == "243520");
    CHECK(shown(statement->ledgerBalanceAmount()) == "1302455");
    CHECK(shown(transaction(*statement, 0).payeeName()) == "青空書店");
    CHECK(shown(transaction(*statement, 0).memo()) == "絵本 📚 二冊");
}

TEST_CASE("the example with quirks loses what is not right and keeps the rest") {
    const auto message = importedExample("quirks.ofx");
    const auto statement = bankStatement(*message);
    CHECK(statement->bankAccountFrom()->accountType() == TvOFXBankAccountTypeUnknown);
    CHECK(shown(statement->bankAccountFrom()->accountID()) == "X 1");
    CHECK(shown(statement->transactionStartDateTime()) == "nothing");
    CHECK(shown(statement->transactionEndDateTime()) == "nothing");
    CHECK(shown(statement->ledgerBalanceAmount()) == "nothing");
    CHECK(shown(statement->ledgerBalanceDateTime()) == "2024-09-09 00:00:00.000");
    REQUIRE(statement->statementTransactions().size() == 3);
    const TvOFXStatementTransaction& first = transaction(*statement, 0);
    CHECK(shown(first.transactionType()) == "debit");
    CHECK(shown(first.amount()) == "nothing");
    CHECK(shown(first.datePosted()) == "nothing");
    CHECK(shown(first.originalDatePostedString()) == "yesterday");
    CHECK(shown(first.payeeName()) == "nothing");
    CHECK(shown(first.currency()) == "NZD");
    CHECK(shown(first.origCurrency()) == "AUD");
    const TvOFXStatementTransaction& second = transaction(*statement, 1);
    CHECK(shown(second.amount()) == "1234.5");
    CHECK(shown(second.datePosted()) == "2024-09-07 00:00:00.000");
    CHECK(shown(second.payeeName()) == "Wattle Creek Caf&eacute;");
    REQUIRE(second.payee());
    CHECK(second.payee()->address() == "\nShed 3");
    CHECK(shown(second.payee()->phoneNumber()) == "555 0144");
    const TvOFXStatementTransaction& third = transaction(*statement, 2);
    CHECK(shown(third.amount()) == "-0.75");
    CHECK(shown(third.datePosted()) == "2024-09-08 00:00:00.000");
    CHECK_FALSE(second.isEqualOFXStatementTransaction(&third));
}
