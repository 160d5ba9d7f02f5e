// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include <string_view>

#include "input/run.h"
#include "text/visible_text.h"

namespace tool {
namespace {

using brackwell::ParseDictionary;

/// True when the text of a tree is recognised as OFX without a header.
bool beginsLikeOFX(const ParseDictionary& tree) {
    const ParseDictionary::DocumentOrder elements = tree.inDocumentOrder();
    return elements.begin() != elements.end() && (*elements.begin()).first == "OFX";
}

void writeTree(Output& output, const ParseDictionary& tree) {
    if (!beginsLikeOFX(tree)) output.write("OFXHEADER:100\n\n");
    brackwell::writeIndentedOFXText(tree, [&output](std::string_view lines) {
        output.write(output.isTerminal() ? visibleLines(lines) : lines);
        return output.isGood();
    });
}

bool runPretty(Run& run) {
    return forEachFile(run, [&run](const InputFile& input) {
        for (const brackwell::OpenedDocument& opened : input.file.documents())
            if (opened) writeTree(run.output, *opened.content().ofxData);
    });
}

constexpr const char* kPrettyHelp =
    "One element a line, closed and escaped, in the order of the document, in UTF-8. What is\n"
    "written reads back to the same tree. A line OFXHEADER:100 comes first where the body does\n"
    "not begin with <OFX>, since nothing would be read otherwise.\n\n"
    "Examples:\n"
    "  brackwell pretty july.ofx | less\n"
    "  diff <(brackwell pretty july.ofx) <(brackwell pretty july-again.ofx)\n";

}  // namespace

constexpr Command commands::kPretty({
    .name = "pretty",
    .summary = "The body, rendered again as indented OFX text",
    .traits = kOneFile | kReading | kOutput,
    .help = kPrettyHelp,
    .run = runPretty,
});

}  // namespace tool
