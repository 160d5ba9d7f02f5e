// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>
#include <pthread.h>

#include <functional>

#include "support/effort.h"
#include "support/repeated.h"

/// \file
/// The promise: nothing recurses on a document's depth. A tree that is 200,000 levels deep is read,
/// compared, rendered, archived and released on a stack that would not hold a call for each level.

using namespace brackwell;
using namespace brackwell::tests;

namespace {

constexpr std::size_t kDepth = scaled(200000);
/// The sanitizers' own functions need more of it than the library's.
constexpr std::size_t kStack = kSanitized ? 256 * 1024 : 64 * 1024;

void* run(void* action) {
    (*static_cast<std::function<void()>*>(action))();
    return nullptr;
}

/// Runs an action to its end on a thread with a small stack.
void onSmallStack(std::function<void()> action) {
    pthread_attr_t attributes;
    REQUIRE(pthread_attr_init(&attributes) == 0);
    REQUIRE(pthread_attr_setstacksize(&attributes, kStack) == 0);
    pthread_t thread{};
    const int failure = pthread_create(&thread, &attributes, run, &action);
    pthread_attr_destroy(&attributes);
    REQUIRE(failure == 0);
    REQUIRE(pthread_join(thread, nullptr) == 0);
}

std::string nested(std::string_view piece = "<A>") { return repeated(piece, kDepth); }

struct DeepRow {
    std::string name;
    std::string body;
};

std::vector<DeepRow> deepBodies() {
    return {
        {"one name, open", nested()},
        {"one name, closed", nested() + repeated("</A>", kDepth)},
        {"leaves on every level", nested("<A><B>x<C>y")},
        {"two on every level", nested("<B>x<B>y<A><C></C>")},
    };
}

std::size_t depthOf(ParseValue value) {
    std::size_t depth = 0;
    for (; !value["A"].isNothing(); value = value["A"]) ++depth;
    return depth;
}

}  // namespace

TEST_CASE("a tree of 200,000 levels is read, walked and released without recursion") {
    for (const DeepRow& row : deepBodies()) {
        CAPTURE(row.name);
        std::size_t depth = 0;
        onSmallStack([&] {
            if (const auto tree = TvOFXParser::parseOFXDataString(row.body)) depth = depthOf(*tree);
        });
        CHECK(depth == kDepth);
    }
}

TEST_CASE("trees of 200,000 levels are compared without recursion") {
    for (const DeepRow& row : deepBodies()) {
        CAPTURE(row.name);
        bool equal = false;
        bool differ = true;
        onSmallStack([&] {
            const auto tree = TvOFXParser::parseOFXDataString(row.body);
            equal = tree == TvOFXParser::parseOFXDataString(row.body);
            differ = tree != TvOFXParser::parseOFXDataString("<A>" + row.body);
        });
        CHECK(equal);
        CHECK(differ);
    }
}

TEST_CASE("a tree of 200,000 levels is rendered without recursion") {
    for (const DeepRow& row : deepBodies()) {
        CAPTURE(row.name);
        std::string text;
        onSmallStack([&] { text = TvOFXAggregate(TvOFXParser::parseOFXDataString(row.body)).ofxString(); });
        // The innermost element of a body that ends in its tag is a text.
        CHECK(text.size() >= (kDepth - 1) * std::string_view("<A>\n</A>\n").size());
        CHECK(text.starts_with("<A>\n"));
        CHECK(text.ends_with("</A>\n"));
    }
}

TEST_CASE("a tree of 200,000 levels is archived and restored without recursion") {
    for (const DeepRow& row : deepBodies()) {
        CAPTURE(row.name);
        bool back = false;
        onSmallStack([&] {
            const TvOFXAggregate before(TvOFXParser::parseOFXDataString(row.body));
            KeyedArchiver coder;
            before.encodeWithCoder(coder);
            const auto archive = KeyedUnarchiver::open(coder.archivedData());
            if (!archive) return;
            const auto after = TvOFXAggregate::initWithCoder(*archive);
            back = after->originalParseData() == before.originalParseData();
        });
        CHECK(back);
    }
}

TEST_CASE("investments of 200,000 levels are read without recursion") {
    for (const std::string_view tag : {"<INVSTMTTRNRS>", "<INVSTMTRS>", "<BUYMF>", "<INVBUY>", "<INVBAL>"}) {
        CAPTURE(std::string(tag));
        const std::string body = "<INVSTMTRS><CURDEF>EUR<MFINFO>" + nested(tag) + "<FITID>1";
        std::size_t found = 0;
        onSmallStack([&] {
            const auto tree = TvOFXParser::parseOFXDataString(body);
            found = investmentStatements(tree).size() + securities(tree).size();
        });
        CHECK(found > 1);
    }
}

TEST_CASE("a document of 200,000 levels is repaired without recursion") {
    for (const DeepRow& row : deepBodies()) {
        CAPTURE(row.name);
        const std::string document = "<OFX>" + row.body + "</B></OFX></C>";
        RepairedText repaired;
        onSmallStack([&] { repaired = repairOFXText(document); });
        CHECK_FALSE(repaired.changes.empty());
        CHECK(repaired.text.ends_with("</OFX>"));
    }
}

