// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>

#include "tool/tool.h"

using namespace brackwell::tests;

namespace {

const std::string kSecrets =
    "<USERKEY>hush-key<SESSCOOKIE>hush-cookie<ACCESSKEY>hush-access<USERPASS>hush-password";

/// A document that has every secret, and account numbers wherever there can be one.
std::string documentWith(const std::string& end = "") {
    return version1(
        "<SIGNONMSGSRSV1><SONRS><STATUS><CODE>0<SEVERITY>INFO</STATUS><DTSERVER>20240102" + kSecrets +
        "<FI><ORG>Bank<FID>1</FI></SONRS></SIGNONMSGSRSV1>"
        "<SIGNUPMSGSRSV1><ACCTINFOTRNRS><ACCTINFORS><ACCTINFO><DESC>Everyday<BANKACCTINFO><BANKACCTFROM>"
        "<BANKID>1<ACCTID>number-1-7731<ACCTTYPE>SAVINGS</BANKACCTFROM></BANKACCTINFO></ACCTINFO></"
        "ACCTINFORS>"
        "</ACCTINFOTRNRS></SIGNUPMSGSRSV1>"
        "<BANKMSGSRSV1><STMTTRNRS><STMTRS><CURDEF>EUR<BANKACCTFROM><BANKID>1<ACCTID>number-2-7732<ACCTTYPE>"
        "SAVINGS</BANKACCTFROM><BANKTRANLIST><STMTTRN><TRNAMT>1<FITID>9<NAME>Transfer<BANKACCTTO><BANKID>1"
        "<ACCTID>number-3-7733<ACCTTYPE>SAVINGS</BANKACCTTO></STMTTRN><STMTTRN><TRNAMT>2<CCACCTTO>"
        "<ACCTID>number-4-7734</CCACCTTO></STMTTRN></BANKTRANLIST></STMTRS></STMTTRNRS></BANKMSGSRSV1>"
        "<CREDITCARDMSGSRSV1><CCSTMTTRNRS><CCSTMTRS><CCACCTFROM><ACCTID>number-5-7735</CCACCTFROM>"
        "</CCSTMTRS></CCSTMTTRNRS></CREDITCARDMSGSRSV1>" +
        end);
}

}  // namespace

TEST_CASE("show has no keys and cookies, and account numbers only where they are asked for") {
    const std::string masked = outputOf({"show"}, documentWith());
    CHECK_FALSE(contains(masked, "hush"));
    CHECK_FALSE(contains(masked, "number"));
    for (const char* end : {"****7731", "****7732", "****7735"}) CHECK(contains(masked, end));
    const std::string full = outputOf({"show", "--full"}, documentWith());
    CHECK_FALSE(contains(full, "hush"));
    for (const char* number : {"number-1-7731", "number-2-7732", "number-5-7735"})
        CHECK(contains(full, number));
    for (const std::string command : {"accounts", "report"}) {
        CAPTURE(command);
        const std::string output = outputOf({command}, documentWith());
        CHECK_FALSE(contains(output, "hush"));
        CHECK_FALSE(contains(output, "number-"));
        CHECK(contains(output, "7732"));
    }
}

TEST_CASE("transactions and accounts are found by their true numbers, which are not shown for that") {
    const std::string found =
        outputOf({"show", "--account", "number-2-7732", "--search", "number-3"}, documentWith());
    CHECK(contains(found, "Transfer"));
    CHECK(contains(found, "1 transaction:"));
    CHECK_FALSE(contains(found, "number"));
}

TEST_CASE("descriptions of the library's objects have no keys and cookies") {
    using namespace brackwell;
    const std::string text = documentWith();
    TvOFXParser parser(Data::view(text));
    const auto interpreter = TvOFXInterpreter::initWithParseResult(*parser.parseWithError());
    REQUIRE(interpreter->interpret());
    REQUIRE(interpreter->signOnResponse());
    CHECK(interpreter->signOnResponse()->userKey() == "hush-key");
    std::string descriptions;
    for (const auto& response : interpreter->allResponses()) {
        descriptions += response->description();
        if (response->status()) descriptions += response->status()->description();
        if (const auto* statement = dynamic_cast<const TvOFXAccountStatement*>(response.get()))
            for (const auto& transaction : statement->statementTransactions())
                descriptions += transaction->description();
    }
    CHECK(contains(descriptions, "Sign On Response:"));
    CHECK(contains(descriptions, "TvOFXStatementTransaction:"));
    CHECK_FALSE(contains(descriptions, "hush"));
}

TEST_CASE("errors and notes have no keys and cookies, however the document is broken around them") {
    for (const std::string& broken : std::vector<std::string>{
             documentWith("</B>"),
             version1("<SONRS>" + kSecrets + "</FI></SONRS>"),
             version1("<SONRS>\n<FI>\n" + kSecrets + "\n</SONRS>"),
             version1("<SONRS><USERKEY>\nhush-key\n</USERKEYS></SONRS>"),
             version1("<SONRS><userkey>hush-key</SONRSS>"),
             version1("<SONRS>< USERKEY >hush-key</SONRSS>"),
             version1("<SONRS><USERKEY a=\"b\">hush-key</SONRSS>"),
             version1("<SONRS><\tUSERKEY>hush-key</SONRSS>"),
             version1("<SONRS><\r\nUSERKEY\r\n>hush-key</SONRSS>"),
             version1("<SONRS><\u00A0USERKEY>hush-key</SONRSS>", "UTF-8"),
             version1("<SONRS><INTU.USERKEY>hush-key</SONRSS>"),
             version1("<SONRS><ofx:USERKEY>hush-key</SONRSS>"),
             version1("<SONRS><USERKEY/>hush-key</SONRSS>"),
             version1("<SONRS><USERKEY hush-key</B></SONRSS>"),
             version1("<SONRS><USERKEY hush-key>\n<FI></SONRSS>"),
             version1("<SONRS><USERKEYhush-key\n</USERKEY><FI></SONRSS>"),
             version1("<SONRS><USERKEY>1 < hush-key </SONRSS>"),
             version1("<SONRS><USERKEY>1<hush-key </SONRSS>"),
             version1("<SONRS><USERKEY><![CDATA[hush-key]]>\n</SONRS>"),
             version1("<SONRS><USERKEY>\n<![CDATA[hush-key]]>\n</SONRS>"),
             version1("<SONRS><USERKEY><!-- hush-key -->\n</SONRS>"),
             version1("<SONRS></A><USERKEY>hush-key"),
             version1("<SONRS></A><USERKEY>hush-key\nhush-key"),
         }) {
        CAPTURE(broken);
        for (const std::vector<std::string>& arguments :
             std::vector<std::vector<std::string>>{{"show", "--as-is", "-"},
                                                   {"show", "--as-is", "--full", "-"},
                                                   {"tree", "--as-is", "-"},
                                                   {"repair", "-"}}) {
            const Finished finished = tool(arguments, broken);
            CHECK(contains(finished.error,
                           arguments.front() == "repair" ? "Repaired in" : "without opening tag"));
            CHECK_FALSE(contains(finished.error, "hush"));
        }
        const Finished repaired = tool({"show", "-"}, broken);
        CHECK(repaired.status == 0);
        CHECK_FALSE(contains(repaired.error + repaired.output, "hush"));
    }
}

TEST_CASE("JSON is everything that was read, secrets and numbers included") {
    for (const char* command : {"json", "tree"}) {
        const std::string output = outputOf({command}, documentWith());
        for (const char* text : {"hush-key", "hush-cookie", "hush-access", "number-1-7731", "number-4-7734"})
            CHECK(contains(output, text));
    }
}
