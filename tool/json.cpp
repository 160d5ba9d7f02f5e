// SPDX-License-Identifier: Apache-2.0
#include "account_number.h"
#include "json/fields.h"
#include "json/objects.h"
#include "run.h"

namespace tool {
namespace {

/// The header fields and the accounts. The message is gone when the responses are made, so that they
/// are never in memory twice.
void writeMessagePart(JsonWriter& json, const Document& document, const Options& options) {
    brackwell::TvOFXMessage message;
    message.processParserResult(document.content, options.numberFormatter, options.dateFormatter);
    json.key("message");
    writeMessage(json, message);
    writeList(json, "accountsFound", message.accountsFound(),
              [&options](JsonWriter& writer, const brackwell::TvOFXAggregate& account) {
                  if (options.filter.takesAccount(accountNumber(&account))) writeAccount(writer, account);
              });
}

void writeDocument(Run& run, const Document& document) {
    JsonWriter json(run.output);
    json.beginObject();
    if (run.options.files.size() > 1) writeField(json, "file", brackwell::OptionalText(document.name));
    writeMessagePart(json, document, run.options);
    writeList(json, "responses", interpreted(document, run.options)->allResponses(),
              [&run](JsonWriter& writer, const brackwell::TvOFXResponse& response) {
                  writeResponse(writer, response, run.options.filter);
              });
    json.endObject();
    run.output.write('\n');
}

}  // namespace

bool runJson(Run& run) {
    return forEachDocument(run, [&run](const Document& document) { writeDocument(run, document); });
}

}  // namespace tool
