// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>
#include <doctest/doctest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <type_traits>

#include "support/formatters.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

constexpr std::string_view kStatement =
    "OFXHEADER:100\nVERSION:103\n\n<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>1<STATUS><CODE>0<SEVERITY>INFO"
    "</STATUS><STMTRS><CURDEF>EUR<BANKACCTFROM><BANKID>1<ACCTID>2<ACCTTYPE>CHECKING</BANKACCTFROM>"
    "<BANKTRANLIST><DTSTART>20240101<DTEND>20240131<STMTTRN><TRNTYPE>DEBIT<DTPOSTED>20240115"
    "<TRNAMT>-12.50<FITID>a<NAME>\u00C4</STMTTRN></BANKTRANLIST></STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>";

/// A folder of its own with one file in it, for as long as this object lasts.
class File {
public:
    File(const std::string& name, std::string_view bytes) {
        std::string folder = (std::filesystem::temp_directory_path() / "brackwell-XXXXXX").string();
        REQUIRE(mkdtemp(folder.data()) != nullptr);
        folder_ = folder;
        path_ = folder_ / name;
        std::ofstream(path_, std::ios::binary) << bytes;
    }
    ~File() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    std::string path() const { return path_.string(); }
    std::string folder() const { return folder_.string(); }

private:
    std::filesystem::path folder_;
    std::filesystem::path path_;
};

Error unreadable(const std::string& url) {
    return {"Brackwell", 1, "The file at " + url + " was not found.", "Error importing file."};
}

}  // namespace

TEST_CASE("the bytes of a document import to a message") {
    const auto message = TovanaOFXController::importOFXFileFromData(Data::view(kStatement));
    REQUIRE(message);
    CHECK(message->ofxVersion() == 103);
    CHECK(message->bankingMsgSet().size() == 1);
}

TEST_CASE("absent data and an absent URL give nothing and no error") {
    Error error{"mine", 7, "untouched", "none"};
    CHECK(TovanaOFXController::importOFXFileFromData(std::nullopt, &error) == nullptr);
    CHECK(TovanaOFXController::importOFXFileFromData(std::nullopt, TextEncodingUTF8, nullptr, nullptr,
                                                     &error) == nullptr);
    CHECK(TovanaOFXController::importOFXFileFromURL(std::nullopt, &error) == nullptr);
    CHECK(TovanaOFXController::importOFXFileFromURL(std::nullopt, TextEncodingUTF8, nullptr, nullptr,
                                                    &error) == nullptr);
    CHECK(error == Error{"mine", 7, "untouched", "none"});
    CHECK(TovanaOFXController::importOFXFileFromData(std::nullopt) == nullptr);
    CHECK(TovanaOFXController::importOFXFileFromURL(std::nullopt) == nullptr);
}

TEST_CASE("empty data gives nothing and the parser's error") {
    Error error;
    CHECK(TovanaOFXController::importOFXFileFromData(Data(), &error) == nullptr);
    CHECK(error == Error{"Brackwell", 1, "no data to parse", "OFX Parser Error"});
}

TEST_CASE("every error of the parser ends the import and is handed on as it is") {
    struct Row {
        std::string_view bytes;
        std::string_view description;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"<OFX><A>1</B></OFX>",
              "Found close tag </B> without opening tag.\n"
              "Maybe there is a close tag missing for <OFX>"},
             {"<OFX>\xFF", "Data is not OFX or unknown character encoding."},
         }) {
        Error error;
        CHECK(TovanaOFXController::importOFXFileFromData(Data::view(row.bytes), &error) == nullptr);
        CHECK(error == Error{"Brackwell", 1, std::string(row.description), "OFX Parser Error"});
        // The same without a place for the error: a body error is no result without data here.
        CHECK(TovanaOFXController::importOFXFileFromData(Data::view(row.bytes)) == nullptr);
        CHECK(TovanaOFXController::importOFXFileFromData(Data::view(row.bytes), TextEncodingUTF8, nullptr,
                                                         nullptr) == nullptr);
    }
}

