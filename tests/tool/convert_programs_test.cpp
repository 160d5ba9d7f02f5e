// SPDX-License-Identifier: Apache-2.0
#include <set>

#include "support/corpus.h"
#include "support/random_text.h"
#include "tool/accounting.h"

/// \file
/// What hledger, Ledger and Beancount say of journals of `brackwell convert`.

using namespace brackwell::tests;
using brackwell::Decimal;

namespace {

const std::vector<std::string> kExamples = {
    "account_information.ofx", "card.ofx",      "checking.ofx",    "checking_april.ofx", "errors.ofx",
    "every_element.ofx",       "household.ofx", "profile.ofx",     "investments.ofx",    "quirks.ofx",
    "extension_names.ofx",     "utf_16.ofx",    "windows_1252.ofx"};

/// The sums of bank and card transactions that a table of files has, by the default names of accounts.
BookTotals totalsOfTable(const std::vector<std::string>& files) {
    std::vector<std::string> arguments{
        "csv",         "--quiet", "--unique",  "--raw",
        "--delimiter", "tab",     "--columns", "accountClass,accountID,defaultCurrency,amount"};
    arguments.insert(arguments.end(), files.begin(), files.end());
    BookTotals totals;
    for (const std::string& line : linesOf(tool(arguments).output)) {
        std::istringstream fields(line);
        std::string kind, number, currency, amount;
        std::getline(
            std::getline(std::getline(std::getline(fields, kind, '\t'), number, '\t'), currency, '\t'),
            amount, '\r');
        const auto value = Decimal::fromString(amount);
        if (!value) continue;
        const bool isCard = contains(kind, "CC") || contains(kind, "Credit");
        Decimal& total = totals[{(isCard ? "Liabilities:Card:" : "Assets:Bank:") + number, currency}];
        total = total.plus(*value).value();
    }
    return totals;
}

/// Those of the accounts that documents have.
BookTotals ofDocuments(BookTotals totals) {
    std::erase_if(totals, [](const auto& each) {
        const std::string& account = each.first.first;
        return !account.starts_with("Assets:Bank:") && !account.starts_with("Liabilities:Card:");
    });
    return totals;
}

std::string pathOfExample(const std::string& name) { return examplePath(name); }

}  // namespace

TEST_CASE("the programs take the journals of the examples, alone and together") {
    for (const std::string& format : kBookFormats) {
        if (!hasBookProgram(format)) continue;
        CAPTURE(format);
        std::vector<std::string> all;
        for (const std::string& name : kExamples) {
            CAPTURE(name);
            all.push_back(pathOfExample(name));
            CHECK(complaintsAbout(format, journalOf(format, {all.back()})) == "");
        }
        const std::string journal = journalOf(format, all);
        CHECK(complaintsAbout(format, journal) == "");
        CHECK(countOf(journal, "2204.18 EUR") > 0);
    }
}

TEST_CASE("what a journal adds up to is what a table of the same files does") {
    const std::vector<std::string> files = {examplePath("checking.ofx"), examplePath("checking_april.ofx"),
                                            examplePath("card.ofx"), examplePath("household.ofx")};
    const BookTotals expected = totalsOfTable(files);
    CHECK(expected.size() == 5);
    for (const std::string& format : kBookFormats) {
        if (!hasBookProgram(format)) continue;
        CAPTURE(format);
        std::vector<std::string> arguments = files;
        arguments.insert(arguments.end(), {"--no-opening-balances", "--no-assertions"});
        CHECK(ofDocuments(totalsOf(format, journalOf(format, arguments))) == expected);
    }
}

TEST_CASE("with openings, accounts come to what their latest balances say") {
    for (const std::string& format : kBookFormats) {
        if (!hasBookProgram(format)) continue;
        CAPTURE(format);
        const BookTotals totals = totalsOf(
            format, journalOf(format, {examplePath("household.ofx"), examplePath("investments.ofx")}));
        CHECK(totals.at({"Assets:Bank:4410027", "EUR"}) == *Decimal::fromString("2204.18"));
        CHECK(totals.at({"Assets:Bank:4410035", "EUR"}) == *Decimal::fromString("12650"));
        CHECK(totals.at({"Liabilities:Card:4999120000003317", "EUR"}) == *Decimal::fromString("-113.25"));
        CHECK(totals.at({"Assets:Investments:D-4417:Cash", "USD"}) == *Decimal::fromString("1234.56"));
        CHECK(totals.at({"Assets:Investments:D-4417:Securities", "ALDR"}) == *Decimal::fromString("60"));
        CHECK(totals.at({"Assets:Investments:D-4417:Securities", "GRNFX"}) == *Decimal::fromString("12"));
    }
}

