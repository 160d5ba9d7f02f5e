// SPDX-License-Identifier: Apache-2.0
#include "run.h"
#include "text/visible_text.h"

namespace tool {

bool runPretty(Run& run) {
    return forEachDocument(run, [&run](const Document& document) {
        using brackwell::TvOFXHelper;
        const std::string text = TvOFXHelper::prettyPrintOfxMessageString(
            TvOFXHelper::ofxDictionaryToString(*document.content.ofxData));
        run.output.write(run.output.isTerminal() ? visibleLines(text) : text);
    });
}

}  // namespace tool
