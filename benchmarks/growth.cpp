// SPDX-License-Identifier: Apache-2.0
// Imports or opens one document of a shape that a careless reader takes quadratic time or memory for, or
// repairs its text, and says what it took.
//
//     brackwell-growth                    lists the shapes
//     brackwell-growth SHAPE SIZE         imports a document of at least SIZE KiB
//     brackwell-growth SHAPE SIZE open    opens it, with repair and findings
//     brackwell-growth SHAPE SIZE write   writes it to standard output
//
// The first two print the document's bytes, the seconds of processor time that the program itself took for
// the reading, and the KiB of memory at its peak, the document itself not counted. What the system takes to
// hand out gigabytes of new memory is left out: it depends on the machine's state more than on the document.
#include <brackwell/brackwell.h>
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

struct Shape {
    const char* name;
    std::string_view begin;
    std::string_view piece;  ///< repeated; "#" stands for a running number
    bool isRepaired = false;
};

constexpr std::string_view kList = "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS><BANKTRANLIST>";

constexpr std::string_view kInvestments =
    "<OFX><INVSTMTMSGSRSV1><INVSTMTTRNRS><INVSTMTRS><CURDEF>USD</CURDEF>";

constexpr Shape kShapes[] = {
    {"transactions", kList,
     "<STMTTRN><TRNTYPE>DEBIT</TRNTYPE><DTPOSTED>20240131120000</DTPOSTED><TRNAMT>-12.34</TRNAMT>"
     "<FITID>#</FITID><NAME>Harbour Bakery</NAME><MEMO>Card 4711</MEMO></STMTTRN>\n"},
    {"investments", kInvestments,
     "<INVTRANLIST><BUYSTOCK><INVBUY><INVTRAN><FITID>#</FITID><DTTRADE>20240131</DTTRADE></INVTRAN><SECID>"
     "<UNIQUEID>#</UNIQUEID></SECID><UNITS>2</UNITS><UNITPRICE>3</UNITPRICE><TOTAL>-6</TOTAL></INVBUY>"
     "</BUYSTOCK></INVTRANLIST><INVPOSLIST><POSSTOCK><INVPOS><SECID><UNIQUEID>#</UNIQUEID></SECID>"
     "<UNITS>2</UNITS><MKTVAL>6</MKTVAL></INVPOS></POSSTOCK></INVPOSLIST>\n"},
    {"unclosed-investments", kInvestments, "<INCOME><TOTAL>1"},
    {"unclosed-transactions", kList, "<STMTTRN>"},
    {"odd-close-tags", kList, "<STMTTRN><NAME>x</STMTTRN >"},
    {"nested-aggregates", "<OFX>", "<A>"},
    {"distinct-names", "<OFX>", "<N#>x"},
    {"alternating-names", "<OFX>", "<A>x<B>y"},
    {"message-sets", "<OFX>", "<BANKMSGSRSV#><ATRNRS><TRNUID>1</ATRNRS></BANKMSGSRSV#>"},
    {"empty-aggregates", "<OFX>", "<A></A>"},
    {"one-leaf", "<OFX><NAME>", "a long text "},
    {"entities", "<OFX><NAME>", "&amp;"},
    {"opening-brackets", "<OFX>", "<"},
    {"closing-brackets", "<OFX>", ">"},
    {"close-tag-without-end", "<OFX>", "</A"},
    {"header-lines", "OFXHEADER:100\n", "N#:x\n"},
    // What the layer that opens files says something of:
    {"odd-values", kList,
     "<STMTTRN><DTPOSTED>05/06/2025</DTPOSTED><TRNAMT>x#</TRNAMT><FITID>1</FITID></STMTTRN>\n"},
    {"misplaced-transactions", "<OFX><A>", "<STMTTRN><NAME>x</NAME></STMTTRN>\n"},
    {"refusals", "<OFX><BANKMSGSRSV1>",
     "<STMTTRNRS><STATUS><CODE>#</CODE><SEVERITY>ERROR</SEVERITY></STATUS></STMTTRNRS>\n"},
    {"many-documents", "", "<OFX><A>x</A></OFX>\n"},
    {"many-documents-that-do-not-read", "", "<OFX></B></OFX>\n"},
    {"tags-that-do-not-match", "<OFX>", "<A>x</B></A>\n"},
    {"repair-no-close-tags", kList, "<STMTTRN><TRNTYPE>DEBIT<TRNAMT>-12.34<FITID>#<NAME>Harbour Bakery\n",
     true},
    {"repair-crossed-tags", kList, "<TRNTYPE><STMTTRN>DEBIT<TRNAMT>-1<FITID>#</STMTTRN>\n", true},
    {"repair-unclosed-aggregates", "<OFX>", "<STATUS><CODE>0<FI><ORG>x", true},
    {"repair-stray-close-tags", kList, "<STMTTRN><NAME>x</STMTTRN></LEDGERBAL></A#>", true},
    {"repair-deep-unknown", "<OFX></X>", "<A#>", true},
    {"repair-header-comments", "OFXHEADER:100\n", "<!-- x ", true},
    {"repair-transactions-outside", "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS>", "<STMTTRN><FITID>#</STMTTRN>",
     true},
    {"repair-nearest-statements", "<OFX><BANKMSGSRSV1>",
     "<STMTTRNRS><STMTRS><CURDEF>USD</STMTRS></STMTTRNRS><STMTTRN><FITID>#</STMTTRN>", true},
    {"repair-one-nearest-statement", "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS></STMTRS></STMTTRNRS>",
     "<STMTTRN><FITID>#</STMTTRN>", true},
    {"repair-raised-open-tags", "<OFX><SIGNUPMSGSRSV1><ACCTINFOTRNRS><ACCTINFORS>",
     "<ACCTINFO><BANKACCTFROM><BANKID>#<BANKACCTINFO><ACCTID>2</BANKACCTFROM><SUPTXDL>Y</BANKACCTINFO>"
     "</ACCTINFO>",
     true},
    {"repair-parted-accounts", "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS>",
     "<BANKACCTFROM><ACCTID>#</BANKACCTFROM><LEDGERBAL><BALAMT>1</LEDGERBAL>", true},
    {"repair-parted-responses", "<OFX><BANKMSGSRSV1><STMTTRNRS>", "<TRNUID>#<STMTRS></STMTRS>", true},
    {"repair-united-lists", "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS>",
     "<BANKTRANLIST><DTEND>2#<STMTTRN></STMTTRN></BANKTRANLIST>", true},
    {"repair-misnamed-wrappers", "<OFX><BANKMSGSRSV1>", "<STMTTRNRS><CCSTMTRS></CCSTMTRS></STMTTRNRS>", true},
    {"repair-close-tags-without-slash", kList, "<STMTTRN><FITID>#<STMTTRN>", true},
    {"repair-misspelt-open-tags", kList, "<STMTRN><FITID>#</STMTTRN>", true},
};

