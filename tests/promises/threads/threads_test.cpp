// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include <set>

#include "in_threads.h"
#include "support/documents.h"
#include "support/effort.h"
#include "support/investment_text.h"
#include "support/transcript.h"

// What each thread finds is held against what one thread alone finds. That no thread looks at what another
// one changes is seen by the thread sanitizer (script/test tsan promises/threads).

using namespace brackwell;
using namespace brackwell::tests;

namespace {

constexpr std::size_t kThreads = 6;
const std::size_t kRounds = std::max<std::size_t>(scaled(64), 4);

struct Document {
    Data data;
    TextEncoding encoding = TextEncodingNone;
};

std::vector<Document> documents() {
    return {{exampleData("account_information.ofx")},
            {exampleData("checking.ofx")},
            {exampleData("every_element.ofx")},
            {exampleData("extension_names.ofx")},
            {exampleData("household.ofx")},
            {exampleData("profile.ofx")},
            {exampleData("utf_16.ofx")},
            {exampleData("windows_1252.ofx"), TextEncodingWindows1252}};
}

std::string importAndAsk(const Document& document, std::shared_ptr<const NumberFormatter> numbers = nullptr,
                         std::shared_ptr<const DateFormatter> dates = nullptr) {
    const auto message = TovanaOFXController::importOFXFileFromData(document.data, document.encoding,
                                                                    std::move(numbers), std::move(dates));
    return message ? transcriptOf(*message) : "nothing";
}

/// All that an opened file answers through operations that are const.
std::string transcriptOf(const OpenedFile& file) {
    std::string text = file.error().description();
    for (const Finding& finding : file.findings()) text += finding.text + std::to_string(finding.line);
    for (const OpenedDocument& document : file.documents()) {
        text.append(document.readText().bytes()).append(document.error().description());
        for (const auto& statement : document.statements()) text += statement->description();
        for (const ListedAccount& account : document.accounts())
            text += account.record->accountDescription().value_or("nothing");
        const auto message = document.message();
        if (message)
            text += std::to_string(message->ofxVersion()) + std::to_string(message->bankingMsgSet().size());
    }
    return text;
}

/// The transactions of a document's statements, each a part of the one document.
std::vector<std::shared_ptr<TvOFXStatementTransaction>> transactionsOf(const Data& data) {
    const auto message = TovanaOFXController::importOFXFileFromData(data);
    std::vector<std::shared_ptr<TvOFXStatementTransaction>> transactions;
    for (const auto& response : message->bankingMsgSet())
        if (const auto* statement = dynamic_cast<const TvOFXAccountStatement*>(response.get()))
            transactions.insert(transactions.end(), statement->statementTransactions().begin(),
                                statement->statementTransactions().end());
    return transactions;
}

/// Checks that all threads find what one finds alone, which comes later: what is made on first use is so
/// made by several threads.
template <class Function>
void agreeWithOneThread(const Function& function) {
    const auto found = inThreads(kThreads, function);
    const auto alone = function(std::size_t{0});
    for (const auto& each : found) CHECK(each == alone);
}

}  // namespace

TEST_CASE("threads import different documents at the same time") {
    const std::vector<Document> all = documents();
    const auto transcripts = [&](std::size_t thread) {
        std::vector<std::string> found(all.size());
        for (std::size_t round = 0; round < kRounds; ++round)
            for (std::size_t i = 0; i < all.size(); ++i) {
                const std::size_t at = (i + thread) % all.size();
                found[at] = importAndAsk(all[at]);
            }
        return found;
    };
    agreeWithOneThread(transcripts);
}

TEST_CASE("threads import the same bytes at the same time") {
    for (const Document& document : documents())
        agreeWithOneThread([&](std::size_t) { return importAndAsk(document); });
}

