// SPDX-License-Identifier: Apache-2.0
#include "support/corpus.h"

#include <array>
#include <cctype>

#include "tool/tool.h"

/// \file
/// Documents of the world: what the files of the folder that BRACKWELL_CORPUS names hold, counted by a scan
/// that knows nothing of the library, against what json delivers. Each difference must be named.

using namespace brackwell::tests;

namespace {

enum Kind : std::size_t { transactions, amounts, dates, investments, positions, securities, kindCount };
const std::array<std::string, kindCount> kNames{
    "transactions", "balance amounts", "balance dates", "investment transactions", "positions", "securities"};
using Counts = std::array<std::size_t, kindCount>;

/// The bytes as characters, those of UTF-16 made small, and without comments.
std::string scannedText(const std::string& bytes) {
    std::string text = bytes;
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) std::erase(text, '\0');
    for (std::size_t begin = text.find("<!--"); begin != text.npos; begin = text.find("<!--", begin)) {
        const std::size_t end = text.find("-->", begin);
        text.erase(begin, end == text.npos ? end : end + 3 - begin);
    }
    return text;
}

bool isBlank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

std::string trimmed(std::string text) {
    while (!text.empty() && isBlank(text.back())) text.pop_back();
    while (!text.empty() && isBlank(text.front())) text.erase(0, 1);
    return text;
}

/// A tag and the text up to the next one.
struct Piece {
    std::string name;  ///< in capitals, with the slash of a close tag
    std::string text;
};

std::vector<Piece> piecesOf(const std::string& text) {
    std::vector<Piece> pieces;
    for (std::size_t at = text.find('<'); at != text.npos;) {
        const std::size_t next = std::min(text.find('<', at + 1), text.size());
        const std::size_t close = std::min(text.find('>', at), next);
        std::string name = trimmed(text.substr(at + 1, close - at - 1));
        for (char& c : name) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        const bool hasText = close < next;
        pieces.push_back({name, hasText ? trimmed(text.substr(close + 1, next - close - 1)) : ""});
        at = next == text.size() ? text.npos : next;
    }
    return pieces;
}

/// What is counted by the names of elements; balances are not.
const std::map<std::string, std::size_t> kKinds = [] {
    const std::map<std::size_t, std::vector<std::string>> names{
        {transactions, {"STMTTRN"}},
        {investments, {"BUYDEBT", "BUYMF",    "BUYOPT",   "BUYOTHER",  "BUYSTOCK",  "CLOSUREOPT",    "INCOME",
                       "JRNLSEC", "JRNLFUND", "REINVEST", "RETOFCAP",  "SELLDEBT",  "INVEXPENSE",    "SELLMF",
                       "SELLOPT", "SPLIT",    "TRANSFER", "SELLOTHER", "SELLSTOCK", "MARGININTEREST"}},
        {positions, {"POSDEBT", "POSMF", "POSOPT", "POSOTHER", "POSSTOCK"}},
        {securities, {"DEBTINFO", "MFINFO", "OPTINFO", "OTHERINFO", "STOCKINFO"}}};
    std::map<std::string, std::size_t> kinds;
    for (const auto& [kind, ofKind] : names)
        for (const std::string& name : ofKind) kinds.emplace(name, kind);
    return kinds;
}();

Counts countedInText(const std::vector<Piece>& pieces) {
    Counts counts{};
    bool isInBalance = false;
    for (const Piece& piece : pieces) {
        if (const auto kind = kKinds.find(piece.name); kind != kKinds.end()) ++counts[kind->second];
        const bool isAmount = piece.name == "BALAMT";
        const bool isDate = piece.name == "DTASOF";
        const bool isPart = isAmount || isDate || piece.name == "/BALAMT" || piece.name == "/DTASOF";
        if (isInBalance && isAmount && !piece.text.empty()) ++counts[amounts];
        if (isInBalance && isDate && !piece.text.empty()) ++counts[dates];
        isInBalance = piece.name == "LEDGERBAL" || piece.name == "AVAILBAL" || (isInBalance && isPart);
    }
    return counts;
}