TEST_CASE("text that is not OFX imports to an empty message") {
    Error error{"mine", 7, "untouched", "none"};
    const auto message = TovanaOFXController::importOFXFileFromData(Data::view("no OFX at all"), &error);
    REQUIRE(message);
    CHECK(error == Error{"mine", 7, "untouched", "none"});
    CHECK(message->ofxVersion() == 0);
    CHECK(message->bankingMsgSet().empty());
    CHECK(message->accountsFound().empty());
}

TEST_CASE("a caller's encoding decides how bytes are decoded, and 0 is none") {
    const std::optional<Data> latin = encodeText(kStatement, TextEncodingISOLatin1);
    REQUIRE(latin);
    CHECK(TovanaOFXController::importOFXFileFromData(latin) == nullptr);
    CHECK(TovanaOFXController::importOFXFileFromData(latin, TextEncodingNone, nullptr, nullptr) == nullptr);
    const auto message =
        TovanaOFXController::importOFXFileFromData(latin, TextEncodingISOLatin1, nullptr, nullptr);
    REQUIRE(message);
    REQUIRE(message->bankAccountsFound().size() == 1);
    const auto statement = message->statementsForBankAccount(message->bankAccountsFound().front());
    REQUIRE(statement);
    CHECK(shown(statement->statementTransactions().at(0)->payeeName()) == "\u00C4");
}

TEST_CASE("a caller's formatters reach the transactions") {
    const auto numbers = std::make_shared<ScriptedNumberFormatter>(
        [](std::string_view) { return std::optional(Decimal::fromInteger(7)); });
    const auto dates = std::make_shared<ScriptedDateFormatter>(
        [](std::string_view) { return std::optional(utc(1999, 1, 2)); });
    const auto message =
        TovanaOFXController::importOFXFileFromData(Data::view(kStatement), TextEncodingNone, numbers, dates);
    REQUIRE(message);
    const auto statement = message->statementsForBankAccount(message->bankAccountsFound().at(0));
    REQUIRE(statement);
    const auto transaction = statement->statementTransactions().at(0);
    CHECK(shown(transaction->amount()) == "7");
    CHECK(shown(transaction->datePosted()) == "1999-01-02 00:00:00.000");
    CHECK(statement->helperObject() != TvOFXHelper::defaultHelper());
}

TEST_CASE("without formatters of the caller the shared helper converts") {
    for (const auto& message : {TovanaOFXController::importOFXFileFromData(Data::view(kStatement)),
                                TovanaOFXController::importOFXFileFromData(
                                    Data::view(kStatement), TextEncodingUTF8, nullptr, nullptr)}) {
        REQUIRE(message);
        const auto statement = message->statementsForBankAccount(message->bankAccountsFound().at(0));
        REQUIRE(statement);
        CHECK(statement->helperObject() == TvOFXHelper::defaultHelper());
        CHECK(shown(statement->statementTransactions().at(0)->amount()) == "-12.5");
    }
}

TEST_CASE("a file imports by its path and by its file: URL") {
    const File file("a statement.ofx", kStatement);
    std::string escaped = file.path();
    for (std::size_t at; (at = escaped.find(' ')) != std::string::npos;) escaped.replace(at, 1, "%20");
    for (const std::string& url : {file.path(), "file://" + escaped, "file://localhost" + escaped}) {
        CAPTURE(url);
        Error error;
        const auto message = TovanaOFXController::importOFXFileFromURL(url, &error);
        CHECK(error == Error());
        REQUIRE(message);
        CHECK(message->bankingMsgSet().size() == 1);
        CHECK(TovanaOFXController::importOFXFileFromURL(url, TextEncodingUTF8, nullptr, nullptr, &error));
    }
}

