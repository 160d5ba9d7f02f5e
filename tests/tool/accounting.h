// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tool/tool.h"

/// \file
/// Journals of the tool, and the programs of plain-text accounting that read them.

namespace brackwell::tests {

/// The names of the formats, which are those of the programs.
inline const std::vector<std::string> kBookFormats = {"hledger", "ledger", "beancount"};

/// False where the program of a format is not installed; ctest shows the message.
bool hasBookProgram(const std::string& format);

/// What the program says of a journal: "" when it takes it, with all balances that are asserted.
std::string complaintsAbout(const std::string& format, const std::string& journal);

/// What the accounts of a journal have, by account and commodity, as the program adds it up.
using BookTotals = std::map<std::pair<std::string, std::string>, Decimal>;
BookTotals totalsOf(const std::string& format, const std::string& journal);

/// The journal that the tool makes of files; it must end with status 0.
std::string journalOf(const std::string& format, const std::vector<std::string>& arguments);

/// The same of one document, and of it beside a journal.
std::string journalOfDocument(const std::string& format, const std::string& document,
                              const std::vector<std::string>& options = {});

/// How often a text occurs.
std::size_t countOf(std::string_view text, std::string_view part);

/// The lines of a journal after its head, until it is empty again: those of the first entry with this text.
std::vector<std::string> entryWith(const std::string& journal, const std::string& text);

}  // namespace brackwell::tests
