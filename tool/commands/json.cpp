// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include <CLI/CLI.hpp>
#include <cstdint>

#include "accounts/account_number.h"
#include "accounts/listed_accounts.h"
#include "input/run.h"
#include "investments/security_lookup.h"
#include "json/accounts.h"
#include "json/fields.h"
#include "json/investments.h"
#include "json/responses.h"

namespace tool {
namespace {

using namespace brackwell;

/// The accounts of all documents, as the message of each finds them.
void writeAccounts(JsonWriter& json, const InputFile& input, const Filter& filter) {
    json.field("accountsFound");
    json.beginArray();
    for (const OpenedDocument& opened : input.file.documents())
        if (const auto message = opened.message())
            for (const auto& account : message->accountsFound())
                if (filter.takesAccount(accountNumber(account.get()))) writeAccount(json, *account);
    json.endArray();
}

void writeFinding(JsonWriter& json, const Finding& finding) {
    json.beginObject();
    writeField(json, "kind", OptionalText(nameOf(finding.kind)));
    writeField(json, "severity", OptionalText(nameOf(finding.severity)));
    writeField(json, "line", std::uint64_t{finding.line});
    writeField(json, "column", std::uint64_t{finding.column});
    writeField(json, "count", std::uint64_t{finding.count});
    writeField(json, "text", OptionalText(finding.text));
    json.endObject();
}

void writeInvestmentStatements(JsonWriter& json, const InputFile& input, const SecurityList& others,
                               const Filter& filter) {
    json.field("investmentStatements");
    json.beginArray();
    for (const OpenedDocument& opened : input.file.documents()) {
        const SecurityList own(opened.securities());
        const SecurityLookup securities(own, others);
        for (const InvestmentStatement& statement : opened.investmentStatements())
            if (json.isGood() && filter.takes(statement))
                writeInvestmentStatement(json, statement, filter, securities);
    }
    json.endArray();
}

void writeSecurities(JsonWriter& json, const InputFile& input, const Filter& filter) {
    json.field("securities");
    json.beginArray();
    for (const OpenedDocument& opened : input.file.documents())
        for (const Security& security : filter.securitiesOf(opened))
            if (json.isGood()) writeSecurity(json, security);
    json.endArray();
}

void writeFindings(JsonWriter& json, const InputFile& input) {
    json.field("findings");
    json.beginArray();
    for (const Finding& finding : input.file.findings())
        if (json.isGood()) writeFinding(json, finding);
    json.endArray();
}

void writeDocument(Run& run, const InputFile& input, const SecurityList& others) {
    const Filter& filter = run.options.filter;
    JsonWriter json(run.output, run.options.isIndented ? JsonLayout::indented : JsonLayout::oneLine);
    json.beginObject();
    writeField(json, "file", OptionalText(input.name));
    json.field("message");
    writeMessage(json, *input.file.message());
    writeAccounts(json, input, filter);
    const ListedAccounts listed(input.file.accounts());
    writeList(json, "responses", input.file.responses(),
              [&](JsonWriter& writer, const TvOFXResponse& response) {
                  writeResponse(writer, response, {filter, listed});
              });
    writeInvestmentStatements(json, input, others, filter);
    writeSecurities(json, input, filter);
    writeFindings(json, input);
    json.endObject();
    run.output.write('\n');
}

void writeError(JsonWriter& json, const OpenError& error) {
    json.field("error");
    json.beginObject();
    writeField(json, "code", OptionalText(nameOf(error.code)));
    writeField(json, "text", OptionalText(error.text));
    writeField(json, "cause", OptionalText(error.cause));
    writeField(json, "remedy", OptionalText(error.remedy));
    writeField(json, "line", std::uint64_t{error.line});
    writeField(json, "column", std::uint64_t{error.column});
    json.endObject();
}

/// A file of which nothing was read has an object, too, so that a program gets one for each file.
void writeUnread(Run& run, const InputFile& input) {
    JsonWriter json(run.output, run.options.isIndented ? JsonLayout::indented : JsonLayout::oneLine);
    json.beginObject();
    writeField(json, "file", OptionalText(input.name));
    writeError(json, input.error());
    writeFindings(json, input);
    json.endObject();
    run.output.write('\n');
}

bool runJson(Run& run) {
    const auto useUnread = [&run](const InputFile& input) { writeUnread(run, input); };
    // Securities of other files matter only where words are looked for: no file has to wait for them
    // otherwise.
    if (!run.options.filter.words.empty())
        return forEachFileWithSecurities(
            run,
            [&run](const InputFile& input, const SecurityList& others) { writeDocument(run, input, others); },
            useUnread);
    return forEachFile(
        run, [&run](const InputFile& input) { writeDocument(run, input, input.file.securities()); },
        useUnread);
}

void declareJsonOptions(CLI::App& command, Options& options) {
    command.add_flag("--indent", options.isIndented, "Write over several lines, for people to read");
}

constexpr const char* kJsonHelp =
    "One object for each FILE, a line each, with a first key \"file\"; over several lines with\n"
    "--indent. A file of which nothing was read has an object with \"error\": code, text, cause, remedy,\n"
    "line and column. json.schema.json in the documentation describes all of them.\n\n"
    "Examples:\n"
    "  brackwell json july.ofx --output july.json\n"
    "  brackwell json --account 5678 --sort date july.ofx\n"
    "  brackwell json --indent july.ofx | less\n"
    "  brackwell json *.ofx | jq -r '.responses[]?.statementTransactions[]?.amount'\n";

}  // namespace

constexpr Command commands::kJson({
    .name = "json",
    .summary = "Everything that was read, as JSON",
    .traits = kSeveralFiles | kReading | kFilter | kOutput,
    .help = kJsonHelp,
    .run = runJson,
    .declareOptions = declareJsonOptions,
});

}  // namespace tool