TEST_CASE("a file imports with the caller's encoding and formatters") {
    const std::optional<Data> latin = encodeText(kStatement, TextEncodingISOLatin1);
    REQUIRE(latin);
    const File file("latin.ofx", latin->bytes());
    CHECK(TovanaOFXController::importOFXFileFromURL(file.path()) == nullptr);
    const auto numbers = std::make_shared<ScriptedNumberFormatter>(
        [](std::string_view) { return std::optional(Decimal::fromInteger(7)); });
    const auto dates = std::make_shared<ScriptedDateFormatter>(
        [](std::string_view) { return std::optional(utc(1999, 1, 2)); });
    const auto message =
        TovanaOFXController::importOFXFileFromURL(file.path(), TextEncodingISOLatin1, numbers, dates);
    REQUIRE(message);
    const auto statement = message->statementsForBankAccount(message->bankAccountsFound().at(0));
    REQUIRE(statement);
    const auto transaction = statement->statementTransactions().at(0);
    CHECK(shown(transaction->payeeName()) == "\u00C4");
    CHECK(shown(transaction->amount()) == "7");
    CHECK(shown(transaction->datePosted()) == "1999-01-02 00:00:00.000");
}

TEST_CASE("an import leaves nothing behind for the next one") {
    static_assert(std::is_empty_v<TovanaOFXController>);
    const auto numbers = std::make_shared<ScriptedNumberFormatter>(
        [](std::string_view) { return std::optional(Decimal::fromInteger(7)); });
    const std::optional<Data> latin = encodeText(kStatement, TextEncodingISOLatin1);
    REQUIRE(latin);
    CHECK(TovanaOFXController::importOFXFileFromData(latin, TextEncodingISOLatin1, numbers, nullptr));
    CHECK_FALSE(TovanaOFXController::importOFXFileFromData(latin));
    const auto first = TovanaOFXController::importOFXFileFromData(Data::view(kStatement));
    const auto second = TovanaOFXController::importOFXFileFromData(Data::view(kStatement));
    REQUIRE(first);
    REQUIRE(second);
    CHECK(first != second);
    const auto account = second->bankAccountsFound().at(0);
    CHECK(account != first->bankAccountsFound().at(0));
    CHECK(shown(second->statementsForBankAccount(account)->statementTransactions().at(0)->amount()) ==
          "-12.5");
}

TEST_CASE("escapes of a file: URL are read in either case, and what is no escape stays") {
    struct Row {
        std::string name;
        std::string inURL;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"\u00C4.ofx", "%C3%84.ofx"},
             {"\u00C4.ofx", "%c3%84.ofx"},
             {"100%.ofx", "100%25.ofx"},
             {"100%.ofx", "100%.ofx"},
             {"%zz-%4.ofx", "%zz-%4.ofx"},
             {"%4", "%4"},
             {"%", "%"},
         }) {
        CAPTURE(row.inURL);
        const File file(row.name, kStatement);
        CHECK(TovanaOFXController::importOFXFileFromURL("file://" + file.folder() + "/" + row.inURL));
    }
}

TEST_CASE("every byte of a file's name can be escaped") {
    for (unsigned byte = 1; byte < 0x100; ++byte) {
        if (byte == '/') continue;
        for (const std::string_view digits : {"0123456789ABCDEF", "0123456789abcdef"}) {
            const std::string escape{'%', digits[byte / 16], digits[byte % 16]};
            CAPTURE(escape);
            const File file(std::string("a") + static_cast<char>(byte), kStatement);
            CHECK(TovanaOFXController::importOFXFileFromURL("file://" + file.folder() + "/a" + escape));
        }
    }
}

TEST_CASE("only two hexadecimal digits make an escape") {
    constexpr std::string_view digits = "0123456789ABCDEFabcdef";
    for (char other = ' '; other < '\x7F'; ++other) {
        if (other == '/' || digits.find(other) != std::string_view::npos) continue;
        CAPTURE(other);
        for (const std::string& name : {std::string{'%', other, '1'}, std::string{'%', '1', other}}) {
            const File file(name, kStatement);
            CHECK(TovanaOFXController::importOFXFileFromURL("file://" + file.folder() + "/" + name));
        }
    }
}

TEST_CASE("what follows a URL in memory is not part of it") {
    const File file("%4", kStatement);
    const std::string longer = "file://" + file.folder() + "/%41";
    CHECK(TovanaOFXController::importOFXFileFromURL(std::string_view(longer).substr(0, longer.size() - 1)));
    CHECK_FALSE(TovanaOFXController::importOFXFileFromURL(longer));
}

