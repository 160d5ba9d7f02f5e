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

}  // namespace

bool runPretty(Run& run) {
    return forEachDocument(run, [&run](const Document& document) {
        const ParseDictionary& tree = *document.content.ofxData;
        if (!beginsLikeOFX(tree)) run.output.write("OFXHEADER:100\n\n");
        brackwell::writeIndentedOFXText(tree, [&run](std::string_view lines) {
            run.output.write(run.output.isTerminal() ? visibleLines(lines) : lines);
            return run.output.isGood();
        });
    });
}

}  // namespace tool
