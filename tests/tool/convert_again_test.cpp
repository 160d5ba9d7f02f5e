// SPDX-License-Identifier: Apache-2.0
#include "tool/accounting.h"

/// \file
/// `brackwell convert --unless`: a second import adds nothing but what is new.

using namespace brackwell::tests;

namespace {

std::string coffee(const std::string& day, const std::string& identifier, const std::string& more = "") {
    return "<STMTTRN><TRNTYPE>POS<DTPOSTED>" + day + "<TRNAMT>-3.20" +
           (identifier.empty() ? "" : "<FITID>" + identifier) + "<NAME>Cafe" + more + "</STMTTRN>";
}

/// How many transactions a second document adds to the journal of a first one.
std::size_t addedBy(const std::string& second, const std::string& first,
                    const std::string& format = "hledger") {
    const TemporaryFolder folder;
    const std::string journal = folder.file("main", journalOfDocument(format, transactionsWith(first)));
    return countOf(journalOfDocument(format, transactionsWith(second), {"--unless", journal}), "\n2024-");
}

}  // namespace

TEST_CASE("a second import adds nothing, in any format and after any order of files") {
    const std::vector<std::string> files = {examplePath("checking.ofx"),    examplePath("checking_april.ofx"),
                                            examplePath("card.ofx"),        examplePath("household.ofx"),
                                            examplePath("investments.ofx"), examplePath("quirks.ofx"),
                                            examplePath("errors.ofx"),      examplePath("every_element.ofx")};
    const std::vector<std::string> backwards(files.rbegin(), files.rend());
    for (const std::string& format : kBookFormats) {
        CAPTURE(format);
        const std::string first = journalOf(format, files);
        CHECK(journalOf(format, backwards) == first);
        const TemporaryFolder folder;
        const std::string journal = folder.file("main", first);
        std::vector<std::string> again = backwards;
        again.insert(again.end(), {"--unless", journal});
        CHECK(journalOf(format, again) == "");
        for (const std::string& file : files) CHECK(journalOf(format, {file, "--unless", journal}) == "");
    }
}

TEST_CASE("files that come one after the other make the entries that they make together") {
    const std::string march = examplePath("checking.ofx");
    const std::string april = examplePath("checking_april.ofx");
    for (const std::string& format : kBookFormats) {
        CAPTURE(format);
        const TemporaryFolder folder;
        const std::string first = journalOf(format, {march});
        const std::string journal = folder.file("main", first);
        const std::string both = first + journalOf(format, {april, march, "--unless", journal});
        const std::string together = journalOf(format, {march, april});
        CHECK(countOf(both, "ofxdigest") == countOf(together, "ofxdigest"));
        if (hasBookProgram(format)) {
            CHECK(complaintsAbout(format, both) == "");
            CHECK(totalsOf(format, both) == totalsOf(format, together));
        }
    }
}

TEST_CASE("transactions are found again by what identifies them") {
    struct Row {
        const char* what;
        std::string first;
        std::string second;
        std::size_t added;
    };
    const std::vector<Row> rows = {
        {"the same", coffee("20240305", "1"), coffee("20240305", "1"), 0},
        {"another identifier", coffee("20240305", "1"), coffee("20240305", "2"), 1},
        {"an identifier with marks", coffee("20240305", "a b:c, ;\"x"), coffee("20240305", "a b:c, ;\"x"), 0},
        {"no identifier", coffee("20240305", ""), coffee("20240305", ""), 0},
        {"no identifier, another day", coffee("20240305", ""), coffee("20240306", ""), 1},
        {"no identifier, other texts", coffee("20240305", ""), coffee("20240305", "", "<MEMO>x"), 1},
        {"two that are alike, one of them known", coffee("20240305", ""),
         coffee("20240305", "") + coffee("20240305", ""), 1},
        {"two that are alike and known", coffee("20240305", "") + coffee("20240305", ""),
         coffee("20240305", "") + coffee("20240305", ""), 0},
        {"an identifier of all, one known", coffee("20240305", "0") + coffee("20240306", "0"),
         coffee("20240306", "0") + coffee("20240307", "0"), 1},
        {"an identifier of all, a single one later", coffee("20240305", "0") + coffee("20240306", "0"),
         coffee("20240307", "0"), 1},
        {"an identifier of all, a single one before", coffee("20240305", "0"),
         coffee("20240305", "0") + coffee("20240306", "0"), 1},
        {"the institution changed day and text", coffee("20240305", "1"), coffee("20240306", "1", "<MEMO>x"),
         0},
    };
    for (const Row& row : rows)
        for (const std::string& format : kBookFormats) {
            CAPTURE(row.what);
            CAPTURE(format);
            CHECK(addedBy(row.second, row.first, format) == row.added);
        }
}

TEST_CASE("that a transaction is known with another day or text is said") {
    const TemporaryFolder folder;
    const std::string journal =
        folder.file("main", journalOfDocument("hledger", transactionsWith(coffee("20240305", "1"))));
    const std::string changed = folder.file("a.ofx", transactionsWith(coffee("20240306", "1")));
    const Finished finished = tool({"convert", changed, "--unless", journal, "--strict"});
    CHECK(finished.status == 3);
    CHECK(finished.error ==
          "convert: 1 transaction has the identifier and amount of one in the journal, but another day or "
          "other "
          "texts; left out.\n");
    CHECK(finished.output == "");
}