TEST_CASE("a path is not unescaped") {
    const File file("a%20path.ofx", kStatement);
    CHECK(TovanaOFXController::importOFXFileFromURL(file.path()));
    CHECK_FALSE(TovanaOFXController::importOFXFileFromURL("file://" + file.path()));
}

TEST_CASE("a path is taken as it is, also one that looks like a URL") {
    const File file("file:a%20b", kStatement);
    const std::filesystem::path path = file.path();
    Error error;
    const auto message = TovanaOFXController::importOFXFileFromURL(path, &error);
    REQUIRE(message);
    CHECK(message->bankAccountsFound().size() == 1);
    CHECK(TovanaOFXController::importOFXFileFromURL(path));
    const auto decoded =
        TovanaOFXController::importOFXFileFromURL(path, TextEncodingWindows1252, nullptr, nullptr, &error);
    REQUIRE(decoded);
    const auto statement = decoded->statementsForBankAccount(decoded->bankAccountsFound().front());
    CHECK(shown(statement->statementTransactions().front()->payeeName()) == "\u00C3\u201E");

    const std::filesystem::path missing = path.string() + " not";
    CHECK_FALSE(TovanaOFXController::importOFXFileFromURL(missing, &error));
    CHECK(error == Error{"Brackwell", 1, "The file at " + missing.string() + " was not found.",
                         "Error importing file."});
    CHECK_FALSE(TovanaOFXController::importOFXFileFromURL(missing, TextEncodingNone, nullptr, nullptr));
}

TEST_CASE("the bytes of a string import like any others") {
    const std::string bytes(kStatement);
    const auto message = TovanaOFXController::importOFXFileFromData(bytes);
    REQUIRE(message);
    CHECK(message->bankAccountsFound().size() == 1);
}

TEST_CASE("a file that cannot be read is an error that tells the URL") {
    const File other("other.ofx", kStatement);
    const std::string folder = other.folder();
    for (const std::string& url :
         {folder + "/no such file.ofx", "file://" + folder + "/not%20here.ofx", folder, std::string(),
          std::string("http://localhost/a.ofx"), std::string("file:")}) {
        CAPTURE(url);
        Error error;
        CHECK(TovanaOFXController::importOFXFileFromURL(url, &error) == nullptr);
        CHECK(error == unreadable(url));
        CHECK(TovanaOFXController::importOFXFileFromURL(url) == nullptr);
        Error second;
        CHECK(TovanaOFXController::importOFXFileFromURL(url, TextEncodingUTF8, nullptr, nullptr, &second) ==
              nullptr);
        CHECK(second == unreadable(url));
        CHECK(TovanaOFXController::importOFXFileFromURL(url, TextEncodingUTF8, nullptr, nullptr) == nullptr);
    }
}

TEST_CASE("the errors of a file's contents are those of its bytes") {
    const File empty("empty.ofx", "");
    Error error;
    CHECK(TovanaOFXController::importOFXFileFromURL(empty.path(), &error) == nullptr);
    CHECK(error.description == "no data to parse");
    const File wrong("wrong.ofx", "<OFX></B>");
    CHECK(TovanaOFXController::importOFXFileFromURL(wrong.path(), &error) == nullptr);
    CHECK(error.description ==
          "Found close tag </B> without opening tag.\nMaybe there is a close tag missing for <OFX>");
}

TEST_CASE("a message keeps nothing of bytes that belong to the caller") {
    std::string bytes(kStatement);
    const auto message = TovanaOFXController::importOFXFileFromData(Data::view(bytes));
    bytes.assign(bytes.size(), '#');
    bytes.clear();
    bytes.shrink_to_fit();
    REQUIRE(message);
    const auto statement = message->statementsForBankAccount(message->bankAccountsFound().at(0));
    REQUIRE(statement);
    CHECK(shown(statement->statementTransactions().at(0)->payeeName()) == "\u00C4");
}