TEST_CASE("a document of 200,000 levels is opened and detached from without recursion") {
    const std::string inStatement = "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS>";
    struct Row {
        std::string name;
        std::string document;
        std::size_t statements;
        bool isDetached = true;
        bool isDeep = true;  ///< also after a repair, which puts what is nested beside each other
    };
    for (const Row& row :
         {Row{"under the root", "<OFX>" + nested(), 0},
          Row{"with another root", "OFXHEADER:100\n" + nested(), 0},
          Row{"in a statement", inStatement + nested(), 1},
          // The source text of each reaches to the end, so that a copy would have 200,000 of such texts.
          Row{"transactions", inStatement + "<BANKTRANLIST>" + nested("<STMTTRN><NAME>x"), 1, false, false},
          Row{"statements", "<OFX><BANKMSGSRSV1>" + repeated("<STMTRS><CURDEF>USD", kDepth) + "<A>x", kDepth,
              true, false},
          Row{"to be repaired", inStatement + nested() + "</B></OFX>", 1, true, false},
          Row{"in lower case", "<ofx>" + repeated("<a>", kDepth) + "<b>x</c></ofx>", 0, true, false}}) {
        CAPTURE(row.name);
        bool isRead = false;
        bool isTooDeep = false;
        std::size_t statements = 0;
        std::size_t details = 0;
        onSmallStack([&] {
            const OpenedFile file = openData(Data::view(row.document));
            isRead = static_cast<bool>(file);
            for (const auto& statement : file.statements()) {
                ++statements;
                if (row.isDetached) details += detached(statement)->description() == statement->description();
            }
            OpenOptions options;
            options.maximumDepth = 100;
            isTooDeep = openData(Data::view(row.document), options).error().code == OpenErrorCode::tooDeep;
        });
        CHECK(isRead);
        CHECK(isTooDeep == row.isDeep);
        CHECK(statements == row.statements);
        CHECK(details == (row.isDetached ? row.statements : 0));
    }
}

TEST_CASE("a tree of 200,000 levels is built in code without recursion") {
    std::size_t depth = 0;
    bool same = false;
    onSmallStack([&] {
        ParseDictionaryBuilder builder;
        for (std::size_t i = 0; i < kDepth; ++i) builder.open("A");
        const ParseDictionary tree = builder.finish();
        depth = depthOf(tree);
        ParseDictionaryBuilder copy;
        copy.value("A", tree["A"]);
        same = copy.finish() == tree;
    });
    CHECK(depth == kDepth);
    CHECK(same);
}

TEST_CASE("a document of 200,000 levels is imported without recursion, wherever these are") {
    struct Row {
        std::string name;
        std::string before;
        std::string piece;
        std::size_t responses;
    };
    for (const Row& row :
         {Row{"wrappers", "<OFX><BANKMSGSRSV1>", "<STMTTRNRS>", 1},
          Row{"statements", "<OFX><BANKMSGSRSV1>", "<STMTRS>", 1},
          Row{"in a statement", "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS>", "<A>", 1},
          Row{"in an account", "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS><BANKACCTFROM><ACCTID>1", "<A>", 1},
          Row{"in a payee", "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS><BANKTRANLIST><STMTTRN><PAYEE><NAME>n",
              "<A>", 1},
          Row{"in a status", "<OFX><BANKMSGSRSV1><STMTTRNRS><STATUS><CODE>0<SEVERITY>INFO", "<A>", 1},
          Row{"in another response", "<OFX><BANKMSGSRSV1><XRS>", "<A>", 1},
          Row{"message sets", "<OFX>", "<BANKMSGSRSV1>", 1},
          Row{"transactions", "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS><BANKTRANLIST>", "<STMTTRN>", 1}}) {
        CAPTURE(row.name);
        const std::string document = row.before + nested(row.piece);
        std::size_t responses = 0;
        std::size_t accounts = 0;
        onSmallStack([&] {
            const auto message = TovanaOFXController::importOFXFileFromData(Data::view(document));
            if (!message) return;
            responses = message->bankingMsgSet().size();
            accounts = message->accountsFound().size();
        });
        CHECK(responses == row.responses);
        CHECK(accounts == (std::string_view(row.before).ends_with("<ACCTID>1") ? 1 : 0));
    }
}

TEST_CASE("a payee with 200,000 levels in it is archived, restored and compared without recursion") {
    const std::string body = "<PAYEE><NAME>n" + nested() + repeated("</A>", kDepth) + "</PAYEE>";
    bool same = false;
    onSmallStack([&] {
        const auto before =
            TvOFXStatementTransaction::initWithParserDict(TvOFXParser::parseOFXDataString(body));
        KeyedArchiver coder;
        before->encodeWithCoder(coder);
        const auto archive = KeyedUnarchiver::open(coder.archivedData());
        if (!archive) return;
        const auto after = TvOFXStatementTransaction::initWithCoder(*archive);
        same = after->isEqualOFXStatementTransaction(before.get()) && after->payee() &&
               after->payee()->originalParseData() == before->payee()->originalParseData() &&
               after->description() == before->description();
    });
    CHECK(same);
}

TEST_CASE("an archive of 200,000 open lists is refused without recursion") {
    bool opened = true;
    onSmallStack([&] {
        // A map with one key whose value is a list in a list in a list.
        std::string bytes = "\xA1\x61k" + std::string(kDepth, '\x81');
        opened = KeyedUnarchiver::open(Data::adopt(std::move(bytes))).has_value();
    });
    CHECK_FALSE(opened);
}
