// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/effort.h"
#include "support/random_text.h"
#include "support/transcript.h"

/// \file
/// The promise: nothing is thrown, whatever the library is handed. Every test here would end at the
/// first exception.

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using namespace std::string_view_literals;

std::string randomBytes(RandomText& random, std::size_t size) {
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random.below(256));
    return bytes;
}

/// Imports, and asks whatever comes of it for everything.
void import(std::string_view bytes, TextEncoding encoding) {
    Error error;
    const auto message =
        TovanaOFXController::importOFXFileFromData(Data::view(bytes), encoding, nullptr, nullptr, &error);
    if (!message) {
        CHECK(error.domain == "Brackwell");
        return;
    }
    CHECK_FALSE(transcriptOf(*message).empty());
    CHECK_FALSE(transcriptOf(*interpreted(bytes, encoding)).empty());
}

/// Opens, and asks whatever comes of it for everything, after the file is gone.
void open(std::string_view bytes, const OpenOptions& options) {
    std::vector<OpenedDocument> documents;
    {
        const OpenedFile file = openData(Data::view(bytes), options);
        CHECK(static_cast<bool>(file) == file.error().description().empty());
        CHECK(file.accounts().size() <= bytes.size());
        CHECK(static_cast<bool>(file.message()) == static_cast<bool>(file));
        for (const Finding& finding : file.findings()) CHECK_FALSE(finding.text.empty());
        documents = file.documents();
    }
    for (const OpenedDocument& document : documents) {
        CHECK(static_cast<bool>(document) == document.error().text.empty());
        if (document) CHECK(transcriptOf(*document.message()).size() > 0);
        for (const auto& statement : document.statements())
            CHECK(detached(statement)->description() == statement->description());
    }
}

OpenOptions randomOptions(RandomText& random) {
    OpenOptions options = random.once(2) ? OpenOptions() : OpenOptions::asIs();
    if (random.once(4)) options.encoding = random.oneOf(knownTextEncodings());
    if (random.once(4)) options.maximumSize = random.below(200);
    if (random.once(4)) options.maximumDepth = random.below(8);
    return options;
}

/// The functions that take a text of any kind.
void handAround(std::string_view text, TextEncoding encoding) {
    Error error;
    TvOFXParser::parseOFXDataString(text, &error);
    TvOFXParser::parseOFXDataString(text);
    TvOFXParser::stringHasValidOfxHeaderPrefix(text);
    ParseDictionary header;
    CHECK(TvOFXParser::parseXmlHeader(text, &header) <= text.size());
    CHECK(TvOFXParser::parseXmlHeader(text, nullptr) == 0);
    TvOFXParser::parseSGMLHeader(text);
    TvOFXParser(Data::view(text)).parseDataAndIgnoreOfxHeader();
    TvOFXParser::unescapeCharactersInOFXSGMLFormattedString(text);
    TvOFXHelper helper;
    helper.dateFromOFXDateString(text);
    helper.decimalNumberFromOFXAmountString(text);
    TvOFXHelper::prettyPrintOfxMessageString(text);
    Decimal::fromString(text);
    leadingInteger(text);
    splitLines(text);
    CHECK(trimWhiteSpace(text).size() <= text.size());
    textEncodingNamed(text);
    TimeZone::named(text);
    KeyedUnarchiver::open(Data::view(text));
    TvOFXBankAccount::accountTypeFromString(text);
    const PatternDateFormatter formatter{std::string(text)};
    formatter.stringFromDate(Date{});
    formatter.dateFromString(text);
    TvOFXStatementTransaction::initWithParserDict(
        ParseDictionary{{"DTPOSTED", text}, {"TRNAMT", text}, {text, ParseDictionary{{text, text}}}});
    CHECK(placeInText(text, text.size() + 1).line > 0);
    CHECK(secretsInOFXText(text).size() <= text.size());
    openFile(text);
    decodeText(Data::view(text), encoding);
    encodeText(text, encoding);
}

