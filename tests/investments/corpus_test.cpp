// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

/// \file
/// Documents of the world: of every file of the folder that BRACKWELL_CORPUS names, each investment
/// transaction, position and security that a scan of its bytes finds is delivered.

using namespace brackwell;

namespace {

/// How many tags with one of these names there are, comments left out. Nothing of the parser is used.
std::size_t countTags(std::string text, std::initializer_list<std::string_view> names) {
    for (std::size_t begin = text.find("<!--"); begin != text.npos; begin = text.find("<!--", begin)) {
        const std::size_t end = text.find("-->", begin);
        text.erase(begin, end == text.npos ? end : end + 3 - begin);
    }
    std::size_t count = 0;
    for (const std::string_view name : names) {
        const std::string tag = "<" + std::string(name) + ">";
        for (std::size_t at = text.find(tag); at != text.npos; at = text.find(tag, at + 1)) ++count;
    }
    return count;
}

struct Counts {
    std::size_t transactions = 0;
    std::size_t positions = 0;
    std::size_t securities = 0;
};

Counts countedInBytes(const std::string& bytes) {
    return {countTags(bytes, {"BUYDEBT",    "BUYMF",    "BUYOPT",    "BUYOTHER",   "BUYSTOCK",
                              "CLOSUREOPT", "INCOME",   "JRNLSEC",   "INVEXPENSE", "JRNLFUND",
                              "REINVEST",   "RETOFCAP", "SELLDEBT",  "SELLMF",     "MARGININTEREST",
                              "SELLOPT",    "SPLIT",    "SELLOTHER", "SELLSTOCK",  "TRANSFER"}),
            countTags(bytes, {"POSDEBT", "POSMF", "POSOPT", "POSOTHER", "POSSTOCK"}),
            countTags(bytes, {"DEBTINFO", "MFINFO", "OPTINFO", "OTHERINFO", "STOCKINFO"})};
}

/// The tree of a document; of one that does not read, that of the repaired document.
std::optional<ParseDictionary> repairedTreeOf(const std::string& bytes) {
    Error error;
    auto result = TvOFXParser(Data::view(bytes)).parseWithError(&error);
    if (!result) result = TvOFXParser(Data::copy(repairOFXText(bytes).text)).parseWithError(&error);
    return result ? result->ofxData : std::nullopt;
}

Counts delivered(const std::optional<ParseDictionary>& document) {
    Counts counts;
    for (const InvestmentStatement& statement : investmentStatements(document)) {
        counts.positions += statement.positions().size();
        for (const InvestmentTransaction& transaction : statement.transactions())
            if (transaction.kind() != InvestmentTransactionKind::bankTransaction) ++counts.transactions;
    }
    counts.securities = securities(document).size();
    return counts;
}

}  // namespace

TEST_CASE("every investment transaction, position and security of the corpus is delivered") {
    const char* folder = std::getenv("BRACKWELL_CORPUS");
    if (folder == nullptr || *folder == '\0') {
        MESSAGE("BRACKWELL_CORPUS names no folder, so no file was read.");
        return;
    }
    Counts all;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        const std::string file = entry.path().string();
        CAPTURE(file);
        const auto data = Data::fromFile(file);
        REQUIRE(data);
        const std::string bytes(data->bytes());
        const auto tree = repairedTreeOf(bytes);
        if (!tree) continue;
        const Counts found = delivered(tree);
        const Counts expected = countedInBytes(bytes);
        CHECK(found.transactions == expected.transactions);
        CHECK(found.positions == expected.positions);
        CHECK(found.securities == expected.securities);
        all.transactions += found.transactions;
        all.positions += found.positions;
        all.securities += found.securities;
    }
    MESSAGE(all.transactions << " investment transactions, " << all.positions << " positions and "
                             << all.securities << " securities");
}
