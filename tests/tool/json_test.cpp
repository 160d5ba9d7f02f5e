// SPDX-License-Identifier: Apache-2.0
#include "tool/tool.h"

using namespace brackwell::tests;

namespace {

std::vector<std::string> keysOf(const Json& object) {
    std::vector<std::string> keys;
    for (const auto& [key, value] : object.items()) keys.push_back(key);
    return keys;
}

using Keys = std::vector<std::string>;

Json exampleJson(const std::string& name) {
    const Finished finished = tool({"json", examplePath(name)});
    CHECK(finished.status == 0);
    return Json::parse(finished.output);
}

/// The response of a class.
Json responseOf(const Json& document, const std::string& name) {
    for (const Json& response : document["responses"])
        if (response["class"] == name) return response;
    FAIL("no such response");
    return {};
}

/// The only transaction of a document with these elements in it.
Json transactionWith(const std::string& elements) {
    const Json document = jsonOf("json", transactionsWith("<STMTTRN>" + elements + "</STMTTRN>"));
    return document["responses"].at(0)["statementTransactions"].at(0);
}

}  // namespace

TEST_CASE("a document is one object on one line, with message, accounts, responses and findings") {
    const std::string output = outputOf({"json"}, version1(""));
    CHECK(output.starts_with(
        "{\"file\":\"-\",\"message\":{\"headerVersion\":100,\"ofxVersion\":102,\"ofxSecurity\":\"NONE\","
        "\"headerData\":"
        "\"OFXSGML\",\"encoding\":\"USASCII\",\"charset\":\"1252\",\"oldFileUID\":\"NONE\",\"nuFileUID\":"
        "\"NONE\",\"compression\":\"NONE\"},\"accountsFound\":[],\"responses\":[],\"investmentStatements\":[]"
        ",\"securities\":[],\"findings\":[{\"kind\":"
        "\"noContent\",\"severity\":\"warning\",\"line\":0,\"column\":0,\"count\":1,\"text\":\"The document "
        "has no "
        "responses"));
    CHECK(output.ends_with("\"}]}\n"));
    CHECK(linesOf(output).size() == 1);
}

TEST_CASE("header fields that the document does not have are left out, but for the versions") {
    CHECK(jsonOf("json", "<OFX></OFX>")["message"] == Json::parse(R"({"headerVersion":0,"ofxVersion":0})"));
    CHECK(jsonOf("json", "OFXHEADER:\nVERSION:\nDATA:\n<OFX></OFX>")["message"] ==
          Json::parse(R"({"headerVersion":0,"ofxVersion":0,"headerData":""})"));
}

TEST_CASE("several documents are an object a line, each with its file first") {
    const std::string first = examplePath("card.ofx");
    const std::string second = examplePath("checking.ofx");
    const Finished finished = tool({"json", first, second});
    const std::vector<std::string> lines = linesOf(finished.output);
    REQUIRE(lines.size() == 2);
    CHECK(keysOf(Json::parse(lines[0])) == Keys{"file", "message", "accountsFound", "responses",
                                                "investmentStatements", "securities", "findings"});
    CHECK(Json::parse(lines[0])["file"] == first);
    CHECK(Json::parse(lines[1])["file"] == second);
    CHECK(tool({"json", first}).output == lines[0] + "\n");
    const Finished withInput = tool({"json", "-", first}, version1(""));
    CHECK(linesOf(withInput.output).at(0).starts_with(R"({"file":"-","message":)"));
}

TEST_CASE("every example document becomes JSON") {
    for (const auto& entry : std::filesystem::directory_iterator(BRACKWELL_EXAMPLES_DIR)) {
        if (entry.path().extension() != ".ofx") continue;
        CAPTURE(entry.path().string());
        const Finished finished = tool({"json", entry.path().string()});
        CHECK(finished.status == 0);
        CHECK(Json::accept(finished.output));
    }
}

