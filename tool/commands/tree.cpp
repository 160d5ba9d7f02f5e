// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include <CLI/CLI.hpp>
#include <optional>
#include <string_view>

#include "input/run.h"
#include "json/parse_tree.h"
#include "json/writer.h"

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
    const InputFile input = readFile(run, run.options.named.files.front());
    const auto& documents = input.file.documents();
    // Of several documents, one that is none is an error like any other.
    const bool isRead = documents.size() == 1 ? isUnderstood(documents.front()) : isWhollyRead(input.file);
    for (const brackwell::OpenedDocument& opened : documents) {
        writeDocument(run, opened);
        if (isUnderstood(opened) || opened.content().ofxHeader) run.output.keep();
    }
    return isRead;
}

bool runTree(Run& run) {
    return withEnoughMemory(run, run.options.named.files.front().name, [&run] { return writeTree(run); });
}

void declareTreeOptions(CLI::App& command, Options& options) {
    command.add_flag("--original", options.showsOriginals, "Write the source text of each transaction, too");
}

constexpr const char* kTreeHelp =
    "A document that does not parse is shown as far as it was understood, with status 1.\n"
    "--original adds TVOFX_ORIGINAL_STRING to each transaction: its text in the document. In a\n"
    "document whose transactions are not closed these overlap, and the output grows long.\n\n"
    "Examples:\n"
    "  brackwell tree july.ofx | jq .header\n"
    "  brackwell tree --encoding windows-1252 july.ofx\n";

}  // namespace

constexpr Command commands::kTree({
    .name = "tree",
    .summary = "The header and the parse tree, as JSON",
    .traits = kOneFile | kReading | kOutput,
    .help = kTreeHelp,
    .run = runTree,
    .declareOptions = declareTreeOptions,
});

}  // namespace tool
