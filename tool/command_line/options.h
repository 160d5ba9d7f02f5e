// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/anonymize.h>
#include <brackwell/open.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bookkeeping/book.h"
#include "console/terminal.h"
#include "csv/format.h"
#include "filter/filter.h"
#include "input/named_files.h"

namespace tool {

struct Command;

/// What the rows of `brackwell csv` are.
enum class TableKind : unsigned char { bank, investments, positions, securities };

/// What `brackwell request` asks for.
struct RequestOptions {
    bool isProfile = false;  ///< else the accounts
    std::uint64_t version = 0;
    std::optional<std::string> since;  ///< as an OFX date
    std::int32_t routing = 0;
    bool isDocument = false;  ///< with a header and the message set around it
};

/// What `brackwell anonymize` does.
struct AnonymizeRequest {
    brackwell::AnonymizeOptions what;
    std::optional<std::string> folder;  ///< for the output; none: that goes where all output goes
};

/// What `brackwell convert` does.
struct ConvertRequest {
    BookFormat format = BookFormat::hledger;
    std::optional<std::string> accountMap;  ///< its file
    std::vector<std::string> journals;      ///< what stands in these is left out
    bool hasOpenings = true;
    bool hasAssertions = true;
};

/// The command line.
struct Options {
    const Command* command = nullptr;       ///< the row of the one that was given
    std::vector<std::string> fileNames;     ///< as they were given
    NamedFiles named;                       ///< what these stand for
    std::optional<std::string> outputFile;  ///< none: standard output
    bool replacesDocuments = false;         ///< let the output take the place of an OFX document
    brackwell::OpenOptions reading;
    Filter filter;
    bool showsFullNumbers = false;
    bool showsOriginals = false;  ///< the source texts of transactions
    bool isIndented = false;      ///< JSON over several lines
    Colour colour = Colour::automatic;
    bool usesPager = true;
    bool isQuiet = false;           ///< say no findings
    bool isStrict = false;          ///< a finding is worth an exit status of its own
    bool asDiff = false;            ///< show what was repaired as a diff
    bool listsEveryChange = false;  ///< of a repair, also those that are alike
    TableKind table = TableKind::bank;
    bool hasCurrencies = false;  ///< a table of bank transactions has the currency of each
    CsvFormat csv;
    AnonymizeRequest anonymize;
    ConvertRequest convert;
    RequestOptions request;
};

/// The names of all files that are read; that of an archive stands for its members.
std::vector<std::string> inputFilesOf(const Options& options);

/// What became of the command line: options, or an exit status with what is to be said instead of
/// doing anything.
struct CommandLine {
    Options options;
    std::optional<int> exitStatus;
    std::string text;   ///< for standard output
    std::string error;  ///< for standard error
};

CommandLine readCommandLine(int count, const char* const* arguments);

}  // namespace tool