TEST_CASE("a transaction has its fields in the order of the class") {
    const Json document = exampleJson("every_element.ofx");
    const Json statement = responseOf(document, "TvOFXStatementResponse");
    CHECK(keysOf(statement) == Keys{"class", "transactionWrapperName", "transactionUID", "status",
                                    "defaultCurrency", "bankAccountFrom", "transactionStartDateTime",
                                    "transactionEndDateTime", "statementTransactions", "ledgerBalanceAmount",
                                    "ledgerBalanceDateTime", "availableBalanceAmount",
                                    "availableBalanceDateTime"});
    Json transaction = statement["statementTransactions"][0];
    CHECK(transaction["originalDataString"].get<std::string>().find("<CHECKNUM>00412</CHECKNUM>") !=
          std::string::npos);
    transaction.erase("originalDataString");
    CHECK(transaction["transactionCurrency"].dump() ==
          R"({"symbol":"EUR","rate":"0.9512","isConverted":true})");
    transaction.erase("transactionCurrency");
    CHECK(transaction.dump() == Json::parse(R"({
        "transactionType": "PAYMENT",
        "datePosted": "2023-10-12T14:15:30.125Z",
        "dateUserInit": "2023-10-11T00:00:00.000Z",
        "dateFundsAvailable": "2023-10-13T08:00:00.000Z",
        "amount": "-1234.56",
        "fiTransactionID": "AARE-0001",
        "correctionFITID": "AARE-0000",
        "correctionAction": "REPLACE",
        "serverTransactionID": "srv-77120",
        "checkOrReferenceNumber": "00412",
        "referenceNumber": "RF18 5390 0754",
        "standardIndustrialCode": "5942",
        "payeeID": "payee-9",
        "payee": {"name": "Librairie du Vieux-Pont",
                  "address": "Quai des Tanneurs 4\n2e étage\nCase postale 12",
                  "city": "Valmont-sur-Aare", "state": "VM", "zipCode": "9912", "country": "CHE"},
        "bankAccountTo": {"class": "TvOFXBankAccount", "bankID": "008800447", "branchID": "Pont",
                          "accountID": "CH-90-2002", "accountType": 1, "acctKeyChecksum": "19C4"},
        "memo": "Facture 2023/118 <solde> & port",
        "originalDatePostedString": "20231012141530.125[+1:CET]"})")
                                    .dump());
    CHECK(statement["statementTransactions"][1]["creditCardAccountTo"].dump() ==
          R"({"class":"TvOFXCreditCardAccount","accountID":"4999000011112222","acctKeyChecksum":"88"})");
}

TEST_CASE("the order of a transaction's fields is not that of its elements") {
    CHECK(keysOf(transactionWith(
              "<ORIGCURRENCY>1<CURRENCY>2<MEMO>3<CCACCTTO><ACCTID>4</CCACCTTO><BANKACCTTO><ACCTID>5"
              "</BANKACCTTO><PAYEE><NAME>6</PAYEE><NAME>7<PAYEEID>8<SIC>9<REFNUM>10<CHECKNUM>11<SRVRTID>12"
              "<CORRECTACTION>13<CORRECTFITID>14<FITID>15<TRNAMT>16<DTAVAIL>20240103<DTUSER>20240102"
              "<DTPOSTED>20240101<TRNTYPE>20")) == Keys{"transactionType",
                                                        "datePosted",
                                                        "dateUserInit",
                                                        "dateFundsAvailable",
                                                        "amount",
                                                        "fiTransactionID",
                                                        "correctionFITID",
                                                        "correctionAction",
                                                        "serverTransactionID",
                                                        "checkOrReferenceNumber",
                                                        "referenceNumber",
                                                        "standardIndustrialCode",
                                                        "payeeID",
                                                        "payeeName",
                                                        "payee",
                                                        "bankAccountTo",
                                                        "creditCardAccountTo",
                                                        "memo",
                                                        "currency",
                                                        "origCurrency",
                                                        "originalDataString",
                                                        "originalDatePostedString"});
}