Counts countedInJson(const Json& json) {
    Counts counts{};
    for (const Json& response : json["responses"]) {
        if (response.contains("statementTransactions"))
            counts[transactions] += response["statementTransactions"].size();
        for (const char* key : {"ledgerBalanceAmount", "availableBalanceAmount"})
            counts[amounts] += response.contains(key) ? 1U : 0U;
        for (const char* key : {"ledgerBalanceDateTime", "availableBalanceDateTime"})
            counts[dates] += response.contains(key) ? 1U : 0U;
    }
    for (const Json& statement : json.value("investmentStatements", Json::array())) {
        for (const Json& transaction : statement.value("transactions", Json::array()))
            ++counts[transaction["kind"] == "INVBANKTRAN" ? transactions : investments];
        counts[positions] += statement.value("positions", Json::array()).size();
    }
    counts[securities] = json.value("securities", Json::array()).size();
    return counts;
}

/// True when a finding says that something is not there, or not as it is written: not only how it was read.
bool hasRealFinding(const Json& json) {
    return std::ranges::any_of(json["findings"], [](const Json& finding) {
        return finding["kind"] != "repaired" && finding["kind"] != "encodingGuessed";
    });
}

/// Checks one file; gives what of it is not delivered.
Counts checkFile(const std::string& path, const Counts& held) {
    const Finished finished = tool({"json", "--quiet", "--", path});
    if (finished.status != 0) {
        CHECK(finished.status == 1);
        CHECK(finished.error.starts_with(path));
        return held;
    }
    const Json json = Json::parse(finished.output);
    const Counts delivered = countedInJson(json);
    Counts missing{};
    for (std::size_t kind = 0; kind < kindCount; ++kind) {
        CAPTURE(kNames[kind]);
        CAPTURE(held[kind]);
        CAPTURE(delivered[kind]);
        CHECK((delivered[kind] == held[kind] || hasRealFinding(json)));
        if (held[kind] > delivered[kind]) missing[kind] = held[kind] - delivered[kind];
    }
    return missing;
}

}  // namespace

TEST_CASE("the scan counts what a document holds, in any case, with blanks and in UTF-16") {
    const std::string document =
        "<OFX><stmttrn>x</stmttrn>< STMTTRN ><!-- <STMTTRN> --><LEDGERBAL><BALAMT>1<DTASOF>\n</LEDGERBAL>"
        "<BALAMT>2<AVAILBAL>\n<DTASOF>2024</DTASOF><BALAMT>3</BALAMT></AVAILBAL><INVPOS><POSMF><STOCKINFO>"
        "<BUYMF><SPLIT><AVAILBAL>";
    std::string wide = "\xFF\xFE";
    for (const char c : document) wide.append({c, '\0'});
    for (const std::string& bytes : {document, wide})
        CHECK(countedInText(piecesOf(scannedText(bytes))) == Counts{2, 2, 1, 2, 1, 1});
}

TEST_CASE("what a file of the corpus holds is delivered or named") {
    const auto files = corpusFiles();
    if (!files) {
        MESSAGE("BRACKWELL_CORPUS names no folder, so no file was read.");
        return;
    }
    Counts held{};
    Counts missing{};
    for (const std::string& file : *files) {
        CAPTURE(file);
        std::ifstream stream(file, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
        const Counts here = countedInText(piecesOf(scannedText(bytes)));
        const Counts lost = checkFile(file, here);
        for (std::size_t kind = 0; kind < kindCount; ++kind) {
            held[kind] += here[kind];
            missing[kind] += lost[kind];
        }
    }
    for (std::size_t kind = 0; kind < kindCount; ++kind)
        MESSAGE(kNames[kind], ": ", held[kind] - missing[kind], " of ", held[kind], " delivered");
}