TEST_CASE("entries are found however people have changed them") {
    const std::string document = transactionsWith(coffee("20240305", "1"));
    const std::string journal = journalOfDocument("hledger", document);
    const std::size_t at = journal.find("    ; ofxid: ");
    REQUIRE(at != journal.npos);
    const std::string tag = journal.substr(at + 6, journal.find('\n', at) - at - 6);
    for (const std::string& kept :
         {"2024-03-05 Bakery\n    Expenses:Food  3.20 USD\n    Assets:Checking\n    ; " + tag + "\n",
          "2024-03-05 Bakery\n    Assets:Checking  -3.20 USD  ; " + tag + "\n    Expenses:Food\n",
          "; " + tag + "\n", "  " + tag.substr(0, 7) + "\"" + tag.substr(7) + "\"\n"}) {
        CAPTURE(kept);
        const TemporaryFolder folder;
        const std::string output =
            journalOfDocument("hledger", document, {"--unless", folder.file("main", kept)});
        CHECK_FALSE(contains(output, "\n2024-"));
    }
    const TemporaryFolder folder;
    const std::string quoted = folder.file("main", "2024-03-05 * \"Cafe\" \"; " + tag + "\"\n  memo: \"; " +
                                                       tag + "\"\n  Assets:Checking  -3.20 USD\n");
    CHECK(contains(journalOfDocument("beancount", document, {"--unless", quoted}), "\n2024-"));
}

TEST_CASE("what a journal has opened, declared or begun is not opened, declared or begun again") {
    const std::string first =
        statementWith("<BANKTRANLIST>" + coffee("20240305", "1") +
                      "</BANKTRANLIST><LEDGERBAL><BALAMT>10<DTASOF>20240305</LEDGERBAL>");
    const std::string second =
        statementWith("<BANKTRANLIST>" + coffee("20240405", "2") +
                      "</BANKTRANLIST><LEDGERBAL><BALAMT>6.80<DTASOF>20240405</LEDGERBAL>");
    for (const std::string& format : kBookFormats) {
        CAPTURE(format);
        const TemporaryFolder folder;
        const std::string before = journalOfDocument(format, first);
        const std::string added =
            journalOfDocument(format, second, {"--unless", folder.file("main", before)});
        CHECK(contains(added, "2024-04-05 * "));
        CHECK(contains(added, "6.80 USD"));
        for (const char* part : {"Opening", "account ", " open ", "commodity "}) {
            CAPTURE(part);
            CHECK_FALSE(contains(added, part));
        }
        if (hasBookProgram(format)) CHECK(complaintsAbout(format, before + added) == "");
    }
}

TEST_CASE("transactions from before an opening balance in the journal are named, since it has them already") {
    const std::string late =
        statementWith("<BANKTRANLIST>" + coffee("20240305", "2") +
                      "</BANKTRANLIST><LEDGERBAL><BALAMT>10<DTASOF>20240305</LEDGERBAL>");
    const std::string early = transactionsWith(coffee("20240205", "1") + coffee("20240206", "3"));
    for (const std::string& format : kBookFormats) {
        CAPTURE(format);
        const TemporaryFolder folder;
        const std::string journal = folder.file("main", journalOfDocument(format, late));
        const Finished finished =
            tool({"convert", "--to", format, folder.file("a.ofx", early), "--unless", journal});
        CHECK(finished.status == 0);
        CHECK(countOf(finished.output, "\n2024-02-") == 2);
        CHECK(
            finished.error ==
            "convert: 2 postings are of a day before the opening balance of 2024-03-05 in the journal, which "
            "has them in it already: take -6.4 USD off it, and give it an earlier day.\n");
    }
}

TEST_CASE("journals that a journal includes are read, and each once") {
    const std::string document = transactionsWith(coffee("20240305", "1"));
    const TemporaryFolder folder;
    folder.file("years/2024.journal", journalOfDocument("hledger", document));
    folder.file("years/all.journal", "include 2024.journal\ninclude all.journal\n");
    for (const char* line :
         {"include years/2024.journal", "include \"years/*.journal\"", "!include years/all.journal"}) {
        CAPTURE(line);
        const std::string main = folder.file("main.journal", std::string(line) + "\n");
        CHECK(journalOfDocument("hledger", document, {"--unless", main}) == "");
    }
    const std::string main = folder.file("main.journal", "include missing.journal\n");
    const Finished finished = tool({"convert", examplePath("card.ofx"), "--unless", main});
    CHECK(finished.status == 1);
    CHECK(finished.output == "");
    CHECK(contains(finished.error, "missing.journal cannot be read.\n"));
}

TEST_CASE("the output is no file that the conversion reads") {
    const TemporaryFolder folder;
    const std::string journal = folder.file("main.journal", "; mine\n");
    const std::string map = folder.file("map.toml", "");
    struct Row {
        std::vector<std::string> options;
        const char* reason;
    };
    for (const Row& row :
         std::vector<Row>{{{"--unless", journal, "--output", journal},
                           "is also a journal of --unless; append to it with >>"},
                          {{"--accounts", map, "--output", map}, "is also the file of --accounts"},
                          {{"--to", "abacus"}, "--to"}}) {
        CAPTURE(row.reason);
        std::vector<std::string> arguments{"convert", examplePath("card.ofx")};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const Finished finished = tool(arguments);
        CHECK(finished.status == 2);
        CHECK(contains(finished.error, row.reason));
    }
    CHECK(folder.read("main.journal") == "; mine\n");
}