TEST_CASE("the source text of a transaction ends where the next one begins") {
    struct Row {
        std::string transactions;
        std::vector<std::string> texts;
    };
    for (const Row& row : std::vector<Row>{
             {"<STMTTRN><NAME>a</STMTTRN>\n<STMTTRN><NAME>b</STMTTRN>", {"<NAME>a", "<NAME>b"}},
             {"<STMTTRN><NAME>a</STMTTRN ><STMTTRN><NAME>b</STMTTRN>", {"<NAME>a</STMTTRN >", "<NAME>b"}},
             {"<STMTTRN><NAME>b</STMTTRN >< STMTTRN\u00A0><NAME>c</STMTTRN>",
              {"<NAME>b</STMTTRN >", "<NAME>c"}},
             {"<STMTTRN><NAME>a<STMTTRN><NAME>b</STMTTRN></STMTTRN>", {"<NAME>a"}},
             {"<STMTTRN><NAME>a STMTTRN b<MEMO>STMTTRN</STMTTRN>", {"<NAME>a STMTTRN b<MEMO>STMTTRN"}},
             {"<STMTTRN><NAME>x > STMTTRN><STMTTRNX>1<STMTTRN></STMTTRN></STMTTRN>",
              {"<NAME>x > STMTTRN><STMTTRNX>1"}},
         }) {
        CAPTURE(row.transactions);
        std::vector<std::string> texts;
        const Json json = jsonAsIs("json", transactionsWith(row.transactions));
        for (const Json& transaction : json["responses"][0]["statementTransactions"])
            texts.push_back(transaction["originalDataString"]);
        CHECK(texts == row.texts);
    }
}

TEST_CASE("texts that may stand for currencies are written when they are texts") {
    const Json transaction = transactionWith("<CURRENCY>USD<ORIGCURRENCY>CHF<NAME>A<MEMO>B");
    CHECK(keysOf(transaction) == Keys{"payeeName", "memo", "currency", "origCurrency", "originalDataString"});
}

TEST_CASE("the aggregate of a currency is written under a name of its own") {
    const Json given = transactionWith("<TRNAMT>-4<CURRENCY><CURRATE>1.25<CURSYM>CHF</CURRENCY>");
    CHECK(given["transactionCurrency"].dump() == R"({"symbol":"CHF","rate":"1.25","isConverted":false})");
    CHECK_FALSE(given.contains("currency"));
    const Json converted = transactionWith("<TRNAMT>-4<ORIGCURRENCY><CURSYM>GBP</ORIGCURRENCY>");
    CHECK(converted["transactionCurrency"].dump() == R"({"symbol":"GBP","isConverted":true})");
    CHECK_FALSE(transactionWith("<TRNAMT>-4").contains("transactionCurrency"));
}

TEST_CASE("dates have three decimals, in UTC") {
    struct Row {
        std::string text;
        std::string date;
    };
    for (const Row& row : std::vector<Row>{{"20240131", "2024-01-31T00:00:00.000Z"},
                                           {"20240131170509", "2024-01-31T17:05:09.000Z"},
                                           {"20240131170509.700", "2024-01-31T17:05:09.700Z"},
                                           {"20240229235959.999[-5:EST]", "2024-02-29T23:59:59.999Z"},
                                           {"00010101", "0001-01-01T00:00:00.000Z"},
                                           {"19691231235959.001", "1969-12-31T23:59:59.001Z"},
                                           {"99991231235959", "9999-12-31T23:59:59.000Z"}}) {
        CAPTURE(row.text);
        CHECK(transactionWith("<DTPOSTED>" + row.text)["datePosted"] == row.date);
    }
    CHECK_FALSE(transactionWith("<DTPOSTED>20240230").contains("datePosted"));
}

TEST_CASE("amounts are plain notation without zeros at the end") {
    struct Row {
        std::string text;
        std::string amount;
    };
    for (const Row& row : std::vector<Row>{
             {"-12.50", "-12.5"},
             {"1,234.56", "1234.56"},
             {"0.00", "0"},
             {"-0", "0"},
             {"+7.", "7"},
             {"1e3", "1000"},
             {"5e-3", "0.005"},
             {"99999999999999999999999999999999999999", "99999999999999999999999999999999999999"}}) {
        CAPTURE(row.text);
        CHECK(transactionWith("<TRNAMT>" + row.text)["amount"] == row.amount);
    }
    CHECK_FALSE(transactionWith("<TRNAMT>twelve").contains("amount"));
}

