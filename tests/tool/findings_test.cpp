// SPDX-License-Identifier: Apache-2.0
#include "tool/commands.h"
#include "tool/report.h"

/// \file
/// What every command reports about documents that are not delivered completely, or may be wrong.

using namespace brackwell::tests;

namespace {

const std::string kClean =
    transactionsWith("<STMTTRN><DTPOSTED>20240105<TRNAMT>-1.00<FITID>1<NAME>Shop</STMTTRN>");

/// With three findings: a date, an amount and a missing end.
const std::string kOdd = [] {
    const std::string whole = transactionsWith(
        "<STMTTRN><DTPOSTED>soon<TRNAMT>-1.00<FITID>1<NAME>Shop</STMTTRN>\n"
        "<STMTTRN><DTPOSTED>20240105<TRNAMT>much<FITID>2<NAME>Shop</STMTTRN>");
    return whole.substr(0, whole.find("</OFX>"));
}();

/// With a fault that a repair puts right.
const std::string kBroken =
    transactionsWith("<STMTTRN><DTPOSTED>20240105<TRNAMT>-1.00<FITID>1<MEMO></STMTTRN>");

Finished withFile(const std::string& command, const std::string& document,
                  const std::vector<std::string>& options = {}) {
    const TemporaryFolder folder;
    folder.file("july.ofx", document);
    std::vector<std::string> arguments{command, "july.ofx"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    Command run = toolCommand(arguments);
    run.directory = folder.path();
    return brackwell::tests::run(run);
}

/// The findings of a document as messages, made of its JSON.
std::vector<std::string> messagesFromJson(const std::string& document) {
    std::vector<std::string> messages;
    const Json json = Json::parse(withFile("json", document).output);
    for (const Json& finding : json["findings"]) {
        std::string place;
        if (finding["line"] != 0) place = ":" + finding["line"].dump() + ":" + finding["column"].dump();
        messages.push_back("july.ofx" + place + ": " + finding["text"].get<std::string>());
    }
    return messages;
}

}  // namespace

TEST_CASE("every command says the findings of a document, each with its place, in the same words") {
    const std::vector<std::string> messages = messagesFromJson(kOdd);
    REQUIRE(messages.size() == 3);
    for (const char* part : {"july.ofx:11:", "\"soon\"", "july.ofx:12:", "\"much\"", "</OFX>"}) {
        CAPTURE(part);
        CHECK(std::ranges::any_of(messages, [part](const auto& message) { return contains(message, part); }));
    }
    for (const std::string& command : readingCommands()) {
        CAPTURE(command);
        const Finished finished = withFile(command, kOdd);
        CHECK(finished.status == 0);
        CHECK(linesOf(finished.error) == messages);
    }
}

TEST_CASE("every command says that it repaired a document, and one of them what") {
    for (const std::string& command : readingCommands()) {
        CAPTURE(command);
        const std::vector<std::string> messages = linesOf(withFile(command, kBroken).error);
        REQUIRE(messages.size() == (command == "repair" ? 2 : 1));
        CHECK(messages.front().starts_with("july.ofx:11:"));
        CHECK(messages.front().ends_with(": Repaired in 1 place."));
        CHECK(messages.back().ends_with(command == "repair" ? "<MEMO> has neither a text nor a close tag"
                                                            : "1 place."));
    }
}

TEST_CASE("a document with nothing to say of is read without a word") {
    for (const std::string& command : readingCommands()) {
        CAPTURE(command);
        const Finished finished = withFile(command, kClean, {"--strict"});
        CHECK(finished.status == 0);
        CHECK(finished.error == "");
    }
}

TEST_CASE("--quiet keeps findings back, and changes neither output nor status") {
    for (const std::string& command : readingCommands())
        for (const char* option : {"--quiet", "-q"}) {
            CAPTURE(command);
            const Finished quiet = withFile(command, kOdd, {option});
            CHECK(quiet.status == 0);
            CHECK(quiet.error == "");
            if (isRepeatable(command)) CHECK(quiet.output == withFile(command, kOdd).output);
        }
}

TEST_CASE("--quiet does not keep errors back") {
    for (const std::string& command : readingCommands()) {
        CAPTURE(command);
        const Finished missing = tool({command, "--quiet", "/nowhere"});
        CHECK(missing.status == 1);
        CHECK(missing.error == notFound("/nowhere"));
        if (!hasOption(command, "--as-is")) continue;
        const Finished broken = withFile(command, kBroken, {"--quiet", "--as-is"});
        CHECK(broken.status == 1);
        CHECK(contains(broken.error, ": Found close tag </STMTTRN> without opening tag."));
        CHECK(contains(broken.error, "  Likely cause: "));
    }
}

TEST_CASE("--strict ends with 3 when there is a finding, whether it is said or not") {
    for (const std::string& command : readingCommands()) {
        CAPTURE(command);
        for (const std::string& document : {kOdd, kBroken}) {
            const Finished strict = withFile(command, document, {"--strict"});
            const Finished lenient = withFile(command, document);
            CHECK(strict.status == 3);
            if (isRepeatable(command)) CHECK(strict.output == lenient.output);
            CHECK(strict.error == lenient.error);
            CHECK(withFile(command, document, {"--strict", "-q"}).status == 3);
        }
    }
}

TEST_CASE("--strict counts findings of every severity: a note says that something is not sure") {
    struct Row {
        const char* severity;
        std::string document;
    };
    const std::vector<Row> rows = {
        {"note", transactionsWith("<STMTTRN><DTPOSTED>20240102<TRNAMT>-0,99</STMTTRN>")},
        {"warning", transactionsWith("<STMTTRN><DTPOSTED>20240102<TRNAMT>abc</STMTTRN>")},
        {"error", version1("<SIGNONMSGSRSV1><SONRS><STATUS><CODE>15500<SEVERITY>ERROR</STATUS></SONRS>"
                           "</SIGNONMSGSRSV1>")},
    };
    for (const Row& row : rows) {
        CAPTURE(row.severity);
        const Json findings = jsonOf("json", row.document)["findings"];
        REQUIRE(findings.size() == 1);
        CHECK(findings[0]["severity"] == row.severity);
        for (const std::string& command : readingCommands()) {
            CAPTURE(command);
            CHECK(withFile(command, row.document, {"--strict"}).status == 3);
            CHECK(withFile(command, row.document, {"--strict", "--quiet"}).status == 3);
        }
    }
}

TEST_CASE("--strict ends with 1 when a file does not read, whatever there is to say of others") {
    const TemporaryFolder folder;
    const std::string odd = folder.file("odd.ofx", kOdd);
    for (const std::string& command : readingCommands()) {
        CAPTURE(command);
        CHECK(tool({command, "--strict", "/nowhere"}).status == 1);
        if (takesSeveralFiles(command)) CHECK(tool({command, "--strict", odd, "/nowhere"}).status == 1);
        if (takesSeveralFiles(command)) CHECK(tool({command, "--strict", odd, odd}).status == 3);
    }
}

TEST_CASE("--strict writes the file of --output, too") {
    for (const std::string& command : writingCommands()) {
        CAPTURE(command);
        const TemporaryFolder folder;
        const std::string odd = folder.file("odd.ofx", kOdd);
        CHECK(tool({command, "--strict", odd, "--output", folder.path("out")}).status == 3);
        CHECK(folder.read("out") != "");
        if (isRepeatable(command)) CHECK(folder.read("out") == tool({command, odd}).output);
    }
}

TEST_CASE("json has each finding as data, with six keys") {
    const Json findings = Json::parse(withFile("json", kOdd, {"--quiet"}).output)["findings"];
    REQUIRE(findings.size() == 3);
    std::vector<std::string> kinds;
    for (const Json& finding : findings) {
        std::vector<std::string> keys;
        for (const auto& item : finding.items()) keys.push_back(item.key());
        CHECK(keys == std::vector<std::string>{"kind", "severity", "line", "column", "count", "text"});
        CHECK(finding["severity"] == "warning");
        CHECK(finding["line"] > 10);
        CHECK(finding["column"] > 0);
        CHECK(finding["count"] == 1);
        kinds.push_back(finding["kind"]);
    }
    std::ranges::sort(kinds);
    CHECK(kinds == std::vector<std::string>{"cutOff", "unreadableValue", "unreadableValue"});
    CHECK(Json::parse(withFile("json", kClean).output)["findings"].dump() == "[]");
}

TEST_CASE("the page of a report has the findings of each file among its notes") {
    const TemporaryFolder folder;
    const std::string odd = folder.file("odd.ofx", kOdd);
    const std::string broken = folder.file("broken.ofx", kBroken);
    const MarkupPage page(tool({"report", "--quiet", odd, broken}).output);
    const auto notes = page.texts("li");
    for (const std::string& message : messagesFromJson(kOdd)) {
        const std::string text = message.substr(message.find(": ") + 2);
        CAPTURE(text);
        CHECK(std::ranges::any_of(notes, [&](const auto& note) {
            return note.starts_with(odd + ", line 1") && note.ends_with(": " + text);
        }));
    }
    CHECK(std::ranges::any_of(notes, [&broken](const std::string& note) {
        return note.starts_with(broken + ", line 11") && note.ends_with(": Repaired in 1 place.");
    }));
}

TEST_CASE("check writes nothing to standard output, and messages of each file under its name") {
    const TemporaryFolder folder;
    const std::string odd = folder.file("odd.ofx", kOdd);
    const std::string clean = folder.file("clean.ofx", kClean);
    const std::string broken = folder.file("broken.ofx", kBroken);
    const Finished finished = tool({"check", clean, odd, "/nowhere", broken});
    CHECK(finished.status == 1);
    CHECK(finished.output == "");
    const std::vector<std::string> messages = linesOf(finished.error);
    REQUIRE(messages.size() == 6);
    for (std::size_t i = 0; i < 3; ++i) CHECK(messages[i].starts_with(odd + ":"));
    CHECK(messages[3].starts_with("/nowhere: "));
    CHECK(messages[5].starts_with(broken + ":11:"));
    CHECK(messages[5].ends_with(": Repaired in 1 place."));
}

TEST_CASE("a document of several that does not read is a finding, and the others are delivered") {
    const std::string two = kClean + kBroken;
    for (const std::string& command : readingCommands()) {
        CAPTURE(command);
        if (!hasOption(command, "--as-is")) continue;
        const Finished finished = withFile(command, two, {"--as-is"});
        CHECK(finished.status == 1);
        const std::vector<std::string> messages = linesOf(finished.error);
        REQUIRE(messages.size() == 2);
        CHECK(messages[0] == "july.ofx: The file holds 2 documents, one after the other.");
        CHECK(contains(messages[1], "documents was not read: Found close tag </STMTTRN>"));
        const Finished quiet = withFile(command, two, {"--as-is", "--quiet"});
        CHECK(quiet.status == 1);
        CHECK(linesOf(quiet.error) == std::vector<std::string>{messages[1]});
        CHECK(contains(finished.output, "Shop") == showsPayees(command));
    }
}

TEST_CASE("of several documents one that is no OFX is status 1 in every command") {
    for (const std::string& command : readingCommands()) {
        CAPTURE(command);
        const Finished finished = withFile(command, kClean + "OFXHEADER\n<html>", {});
        CHECK(finished.status == 0);  // the rest is text after the document
        if (!hasOption(command, "--as-is")) continue;
        CHECK(withFile(command, kClean + kClean, {"--as-is"}).status == 0);
        CHECK(withFile(command, kClean + kClean + " <ofx></ofx>", {"--as-is"}).status == 1);
    }
}

TEST_CASE("a message that cannot be written is status 1, since it may be all that a command has to say") {
    const TemporaryFolder folder;
    folder.file("july.ofx", kOdd);
    folder.file("clean.ofx", kClean);
    for (const std::string& command : readingCommands())
        for (const std::string to : {"2>/dev/full", "2>&-"}) {
            CAPTURE(command);
            CAPTURE(to);
            const auto statusOf = [&](const std::string& arguments) {
                const std::string line = "exec \"$0\" " + command + " " + arguments + " " + to;
                Command shell{{"/bin/sh", "-c", line, BRACKWELL_TOOL}};
                shell.directory = folder.path();
                return run(shell).status;
            };
            CHECK(statusOf("july.ofx") == 1);
            CHECK(statusOf("--strict july.ofx") == 1);
            CHECK(statusOf("--quiet july.ofx") == 0);
            CHECK(statusOf("clean.ofx") == 0);
        }
}

TEST_CASE("a file with investment statements only is not said to have no statements") {
    const std::string document = version1(
        "<INVSTMTMSGSRSV1><INVSTMTTRNRS><TRNUID>1<STATUS><CODE>0<SEVERITY>INFO</STATUS><INVSTMTRS>"
        "<DTASOF>20240131<CURDEF>USD<INVACCTFROM><BROKERID>b<ACCTID>1</INVACCTFROM></INVSTMTRS>"
        "</INVSTMTTRNRS></INVSTMTMSGSRSV1>");
    for (const std::string command : {"show", "report", "accounts"}) {
        CAPTURE(command);
        const Finished finished = withFile(command, document);
        CHECK(finished.status == 0);
        CHECK_FALSE(contains(finished.output, "no statements"));
        CHECK_FALSE(contains(finished.output, "no responses"));
        CHECK(contains(finished.output, "nvestment"));
    }
}
