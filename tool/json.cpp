// SPDX-License-Identifier: Apache-2.0
#include "account_number.h"
#include "json/fields.h"
#include "json/investments.h"
#include "json/objects.h"
#include "run.h"

namespace tool {
namespace {

using brackwell::OpenedDocument;

/// The accounts of all documents, as the message of each finds them.
void writeAccounts(JsonWriter& json, const Document& document, const Filter& filter) {
    json.field("accountsFound");
    json.beginArray();
    for (const OpenedDocument& opened : document.file.documents())
        if (const auto message = opened.message())
            for (const auto& account : message->accountsFound())
                if (filter.takesAccount(accountNumber(account.get()))) writeAccount(json, *account);
    json.endArray();
}

void writeFinding(JsonWriter& json, const brackwell::Finding& finding) {
    json.beginObject();
    writeField(json, "kind", brackwell::OptionalText(nameOf(finding.kind)));
    writeField(json, "severity", brackwell::OptionalText(nameOf(finding.severity)));
    writeField(json, "line", std::uint64_t{finding.line});
    writeField(json, "column", std::uint64_t{finding.column});
    writeField(json, "count", std::uint64_t{finding.count});
    writeField(json, "text", brackwell::OptionalText(finding.text));
    json.endObject();
}

/// A list of values, each by a function of its own.
template <class Value>
void writeValues(JsonWriter& json, std::string_view name, const std::vector<Value>& values,
                 void (*write)(JsonWriter&, const Value&)) {
    json.field(name);
    json.beginArray();
    for (const Value& value : values) {
        if (!json.isGood()) break;
        write(json, value);
    }
    json.endArray();
}

void writeDocument(Run& run, const Document& document) {
    const Filter& filter = run.options.filter;
    JsonWriter json(run.output);
    json.beginObject();
    writeField(json, "file", brackwell::OptionalText(document.name));
    json.field("message");
    writeMessage(json, *document.file.message());
    writeAccounts(json, document, filter);
    writeList(json, "responses", document.file.responses(),
              [&filter](JsonWriter& writer, const brackwell::TvOFXResponse& response) {
                  writeResponse(writer, response, filter);
              });
    writeValues(json, "investmentStatements", document.file.investmentStatements(), writeInvestmentStatement);
    writeValues(json, "securities", document.file.securities().all(), writeSecurity);
    writeValues(json, "findings", document.file.findings(), writeFinding);
    json.endObject();
    run.output.write('\n');
}

}  // namespace

bool runJson(Run& run) {
    return forEachFile(run, [&run](const Document& document) { writeDocument(run, document); });
}

}  // namespace tool