TEST_CASE("a payee has its fields in the order of the class, with all address lines second") {
    CHECK(transactionWith("<PAYEE><PHONENUMBER>7<COUNTRY>6<POSTALCODE>5<STATE>4<CITY>3<ADDR3>c<ADDR2>b"
                          "<ADDR1>a<NAME>1</PAYEE>")["payee"]
              .dump() ==
          R"({"name":"1","address":"a\nb\nc","city":"3","state":"4","zipCode":"5","country":"6",)"
          R"("phoneNumber":"7"})");
}

TEST_CASE("responses stand in document order, those of repeated wrappers where the first of them stood") {
    const Json document = jsonOf(
        "json", version1("<CREDITCARDMSGSRSV1><CCSTMTTRNRS><TRNUID>1</CCSTMTTRNRS></CREDITCARDMSGSRSV1>"
                         "<BANKMSGSRSV1><STMTTRNRS><TRNUID>2</STMTTRNRS><OTHERTRNRS><TRNUID>4</OTHERTRNRS>"
                         "<STMTTRNRS><TRNUID>3</STMTTRNRS></BANKMSGSRSV1>"
                         "<SIGNUPMSGSRSV1><ACCTINFOTRNRS><TRNUID>5</ACCTINFOTRNRS></SIGNUPMSGSRSV1>"));
    std::string order;
    for (const Json& response : document["responses"]) order += response["transactionUID"];
    CHECK(order == "12345");
}

TEST_CASE("a payee always has an address, and an empty text is written") {
    CHECK(transactionWith("<PAYEE><NAME>A</PAYEE>")["payee"].dump() == R"({"name":"A","address":""})");
}

TEST_CASE("a status without its code is code 0, and a large code is exact") {
    const auto statusOf = [](const std::string& status) {
        return jsonOf("json", version1("<BANKMSGSRSV1><STMTTRNRS><STATUS>" + status +
                                       "</STATUS></STMTTRNRS></BANKMSGSRSV1>"))["responses"][0]["status"]
            .dump();
    };
    CHECK(statusOf("<SEVERITY>INFO") == R"({"code":0})");
    CHECK(statusOf("<CODE>9007199254740993<SEVERITY>WARN<MESSAGE>Hm") ==
          R"({"code":9007199254740993,"severity":"WARN","message":"Hm"})");
    CHECK(statusOf("<CODE>-1<SEVERITY>INFO") == R"({"code":18446744073709551615,"severity":"INFO"})");
}

TEST_CASE(
    "a statement always has a list of transactions, and a response without a class of its own has none") {
    const Json document = jsonOf(
        "json", version1("<BANKMSGSRSV1><STMTTRNRS><TRNUID>7</STMTTRNRS></BANKMSGSRSV1>"
                         "<INVSTMTMSGSRSV1><INVSTMTTRNRS><TRNUID>8<INVSTMTRS><X>1</INVSTMTRS></INVSTMTTRNRS>"
                         "</INVSTMTMSGSRSV1>"));
    CHECK(document["responses"][0].dump() ==
          R"({"class":"TvOFXStatementResponse","transactionWrapperName":"STMTRS","transactionUID":"7",)"
          R"("statementTransactions":[]})");
    CHECK(document["responses"][1].dump() ==
          R"({"class":"TvOFXResponse","transactionWrapperName":"INVSTMTRS","transactionUID":"8"})");
}

TEST_CASE("the accounts found are those of bank statements, then those of cards") {
    const Json document = exampleJson("household.ofx");
    Keys classes;
    for (const Json& account : document["accountsFound"]) classes.push_back(account["class"]);
    CHECK(classes == Keys{"TvOFXBankAccount", "TvOFXBankAccount", "TvOFXCreditCardAccount"});
    CHECK(document["accountsFound"][0].dump() == document["responses"][1]["bankAccountFrom"].dump());
    CHECK(keysOf(document["accountsFound"][2]) == Keys{"class", "accountID"});
}