constexpr std::array kPieces{"<OFX>"sv,
                             "</OFX>"sv,
                             "<BANKMSGSRSV1>"sv,
                             "</BANKMSGSRSV1>"sv,
                             "<STMTTRNRS>"sv,
                             "</STMTTRNRS>"sv,
                             "<STMTRS>"sv,
                             "</STMTRS>"sv,
                             "<BANKTRANLIST>"sv,
                             "<STMTTRN>"sv,
                             "</STMTTRN>"sv,
                             "<DTPOSTED>20240131"sv,
                             "<TRNAMT>-1"sv,
                             "<NAME>x"sv,
                             "<MEMO>"sv,
                             "</MEMO>"sv,
                             "<STATUS>"sv,
                             "</STATUS>"sv,
                             "<CODE>0"sv,
                             "<SEVERITY>"sv,
                             "INFO"sv,
                             "<PAYEE>"sv,
                             "</PAYEE>"sv,
                             "<SONRS>"sv,
                             "</SONRS>"sv,
                             "<TRNUID>1"sv,
                             "<LEDGERBAL>"sv,
                             "<BALAMT>1"sv,
                             "</LEDGERBAL>"sv,
                             "<CCSTMTTRNRS>"sv,
                             "<INTU.X>"sv,
                             "</X>"sv,
                             "&amp;"sv,
                             "&"sv,
                             "<"sv,
                             ">"sv,
                             "</>"sv,
                             "<>"sv,
                             " "sv,
                             "\n"sv,
                             "\xC3\xA9"sv,
                             "\xFF"sv,
                             "\0"sv,
                             "OFXHEADER:"sv,
                             "<?OFX "sv,
                             "?>"sv,
                             "<?xml"sv,
                             "encoding=\""sv,
                             "\""sv,
                             ":"sv,
                             "="sv,
                             "<PROFRS>"sv,
                             "<ACCTINFORS>"sv,
                             "<ACCTINFO>"sv};

constexpr std::array kBeginnings{""sv,
                                 "<OFX>"sv,
                                 "<?OFX ?>"sv,
                                 "OFXHEADER:100\n"sv,
                                 "<?xml"sv,
                                 "\xEF\xBB\xBF"sv,
                                 "\xBF\xBB\xBF<OFX>"sv,
                                 "\xFF\xFE"sv,
                                 "\xFE\xFF"sv,
                                 "\0\0\xFE\xFF"sv,
                                 "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS><BANKTRANLIST>"sv};

}  // namespace

TEST_CASE("random bytes throw nothing in any encoding") {
    RandomText random(1);
    std::vector<TextEncoding> encodings = knownTextEncodings();
    for (const TextEncoding unknown : {0U, 2U, 99U, 0xFFFFFFFFU}) encodings.push_back(unknown);
    for (std::size_t i = 0; i < scaled(20000); ++i)
        import(std::string(random.oneOf(kBeginnings)) + randomBytes(random, random.below(200)),
               random.oneOf(encodings));
}

TEST_CASE("tags in any order throw nothing") {
    RandomText random(2);
    for (std::size_t i = 0; i < scaled(20000); ++i)
        import(std::string(random.oneOf(kBeginnings)) + random.soup(kPieces, random.below(60)),
               TextEncodingNone);
}

TEST_CASE("opening any bytes and tags throws nothing") {
    RandomText random(6);
    for (std::size_t i = 0; i < scaled(4000); ++i)
        open(std::string(random.oneOf(kBeginnings)) + randomBytes(random, random.below(200)),
             randomOptions(random));
    for (std::size_t i = 0; i < scaled(10000); ++i) {
        std::string bytes;
        for (std::size_t documents = 1 + random.below(3); documents > 0; --documents)
            bytes.append(random.oneOf(kBeginnings)).append(random.soup(kPieces, random.below(40)));
        open(bytes, randomOptions(random));
    }
}

TEST_CASE("examples with bytes changed, taken away and doubled throw nothing") {
    RandomText random(3);
    for (const std::string name :
         {"checking.ofx", "card.ofx", "household.ofx", "every_element.ofx", "errors.ofx",
          "extension_names.ofx", "windows_1252.ofx", "utf_16.ofx", "quirks.ofx"}) {
        CAPTURE(name);
        const Data data = exampleData(name);
        for (std::size_t i = 0; i < scaled(400); ++i) {
            std::string bytes(data.bytes());
            for (std::size_t changes = 1 + random.below(4); changes > 0; --changes) {
                const std::size_t position = random.below(bytes.size());
                switch (random.below(3)) {
                    case 0:
                        bytes[position] = static_cast<char>(random.below(256));
                        break;
                    case 1:
                        bytes.erase(position, 1 + random.below(20));
                        break;
                    default:
                        bytes.insert(position, bytes.substr(position, random.below(40)));
                        break;
                }
            }
            import(bytes, random.once(4) ? TextEncodingWindows1252 : TextEncodingNone);
            if (random.once(4)) open(bytes, randomOptions(random));
        }
    }
}

