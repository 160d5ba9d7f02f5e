// SPDX-License-Identifier: Apache-2.0
#include "json/parse_tree.h"
#include "json/writer.h"
#include "run.h"

namespace tool {
namespace {

void writeDictionary(JsonWriter& json, std::string_view name,
                     const std::optional<brackwell::ParseDictionary>& dictionary,
                     OriginalStrings originalStrings) {
    json.key(name);
    if (dictionary)
        writeParseValue(json, *dictionary, originalStrings);
    else
        json.null();
}

/// Shows what the parser made of the bytes, also when that is less than a document.
bool writeTree(Run& run) {
    using Outcome = Document::Outcome;
    Document document = readFile(run, run.options.files.front());
    if (document.outcome == Outcome::notOFX) document.complaint.clear();  // no error of this command's
    sayHow(run, document);
    if (document.outcome == Outcome::unreadable) return false;
    JsonWriter json(run.output);
    json.beginObject();
    json.key("encoding");
    if (const auto name = brackwell::nameOfTextEncoding(document.encoding))
        json.text(*name);
    else
        json.null();
    const auto originalStrings =
        run.options.showsOriginals ? OriginalStrings::written : OriginalStrings::leftOut;
    writeDictionary(json, "header", document.content.ofxHeader, originalStrings);
    writeDictionary(json, "data", document.content.ofxData, originalStrings);
    json.endObject();
    run.output.write('\n');
    const bool isRead = document.outcome != Outcome::malformed;
    if (isRead || document.content.ofxHeader) run.output.keep();
    return isRead;
}

}  // namespace

bool runTree(Run& run) {
    return withEnoughMemory(run, run.options.files.front(), [&run] { return writeTree(run); });
}

}  // namespace tool