TEST_CASE("a sign-on has its fields in the order of the class, secrets included") {
    const Json document =
        jsonOf("json", version1("<SIGNONMSGSRSV1><SONRS><STATUS><CODE>0<SEVERITY>INFO</STATUS>"
                                "<DTSERVER>20240102030405<USERKEY>key<TSKEYEXPIRE>20240103<LANGUAGE>ENG"
                                "<DTPROFUP>20230101<DTACCTUP>20230202<FI><ORG>Bank<FID>12</FI>"
                                "<SESSCOOKIE>cookie<ACCESSKEY>access</SONRS></SIGNONMSGSRSV1>"));
    CHECK(document["responses"][0].dump() == Json::parse(R"({
        "class": "TvOFXSignOnResponse",
        "transactionWrapperName": "SONRS",
        "status": {"code": 0, "severity": "INFO"},
        "dateOfServer": "2024-01-02T03:04:05.000Z",
        "userKey": "key",
        "tskeyExpire": "2024-01-03T00:00:00.000Z",
        "language": "ENG",
        "dateOflastProfileInfoUpdate": "2023-01-01T00:00:00.000Z",
        "dateOflastAccountInfoUpdate": "2023-02-02T00:00:00.000Z",
        "financialInstitutionID": {"organization": "Bank", "fid": "12"},
        "sessionCookie": "cookie",
        "accessKey": "access"})")
                                                 .dump());
}

TEST_CASE("a card statement has its fields in the order of the class") {
    const Json document = jsonOf(
        "json",
        version1("<CREDITCARDMSGSRSV1><CCSTMTTRNRS><CCSTMTRS><AVAILBAL><DTASOF>20240101<BALAMT>1</AVAILBAL>"
                 "<LEDGERBAL><DTASOF>20240101<BALAMT>1</LEDGERBAL><BANKTRANLIST><DTEND>20240101<DTSTART>"
                 "20240101</BANKTRANLIST><CCACCTFROM><ACCTKEY>1<ACCTID>2</CCACCTFROM><CURDEF>EUR</CCSTMTRS>"
                 "<STATUS><MESSAGE>m<SEVERITY>INFO<CODE>0</STATUS><TRNUID>1</CCSTMTTRNRS>"
                 "</CREDITCARDMSGSRSV1>"));
    CHECK(keysOf(document["responses"][0]) ==
          Keys{"class", "transactionWrapperName", "transactionUID", "status", "defaultCurrency",
               "creditCardAccountFrom", "transactionStartDateTime", "transactionEndDateTime",
               "statementTransactions", "ledgerBalanceAmount", "ledgerBalanceDateTime",
               "availableBalanceAmount", "availableBalanceDateTime"});
}

TEST_CASE("account information has its records with the blocks of bank and card accounts") {
    const Json response = responseOf(exampleJson("account_information.ofx"), "TvOFXAccountInfoResponse");
    CHECK(keysOf(response) == Keys{"class", "transactionWrapperName", "transactionUID", "status",
                                   "lastUpdateDateTime", "accountInfos"});
    CHECK(response["lastUpdateDateTime"] == "2024-05-30T12:00:00.000Z");
    REQUIRE(response["accountInfos"].size() == 3);
    CHECK(response["accountInfos"][0].dump() == Json::parse(R"({
        "accountDescription": "Everyday account",
        "accountPhone": "+44 20 5550 0100",
        "bankAccountInfo": {
            "bankAcctFrom": {"class": "TvOFXBankAccount", "bankID": "400515", "branchID": "Wharf",
                             "accountID": "20117734", "accountType": 1},
            "supportsTransactionDownload": true,
            "isTransferSourceAccount": true,
            "isTransferDestinationAccount": true,
            "serviceStatus": 3},
        "serviceStatus": 0})")
                                                    .dump());
    CHECK(response["accountInfos"][2].dump() == Json::parse(R"({
        "accountDescription": "Lantern card",
        "accountPhone": "+44 20 5550 0102",
        "creditCardAccountInfo": {
            "creditCardAccountFrom": {"class": "TvOFXCreditCardAccount", "accountID": "5555000011112222"},
            "supportsTransactionDownload": true,
            "isTransferSourceAccount": false,
            "isTransferDestinationAccount": false,
            "serviceStatus": 3},
        "serviceStatus": 1})")
                                                    .dump());
}

