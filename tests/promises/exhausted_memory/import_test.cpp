// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>

#include "support/documents.h"
#include "survival.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using Message = std::shared_ptr<TvOFXMessage>;

std::string messageText(const Message& message) { return message ? transcriptOf(*message) : "nothing"; }

std::string examplePath(const std::string& name) { return std::string(BRACKWELL_EXAMPLES_DIR) + "/" + name; }

}  // namespace

TEST_CASE("an import survives exhausted memory at every allocation") {
    Tally tally("import from memory");
    for (const Example& example : examples()) {
        CAPTURE(example.name);
        const Data data = exampleData(example.name);
        surviveMaking(
            tally,
            [&] {
                return TovanaOFXController::importOFXFileFromData(data, example.encoding, nullptr, nullptr);
            },
            messageText);
    }
}

TEST_CASE("an import of a caller's bytes survives exhausted memory") {
    Tally tally("import of a view");
    const Data data = exampleData("card.ofx");
    surviveMaking(
        tally, [&] { return TovanaOFXController::importOFXFileFromData(Data::view(data.bytes())); },
        messageText);
}

TEST_CASE("an import from a file survives exhausted memory at every allocation") {
    Tally tally("import from a file");
    for (const char* name : {"checking.ofx", "household.ofx"}) {
        CAPTURE(name);
        const std::string path = examplePath(name);
        surviveMaking(
            tally, [&] { return TovanaOFXController::importOFXFileFromURL(path); }, messageText);
        surviveMaking(
            tally, [&] { return TovanaOFXController::importOFXFileFromURL("file://" + path); }, messageText);
    }
}

TEST_CASE("an import with formatters survives exhausted memory at every allocation") {
    Tally tally("import with formatters");
    NumberFormat german;
    german.decimalSeparator = ",";
    german.groupingSeparator = ".";
    const auto numbers = std::make_shared<const DecimalNumberFormatter>(german);
    const auto dates = std::make_shared<const PatternDateFormatter>("dd. MMMM yyyy", TimeZone::system());
    for (const char* name : {"checking.ofx", "card.ofx"}) {
        CAPTURE(name);
        const Data data = exampleData(name);
        surviveMaking(
            tally,
            [&] {
                return TovanaOFXController::importOFXFileFromData(data, TextEncodingNone, numbers, dates);
            },
            messageText);
    }
}

TEST_CASE("an import that fails survives exhausted memory, and leaves the error place alone then") {
    Tally tally("import that ends in an error");
    for (const std::string document :
         {"<OFX><BANKMSGSRSV1>1</B></OFX>", "", "\xFF\xFE<", "OFXHEADER:100\n\n<OFX><A>\xE9</OFX>"}) {
        CAPTURE(document);
        Error error{"before", 2, "before", "before"};
        surviveMaking(
            tally,
            [&] {
                error = Error();
                error.code = 2;
                TovanaOFXController::importOFXFileFromData(Data::view(document), &error);
                return error;
            },
            [](const Error& made) { return made.domain + made.description + made.failureReason; });
        bool untouched = true;
        const Error before{"before", 2, "a description of more than a few letters", "before"};
        for (std::size_t n = 1;; ++n) {
            error = before;
            auto operation = [&] {
                TovanaOFXController::importOFXFileFromData(Data::view(document), &error);
            };
            refuseAllocation(n, Refusal::once);
            const Outcome outcome = outcomeOf(operation);
            if (!stopRefusing()) break;
            if (outcome == Outcome::badAlloc) untouched &= error == before;
        }
        CHECK(untouched);
    }
    surviveMaking(tally, [] {
        Error error;
        TovanaOFXController::importOFXFileFromURL("/nowhere/july.ofx", &error);
        return error.description;
    });
}

TEST_CASE("a repair survives exhausted memory at every allocation") {
    Tally tally("repair");
    for (const std::string document :
         {"<OFX><STMTRS><CURDEF>USD<BANKTRANLIST><STMTTRN><NAME>a < b</NAM><MEMO/></STMTRS></OFX>",
          "Dear customer,\n<OFX><!-- x --><A B=\"1\">1</A><C></D></OFX>",
          "<OFX><X.Y>1</X.Y><![CDATA[<&>]]><P><Q></P>3</R></OFX"}) {
        CAPTURE(document);
        surviveMaking(
            tally, [&] { return repairOFXText(document); },
            [](const RepairedText& repaired) {
                std::string text = repaired.text;
                for (const RepairChange& change : repaired.changes)
                    text += "\n" + std::to_string(change.offset) + change.was + ">" + change.now;
                return text;
            });
    }
}