TEST_CASE("functions that take a text take any") {
    RandomText random(4);
    const std::vector<TextEncoding> encodings = knownTextEncodings();
    for (const TextEncoding encoding : encodings) handAround("", encoding);
    for (std::size_t i = 0; i < scaled(4000); ++i)
        handAround(randomBytes(random, random.below(60)), random.oneOf(encodings));
    for (std::size_t i = 0; i < scaled(4000); ++i)
        handAround(random.soup(kPieces, random.below(20)), random.oneOf(encodings));
}

TEST_CASE("nothing throws nothing") {
    Error error;
    CHECK_FALSE(TovanaOFXController::importOFXFileFromURL(std::nullopt, &error));
    CHECK_FALSE(TovanaOFXController::importOFXFileFromURL(std::nullopt));
    CHECK_FALSE(TovanaOFXController::importOFXFileFromData(std::nullopt, &error));
    CHECK(error == Error{});
    CHECK_FALSE(TovanaOFXController::importOFXFileFromURL("/no/such/file"));
    CHECK_FALSE(TovanaOFXController::importOFXFileFromURL("/"));
    CHECK_FALSE(TovanaOFXController::importOFXFileFromURL(""));
    CHECK_FALSE(TovanaOFXController::importOFXFileFromURL("a\0b"sv));
    CHECK(openData(Data()).error().code == OpenErrorCode::empty);
    CHECK_FALSE(openFile(static_cast<const char*>(nullptr)));
    CHECK_FALSE(openFile("a\0b"sv));
    CHECK_FALSE(openFile("/"));
    CHECK(detached(std::shared_ptr<const TvOFXStatementTransaction>()) == nullptr);
    CHECK(detached(std::shared_ptr<const TvOFXAccountStatement>()) == nullptr);
    CHECK(detached(std::make_shared<const TvOFXStatementTransaction>()) != nullptr);
    CHECK(detached(std::make_shared<const TvOFXStatementResponse>()) != nullptr);
    CHECK_FALSE(TvOFXParser(std::nullopt).parseWithError());
    CHECK_FALSE(TvOFXParser(std::nullopt).parseDataAndIgnoreOfxHeader());
    TvOFXMessage().processParserResult({});
    TvOFXHelper helper;
    CHECK_FALSE(helper.dateFromOFXDateString(std::nullopt));
    CHECK_FALSE(helper.ofxAmountStringFromDecimalNumber(std::nullopt));
    CHECK_FALSE(TvOFXAccount::initWithAccountInfos(nullptr));
    for (const std::optional<ParseDictionary>& node :
         {std::optional<ParseDictionary>(), std::optional(ParseDictionary())}) {
        TvOFXAggregate::initWithParseDict(node);
        TvOFXResponse::initWithParseDict(node);
        TvOFXStatus::initWithParseDict(node);
        TvOFXSignOnResponse::initWithParseDict(node);
        TvOFXFIProfileResponse::initWithParseDict(node);
        TvOFXAccountInfoResponse::initWithParseDict(node);
        TvOFXUserAccountInfo::initWithAccountInfoResponse(TvOFXAccountInfoResponse::initWithParseDict(node));
    }
    TvOFXUserAccountInfo::initWithAccountInfoResponse(nullptr);
    TvOFXUserAccountInfo::initWithData(std::nullopt);
    const TvOFXResult result({nullptr, std::make_shared<TvOFXResponse>()});
    CHECK_FALSE(result.balance());
}

TEST_CASE("archives of anything throw nothing") {
    RandomText random(5);
    KeyedArchiver sample;
    TvOFXStatementTransaction::initWithParserDict(
        ParseDictionary{{"NAME", "n"},
                        {"TRNAMT", "-1.5"},
                        {"DTPOSTED", "20240131120000.123"},
                        {"PAYEE", ParseDictionary{{"NAME", "p"}, {"A", ParseDictionary{{"B", "c"}}}}}})
        ->encodeWithCoder(sample);
    const Data archive = sample.archivedData();
    std::size_t opened = 0;
    for (std::size_t i = 0; i < scaled(20000); ++i) {
        std::string bytes(archive.bytes());
        for (std::size_t changes = random.below(3); changes > 0; --changes)
            bytes[random.below(bytes.size())] = static_cast<char>(random.below(256));
        const auto coder = KeyedUnarchiver::open(Data::adopt(std::move(bytes)));
        if (!coder) continue;
        ++opened;
        TvOFXStatementTransaction::initWithCoder(*coder)->description();
        TvOFXPayee::initWithCoder(*coder)->address();
        TvOFXBankAccount::initWithCoder(*coder)->description();
        TvOFXCreditCardAccount::initWithCoder(*coder)->ofxString();
        TvOFXAggregate::initWithCoder(*coder)->ofxString();
    }
    CHECK(opened > 0);
}