TEST_CASE("account information has the blocks of investment accounts") {
    const std::string records =
        "<ACCTINFO><INVACCTINFO><INVACCTFROM><BROKERID>b<ACCTID>9</INVACCTFROM><USPRODUCTTYPE>IRA<CHECKING>Y"
        "<SVCSTATUS>ACTIVE<INVACCTTYPE>JOINT<OPTIONLEVEL>covered</INVACCTINFO></ACCTINFO>"
        "<ACCTINFO><INVACCTINFO><CHECKING>N</INVACCTINFO></ACCTINFO>";
    const Json document = jsonOf("json", version1("<SIGNUPMSGSRSV1><ACCTINFOTRNRS><ACCTINFORS>" + records +
                                                  "</ACCTINFORS></ACCTINFOTRNRS></SIGNUPMSGSRSV1>"));
    CHECK(document["responses"][0]["accountInfos"].dump() == Json::parse(R"([
        {"investmentAccountInfo": {
            "investmentAccount": {"class": "TvOFXInvestmentAccount", "brokerID": "b", "accountID": "9"},
            "usproductType": "IRA",
            "hasCheckWritingPrivileges": true,
            "accountType": 2,
            "optionLevel": "covered",
            "serviceStatus": 3},
         "serviceStatus": 0},
        {"investmentAccountInfo": {
            "hasCheckWritingPrivileges": false, "accountType": 0, "serviceStatus": 0},
         "serviceStatus": 0}])")
                                                                 .dump());
}

TEST_CASE("account information without records has an empty list") {
    const Json document =
        jsonOf("json", version1("<SIGNUPMSGSRSV1><ACCTINFOTRNRS><ACCTINFORS><DTACCTUP>never</ACCTINFORS>"
                                "</ACCTINFOTRNRS></SIGNUPMSGSRSV1>"));
    CHECK(document["responses"][0].dump() ==
          R"({"class":"TvOFXAccountInfoResponse","transactionWrapperName":"ACCTINFORS","accountInfos":[]})");
}

