// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/investment_text.h"
#include "support/transcript.h"
#include "support/value_text.h"
#include "variants.h"

/// \file
/// Writes all that opening files delivers, of each file and of what damage and other encodings make of it:
///
///     describe OUTPUT FILE...
///
/// It needs no exceptions and nothing but the library, so it runs on every target; script/portable compares
/// what it writes there.

namespace brackwell::tests {
namespace {

/// A file and not standard output, where some systems write a line break as two bytes.
std::FILE* output = nullptr;

void put(std::string_view text) { std::fwrite(text.data(), 1, text.size(), output); }

void putLine(std::string_view name, std::string_view value) {
    put(name);
    put(": ");
    put(value);
    put("\n");
}

void putLine(std::string_view name, std::size_t value) { putLine(name, std::to_string(value)); }

std::string inHexadecimal(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text.append(1, digits[byte >> 4]).append(1, digits[byte & 0xF]);
    }
    return text;
}

std::string placeOf(std::size_t line, std::size_t column) {
    return std::to_string(line) + ":" + std::to_string(column);
}

/// The encodings that every target has. Which others there are depends on the system.
bool isOfLibrary(TextEncoding encoding) {
    constexpr std::string_view names[] = {"ASCII",    "UTF-8",    "ISO-8859-1", "ISO-8859-15", "windows-1252",
                                          "UTF-16BE", "UTF-16LE", "UTF-32BE",   "UTF-32LE"};
    return std::ranges::any_of(names,
                               [&](std::string_view name) { return textEncodingNamed(name) == encoding; });
}

void describe(const OpenError& error) {
    putLine("error", nameOf(error.code));
    putLine("place", placeOf(error.line, error.column) + " at " + std::to_string(error.offset));
    // Which encodings would read the bytes stands in the sentences, too.
    if (error.code != OpenErrorCode::undecodable) putLine("description", error.description());
    for (const TextEncoding encoding : error.readingEncodings)
        if (isOfLibrary(encoding)) putLine("reads as", encoding);
}

void describe(const Finding& finding) {
    putLine("finding", nameOf(finding.kind));
    putLine(nameOf(finding.severity), placeOf(finding.line, finding.column) + " " + finding.text);
    putLine("count", finding.count);
}

void describe(const RepairChange& change) {
    putLine("change", static_cast<std::size_t>(change.kind));
    putLine(placeOf(change.line, change.column), inQuotes(change.was) + " " + inQuotes(change.now));
    putLine("reason", change.reason);
}

/// What the archives of all responses hold, byte for byte.
void describeArchives(const OpenedDocument& document) {
    for (const auto& response : document.responses()) {
        KeyedArchiver archive;
        response->encodeWithCoder(archive);
        putLine("archive", inHexadecimal(archive.archivedData().bytes()));
    }
}

void describe(const OpenedDocument& document) {
    putLine("encoding", document.encoding());
    putLine("mark", inHexadecimal(document.mark()));
    putLine("text", document.text().bytes());
    for (const RepairChange& change : document.changes()) describe(change);
    putLine("read text", document.readText().bytes());
    if (const auto& header = document.content().ofxHeader) putLine("header", treeText(*header));
    if (const auto& tree = document.content().ofxData) putLine("indented", indentedOFXText(*tree));
    if (!document) return describe(document.error());
    put(transcriptOf(*document.interpreter()));
    put(transcriptOf(*document.message()));
    put(investmentTextOf(document.content().ofxData));
    describeArchives(document);
}

void describe(const OpenedFile& file) {
    describe(file.error());
    for (const Finding& finding : file.findings()) describe(finding);
    for (const OpenedDocument& document : file.documents()) describe(document);
}

/// What the import alone makes of a path, whose characters are wide on some systems.
void describeImport(const std::filesystem::path& path) {
    Error error;
    const auto message = TovanaOFXController::importOFXFileFromURL(path, &error);
    if (message)
        put(transcriptOf(*message));
    else
        putLine("not imported", error.description);
}

int describeAll(const std::vector<std::string>& paths) {
    describeImport(u8"no folder/K\u00F6ln \u6771\u4EAC.ofx");
    for (const std::string& path : paths) {
        putLine("\nfile", path);
        describeImport(path);
        const OpenedFile file = openFile(path);
        describe(file);
        for (const std::string& variant : variantsOf(file.bytes().bytes())) {
            putLine("\nvariant", std::to_string(variant.size()) + " bytes");
            describe(openData(Data::copy(variant)));
        }
        Anonymizer anonymizer;
        putLine("replaced", anonymizer.anonymize(file.bytes()).replaced);
    }
    const bool isWritten = std::ferror(output) == 0;
    return std::fclose(output) == 0 && isWritten ? 0 : 1;
}

}  // namespace
}  // namespace brackwell::tests

int main(int count, char** arguments) {
    if (count < 2) return 2;
    brackwell::tests::output = std::fopen(arguments[1], "wb");
    if (brackwell::tests::output == nullptr) return 2;
    return brackwell::tests::describeAll({arguments + 2, arguments + count});
}