TEST_CASE("formatters of a caller serve several imports at the same time") {
    const auto numbers = std::make_shared<const DecimalNumberFormatter>();
    const auto dates = std::make_shared<const PatternDateFormatter>("yyyyMMdd", TimeZone::system());
    const Document document{exampleData("household.ofx")};
    agreeWithOneThread([&](std::size_t) {
        std::string found;
        for (std::size_t round = 0; round < kRounds; ++round) found = importAndAsk(document, numbers, dates);
        return found;
    });
}

TEST_CASE("threads read the parts of one document at the same time") {
    const Data data = exampleData("checking.ofx");
    const auto transactions = transactionsOf(data);
    REQUIRE(transactions.size() > kThreads);
    std::vector<std::string> alone;
    for (const auto& transaction : transactionsOf(data)) alone.push_back(transcriptOf(*transaction));
    // Each thread has transactions of its own. They make their sort date when they are first asked for it.
    const auto found = inThreads(kThreads, [&](std::size_t thread) {
        std::vector<std::string> own;
        for (std::size_t i = thread; i < transactions.size(); i += kThreads)
            own.push_back(transcriptOf(*transactions[i]));
        return own;
    });
    for (std::size_t i = 0; i < transactions.size(); ++i)
        CHECK(found[i % kThreads][i / kThreads] == alone[i]);
}

TEST_CASE("threads read the same objects at the same time") {
    const auto message = importedExample("household.ofx");
    const auto interpreter = interpreted(exampleData("profile.ofx").bytes());
    const auto statement =
        std::dynamic_pointer_cast<TvOFXStatementResponse>(message->bankingMsgSet().front());
    REQUIRE(statement);
    const ParseDictionary tree = *interpreter->parserDict();
    agreeWithOneThread([&](std::size_t) {
        std::string found;
        for (std::size_t round = 0; round < kRounds; ++round) {
            found = statement->description() + statement->ofxString();
            for (const auto& transaction : statement->statementTransactions()) {
                found += transaction->description() + std::string(transaction->memo().value_or(""));
                KeyedArchiver coder;
                transaction->encodeWithCoder(coder);
                found += coder.archivedData().bytes();
            }
            found += std::to_string(message->bankAccountsFound().size());
            found += transcriptOf(*interpreter);
            found += tree == *interpreter->parserDict() ? "equal" : "different";
        }
        return found;
    });
}

TEST_CASE("threads read investments, and the same investments, at the same time") {
    const auto document = TvOFXParser(exampleData("investments.ofx")).parseWithError()->ofxData;
    const auto shared = investmentStatements(document);
    const SecurityList list(securities(document));
    agreeWithOneThread([&](std::size_t) {
        std::string found;
        for (std::size_t round = 0; round < kRounds; ++round) {
            found = investmentTextOf(document) + textOf(shared.front());
            for (const Position& position : shared.front().positions()) found += textOf(*list.find(position));
        }
        return found;
    });
}

TEST_CASE("threads open the same bytes at the same time") {
    std::string several;
    for (int i = 0; i < 3; ++i) several += exampleData("household.ofx").bytes();
    std::vector<Data> files{Data::copy(several), Data::copy(withTagsInLowerCase(several)),
                            Data::copy("<OFX><A>\xFF\x81</OFX>"),
                            Data::copy("<OFX><STMTRS><NAME>caf\xE9</NAM></OFX>")};
    for (const Document& document : documents()) files.push_back(document.data);
    for (const Data& data : files)
        agreeWithOneThread([&](std::size_t) { return transcriptOf(openData(data)); });
}

TEST_CASE("threads read one opened file at the same time, and release it") {
    const Data data = exampleData("household.ofx");
    auto file = std::make_unique<OpenedFile>(openData(data));
    std::vector<OpenedFile> copies(kThreads, *file);
    const std::string alone = transcriptOf(*file);
    const auto ask = [](const OpenedFile& opened) {
        std::string found = transcriptOf(opened);
        for (const auto& statement : opened.statements()) {
            found += detached(statement)->description();
            for (const auto& transaction : statement->statementTransactions())
                found += detached(transaction)->description();
        }
        return found;
    };
    const std::string before = ask(*file);
    CHECK(before.starts_with(alone));
    for (const std::string& found : inThreads(kThreads, [&](std::size_t) { return ask(*file); }))
        CHECK(found == before);
    file.reset();
    const auto last = inThreads(kThreads, [&](std::size_t thread) {
        const std::vector<OpenedFile> own{std::move(copies[thread])};
        return ask(own.front());
    });
    for (const std::string& found : last) CHECK(found == before);
}

