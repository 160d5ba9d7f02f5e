// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <iconv.h>

#include "survival.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::string describe(const OpenError& error) {
    return error.description() + std::to_string(error.line) + ":" + std::to_string(error.column) + "\n";
}

std::string describe(const OpenedFile& file) {
    std::string text = describe(file.error());
    for (const Finding& finding : file.findings())
        text += finding.text + std::to_string(finding.line) + ":" + std::to_string(finding.column) + "\n";
    for (const OpenedDocument& document : file.documents()) {
        text += describe(document.error());
        for (const RepairChange& change : document.changes()) text += change.was + ">" + change.now + "\n";
        if (document) text += transcriptOf(*document.interpreter());
    }
    return text;
}

const std::string kTransactions =
    "<STMTTRN><TRNTYPE>DEBIT<DTPOSTED>20240105<TRNAMT>-5.00<FITID>1<MEMO>tea and biscuits</STMTTRN>"
    "<STMTTRN><TRNTYPE>DEBIT<DTPOSTED>20240106<TRNAMT>-5.00<FITID>1<MEMO>milk</STMTTRN>";

std::string withTransactions(const std::string& transactions) {
    return "OFXHEADER:100\nDATA:OFXSGML\nCHARSET:1252\n\n<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>1<STATUS>"
           "<CODE>2000<SEVERITY>ERROR</STATUS><STMTRS><CURDEF>EUR<BANKACCTFROM><BANKID>1<ACCTID>7"
           "</BANKACCTFROM><BANKTRANLIST>" +
           transactions +
           "</BANKTRANLIST><LEDGERBAL><BALAMT>1.00<DTASOF>20240131</LEDGERBAL></STMTRS></STMTTRNRS>"
           "</BANKMSGSRSV1></OFX>\n";
}

/// Keeps all encodings loaded. An error names those that read a document, and the C library loses blocks, or
/// ends the program, when it has no memory to load one.
class LoadedEncodings {
public:
    LoadedEncodings() {
        for (const char* name : {"CP1250", "CP1251", "CP1252", "CP1253", "CP1254", "CP932", "EUC-JP",
                                 "ISO-2022-JP", "ISO-8859-1", "ISO-8859-2", "ISO-8859-15", "KOI8-R",
                                 "MACINTOSH", "UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE"})
            open_.push_back(::iconv_open("UTF-8", name));
    }
    LoadedEncodings(const LoadedEncodings&) = delete;
    LoadedEncodings& operator=(const LoadedEncodings&) = delete;
    ~LoadedEncodings() {
        for (const iconv_t converter : open_) ::iconv_close(converter);
    }

private:
    std::vector<iconv_t> open_;
};

struct Row {
    std::string name;
    std::string bytes;
    OpenOptions options = {};
};

OpenOptions shallow() {
    OpenOptions options;
    options.maximumDepth = 2;
    return options;
}

std::vector<Row> rows() {
    const std::string whole = withTransactions(kTransactions);
    std::string commas = whole;
    for (std::size_t at = commas.find("-5.00"); at != commas.npos; at = commas.find("-5.00", at))
        commas.replace(at, 5, "-5,00");
    return {
        {"a document with findings", whole},
        {"a document to be repaired", withTransactions(kTransactions + "</X>")},
        {"a document in lower case", withTagsInLowerCase(whole)},
        {"a document that was cut off", whole.substr(0, whole.find("milk"))},
        {"several documents", whole + whole + "<OFX></B></OFX>"},
        {"a document and one that is no text", whole + "<OFX><A>\xFF\x81</OFX>"},
        {"amounts with commas", commas},
        {"two lists of transactions",
         withTransactions(kTransactions + "</BANKTRANLIST><BANKTRANLIST>" + kTransactions)},
        {"bytes that are no text", "<OFX><A>\xFF\x81 and some more of it</OFX>"},
        {"bytes whose encoding is guessed", "<OFX><A>caf\xE9 and some more of it</OFX>"},
        {"no bytes", ""},
        {"no document", "a letter of some length about something else"},
        {"tags that do not match, as they are", withTransactions("</X>"), OpenOptions::asIs()},
        {"lower case, as it is", withTagsInLowerCase(whole), OpenOptions::asIs()},
        {"a document that is too deep", whole, shallow()},
    };
}

}  // namespace

TEST_CASE("opening examples survives exhausted memory at every allocation") {
    Tally tally("opening clean documents");
    for (const char* name : {"checking.ofx", "household.ofx", "account_information.ofx", "utf_16.ofx"}) {
        CAPTURE(name);
        const Data data = exampleData(name);
        surviveMaking(
            tally, [&] { return openData(data); }, [](const OpenedFile& file) { return describe(file); });
    }
}

TEST_CASE("opening what needs a repair, a finding or an error survives exhausted memory") {
    const LoadedEncodings loaded;
    Tally tally("opening documents of every kind");
    for (const Row& row : rows()) {
        CAPTURE(row.name);
        surviveMaking(
            tally, [&] { return openData(Data::view(row.bytes), row.options); },
            [](const OpenedFile& file) { return describe(file); });
    }
}

TEST_CASE("opening a file by its path or URL survives exhausted memory") {
    Tally tally("opening files");
    const std::string path = std::string(BRACKWELL_EXAMPLES_DIR) + "/checking.ofx";
    for (const std::string& name : {path, "file://" + path, path + ".none", std::string("file:x")}) {
        CAPTURE(name);
        surviveMaking(
            tally, [&] { return openFile(name); }, [](const OpenedFile& file) { return describe(file); });
    }
}

TEST_CASE("what an opened file answers survives exhausted memory") {
    Tally tally("questions to an opened file");
    const OpenedFile file = openData(exampleData("account_information.ofx"));
    surviveMaking(tally, [&] {
        std::string text;
        for (const ListedAccount& account : file.accounts())
            text += account.record->accountDescription().value_or("nothing");
        return text + transcriptOf(*file.message()) + std::to_string(file.responses().size());
    });
}

TEST_CASE("detaching survives exhausted memory, and the original stays as it was") {
    Tally tally("detached parts");
    const OpenedFile file = openData(exampleData("household.ofx"));
    const std::string before = describe(file);
    for (const auto& statement : file.statements()) {
        surviveMaking(
            tally, [&] { return detached(statement); }, [](const auto& copy) { return transcriptOf(*copy); });
        const auto& transaction = statement->statementTransactions().front();
        surviveMaking(
            tally, [&] { return detached(transaction); },
            [](const auto& copy) { return transcriptOf(*copy); });
    }
    const auto made = std::make_shared<TvOFXStatementTransaction>();
    made->setFiTransactionID("an identifier of some length");
    surviveMaking(
        tally, [&] { return detached(std::shared_ptr<const TvOFXStatementTransaction>(made)); },
        [](const auto& copy) { return copy->fiTransactionID().value_or("nothing"); });
    CHECK(describe(file) == before);
}