TEST_CASE("a profile has its message sets, each with its class, its core and its options") {
    const Json response = responseOf(exampleJson("profile.ofx"), "TvOFXFIProfileResponse");
    CHECK(keysOf(response) == Keys{"class",
                                   "transactionWrapperName",
                                   "transactionUID",
                                   "status",
                                   "messageSetProfileSignOn",
                                   "messageSetProfileSignUp",
                                   "messageSetProfileBanking",
                                   "messageSetProfileCreditCard",
                                   "signonInfoList",
                                   "updateTime",
                                   "fiName",
                                   "address",
                                   "city",
                                   "state",
                                   "postalCode",
                                   "country",
                                   "customerServicePhoneNumber",
                                   "technicalSupportPhoneNumber",
                                   "informationURL",
                                   "email"});
    CHECK(response["address"] == "12 Wharf Lane\nFloor 3");
    CHECK(response["messageSetProfileSignOn"].dump() == Json::parse(R"({
        "class": "TvOFXMessageSetProfileSignOn",
        "messageSetCore": {"version": 1, "serviceProviderName": "Lantern Data Services",
                           "url": "https://ofx.lantern.example/signon", "security": 0,
                           "usesTransportLevelSecurity": true, "signonRealm": "Personal",
                           "languages": ["ENG", "CYM"], "syncMode": 1, "supportsErrorRecovery": false}})")
                                                            .dump());
    const Json& banking = response["messageSetProfileBanking"];
    CHECK(keysOf(banking) == Keys{"class", "messageSetCore", "closingStatementInformationAvailable",
                                  "noProcessingDays", "processingEndTime", "supportsScheduledTransfers",
                                  "supportsRecurringTransfers", "supportsModifyTransfers",
                                  "supportsModifyModels", "modelWindow", "daysWith",
                                  "defaultNumberOfDaysToPay", "supportsEMail", "supportsNotification"});
    CHECK(banking["noProcessingDays"].dump() == R"(["SATURDAY","SUNDAY"])");
    CHECK(keysOf(response["messageSetProfileSignUp"]) ==
          Keys{"class", "messageSetCore", "webEnrollUrl", "serverSupportsClientBasedUserInformationChange",
               "serverProvidesAccountInfos", "serverAllowsServiceActivationRequest"});
    CHECK(keysOf(response["messageSetProfileCreditCard"]) ==
          Keys{"class", "messageSetCore", "closingStatementInformationAvailable"});
    CHECK(response["signonInfoList"][1].dump() == Json::parse(R"({
        "signonRealm": "Cards", "minPasswordChars": 4, "maxPasswordChars": 6,
        "allowedPasswordCharacters": 3, "passwordIsCaseSensitive": false,
        "passwordAllowsSpecialChars": false, "passwordAllowsSpaces": false,
        "passwordChangeAllowed": false, "passwordChangeRequiredAtFirstSignon": false})")
                                                      .dump());
}

TEST_CASE("lists of a profile are left out when it has none, and keep what is no text") {
    const auto profileWith = [](const std::string& elements) {
        return jsonOf("json", version1("<PROFMSGSRSV1><PROFTRNRS><PROFRS><MSGSETLIST>" + elements +
                                       "</MSGSETLIST></PROFRS></PROFTRNRS></PROFMSGSRSV1>"))["responses"][0];
    };
    const Json bare =
        profileWith("<BANKMSGSET><BANKMSGSETV1><MSGSETCORE></MSGSETCORE></BANKMSGSETV1></BANKMSGSET>");
    CHECK_FALSE(bare.contains("signonInfoList"));
    CHECK_FALSE(bare["messageSetProfileBanking"].contains("noProcessingDays"));
    CHECK_FALSE(bare["messageSetProfileBanking"]["messageSetCore"].contains("languages"));
    const Json odd = profileWith(
        "<SIGNUPMSGSET><SIGNUPMSGSETV1><MSGSETCORE><VER>9223372036854775808<LANGUAGE>ENG<LANGUAGE><X>1"
        "</LANGUAGE></MSGSETCORE><CLIENTENROLL><ACCTREQUIRED>N</CLIENTENROLL></SIGNUPMSGSETV1></"
        "SIGNUPMSGSET>");
    CHECK(odd["messageSetProfileSignUp"]["messageSetCore"]["languages"].dump() == R"(["ENG",{"X":"1"}])");
    CHECK(odd["messageSetProfileSignUp"]["messageSetCore"]["version"] == 9223372036854775807);
    CHECK(odd["messageSetProfileSignUp"]["clientEnrollAccountRequired"] == false);
}

TEST_CASE("a profile has its own fields in the order of the class") {
    const Json document = jsonOf(
        "json", version1("<PROFMSGSRSV1><PROFTRNRS><PROFRS><EMAIL>1<URL>2<FAXPHONE>3<TSPHONE>4<CSPHONE>5"
                         "<COUNTRY>6<POSTALCODE>7<STATE>8<CITY>9<ADDR1>10<FINAME>11<DTPROFUP>20240101"
                         "<SIGNONINFOLIST><SIGNONINFO><MIN>4</SIGNONINFO></SIGNONINFOLIST></PROFRS>"
                         "</PROFTRNRS></PROFMSGSRSV1>"));
    CHECK(keysOf(document["responses"][0]) ==
          Keys{"class", "transactionWrapperName", "signonInfoList", "updateTime", "fiName", "address", "city",
               "state", "postalCode", "country", "customerServicePhoneNumber", "technicalSupportPhoneNumber",
               "faxNumber", "informationURL", "email"});
}