TEST_CASE("an object that keeps what it finds is only read once it has found it") {
    const auto message = importedExample("household.ofx");
    const std::size_t count = message->accountsFound().size();
    const auto transactions = transactionsOf(exampleData("household.ofx"));
    for (const auto& transaction : transactions) transaction->sort_date();
    agreeWithOneThread([&](std::size_t) {
        std::string found(message->accountsFound().size() == count ? "as before" : "others");
        for (const auto& transaction : transactions) found += transaction->sort_date().value_or("nothing");
        return found;
    });
}

TEST_CASE("the parts of a document are released by whichever thread has them last") {
    for (std::size_t round = 0; round < kRounds; ++round) {
        auto transactions = transactionsOf(exampleData("household.ofx"));
        const auto counts = inThreads(kThreads, [&](std::size_t thread) {
            std::size_t bytes = 0;
            for (std::size_t i = thread; i < transactions.size(); i += kThreads) {
                const auto last = std::move(transactions[i]);
                const auto payee = last->payee();
                bytes += last->description().size() + (payee ? payee->address().size() : 0);
                bytes += last->originalParseData()->size();
            }
            return bytes;
        });
        CHECK(counts.front() > 0);
    }
}

TEST_CASE("threads write and read archives at the same time") {
    const auto transactions = transactionsOf(exampleData("household.ofx"));
    const std::optional<KeyedUnarchiver> shared = archived(*transactions.front());
    agreeWithOneThread([&](std::size_t) {
        std::string found;
        for (std::size_t round = 0; round < kRounds; ++round) {
            found.clear();
            for (const auto& transaction : transactions) found += restored(*transaction)->description();
            found += TvOFXStatementTransaction::initWithCoder(*shared)->description();
        }
        return found;
    });
}

TEST_CASE("threads decode, format and repair at the same time") {
    const std::string text = "<NAME>Caf\xC3\xA9";
    const std::string broken = "<OFX><STMTRS><CURDEF>USD<BANKTRANLIST><NAME>a < b</NAM></STMTRS></OFX>";
    const PatternDateFormatter shared("EEEE, dd. MMMM yyyy HH:mm:ss.SSS zzz", TimeZone::system());
    const Date date(std::chrono::milliseconds(1706716800123));
    agreeWithOneThread([&](std::size_t) {
        std::string found;
        for (std::size_t round = 0; round < kRounds; ++round) {
            found = repairOFXText(broken).text + shared.stringFromDate(date);
            for (const TextEncoding encoding : knownTextEncodings())
                if (const auto bytes = encodeText(text, encoding))
                    found += decodeText(*bytes, encoding).value().bytes();
            for (const char* locale : {"C", "C.UTF-8", "de_DE"}) {
                const PatternDateFormatter own("EEE MMM d", TimeZone::named("Europe/Berlin").value(), locale);
                found += own.stringFromDate(date);
            }
            found += TvOFXHelper::ofxDateTimeStringFromDate(date);
            found += DecimalNumberFormatter().stringFromNumber(Decimal::fromInteger(1234567)).value();
        }
        return found;
    });
}

TEST_CASE("no two threads get the same identifier for a request") {
    const auto found = inThreads(kThreads, [](std::size_t) {
        std::vector<std::string> uids;
        for (std::size_t i = 0; i < 50; ++i)
            uids.emplace_back(TvOFXAccountInfoRequest::initWithUpdateDateTime()->transactionUID().value());
        return uids;
    });
    std::set<std::string> different;
    for (const auto& uids : found) different.insert(uids.begin(), uids.end());
    CHECK(different.size() == kThreads * 50);
}
