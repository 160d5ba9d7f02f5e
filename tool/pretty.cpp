// SPDX-License-Identifier: Apache-2.0
#include "run.h"
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

}  // namespace

bool runPretty(Run& run) {
    return forEachFile(run, [&run](const Document& document) {
        for (const brackwell::OpenedDocument& opened : document.file.documents())
            if (opened) writeTree(run.output, *opened.content().ofxData);
    });
}

}  // namespace tool
