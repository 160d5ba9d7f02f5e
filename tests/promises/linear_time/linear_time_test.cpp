// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>
#include <malloc.h>

#include <algorithm>
#include <ctime>
#include <functional>
#include <limits>

#include "support/documents.h"
#include "support/effort.h"
#include "support/repeated.h"

/// \file
/// The promise: no document costs more than time in proportion to its size. Each shape is done at one
/// size and at four times that; what is quadratic takes sixteen times as long.

using namespace brackwell;
using namespace brackwell::tests;

namespace {

struct Shape {
    std::string name;
    std::function<std::string(std::size_t)> document;
    std::size_t count = 8000;
};

/// A piece with a running number after each "#".
std::string numbered(std::string_view piece, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        for (const char c : piece) {
            text.push_back(c);
            if (c == '#') text.replace(text.size() - 1, 1, std::to_string(i));
        }
    return text;
}

std::string inStatement(const std::string& content) {
    return "<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>1<STMTRS>" + content;
}

std::string inTransactions(const std::string& content) { return inStatement("<BANKTRANLIST>" + content); }

std::string inTransaction(const std::string& content) { return inTransactions("<STMTTRN>" + content); }

/// Bodies that parse.
const std::vector<Shape> kBodies{
    {"transactions with every leaf closed",
     [](auto n) {
         return inTransactions(
             numbered("<STMTTRN><TRNTYPE>DEBIT</TRNTYPE><DTPOSTED>20240131</DTPOSTED><TRNAMT>-1.#"
                      "</TRNAMT><FITID>#</FITID><NAME>A &amp; B</NAME></STMTTRN>\n",
                      n));
     },
     4000},
    {"transactions with open leaves",
     [](auto n) {
         return inTransactions(numbered(
             "<STMTTRN>\n<DTPOSTED>20240131120000.000[-5:EST]\n<TRNAMT>1,000.#\n<FITID>#\n</STMTTRN>\n", n));
     },
     6000},
    {"empty transactions", [](auto n) { return inTransactions(repeated("<STMTTRN></STMTTRN>", n)); }},
    {"payees and accounts",
     [](auto n) {
         return inTransactions(
             repeated("<STMTTRN><PAYEE><NAME>p<ADDR1>a</PAYEE><BANKACCTTO><BANKID>1</BANKACCTTO>"
                      "<CCACCTTO><ACCTID>1</CCACCTTO></STMTTRN>",
                      n));
     },
     2000},
    {"nested aggregates", [](auto n) { return "<OFX>" + repeated("<A>", n); }},
    {"nested aggregates that are closed",
     [](auto n) { return "<OFX>" + repeated("<A>", n) + repeated("</A>", n) + "</OFX>"; }},
    {"nested aggregates of distinct names", [](auto n) { return "<OFX>" + numbered("<A#>", n); }},
    {"nested aggregates with leaves before and after",
     [](auto n) { return "<OFX>" + repeated("<A><B>x<C>y", n) + repeated("<B>z</A>", n); }},
    {"nested aggregates inside a transaction", [](auto n) { return inTransaction(repeated("<A><B>x", n)); }},
    {"nested extension aggregates closed without their prefix",
     [](auto n) { return "<OFX>" + repeated("<INTU.A>", n) + repeated("</A>", n); }},
    {"distinct names in one aggregate", [](auto n) { return "<OFX>" + numbered("<N#>x", n) + "</OFX>"; }},
    {"distinct names in one aggregate, each twice",
     [](auto n) { return "<OFX>" + numbered("<N#>x", n) + numbered("<N#>y", n) + "</OFX>"; }},
    {"distinct names in one transaction", [](auto n) { return inTransaction(numbered("<N#>x", n)); }},
    {"leaves of one name", [](auto n) { return "<OFX>" + repeated("<N>x", n) + "</OFX>"; }},
    {"repeated names of a transaction",
     [](auto n) { return inTransaction(repeated("<NAME>x<MEMO>y", n) + "</STMTTRN>"); }},
    {"wrappers with distinct identifiers",
     [](auto n) {
         return "<OFX><BANKMSGSRSV1>" +
                numbered("<STMTTRNRS><TRNUID>#<STATUS><CODE>0<SEVERITY>INFO</STATUS></STMTTRNRS>", n);
     },
     3000},
    {"wrappers with one identifier",
     [](auto n) { return "<OFX><BANKMSGSRSV1>" + repeated("<STMTTRNRS><TRNUID>1</STMTTRNRS>", n); }, 5000},
    {"wrappers of distinct names",
     [](auto n) { return "<OFX><BANKMSGSRSV1>" + numbered("<A#TRNRS><TRNUID>1</A#TRNRS>", n); }, 5000},
    {"responses with many wrappers in them",
     [](auto n) { return "<OFX><BANKMSGSRSV1><XRS>" + numbered("<A#TRNRS><B>1</A#TRNRS>", n); }},
    {"message sets of distinct names",
     [](auto n) { return "<OFX>" + numbered("<BANKMSGSRSV#><ARS><B>1</ARS></BANKMSGSRSV#>", n); }, 5000},
    {"account records",
     [](auto n) {
         return "<OFX><SIGNUPMSGSRSV1><ACCTINFOTRNRS><ACCTINFORS>" +
                repeated(
                    "<ACCTINFO><DESC>d<BANKACCTINFO><BANKACCTFROM><BANKID>1</BANKACCTFROM></BANKACCTINFO>"
                    "</ACCTINFO>",
                    n);
     },
     3000},
    {"sign-on realms",
     [](auto n) {
         return "<OFX><PROFMSGSRSV1><PROFTRNRS><PROFRS><SIGNONINFOLIST>" +
                repeated("<SIGNONINFO><SIGNONREALM>r<MIN>4</SIGNONINFO>", n);
     }},
    {"text outside of elements", [](auto n) { return "<OFX><A>x</A>" + repeated("text ", n) + "</OFX>"; }},
    {"one long text", [](auto n) { return "<OFX><A>" + repeated("long ", n) + "</OFX>"; }},
    {"one long blank text", [](auto n) { return "<OFX><A>" + repeated(" \t\xC2\xA0", n) + "<B>x"; }},
    {"one long name", [](auto n) { return "<OFX><" + repeated("N ", n) + ">x"; }},
    {"one long blank name", [](auto n) { return "<OFX><" + repeated("\xE3\x80\x80", n) + ">"; }},
    {"entities", [](auto n) { return "<OFX><A>" + repeated("&amp;&lt;&gt;", n); }},
    {"things that begin like entities", [](auto n) { return "<OFX><A>" + repeated("&amp&am&a&", n); }},
    {"leaves with entities", [](auto n) { return "<OFX>" + repeated("<A>&amp;", n); }},
    {"opening brackets", [](auto n) { return "<OFX>" + repeated("<", n); }},
    {"closing brackets", [](auto n) { return "<OFX>" + repeated(">", n); }},
    {"empty tags", [](auto n) { return "<OFX>" + repeated("<>", n); }},
    {"tags without text between them that replace each other",
     [](auto n) { return "<OFX>" + repeated("<A></A>", n); }},
    {"amounts of many digits", [](auto n) { return inTransaction("<TRNAMT>" + repeated("1,234", n)); }},
    {"dates of many digits", [](auto n) { return inTransaction("<DTPOSTED>" + repeated("20240131", n)); }},
    {"dates of many characters",
     [](auto n) { return inTransaction("<DTPOSTED>" + repeated("\xC3\xA9", n)); }},
};

/// Unclosed transactions: the source text of each reaches to the end, so that what is written of them
/// is longer than the document, whoever writes it. Reading them is linear all the same.
const std::vector<Shape> kOverlapping{
    {"unclosed transactions", [](auto n) { return inTransactions(repeated("<STMTTRN><NAME>x", n)); }},
    {"unclosed transactions without leaves", [](auto n) { return inTransactions(repeated("<STMTTRN>", n)); }},
    {"unclosed transactions with one end",
     [](auto n) { return inTransactions(repeated("<STMTTRN><NAME>x", n) + "</STMTTRN>"); }},
    {"nested transactions that are closed",
     [](auto n) { return inTransactions(repeated("<STMTTRN><NAME>x", n) + repeated("</STMTTRN>", n)); }},
    {"what begins like the end of a transaction",
     [](auto n) { return inTransaction("<NAME>" + repeated("x<A>/STMTTRN></STMTTRN", n)); }},
};

/// A long name that "<>" gives to many elements: what writes the name of each is longer than the document.
const std::vector<Shape> kLongNames{
    {"leaves of one long name",
     [](auto n) { return "<OFX><" + repeated("N", 16 * n) + ">x" + repeated("<>y", n); }, 4000},
    {"nested aggregates of one long name",
     [](auto n) { return "<OFX><" + repeated("N", 16 * n) + ">" + repeated("<>\n", n); }, 4000},
};

/// Documents that do not import, or with much in front of the body.
const std::vector<Shape> kDocuments{
    {"header lines of distinct names",
     [](auto n) { return "OFXHEADER:100\n" + numbered("N#:x\n", n) + "<OFX><A>x"; }},
    {"header lines of one name",
     [](auto n) { return "OFXHEADER:100\n" + repeated("N:x\n", n) + "<OFX><A>x"; }},
    {"header lines of many colons",
     [](auto n) { return "OFXHEADER:100\n" + repeated(":", n) + "\n<OFX><A>x"; }},
    {"empty header lines", [](auto n) { return "OFXHEADER:100\n" + repeated("\n", n) + "<OFX><A>x"; }},
    {"comments in a header that do not end",
     [](auto n) { return "OFXHEADER:100\n" + repeated("<!-- x ", n) + "<OFX></OFX>"; }},
    {"comments in a header that hide fields",
     [](auto n) { return "OFXHEADER:100\n" + repeated("<!-- DATA:x ", n) + "<OFX></OFX>"; }},
    {"comments in a header, the last one with its end",
     [](auto n) { return "OFXHEADER:100\n" + repeated("<!-- x\n", n) + "--><OFX></OFX>"; }},
    {"ends of comments in a header",
     [](auto n) { return "OFXHEADER:100\n" + repeated("--> ", n) + "<OFX></OFX>"; }},
    {"header fields in one line",
     [](auto n) { return "OFXHEADER:100 " + repeated("DATA:x ", n) + "<OFX></OFX>"; }},
    {"header fields in small letters",
     [](auto n) { return "ofxheader : 100 " + repeated("data : x ", n) + "<OFX></OFX>"; }},
    {"parts of a header after blanks",
     [](auto n) { return repeated(" ", n) + repeated("xDATA:", n) + "<OFX></OFX>"; }},
    {"a small instruction of blanks and equals signs",
     [](auto n) { return "<?ofx " + repeated(" a = '", n) + "?><OFX></OFX>"; }},
    {"headers in a body", [](auto n) { return "<OFX><A>" + repeated("OFXHEADER:", n) + "</OFX>"; }},
    {"declarations in a body", [](auto n) { return "<OFX><A>" + repeated("<?xml ", n) + "</OFX>"; }},
    {"roots in a body", [](auto n) { return repeated("<OFX><BANKMSGSRSV1>x", n); }},
    {"names with prefixes", [](auto n) { return "<a:OFX>" + repeated("<a:STMTTRN>", n) + "</a:OFX>"; }},
    {"instruction fields of distinct names",
     [](auto n) { return "<?OFX " + numbered("N#=\"x\" ", n) + "?><OFX><A>x"; }},
    {"instruction fields of one name",
     [](auto n) { return "<?OFX " + repeated("N=\"x\" ", n) + "?><OFX><A>x"; }},
    {"an instruction of equal signs", [](auto n) { return "<?OFX " + repeated("=", n) + "?><OFX><A>x"; }},
    {"an instruction of quotes", [](auto n) { return "<?OFX A=" + repeated("\"", n) + "?><OFX><A>x"; }},
    {"an instruction that never ends", [](auto n) { return "<?xml encoding=\"" + repeated("?<?OFX", n); }},
    {"blank lines before the header", [](auto n) { return repeated(" \n", n) + "<OFX><A>x"; }},
    {"blank lines after the body", [](auto n) { return "<OFX><A>x" + repeated(" \n", n); }},
    {"a close tag with a long name", [](auto n) { return "<OFX><A>x</" + repeated("N", n) + ">"; }},
    {"a close tag at the end that matches nothing",
     [](auto n) { return "<OFX>" + repeated("<A>", n) + "</B>"; }},
    {"no document at all", [](auto n) { return repeated("no document ", n); }},
    {"text in UTF-16",
     [](auto n) {
         std::string bytes = "\xFF\xFE";
         for (const char c : "<OFX>" + repeated("<A>x", n)) bytes.append({c, '\0'});
         return bytes;
     }},
    {"bytes that are no text", [](auto n) { return repeated("\xFF\xC3", n); }},
};

std::string opened(const std::string& content) { return "OFXHEADER:100\n\n<OFX>" + content; }

/// What only the layer that opens files looks at: several documents, what is not delivered, odd values,
/// identifiers, answers.
const std::vector<Shape> kFiles{
    {"many documents", [](auto n) { return repeated("<OFX></OFX>", n); }, 1000},
    {"many documents that do not read", [](auto n) { return repeated("<OFX></B></OFX>", n); }, 1000},
    {"many documents that are no text", [](auto n) { return repeated("<OFX><A>\xFF\x81</OFX>", n); }, 1000},
    {"many documents that were cut off", [](auto n) { return repeated("OFXHEADER:100\n<OFX><A>x\n", n); },
     1000},
    {"many documents in lower case", [](auto n) { return repeated("<ofx><a>x</ofx>\n", n); }, 1000},
    {"many documents in UTF-16",
     [](auto n) {
         std::string bytes = "\xFF\xFE";
         for (const char c : repeated("<OFX></OFX>", n)) bytes.append({c, '\0'});
         return bytes;
     },
     1000},
    {"transactions in many places",
     [](auto n) { return opened(numbered("<A#><STMTTRN><NAME>x</STMTTRN></A#>", n)); }, 4000},
    {"transactions in one wrong place",
     [](auto n) { return inStatement("<A>" + repeated("<STMTTRN><NAME>x</STMTTRN>", n)); }},
    {"transactions inside each other",
     [](auto n) { return inTransactions(repeated("<STMTTRN><NAME>x", n)); }},
    {"statements inside each other",
     [](auto n) { return "<OFX><BANKMSGSRSV1>" + repeated("<STMTRS><A>x", n); }, 4000},
    {"transactions without their root", [](auto n) { return "<A>" + repeated("<STMTTRN><NAME>x", n); }},
    {"transactions in an element with a long name",
     [](auto n) {
         return opened("<" + repeated("N", 8 * n) + ">" + repeated("<STMTTRN><NAME>x</STMTTRN>", n));
     },
     4000},
    {"many lists of transactions",
     [](auto n) {
         return inStatement(repeated("<BANKTRANLIST><STMTTRN><NAME>x</STMTTRN></BANKTRANLIST>", n));
     },
     4000},
    {"what has no class",
     [](auto n) { return inTransactions(repeated("<STMTTRNP><NAME>x</STMTTRNP><BAL><NAME>x</BAL>", n)); },
     4000},
    {"transactions with one identifier",
     [](auto n) { return inTransactions(numbered("<STMTTRN><FITID>1<NAME>#</STMTTRN>", n)); }, 4000},
    {"transactions with one long identifier",
     [](auto n) {
         return inTransactions(numbered("<STMTTRN><FITID>" + repeated("1", 300) + "<NAME>#</STMTTRN>", n));
     },
     1000},
    {"transactions with alternating identifiers",
     [](auto n) {
         return inTransactions(
             numbered("<STMTTRN><FITID>1<NAME>#</STMTTRN><STMTTRN><FITID>2<NAME>#</STMTTRN>", n));
     },
     2000},
    {"errors of the server",
     [](auto n) {
         return "<OFX><BANKMSGSRSV1>" +
                numbered("<STMTTRNRS><TRNUID>#<STATUS><CODE>#<SEVERITY>ERROR<MESSAGE>m#</STATUS></STMTTRNRS>",
                         n);
     },
     2000},
    {"errors of the server before all texts",
     [](auto n) {
         return "<OFX><BANKMSGSRSV1>" + repeated("<STMTTRNRS><STATUS><SEVERITY>WARN</STATUS></STMTTRNRS>", n);
     },
     2000},
    {"statements without an account",
     [](auto n) {
         return "<OFX><BANKMSGSRSV1>" + repeated("<STMTTRNRS><STMTRS><A>x</STMTRS></STMTTRNRS>", n);
     },
     2000},
    {"amounts that are none",
     [](auto n) { return inTransactions(numbered("<STMTTRN><TRNAMT>x#</STMTTRN>", n)); }, 4000},
    {"amounts with a comma",
     [](auto n) { return inTransactions(numbered("<STMTTRN><TRNAMT>#,5</STMTTRN>", n)); }, 4000},
    {"an amount of many marks", [](auto n) { return inTransaction("<TRNAMT>" + repeated("( $", n)); }},
    {"dates with slashes",
     [](auto n) { return inTransactions(repeated("<STMTTRN><DTPOSTED>31/01/2024</STMTTRN>", n)); }, 4000},
    {"lines like headers inside of a body",
     [](auto n) { return opened("<A>x\n" + repeated("OFXHEADER:\n", n)); }},
    {"header words before nothing", [](auto n) { return repeated("OFXHEADER:", n); }},
    {"header words before nothing that are no text",
     [](auto n) { return repeated("OFXHEADER:\xFF\x81", n); }},
    {"close tags that do not end", [](auto n) { return opened("<A>x" + repeated("</", n)); }, 40000},
    {"close tags that do not end under a long name",
     [](auto n) { return "OFXHEADER:100\n<" + repeated("N", 4 * n) + "><A>x" + repeated("</", n); }, 40000},
    {"secrets that do not end", [](auto n) { return opened(repeated("<USERKEY ", n) + "</B>"); }},
    {"letters that begin a header", [](auto n) { return opened(repeated("OoOF", n) + "</B>"); }},
    {"bytes that are no text in a document", [](auto n) { return opened(repeated("<A>\xFF\x81\x8D", n)); },
     2000},
    {"end marks of old systems", [](auto n) { return "<OFX><A>x</OFX>" + repeated("\x1A \n", n); }},
};

using Action = std::function<void(const std::string&)>;

/// The lesser processor time of an action in two runs.
double leastTime(const Action& action, const std::string& document) {
    double least = std::numeric_limits<double>::infinity();
    for (int run = 0; run < 2; ++run) {
        const std::clock_t start = std::clock();
        action(document);
        least = std::min(least, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return least;
}

struct Times {
    double once = 0;
    double fourTimes = std::numeric_limits<double>::infinity();

    double growth() const noexcept {
        constexpr double resolution = 0.0002;  // s; below it the clock, not the work, is measured
        return fourTimes / std::max(once, resolution);
    }

    /// Four times the time for four times the size, and some more for a cache that becomes too small.
    bool isLinear() const noexcept { return growth() <= 4 * 1.6; }
};

/// Keeps freed memory in the process. Otherwise large blocks come fresh from the system each time, and
/// the first touch of a page costs more than the library's work on it, which small blocks do not pay.
[[maybe_unused]] const bool kKeepsMemory =
    mallopt(M_MMAP_MAX, 0) == 1 && mallopt(M_TRIM_THRESHOLD, 1 << 30) == 1;

/// The pair of times that grew least. A busy machine must not make a test fail, so there are more tries, and
/// each measures both sizes, one right after the other: the processor may be twice as fast at one time as at
/// another.
Times timesOf(const Shape& shape, std::size_t count, const Action& action) {
    const std::string small = shape.document(count);
    const std::string large = shape.document(4 * count);
    Times best;
    for (int attempt = 0; attempt < 12 && !best.isLinear(); ++attempt) {
        const Times times{leastTime(action, small), leastTime(action, large)};
        if (times.growth() < best.growth()) best = times;
    }
    return best;
}

/// Where a cache ends between the two sizes, it does not between their doubles.
Times timesOf(const Shape& shape, const Action& action) {
    const std::size_t count = scaled(shape.count);
    const Times times = timesOf(shape, count, action);
    return times.isLinear() ? times : timesOf(shape, 2 * count, action);
}

void checkLinear(const Shape& shape, const Action& action) {
    CAPTURE(shape.name);
    const Times times = timesOf(shape, action);
    CHECK_MESSAGE(times.isLinear(), times.once << " s, then " << times.fourTimes << " s");
}

void import(const std::string& document) {
    Error error;
    const auto message = TovanaOFXController::importOFXFileFromData(Data::view(document), &error);
    CHECK((message != nullptr) == error.description.empty());
    if (message) CHECK(message->accountsFound().size() <= 1);
}

ParseDictionary tree(const std::string& body) {
    const auto parsed = TvOFXParser::parseOFXDataString(body);
    REQUIRE(parsed);
    return *parsed;
}

}  // namespace

TEST_CASE("the measure tells quadratic from linear") {
    const Shape shape{"any", [](auto n) { return std::string(n, 'x'); }};
    const auto pairs = [](const std::string& text, std::size_t distance) {
        std::size_t count = 0;
        for (std::size_t i = 0; i < text.size(); ++i)
            for (std::size_t j = 0; j < distance; ++j)
                if (text[i] == *static_cast<const volatile char*>(&text[j])) ++count;
        CHECK(count > 0);
    };
    const std::size_t count = kOptimized ? 800 : 200;
    CHECK_FALSE(timesOf(shape, count, [&](const std::string& text) { pairs(text, text.size()); }).isLinear());
    CHECK(timesOf(shape, count, [&](const std::string& text) { pairs(text, count); }).isLinear());
}

TEST_CASE("importing takes time in proportion to the body") {
    for (const Shape& shape : kBodies) checkLinear(shape, import);
}

TEST_CASE("importing unclosed transactions takes time in proportion to their number") {
    for (const Shape& shape : kOverlapping) checkLinear(shape, import);
}

TEST_CASE("importing elements of a long name takes time in proportion to the body") {
    for (const Shape& shape : kLongNames) checkLinear(shape, import);
}

TEST_CASE("importing takes time in proportion to the document, whatever it begins with or fails at") {
    for (const Shape& shape : kDocuments) checkLinear(shape, import);
}

TEST_CASE("reading investments takes time in proportion to the document") {
    const auto inStatements = [](const std::string& content) {
        return "<OFX><INVSTMTMSGSRSV1><INVSTMTTRNRS><TRNUID>1<INVSTMTRS>" + content;
    };
    std::vector<Shape> shapes{
        {"transactions",
         [=](auto n) {
             return inStatements(
                 numbered("<BUYSTOCK><INVBUY><INVTRAN><FITID>#</INVTRAN><UNITS>1.#</INVBUY></BUYSTOCK>", n));
         },
         4000},
        {"transactions in transactions",
         [=](auto n) { return inStatements(repeated("<BUYMF><INVBUY>", n)); }},
        {"parts in parts", [=](auto n) { return inStatements("<BUYMF>" + repeated("<INVBUY>", n)); }},
        {"statements in statements", [](auto n) { return "<OFX>" + repeated("<INVSTMTRS><CURDEF>X", n); }},
        {"wrappers in wrappers", [](auto n) { return "<OFX>" + repeated("<INVSTMTTRNRS><TRNUID>1", n); }},
        {"statements of one wrapper",
         [](auto n) { return "<OFX><INVSTMTTRNRS>" + repeated("<INVSTMTRS><CURDEF>X</INVSTMTRS>", n); }},
        {"positions",
         [=](auto n) { return inStatements(repeated("<POSMF><INVPOS><UNITS>1</INVPOS></POSMF>", n)); }},
        {"balances", [=](auto n) { return inStatements("<INVBAL>" + repeated("<BAL><NAME>x</BAL>", n)); }},
        {"balances in balances", [=](auto n) { return inStatements(repeated("<INVBAL><BALLIST><BAL>", n)); }},
        {"bank transactions",
         [=](auto n) { return inStatements(repeated("<INVBANKTRAN><STMTTRN><FITID>1", n)); }},
        {"fields that come again",
         [=](auto n) { return inStatements("<INCOME>" + repeated("<TOTAL>1", n)); }},
        {"securities", [](auto n) { return "<OFX><SECLIST>" + numbered("<MFINFO><SECNAME>#", n); }},
        {"securities with portions",
         [](auto n) { return "<OFX><MFINFO><MFASSETCLASS>" + repeated("<PORTION><PERCENT>1</PORTION>", n); }},
    };
    shapes.insert(shapes.end(), kBodies.begin(), kBodies.end());
    for (const Shape& shape : shapes)
        checkLinear(shape, [](const std::string& body) {
            const ParseDictionary document = tree(body);
            std::size_t found = securities(document).size();
            for (const InvestmentStatement& statement : investmentStatements(document)) {
                found += statement.transactions().size() + statement.positions().size();
                if (const auto balance = statement.balance()) found += balance->listed().size();
            }
            CHECK(found <= body.size());
        });
}

TEST_CASE("finding securities takes little more time than there are of them") {
    checkLinear({"securities",
                 [](auto n) {
                     return "<OFX>" +
                            numbered("<MFINFO><SECINFO><SECID><UNIQUEID>#</SECID></SECINFO></MFINFO>", n);
                 },
                 4000},
                [](const std::string& body) {
                    const SecurityList list(securities(tree(body)));
                    for (const Security& security : list.all()) CHECK(list.find(security.id(), {}));
                });
}

TEST_CASE("walking accounts and asking for their statements takes time in proportion to their number") {
    const std::vector<Shape> documents{
        {"bank statements",
         [](auto n) {
             return "<OFX><BANKMSGSRSV1>" +
                    numbered(
                        "<STMTTRNRS><TRNUID>#<STMTRS><BANKACCTFROM><ACCTID>#</BANKACCTFROM></STMTRS>"
                        "</STMTTRNRS>",
                        n);
         },
         2000},
        {"bank statements of one account",
         [](auto n) {
             return "<OFX><BANKMSGSRSV1>" +
                    repeated(
                        "<STMTTRNRS><TRNUID>1<STMTRS><BANKACCTFROM><ACCTID>1</BANKACCTFROM></STMTRS>"
                        "</STMTTRNRS>",
                        n);
         },
         2000},
        {"card statements",
         [](auto n) {
             return "<OFX><CREDITCARDMSGSRSV1>" +
                    numbered(
                        "<CCSTMTTRNRS><TRNUID>#<CCSTMTRS><CCACCTFROM><ACCTID>#</CCACCTFROM></CCSTMTRS>"
                        "</CCSTMTTRNRS>",
                        n);
         },
         2000},
    };
    for (const Shape& shape : documents)
        checkLinear(shape, [](const std::string& document) {
            const auto message = TovanaOFXController::importOFXFileFromData(Data::view(document));
            std::size_t statements = 0;
            // Of both kinds, so that accounts without a statement of the kind are asked for as well.
            for (const auto& account : message->accountsFound()) {
                statements += message->statementsForBankAccount(account) != nullptr ? 1U : 0U;
                statements += message->statementsForCreditCardAccount(account) != nullptr ? 1U : 0U;
            }
            CHECK(statements == message->accountsFound().size());
            CHECK(statements > 0);
            const OpenedFile file = openData(Data::view(document), OpenOptions::asIs());
            for (const auto& statement : file.statements()) CHECK(accountOf(*statement).accountID());
        });
}

TEST_CASE("opening a file takes time in proportion to it, with and without repair") {
    std::vector<Shape> shapes = kFiles;
    for (const std::vector<Shape>* more : {&kBodies, &kOverlapping, &kLongNames, &kDocuments})
        shapes.insert(shapes.end(), more->begin(), more->end());
    for (const Shape& shape : shapes)
        checkLinear(shape, [](const std::string& document) {
            for (const OpenOptions& options : {OpenOptions(), OpenOptions::asIs()}) {
                const OpenedFile file = openData(Data::view(document), options);
                CHECK(static_cast<bool>(file) == file.error().text.empty());
                CHECK(file.documents().size() <= document.size() / 10 + 1);
            }
        });
}

TEST_CASE("detaching takes time in proportion to the part") {
    for (const Shape& shape : kBodies)
        checkLinear(shape, [](const std::string& document) {
            const OpenedFile file = openData(Data::view(document), OpenOptions::asIs());
            for (const auto& statement : file.statements())
                CHECK(detached(statement)->description() == statement->description());
        });
}

TEST_CASE("secrets of a text and places in it are found in time in proportion to it") {
    const std::vector<Shape> texts{
        {"tags of secrets", [](auto n) { return repeated("<USERKEY>x", n); }},
        {"tags of secrets that do not end", [](auto n) { return repeated("<USERKEY ", n); }},
        {"a long name with secrets in it", [](auto n) { return "<" + repeated("USERKEYMFAPHRASE", n); }},
        {"blanks in tags", [](auto n) { return repeated("<  USERPASS  >", n); }},
        {"less-than signs", [](auto n) { return repeated("<", n); }},
        {"lines of every kind", [](auto n) { return repeated("\r\n\r\n\n\xC3\xA9", n); }},
    };
    for (Shape shape : texts) {
        shape.count = 40000;
        checkLinear(shape, [](const std::string& text) {
            CHECK(secretsInOFXText(text).size() <= text.size());
            CHECK(placeInText(text, text.size()).column > 0);
        });
    }
}

TEST_CASE("comparing two trees takes time in proportion to their size") {
    for (const Shape& shape : kBodies)
        checkLinear(shape, [](const std::string& body) { CHECK(tree(body) == tree(body)); });
}

TEST_CASE("rendering a tree takes time in proportion to its size") {
    for (const Shape& shape : kBodies)
        checkLinear(shape, [](const std::string& body) {
            const std::string text = TvOFXHelper::ofxDictionaryToString(tree(body));
            CHECK(text.size() <= 10 * body.size() + 100);
        });
}

TEST_CASE("indented text takes time and space in proportion to the body") {
    std::vector<Shape> shapes = kBodies;
    shapes.insert(shapes.end(), kOverlapping.begin(), kOverlapping.end());
    shapes.insert(shapes.end(), kLongNames.begin(), kLongNames.end());
    for (const Shape& shape : shapes)
        checkLinear(shape, [](const std::string& body) {
            const auto parsed = TvOFXParser::parseOFXDataString(body);  // one of the shapes is refused
            CHECK((parsed ? indentedOFXText(*parsed) : "").size() <= 52 * body.size());
        });
}

TEST_CASE("archiving and restoring a tree takes time in proportion to its size") {
    for (const Shape& shape : kBodies)
        checkLinear(shape, [](const std::string& body) {
            KeyedArchiver coder;
            TvOFXAggregate(tree(body)).encodeWithCoder(coder);
            const auto archive = KeyedUnarchiver::open(coder.archivedData());
            REQUIRE(archive);
            CHECK(TvOFXAggregate::initWithCoder(*archive)->originalParseData());
        });
}

TEST_CASE("repairing takes time in proportion to the document") {
    std::vector<Shape> shapes{
        {"comments", [](auto n) { return repeated("<!-- c -->", n); }},
        {"comments that do not end", [](auto n) { return repeated("<!-- ", n); }},
        {"character data", [](auto n) { return repeated("<![CDATA[<&]]>", n); }},
        {"character data that does not end", [](auto n) { return repeated("<![CDATA[", n); }},
        {"instructions that do not end", [](auto n) { return repeated("<?x <!x ", n); }},
        {"tags that do not end", [](auto n) { return repeated("<NAME ", n); }},
        {"close tags", [](auto n) { return repeated("</A>", n); }},
        {"close tags of distinct names", [](auto n) { return numbered("</A#>", n); }},
        {"empty leaves", [](auto n) { return repeated("<MEMO>", n); }},
        {"empty leaves of distinct names", [](auto n) { return numbered("<A#>", n); }},
        {"self-closed tags", [](auto n) { return repeated("<A/>", n); }},
        {"transactions that are never closed", [](auto n) { return repeated("<STMTTRN><NAME>x", n); }},
        {"aggregates of three names in each other", [](auto n) { return repeated("<FI><STATUS><BAL>", n); }},
        {"crossed aggregates", [](auto n) { return numbered("<A#>", n) + numbered("</A#>", n); }},
        {"extension names of extension names", [](auto n) { return "<" + repeated("INTU.", n) + ">x"; }},
        {"extension aggregates", [](auto n) { return repeated("<INTU.A>", n) + repeated("</A>", n); }},
        {"leaves around tags in small letters", [](auto n) { return repeated("<A>x<b>", n) + "</A>"; }},
        {"leaves in leaves around tags in small letters",
         [](auto n) { return repeated("<A>x<b>", n) + repeated("</A>", n); }},
        {"a long misspelt name",
         [](auto n) { return "<" + repeated("A", n) + "><B>1</B></" + repeated("A", n + 1) + ">"; }},
        {"texts that lack their open tag", [](auto n) { return repeated("x</A>", n); }},
        {"blanks in a tag", [](auto n) { return "<A" + repeated(" ", n) + ">"; }},
        {"less-than signs", [](auto n) { return repeated("< ", n); }},
    };
    for (const Shape& body : kBodies) shapes.push_back(body);
    const auto checkRepair = [](const std::string& document) {
        const RepairedText repaired = repairOFXText(document);
        CHECK(repaired.text != document);
        CHECK(repaired.text.size() <= 8 * document.size());
    };
    for (const Shape& shape : shapes) {
        const auto document = [&](auto n) { return "<OFX>" + shape.document(n) + "</OFX></X>"; };
        checkLinear({shape.name, document, shape.count}, checkRepair);
        checkLinear({shape.name + " in lower case", [&](auto n) { return withTagsInLowerCase(document(n)); },
                     shape.count},
                    checkRepair);
    }
    for (const Shape& shape : kDocuments)
        checkLinear(shape, [](const std::string& document) {
            CHECK(repairOFXText("x" + document).text.size() <= 8 * document.size());
        });
}

TEST_CASE("making a document anonymous takes time in proportion to it") {
    std::vector<Shape> shapes{
        {"words before the document", [](auto n) { return repeated("word ", n); }},
        {"fields of a header in a line", [](auto n) { return repeated("VERSION:1", n); }},
        {"a long word", [](auto n) { return "<NAME>" + repeated("a1", n); }},
        {"a long amount", [](auto n) { return "<TRNAMT>" + repeated("1a", n); }},
        {"letters beyond ASCII", [](auto n) { return "<NAME>" + repeated("\u00E9\u6771", n); }},
        {"ampersands", [](auto n) { return "<NAME>" + repeated("&", n); }},
        {"references", [](auto n) { return "<NAME>" + repeated("&#74;", n); }},
        {"less-than signs", [](auto n) { return repeated("< ", n); }},
        {"tags that do not end", [](auto n) { return repeated("<NAMEx", n); }},
        {"a name that does not end", [](auto n) { return "<" + repeated("NAME", n); }},
        {"comments that do not end", [](auto n) { return repeated("<!-- ", n); }},
        {"declarations that do not end", [](auto n) { return repeated("<!x ", n); }},
        {"attributes", [](auto n) { return "<?x " + repeated("a='b' c=", n); }},
        {"character data that does not end", [](auto n) { return repeated("<![CDATA[", n); }},
        {"unknown names", [](auto n) { return numbered("<A#>", n); }},
    };
    for (const Shape& body : kBodies) shapes.push_back(body);
    for (const Shape& shape : shapes)
        checkLinear(shape, [](const std::string& document) {
            CHECK(Anonymizer().anonymize(Data::view(document)).bytes.size() == document.size());
        });
}

TEST_CASE("reading a number or a date takes time in proportion to its text") {
    const std::vector<Shape> texts{
        {"digits", [](auto n) { return std::string(n, '1'); }},
        {"zeros before a digit", [](auto n) { return std::string(n, '0') + "1"; }},
        {"zeros after a digit", [](auto n) { return "1" + std::string(n, '0'); }},
        {"zeros on both sides of a point",
         [](auto n) { return std::string(n, '0') + "." + std::string(n, '0'); }},
        {"grouped digits", [](auto n) { return "1" + repeated(",234", n); }},
        {"digits grouped by wide blanks", [](auto n) { return "1" + repeated("\u00A0234", n); }},
        {"blanks before a digit", [](auto n) { return std::string(n, ' ') + "1"; }},
        {"digits of an exponent", [](auto n) { return "1e" + std::string(n, '0') + "1"; }},
        {"signs", [](auto n) { return std::string(n, '-'); }},
        {"date after date", [](auto n) { return repeated("2024-01-31 ", n); }},
    };
    for (Shape shape : texts) {
        shape.count = 40000;
        checkLinear(shape, [](const std::string& text) {
            const TvOFXHelper& helper = *TvOFXHelper::defaultHelper();
            helper.decimalNumberFromOFXAmountString(text);
            helper.dateFromOFXDateString(text);
            helper.ofxAmountFormatter().numberFromString(text);
            helper.ofxDateFormatter().dateFromString(text);
            PatternDateFormatter("yyyy-MM-dd EEEE MMMM").dateFromString(text);
            PatternDateFormatter(text).stringFromDate(Date{});
            CHECK(leadingInteger(text) >= 0);
        });
    }
}

TEST_CASE("building a tree in code takes time in proportion to its size") {
    checkLinear({"distinct names", [](auto n) { return std::string(n, 'x'); }}, [](const std::string& size) {
        ParseDictionaryBuilder builder;
        for (std::size_t i = 0; i < size.size(); ++i) builder.leaf(std::to_string(i), "x");
        CHECK(builder.finish().size() == size.size());
    });
    checkLinear({"nested", [](auto n) { return std::string(n, 'x'); }, 50000}, [](const std::string& size) {
        ParseDictionaryBuilder builder;
        for (std::size_t i = 0; i < size.size(); ++i) builder.open("A");
        CHECK(builder.finish().size() == 1);
    });
}

TEST_CASE("walking all entries of a tree takes time in proportion to their number") {
    checkLinear(
        {"distinct names, each twice", [](auto n) { return numbered("<N#>x", n) + numbered("<N#>y", n); }},
        [](const std::string& body) {
            std::size_t elements = 0;
            for (const auto& [name, value] : tree(body)) elements += value.elements().size();
            CHECK(elements > 0);
            CHECK(elements % 2 == 0);
        });
}