std::string makeDocument(const Shape& shape, std::size_t size) {
    std::string document;
    document.reserve(size + 1000);
    document.append(shape.begin);
    for (std::size_t number = 0; document.size() < size; ++number)
        for (const char c : shape.piece)
            if (c == '#')
                document.append(std::to_string(number));
            else
                document.push_back(c);
    if (shape.isRepaired) document.append("<OFX></OFX>");  // after a header; elsewhere one too many
    return document;
}

rusage usage() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage;
}

double ownSeconds(const rusage& usage) {
    return static_cast<double>(usage.ru_utime.tv_sec) + static_cast<double>(usage.ru_utime.tv_usec) * 1e-6;
}

/// An import with the investments, which a message does not hold.
void readInvestments(const brackwell::Data& data) {
    const auto message = brackwell::TovanaOFXController::importOFXFileFromData(data);
    const auto result = brackwell::TvOFXParser(data).parseWithError();
    if (message && result) brackwell::investmentStatements(result->ofxData);
}

void measure(const Shape& shape, std::size_t size, bool opens) {
    const std::string document = makeDocument(shape, size);
    const auto data = brackwell::Data::view(document);
    const rusage before = usage();
    if (shape.isRepaired)
        brackwell::repairOFXText(document, brackwell::RepairScope::structure);
    else if (opens)
        brackwell::openData(data);
    else if (shape.begin == kInvestments)
        readInvestments(data);
    else
        brackwell::TovanaOFXController::importOFXFileFromData(data);
    const rusage after = usage();
    std::printf("%zu %.6f %ld\n", document.size(), ownSeconds(after) - ownSeconds(before),
                after.ru_maxrss - before.ru_maxrss);
}

bool writeDocument(const Shape& shape, std::size_t size) {
    const std::string document = makeDocument(shape, size);
    return std::fwrite(document.data(), 1, document.size(), stdout) == document.size() &&
           std::fflush(stdout) == 0;
}

}  // namespace

int main(int count, char** arguments) {
    if (count == 1)
        for (const Shape& shape : kShapes) std::puts(shape.name);
    if (count < 3) return count == 1 ? 0 : 2;
    for (const Shape& shape : kShapes) {
        if (shape.name != std::string_view(arguments[1])) continue;
        const std::size_t size = std::strtoull(arguments[2], nullptr, 10) * 1024;
        const std::string_view how = count == 4 ? arguments[3] : "";
        if (how == "write") return writeDocument(shape, size) ? 0 : 1;
        if (how != "open" && !how.empty()) return 2;
        measure(shape, size, how == "open");
        return 0;
    }
    return 2;
}
