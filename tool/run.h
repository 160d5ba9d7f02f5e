// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/brackwell.h>

#include <functional>

#include "console/output.h"
#include "console/progress.h"
#include "document.h"
#include "options.h"

namespace tool {

/// What a command works with.
struct Run {
    const Options& options;
    Output& output;
    Progress& progress;
};

/// Does a command; false when one of its files could not be read.
bool runShow(Run& run);
bool runJson(Run& run);
bool runCsv(Run& run);
bool runReport(Run& run);
bool runAccounts(Run& run);
bool runDuplicates(Run& run);
bool runTree(Run& run);
bool runPretty(Run& run);
bool runRepair(Run& run);
bool runRequest(Run& run);

/// Does the work on a file; where memory does not suffice, that is said, and the answer is false.
bool withEnoughMemory(Run& run, const std::string& name, const std::function<bool()>& work);

/// Reads the files one after the other and hands on those that are OFX documents; the others are
/// reported. False when there was one of these.
bool forEachDocument(Run& run, const std::function<void(Document&)>& use);

/// Reads one file, with a progress line while it lasts.
Document readFile(Run& run, const std::string& name);

/// Says on standard error how a document was read, if that is worth a note, and why it was not.
void sayHow(Run& run, const Document& document);

/// The document's responses, converted as a message converts them that has been given the caller's
/// formatters.
std::shared_ptr<brackwell::TvOFXInterpreter> interpreted(const Document& document, const Options& options);

/// The same for a person, who is told on standard error of amounts and dates that are likely to be read
/// otherwise than they are meant.
std::shared_ptr<brackwell::TvOFXInterpreter> interpretedForPerson(Run& run, const Document& document);

}  // namespace tool
