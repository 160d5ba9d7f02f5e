// SPDX-License-Identifier: Apache-2.0
#include "run.h"

#include "console/messages.h"
#include "explain/foreign_forms.h"

namespace tool {

bool withEnoughMemory(Run& run, const std::string& name, const std::function<bool()>& work) {
    const std::uint64_t before = run.output.count();
    try {
        return work();
    } catch (const std::bad_alloc&) {
        if (run.output.count() != before) run.output.spoil();
        run.progress.end();
        say(name, "There is not enough memory for this document.");
        return false;
    }
}

bool forEachDocument(Run& run, const std::function<void(Document&)>& use) {
    bool allRead = true;
    for (const std::string& name : run.options.files) {
        const bool isRead = withEnoughMemory(run, name, [&] {
            Document document = readFile(run, name);
            sayHow(run, document);
            if (document.outcome != Document::Outcome::read) return false;
            use(document);
            run.output.keep();
            return true;
        });
        allRead = allRead && isRead;
        run.progress.end();
        if (!run.output.isGood()) break;
    }
    return allRead;
}

Document readFile(Run& run, const std::string& name) {
    run.progress.begin("Reading " + (name == "-" ? "standard input" : name));
    return readDocument(name, run.options.encoding, run.options.repairs);
}

void sayHow(Run& run, const Document& document) {
    if (document.note.empty() && document.complaint.empty()) return;
    run.progress.end();
    if (!document.note.empty()) say(document.name, document.note);
    if (!document.complaint.empty()) say(document.name, document.complaint);
    sayText(document.explanation);
}

std::shared_ptr<brackwell::TvOFXInterpreter> interpreted(const Document& document, const Options& options) {
    auto helper = brackwell::TvOFXHelper::defaultHelper();
    if (options.numberFormatter || options.dateFormatter) {
        helper = std::make_shared<brackwell::TvOFXHelper>();
        helper->setAmountNumberFormatter(options.numberFormatter);
        helper->setDateFormatter(options.dateFormatter);
    }
    auto interpreter = brackwell::TvOFXInterpreter::initWithParseResult(document.content);
    interpreter->setHelperObject(std::move(helper));
    interpreter->interpret();
    return interpreter;
}

std::shared_ptr<brackwell::TvOFXInterpreter> interpretedForPerson(Run& run, const Document& document) {
    auto interpreter = interpreted(document, run.options);
    for (const std::string& sentence : explainForms(*interpreter, run.options)) {
        run.progress.end();
        say(document.name, sentence);
    }
    return interpreter;
}

}  // namespace tool