TEST_CASE("a sign-up message set has its fields in the order of the class") {
    const Json document =
        jsonOf("json", version1("<PROFMSGSRSV1><PROFTRNRS><PROFRS><MSGSETLIST><SIGNUPMSGSET><SIGNUPMSGSETV1>"
                                "<CLIENTACTREQ>N<AVAILACCTS>Y<CHGUSERINFO>Y<OTHERENROLL><MESSAGE>Call us"
                                "</OTHERENROLL><CLIENTENROLL><ACCTREQUIRED>Y</CLIENTENROLL></SIGNUPMSGSETV1>"
                                "</SIGNUPMSGSET></MSGSETLIST></PROFRS></PROFTRNRS></PROFMSGSRSV1>"));
    CHECK(document["responses"][0]["messageSetProfileSignUp"].dump() == Json::parse(R"({
        "class": "TvOFXMessageSetProfileSignUp",
        "clientEnrollAccountRequired": true,
        "webEnrollUrl": "Call us",
        "serverSupportsClientBasedUserInformationChange": true,
        "serverProvidesAccountInfos": true,
        "serverAllowsServiceActivationRequest": false})")
                                                                            .dump());
}

TEST_CASE("every character of a text comes back from the JSON") {
    std::string text;
    for (char c = 1; c < 0x7F; ++c)
        if (c != '<' && c != '>' && c != '&' && c != ' ' && (c < '\t' || c > '\r')) text += c;
    text += "\x7F \t\n\r \u0085 \u00e9 \u2028 \U0001F4DA end";
    CHECK(jsonOf("tree", "<OFX><A>x" + text)["data"]["OFX"]["A"] == "x" + text);
    CHECK(jsonOf("tree", std::string("<OFX><A>x\0y", 11))["data"]["OFX"]["A"] == std::string("x\0y", 3));
}

TEST_CASE("a file name that is not UTF-8 is written with replacement characters") {
    const TemporaryFolder folder;
    struct Row {
        std::string bytes;
        std::string shown;
    };
    for (const Row& row : std::vector<Row>{{"caf\xE9", "caf\uFFFD"},
                                           {"\xC0\xAF", "\uFFFD\uFFFD"},
                                           {"\xE2\x82", "\uFFFD"},
                                           {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
                                           {"\xF0\x9F\x93!", "\uFFFD!"},
                                           {"\u20AC\xFF\U0001F4DA", "\u20AC\uFFFD\U0001F4DA"}}) {
        CAPTURE(row.shown);
        const std::string path = folder.file(row.bytes, version1(""));
        const std::string other = folder.file("other", version1(""));
        const std::string line = linesOf(tool({"json", path, other}).output).at(0);
        CHECK(Json::parse(line)["file"] == folder.path(row.shown));
    }
}

TEST_CASE("--indent writes the same over lines, two blanks deeper in each object and array") {
    CHECK(outputOf({"json", "--indent"}, version1(""))
              .starts_with("{\n  \"file\": \"-\",\n  \"message\": {\n    "));
    for (const std::string name : {"card.ofx", "investments.ofx", "profile.ofx", "quirks.ofx"}) {
        CAPTURE(name);
        const std::vector<std::string> arguments{"json", examplePath(name), examplePath("checking.ofx")};
        const std::string plain = tool(arguments).output;
        const std::string indented = tool({"json", "--indent", arguments[1], arguments[2]}).output;
        const std::size_t second = indented.find("\n{\n") + 1;
        REQUIRE(second != 0);
        const std::vector<std::string> lines = linesOf(plain);
        REQUIRE(lines.size() == 2);
        const Json first = Json::parse(indented.substr(0, second));
        CHECK(first == Json::parse(lines[0]));
        CHECK(indented.substr(0, second) == first.dump(2) + "\n");
        CHECK(Json::parse(indented.substr(second)) == Json::parse(lines[1]));
    }
}
