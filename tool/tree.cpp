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

void writeDocument(Run& run, const brackwell::OpenedDocument& document) {
    JsonWriter json(run.output);
    json.beginObject();
    json.key("encoding");
    if (const auto name = brackwell::nameOfTextEncoding(document.encoding()))
        json.text(*name);
    else
        json.null();
    const auto originalStrings =
        run.options.showsOriginals ? OriginalStrings::written : OriginalStrings::leftOut;
    writeDictionary(json, "header", document.content().ofxHeader, originalStrings);
    writeDictionary(json, "data", document.content().ofxData, originalStrings);
    json.endObject();
    run.output.write('\n');
}

/// True when the bytes are a text, OFX or not: this command shows that there is no tree.
bool isUnderstood(const brackwell::OpenedDocument& document) noexcept {
    return document || (document.encoding() != brackwell::TextEncodingNone &&
                        document.error().code != brackwell::OpenErrorCode::tagsDoNotMatch);
}

/// Shows what the parser made of the bytes, also when that is less than a document.
bool writeTree(Run& run) {
    const Document document = readFile(run, run.options.files.front());
    const auto& documents = document.file.documents();
    // Of several documents, one that is none is an error like any other.
    const bool isRead = documents.size() == 1 ? isUnderstood(documents.front()) : isWhollyRead(document.file);
    for (const brackwell::OpenedDocument& opened : documents) {
        writeDocument(run, opened);
        if (isUnderstood(opened) || opened.content().ofxHeader) run.output.keep();
    }
    return isRead;
}

}  // namespace

bool runTree(Run& run) {
    return withEnoughMemory(run, run.options.files.front(), [&run] { return writeTree(run); });
}

}  // namespace tool
