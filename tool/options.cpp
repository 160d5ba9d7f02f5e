// SPDX-License-Identifier: Apache-2.0
#include "options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <map>
#include <sstream>

#include "console/output_target.h"
#include "filter/filter_options.h"
#include "text/characters.h"

namespace tool {
namespace {

/// What a command that reads files takes besides the options of all of them.
enum Trait : unsigned {
    kSeveralFiles = 1,
    kFilter = 2,     ///< the options that choose transactions
    kNumbers = 4,    ///< --full
    kOriginal = 8,   ///< --original
    kNoOutput = 16,  ///< nothing but messages, so there is no --output
    kTable = 32,     ///< --kind
    kIndent = 64,    ///< --indent
};

/// The commands that read files.
struct ReadingCommand {
    const char* name;
    const char* summary;
    unsigned traits;
    const char* examples;
};

constexpr std::array kReadingCommands = {
    ReadingCommand{
        "show", "A person's view: institution, accounts, balances and transactions",
        kSeveralFiles | kFilter | kNumbers,
        "Account numbers are masked but for their last four characters, unless --full is given.\n"
        "The width is that of the terminal, or COLUMNS; negative amounts are red on a terminal\n"
        "unless NO_COLOR is set. Totals are those of the transactions that are shown.\n\n"
        "Examples:\n"
        "  brackwell show july.ofx\n"
        "  brackwell show --full *.ofx | less\n"
        "  brackwell show --since 2024-01-01 --until 2024-03-31 --search \"card payment\" *.ofx\n"},
    ReadingCommand{
        "json", "Everything that was read, as JSON", kSeveralFiles | kFilter | kIndent,
        "One object for each FILE, a line each, with a first key \"file\"; over several lines with\n"
        "--indent.\n\n"
        "Examples:\n"
        "  brackwell json july.ofx --output july.json\n"
        "  brackwell json --account 5678 --sort date july.ofx\n"
        "  brackwell json --indent july.ofx | less\n"
        "  brackwell json *.ofx | jq -r '.responses[].statementTransactions[]?.amount'\n"},
    ReadingCommand{
        "csv", "One row per transaction, with a header row", kSeveralFiles | kFilter | kTable,
        "--kind bank has the transactions of bank and card statements, investments those of\n"
        "investment statements, also the bank transactions in them, positions what is held, and\n"
        "securities what the files say of securities. Names and tickers come from the securities\n"
        "of the same document, else of all files. What a file has of another kind than the bank's\n"
        "is counted on standard error when it is not asked for, and so are amounts in another currency\n"
        "than the account's, unless --currencies is given.\n"
        "A field that a spreadsheet might take for a formula begins with an apostrophe.\n\n"
        "Examples:\n"
        "  brackwell csv *.ofx --output year.csv\n"
        "  brackwell csv --account 5678 --account 2290 --since 2024-07-01 *.ofx\n"
        "  brackwell csv --kind positions *.ofx --output holdings.csv\n"
        "  brackwell csv --decimal-separator , --grouping-separator . juli.ofx\n"},
    ReadingCommand{
        "report", "A page for the browser: balances, plots and a table to search in",
        kSeveralFiles | kFilter | kNumbers,
        "The page stands alone: it loads nothing, and can be kept, sent or printed. An account that\n"
        "stands in several files is shown once, and so are its transactions. Account numbers are\n"
        "masked but for their last four characters, unless --full is given. Without --sort the newest\n"
        "transactions come first.\n\n"
        "Examples:\n"
        "  brackwell report july.ofx --output july.html\n"
        "  brackwell report --since 2025-01-01 --until 2025-12-31 *.ofx --output 2025.html\n"},
    ReadingCommand{
        "accounts", "The accounts of all files, one row for each", kSeveralFiles | kNumbers,
        "An account that stands in several files is one row: with its latest balance, the number of\n"
        "its transactions without those that an earlier statement had already, and the days that\n"
        "its statements cover. Accounts are the same when number and currency are, and nothing else\n"
        "that both name differs. The balance of an investment account is what its positions are worth and\n"
        "the available cash, without margin: what was borrowed has to be subtracted. Where a position has\n"
        "no value there is none, and a line says so. The accounts of account lists follow in a table of\n"
        "their own.\n\n"
        "Examples:\n"
        "  brackwell accounts *.ofx\n"
        "  brackwell accounts --full july.ofx august.ofx\n"},
    ReadingCommand{
        "duplicates", "Transactions that stand in more than one statement", kSeveralFiles | kNumbers,
        "Statements of the same account are compared, also those of one file. Two transactions are the\n"
        "same when the amount is, no field differs that both have, and the identifier of the\n"
        "institution (FITID) is the same, or the date posted where one has none. Equal transactions\n"
        "of one statement are different ones. One is compared with 64 others of the same date and\n"
        "amount at most. The status does not say whether any was found.\n\n"
        "Examples:\n"
        "  brackwell duplicates july.ofx august.ofx\n"
        "  brackwell duplicates --full *.ofx\n"},
    ReadingCommand{
        "check", "What the documents hold and is not delivered, or not surely", kSeveralFiles | kNoOutput,
        "Findings go to standard error, a line each, as in every command; nothing else is written.\n"
        "With --strict the status is 3 when there is one.\n\n"
        "Examples:\n"
        "  brackwell check *.ofx\n"
        "  brackwell check --strict july.ofx && echo complete\n"},
    ReadingCommand{
        "tree", "The header and the parse tree, as JSON", kOriginal,
        "A document that does not parse is shown as far as it was understood, with status 1.\n"
        "--original adds TVOFX_ORIGINAL_STRING to each transaction: its text in the document. In a\n"
        "document whose transactions are not closed these overlap, and the output grows long.\n\n"
        "Examples:\n"
        "  brackwell tree july.ofx | jq .header\n"
        "  brackwell tree --encoding windows-1252 july.ofx\n"},
    ReadingCommand{
        "pretty", "The body, rendered again as indented OFX text", 0,
        "One element a line, closed and escaped, in the order of the document, in UTF-8. What is\n"
        "written reads back to the same tree. A line OFXHEADER:100 comes first where the body does\n"
        "not begin with <OFX>, since nothing would be read otherwise.\n\n"
        "Examples:\n"
        "  brackwell pretty july.ofx | less\n"
        "  diff <(brackwell pretty july.ofx) <(brackwell pretty july-again.ofx)\n"},
};

constexpr const char* kExamples =
    "Examples:\n"
    "  brackwell show july.ofx\n"
    "  brackwell csv --output year.csv *.ofx\n"
    "  curl -s https://bank.example/statement | brackwell json -\n"
    "  brackwell request accounts --version 211 --since 20240101\n\n"
    "A file for --output is written under another name and renamed when it is whole: after an error, or "
    "when\n"
    "no document could be read, what was there before stays. Where some could be read, the output has "
    "those.\n"
    "It is readable by its owner only. An OFX document is replaced with --force only.\n\n"
    "Exit status: 0 when every file was read, 1 when one could not be read or something could not be\n"
    "written, 2 for wrong usage, 3 when --strict is given and there is a finding: something that the\n"
    "files hold and that is not delivered, or not surely. Findings go to standard error.\n"
    "\"brackwell COMMAND --help\" tells the options of a command.\n";

constexpr const char* kRepairExamples =
    "Puts missing, misspelt and crossed tags right, and elements where they belong; closes empty leaves,\n"
    "drops comments and unwraps character data; puts tags in lower case into capitals. Values stay as they\n"
    "are. What was changed is listed on standard error, what matters most first: with the line and column,\n"
    "why, and of changes that are alike the first with their number. A document that is read whole is\n"
    "copied as it is. The list does not show passwords, keys and cookies; the diff has the lines as they\n"
    "are.\n"
    "With --force the output may also take the place of FILE itself.\n\n"
    "Examples:\n"
    "  brackwell repair july.ofx --output july-fixed.ofx\n"
    "  brackwell repair july.ofx --output july.ofx --force\n"
    "  brackwell repair --diff july.ofx --output /dev/null\n";

constexpr const char* kRequestExamples =
    "The sign-on, the message set around it and the header are not part of the request.\n\n"
    "Examples:\n"
    "  brackwell request accounts\n"
    "  brackwell request profile --version 211 --since 20240101 --routing msgset\n";

std::map<std::string, TableKind> tableKinds() {
    return {{"bank", TableKind::bank},
            {"investments", TableKind::investments},
            {"positions", TableKind::positions},
            {"securities", TableKind::securities}};
}

/// The texts of the options, before they are understood.
struct Texts {
    std::string encoding = "auto";
    std::optional<std::string> datePattern;
    std::optional<std::string> decimalSeparator;
    std::optional<std::string> groupingSeparator;
    FilterTexts filter;
    std::string tableKind = "bank";
    std::string requestKind;
    std::string requestRouting = "none";
    bool isAsIs = false;
};

// ---------------------------------------------------------------------------------------------
// Checks; each returns what is wrong with a text, "" for nothing

std::string checkEncoding(const std::string& name) {
    if (CLI::detail::to_lower(name) == "auto") return {};
    if (brackwell::textEncodingNamed(name) != brackwell::TextEncodingNone) return {};
    std::string problem = "unknown encoding \"" + name + "\"; known are auto";
    for (const brackwell::TextEncoding encoding : brackwell::knownTextEncodings())
        problem.append(", ").append(*brackwell::nameOfTextEncoding(encoding));
    return problem;
}

std::string checkCharacter(const std::string& text) {
    const bool isOne = !text.empty() && firstCharacter(text).size == text.size();
    return isOne ? std::string() : "not a single character: \"" + text + "\"";
}

std::string checkVersion(const std::string& text) {
    const bool isNumber = std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
    return isNumber ? std::string() : "not a version: \"" + text + "\"";
}

std::string checkOutputName(const std::string& name) { return name.empty() ? "the name is empty" : ""; }

std::string checkPattern(const std::string& text) { return text.empty() ? "the pattern is empty" : ""; }

// ---------------------------------------------------------------------------------------------
// Declaration

/// What every command takes.
void declareOutput(CLI::App& sub, Options& options) {
    sub.add_option("-o,--output", options.outputFile, "Write to this file instead of standard output")
        ->type_name("FILE")
        ->check(CLI::Validator(checkOutputName, ""));
    sub.add_flag("--force", options.replacesDocuments, "Let --output replace an OFX document");
}

/// What every command takes that says findings.
void declareFindings(CLI::App& sub, Options& options) {
    sub.add_flag("-q,--quiet", options.isQuiet, "Say nothing of what is not delivered, or not surely");
    sub.add_flag("--strict", options.isStrict, "End with status 3 when there is anything to say");
}

/// What every command takes that reads files.
void declareFiles(CLI::App* sub, unsigned traits, Options& options, Texts& texts) {
    auto* files = sub->add_option("FILE", options.files, "A document; - is standard input")->required();
    files->type_name("");
    files->expected(1, (traits & kSeveralFiles) != 0 ? CLI::detail::expected_max_vector_size : 1);
    sub->add_option("--encoding", texts.encoding, "The text encoding, instead of finding it out")
        ->type_name("NAME")
        ->check(CLI::Validator(checkEncoding, ""));
    if ((traits & kNoOutput) == 0) declareOutput(*sub, options);
    declareFindings(*sub, options);
}

void declareTable(CLI::App& sub, Options& options, Texts& texts) {
    sub.add_option("--kind", texts.tableKind, "The rows: bank, investments, positions or securities")
        ->type_name("KIND")
        ->check(CLI::IsMember({"bank", "investments", "positions", "securities"}).description(""));
    sub.add_flag("--currencies", options.hasCurrencies,
                 "Add columns for amounts in another currency to a table of bank transactions");
}

void declareReading(CLI::App& app, const ReadingCommand& command, Options& options, Texts& texts) {
    CLI::App* sub = app.add_subcommand(command.name, command.summary);
    declareFiles(sub, command.traits, options, texts);
    sub->add_option("--date-format", texts.datePattern, "Try this pattern on dates first (\"dd.MM.yyyy\")")
        ->type_name("PATTERN")
        ->check(CLI::Validator(checkPattern, ""));
    sub->add_option("--decimal-separator", texts.decimalSeparator,
                    "Read amounts with this decimal point first")
        ->type_name("CHAR")
        ->check(CLI::Validator(checkCharacter, ""));
    sub->add_option("--grouping-separator", texts.groupingSeparator, "The mark between thousands in amounts")
        ->type_name("CHAR")
        ->check(CLI::Validator(checkCharacter, ""));
    sub->add_flag("--as-is", texts.isAsIs,
                  "Neither repair a document nor read amounts and dates as it writes them");
    if ((command.traits & kNumbers) != 0)
        sub->add_flag("--full", options.showsFullNumbers, "Show account numbers in full");
    if ((command.traits & kOriginal) != 0)
        sub->add_flag("--original", options.showsOriginals, "Write the source text of each transaction, too");
    if ((command.traits & kIndent) != 0)
        sub->add_flag("--indent", options.isIndented, "Write over several lines, for people to read");
    if ((command.traits & kTable) != 0) declareTable(*sub, options, texts);
    const bool hasFilter = (command.traits & kFilter) != 0;
    if (hasFilter) declareFilter(*sub, texts.filter);
    sub->footer(hasFilter ? std::string(kFilterHelp) + command.examples : command.examples);
}

void declareRepair(CLI::App& app, Options& options, Texts& texts) {
    CLI::App* sub = app.add_subcommand("repair", "A document with its close tags put right");
    declareFiles(sub, 0, options, texts);
    CLI::Option* diff =
        sub->add_flag("--diff", options.asDiff, "Show what was changed as a diff instead of a list");
    sub->add_flag("--all", options.listsEveryChange,
                  "List every change by itself, in the order of the document")
        ->excludes(diff);
    sub->footer(kRepairExamples);
}

void declareRequest(CLI::App& app, Options& options, Texts& texts) {
    CLI::App* sub = app.add_subcommand("request", "A request as OFX text");
    sub->add_option("KIND", texts.requestKind, "accounts or profile")
        ->required()
        ->type_name("")
        ->check(CLI::Validator(CLI::IsMember({"accounts", "profile"})).description(""));
    sub->add_option("--version", options.request.version, "The OFX version, such as 102 (the default) or 211")
        ->type_name("N")
        ->check(CLI::Validator(checkVersion, ""));
    sub->add_option("--since", options.request.since,
                    "Only what changed since; an OFX date, 19900101 by default")
        ->type_name("DATE");
    sub->add_option("--routing", texts.requestRouting,
                    "For a profile: what the client can be routed by: none, service or msgset")
        ->type_name("HOW")
        ->check(CLI::Validator(CLI::IsMember({"none", "service", "msgset"})).description(""));
    declareOutput(*sub, options);
    sub->footer(kRequestExamples);
}

// An argument like "[a,b]" would be taken for a list of "a" and "b". So it goes to the parser with a byte at
// its end that no argument can have, and every option takes that away.

constexpr char kNoArgumentHas = '\0';

/// The arguments behind the program's name, the last first as the parser wants them.
std::vector<std::string> markedArguments(int count, const char* const* arguments) {
    std::vector<std::string> marked(arguments + 1, arguments + std::max(count, 1));
    for (std::string& argument : marked)
        if (argument.starts_with('[') && argument.ends_with(']')) argument += kNoArgumentHas;
    std::ranges::reverse(marked);
    return marked;
}

std::string unmark(std::string& text) {
    if (text.ends_with(kNoArgumentHas)) text.pop_back();
    return {};
}

void declareUnmarking(CLI::App& app) {
    for (CLI::App* sub : app.get_subcommands({}))
        for (CLI::Option* option : sub->get_options())
            if (option->get_items_expected_max() > 0) option->transform(CLI::Validator(unmark, ""));
}

void declare(CLI::App& app, Options& options, Texts& texts) {
    app.require_subcommand(1);
    app.footer(kExamples);
    app.set_version_flag("--version", "brackwell " BRACKWELL_VERSION, "Print the version and exit");
    app.get_formatter()->column_width(32);
    for (const ReadingCommand& command : kReadingCommands) declareReading(app, command, options, texts);
    declareRepair(app, options, texts);
    declareRequest(app, options, texts);
    declareUnmarking(app);
}

// ---------------------------------------------------------------------------------------------
// Understanding

/// The separators of a caller's number formatter: one that is given moves the other out of its way.
brackwell::NumberFormat numberFormat(const Texts& texts) {
    brackwell::NumberFormat format;
    if (texts.decimalSeparator) format.decimalSeparator = *texts.decimalSeparator;
    if (texts.groupingSeparator) format.groupingSeparator = *texts.groupingSeparator;
    if (format.decimalSeparator != format.groupingSeparator) return format;
    if (texts.decimalSeparator && texts.groupingSeparator)
        throw CLI::ValidationError("--grouping-separator", "is the same as --decimal-separator");
    if (texts.decimalSeparator)
        format.groupingSeparator = ".";
    else
        format.decimalSeparator = ",";
    return format;
}

void checkOutput(const Options& options) {
    if (!options.outputFile) return;
    // Only a repair writes all that it has read, so only that may take its place.
    const OutputRules rules{options.replacesDocuments, options.command == "repair"};
    const std::string objection = objectionTo(*options.outputFile, options.files, rules);
    if (!objection.empty()) throw CLI::ValidationError("--output", *options.outputFile + " " + objection);
}

void checkFiles(const Options& options) {
    if (std::ranges::count(options.files, "-") > 1)
        throw CLI::ValidationError("FILE", "standard input can be read only once");
}

void understand(CLI::App& app, Options& options, const Texts& texts) {
    const CLI::App* sub = app.get_subcommands().front();
    options.command = sub->get_name();
    brackwell::OpenOptions& reading = options.reading;
    if (texts.isAsIs) reading = brackwell::OpenOptions::asIs();
    reading.encoding = brackwell::textEncodingNamed(texts.encoding);  // none for "auto"
    if (texts.decimalSeparator || texts.groupingSeparator)
        reading.numberFormatter = std::make_shared<brackwell::DecimalNumberFormatter>(numberFormat(texts));
    if (texts.datePattern)
        reading.dateFormatter = std::make_shared<brackwell::PatternDateFormatter>(*texts.datePattern);
    options.filter = understoodFilter(texts.filter);
    options.table = tableKinds().at(texts.tableKind);
    options.request.isProfile = texts.requestKind == "profile";
    const std::map<std::string_view, std::int32_t> routings{{"none", 0}, {"service", 1}, {"msgset", 2}};
    options.request.routing = routings.at(texts.requestRouting);
    checkFiles(options);
    checkOutput(options);
}

}  // namespace

CommandLine readCommandLine(int count, const char* const* arguments) {
    CommandLine line;
    Texts texts;
    CLI::App app("Reads Open Financial Exchange (OFX) documents.", "brackwell");
    declare(app, line.options, texts);
    try {
        std::vector<std::string> marked = markedArguments(count, arguments);
        app.parse(marked);
        understand(app, line.options, texts);
    } catch (const CLI::ParseError& outcome) {
        std::ostringstream text;
        std::ostringstream error;
        line.exitStatus = app.exit(outcome, text, error) == 0 ? 0 : 2;
        line.text = text.str();
        line.error = error.str();
        if (outcome.get_name() == "ArgumentMismatch" && line.error.starts_with("FILE:"))
            line.error =
                "FILE: this command takes a single document\nRun with --help for more information.\n";
        if (*line.exitStatus != 0 && count > 1 && arguments[1][0] != '-' && app.get_subcommands().empty())
            line.error = "unknown command \"" + std::string(arguments[1]) +
                         "\"\nRun with --help for a list of the commands.\n";
        std::erase(line.error, kNoArgumentHas);
    }
    return line;
}

}  // namespace tool