TEST_CASE("a balance that is wrong is one that the programs see") {
    const std::string document = transactionsWith("<STMTTRN><DTPOSTED>20240105<TRNAMT>-1<FITID>1</STMTTRN>");
    const std::string stated =
        document.substr(0, document.find("</STMTRS>")) +
        "<LEDGERBAL><BALAMT>9<DTASOF>20240105</LEDGERBAL></STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>";
    for (const std::string& format : kBookFormats) {
        if (!hasBookProgram(format)) continue;
        CAPTURE(format);
        const std::string journal = journalOfDocument(format, stated);
        CHECK(complaintsAbout(format, journal) == "");
        std::string wrong = journal;
        const std::size_t at = wrong.rfind(" 9.00 USD");
        REQUIRE(at != wrong.npos);
        wrong.replace(at, 9, " 8.00 USD");
        CHECK(complaintsAbout(format, wrong).starts_with("failed: "));
        CHECK(complaintsAbout(format, journalOfDocument(format, stated, {"--no-opening-balances"}))
                  .starts_with("failed: "));
    }
}

// ---------------------------------------------------------------------------------------------
// Documents by chance

namespace {

/// Odd texts, as a document has them.
std::string oddText(RandomText& random) {
    static const std::vector<std::string> pieces = {"a",          "B",
                                                    " ",          "  ",
                                                    ";",          "|",
                                                    "\"",         "\\",
                                                    ":",          "[2024/01/01]",
                                                    "date:",      "(",
                                                    ")",          "*",
                                                    "!",          "=",
                                                    "@",          "#",
                                                    "\u00E9",     "\n",
                                                    "\t",         "-",
                                                    "%",          "&amp;",
                                                    "{",          "}",
                                                    ",",          "'",
                                                    "^",          "~",
                                                    "&lt;",       "ofxid: 1",
                                                    "2024-01-01", "1.00 USD",
                                                    "\u65E5",     "\u00A0",
                                                    "\u2028",     "\u202E",
                                                    "include x",  "&gt;",
                                                    "$",          "_",
                                                    "`",          "[=2024/99/99]",
                                                    ":tag:",      "date:99"};
    return random.soup(pieces, 1 + random.below(8));
}

/// Transactions of one account, no two of one day and amount, so that what is meant is certain.
std::vector<std::string> randomTransactions(RandomText& random, const std::string& account, Decimal& sum) {
    std::vector<std::string> transactions;
    std::set<std::string> met;
    const std::size_t count = 12 + random.below(12);
    const auto add = [&](const std::string& day, const std::string& amount, const std::string& more) {
        if (!met.insert(day + " " + amount).second) return;
        sum = sum.plus(*Decimal::fromString(amount)).value();
        transactions.push_back("<STMTTRN><TRNTYPE>" + (random.once(4) ? oddText(random) : "POS") +
                               "</TRNTYPE><DTPOSTED>202401" + day + "</DTPOSTED><TRNAMT>" + amount +
                               "</TRNAMT>" + more + "</STMTTRN>");
    };
    for (std::size_t i = 0; i < count; ++i) {
        const std::string day = std::to_string(10 + i * 20 / count);
        const std::string amount = std::string(random.once(3) ? "" : "-") +
                                   std::to_string(random.below(500)) + "." +
                                   std::to_string(10 + random.below(90)) + (random.once(9) ? "7" : "");
        std::string more;
        if (!random.once(4))
            more += "<FITID>" + account + std::to_string(i) + (random.once(4) ? oddText(random) : "") +
                    "</FITID>";
        for (const char* name : {"CHECKNUM", "REFNUM", "NAME", "MEMO"})
            if (random.once(2)) more += "<" + std::string(name) + ">x" + oddText(random) + "</" + name + ">";
        add(day, amount, more);
    }
    return transactions;
}

/// A document of accounts with these transactions each.
using Accounts = std::map<std::string, std::vector<std::string>>;
std::string documentOf(const Accounts& accounts, const std::string& balance) {
    std::string body;
    for (const auto& [number, transactions] : accounts) {
        body +=
            "<STMTTRNRS><TRNUID>1</TRNUID><STMTRS><CURDEF>USD</CURDEF><BANKACCTFROM><BANKID>1</"
            "BANKID><ACCTID>" +
            number +
            "</ACCTID><ACCTTYPE>CHECKING</ACCTTYPE></BANKACCTFROM><BANKTRANLIST><DTSTART>20240101</"
            "DTSTART><DTEND>20240131</DTEND>";
        for (const std::string& transaction : transactions) body += transaction;
        body += "</BANKTRANLIST><LEDGERBAL><BALAMT>" + balance +
                "</BALAMT><DTASOF>20240131</DTASOF></LEDGERBAL></STMTRS></STMTTRNRS>";
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<?OFX OFXHEADER=\"200\" VERSION=\"211\" "
           "SECURITY=\"NONE\" "
           "OLDFILEUID=\"NONE\" NEWFILEUID=\"NONE\"?>\n<OFX><BANKMSGSRSV1>" +
           body + "</BANKMSGSRSV1></OFX>";
}

/// Two downloads that overlap, and what they come to together.
struct Downloads {
    std::string first;
    std::string second;
    BookTotals totals;
};

Downloads randomDownloads(RandomText& random) {
    Accounts all, first, second;
    Downloads downloads;
    for (const std::string account : {"111", "222"}) {
        Decimal sum;
        std::vector<std::string> list = randomTransactions(random, account, sum);
        // One identifier for all of some equal amounts: two of them in both downloads.
        const std::size_t third = list.size() / 3;
        const std::size_t places[] = {third - 1, third + 2, third + 3, 2 * third + 3};
        for (std::size_t i = 0; i < std::size(places); ++i) {
            list.insert(list.begin() + static_cast<std::ptrdiff_t>(std::min(places[i], list.size())),
                        "<STMTTRN><TRNTYPE>POS</TRNTYPE><DTPOSTED>2024010" + std::to_string(i + 1) +
                            "</DTPOSTED><TRNAMT>-3.20</TRNAMT><FITID>0</FITID></STMTTRN>");
            sum = sum.minus(*Decimal::fromString("3.20")).value();
        }
        first[account] = {list.begin(), list.begin() + static_cast<std::ptrdiff_t>(2 * third + 3)};
        second[account] = {list.begin() + static_cast<std::ptrdiff_t>(third), list.end()};
        if (!sum.isZero()) downloads.totals[{"Assets:Bank:" + account, "USD"}] = sum;
    }
    downloads.first = documentOf(first, std::to_string(random.below(1000)) + ".5");
    downloads.second = documentOf(second, std::to_string(random.below(1000)) + ".5");
    return downloads;
}

void checkDownloads(const std::string& format, const Downloads& downloads) {
    const std::vector<std::string> plain = {"--no-opening-balances", "--no-assertions"};
    const TemporaryFolder folder;
    const std::string first = folder.file("1.ofx", downloads.first);
    const std::string second = folder.file("2.ofx", downloads.second);
    const std::string together = journalOf(format, {first, second, plain[0], plain[1]});
    CHECK(journalOf(format, {second, first, plain[0], plain[1]}) == together);
    const std::string begun = journalOf(format, {first, plain[0], plain[1]});
    const std::string journal = folder.file("main", begun);
    const std::string added = journalOf(format, {second, "--unless", journal, plain[0], plain[1]});
    folder.file("main", begun + added);
    CHECK(journalOf(format, {first, second, "--unless", journal, plain[0], plain[1]}) == "");
    CHECK(countOf(begun + added, "ofxdigest") == countOf(together, "ofxdigest"));
    if (!hasBookProgram(format)) return;
    CHECK(complaintsAbout(format, journalOf(format, {first, second})) == "");
    CHECK(complaintsAbout(format, begun + added) == "");
    CHECK(ofDocuments(totalsOf(format, together)) == downloads.totals);
    CHECK(ofDocuments(totalsOf(format, begun + added)) == downloads.totals);
}

}  // namespace

TEST_CASE("random documents with odd texts are taken, add up, and are added once") {
    constexpr unsigned seeds = 8;
    for (unsigned seed = 0; seed < seeds; ++seed) {
        CAPTURE(seed);
        RandomText random(seed);
        const Downloads downloads = randomDownloads(random);
        for (const std::string& format : kBookFormats) {
            CAPTURE(format);
            checkDownloads(format, downloads);
        }
    }
}

TEST_CASE("real documents make journals that the programs take, and that nothing is added to") {
    const std::vector<std::string> files = corpusFiles().value_or(std::vector<std::string>());
    for (const std::string& format : kBookFormats) {
        if (files.empty() || !hasBookProgram(format)) continue;
        CAPTURE(format);
        const TemporaryFolder folder;
        for (const std::string& file : files) {
            CAPTURE(file);
            const std::string journal = tool({"convert", "--quiet", "--to", format, file}).output;
            if (journal.empty()) continue;
            CHECK(complaintsAbout(format, journal) == "");
            CHECK(tool({"convert", "-q", "--to", format, file, "--unless", folder.file("main", journal)})
                      .output == "");
        }
    }
}
