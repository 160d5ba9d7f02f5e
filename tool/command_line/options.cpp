// SPDX-License-Identifier: Apache-2.0
#include "command_line/options.h"

#include <brackwell/version.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <sstream>
#include <system_error>
#include <utility>

#include "command_line/filter_options.h"
#include "command_line/unknown_word.h"
#include "command_line/wrapped_help.h"
#include "commands/commands.h"
#include "console/document_file.h"
#include "console/output_target.h"
#include "text/characters.h"

namespace tool {
namespace {

constexpr const char* kExamples =
    "Examples:\n"
    "  brackwell show july.ofx             (also without \"show\")\n"
    "  brackwell report Downloads --output report.html\n"
    "  brackwell csv --output year.csv *.ofx\n"
    "  curl -s https://bank.example/statement | brackwell json -\n"
    "  brackwell request accounts --version 211 --since 2024-01-01\n\n"
    "A file for --output is written under another name and renamed when it is complete: after an error,\n"
    "or when no document could be read, the old file stays. When some could be read, the output has those.\n"
    "Only its owner can read it. An OFX document is replaced only with --force.\n\n"
    "Exit status: 0 when every file was read, 1 when one could not be read or something could not be\n"
    "written, 2 for wrong usage, 3 when --strict is given and there is a finding: something that the\n"
    "files hold but the output lacks, or may have wrong. Findings go to standard error.\n"
    "\"brackwell COMMAND --help\" lists the options of a command.\n";

/// For who starts the program to see what it is.
constexpr const char* kFirstSteps =
    "brackwell reads Open Financial Exchange (OFX) documents: what banks offer as a\n"
    "download for money programs. Try one of these with a file or folder of yours:\n"
    "  brackwell show july.ofx\n"
    "  brackwell report Downloads --output report.html\n\n";

/// The texts of the options, before they are understood.
struct Texts {
    std::string encoding = "auto";
    std::optional<std::string> datePattern;
    std::optional<std::string> decimalSeparator;
    std::optional<std::string> groupingSeparator;
    FilterTexts filter;
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

std::string checkOutputName(const std::string& name) { return name.empty() ? "the name is empty" : ""; }

std::string checkPattern(const std::string& text) { return text.empty() ? "the pattern is empty" : ""; }

// ---------------------------------------------------------------------------------------------
// Declaration

/// What every command takes that writes something.
void declareOutput(CLI::App& sub, Options& options) {
    sub.add_option("-o,--output", options.outputFile, "Write to this file instead of standard output")
        ->type_name("FILE")
        ->check(CLI::Validator(checkOutputName, ""));
    sub.add_flag("--force", options.replacesDocuments, "Let --output replace an OFX document");
}

/// What every command takes that reads files, and so has findings.
void declareFindings(CLI::App& sub, Options& options) {
    sub.add_flag("-q,--quiet", options.isQuiet, "Print neither findings nor progress");
    sub.add_flag("--strict", options.isStrict, "Exit with status 3 when there is a finding");
}

/// The same, and so can choose its encoding.
void declareFiles(CLI::App& sub, const Command& command, Options& options, Texts& texts) {
    const bool isOne = command.has(kOneFile);
    auto* files =
        sub.add_option("FILE", options.fileNames,
                       isOne ? "A document, also one in a ZIP archive; - is standard input"
                             : "Documents, folders or ZIP archives of documents; - is standard input");
    files->required()->type_name("");
    files->expected(1, isOne ? 1 : CLI::detail::expected_max_vector_size);
    sub.add_option("--encoding", texts.encoding, "The text encoding; detected when not given")
        ->type_name("NAME")
        ->check(CLI::Validator(checkEncoding, ""));
}

/// What every command takes that shows amounts and dates.
void declareReading(CLI::App& sub, Texts& texts) {
    sub.add_option("--date-format", texts.datePattern, "Try this pattern on dates first (\"dd.MM.yyyy\")")
        ->type_name("PATTERN")
        ->check(CLI::Validator(checkPattern, ""));
    sub.add_option("--decimal-separator", texts.decimalSeparator,
                   "Read amounts with this decimal point first")
        ->type_name("CHAR")
        ->check(CLI::Validator(checkCharacter, ""));
    sub.add_option("--grouping-separator", texts.groupingSeparator, "The mark between thousands in amounts")
        ->type_name("CHAR")
        ->check(CLI::Validator(checkCharacter, ""));
    sub.add_flag("--as-is", texts.isAsIs, "No repair, and amounts and dates only in the prescribed formats");
}

const std::map<std::string, Colour>& colours() {
    static const std::map<std::string, Colour> kNames{
        {"auto", Colour::automatic}, {"always", Colour::always}, {"never", Colour::never}};
    return kNames;
}

/// What every command takes that writes for people.
void declarePage(CLI::App& sub, Options& options) {
    sub.add_option_function<std::string>(
           "--color", [&options](const std::string& when) { options.colour = colours().at(when); },
           "When to use colours: auto, always or never")
        ->type_name("WHEN")
        ->check(CLI::IsMember(colours()).description(""));
    sub.add_flag_callback(
        "--no-pager", [&options] { options.usesPager = false; }, "Write to a terminal without a pager");
}

void declareCommand(CLI::App& app, const Command& command, Options& options, Texts& texts) {
    CLI::App& sub = *app.add_subcommand(std::string(command.name), command.summary);
    sub.callback([&options, &command] { options.command = &command; });
    if (command.readsFiles()) declareFiles(sub, command, options, texts);
    if (command.has(kOutput)) declareOutput(sub, options);
    if (command.readsFiles()) declareFindings(sub, options);
    if (command.has(kReading)) declareReading(sub, texts);
    if (command.has(kNumbers))
        sub.add_flag("--full", options.showsFullNumbers, "Show account numbers in full");
    if (command.has(kPage)) declarePage(sub, options);
    if (command.declareOptions != nullptr) command.declareOptions(sub, options);
    if (command.has(kFilter)) declareFilter(sub, texts.filter);
    sub.footer(command.has(kFilter) ? std::string(kFilterHelp) + command.help : command.help);
}

// An argument like "[a,b]" would be taken for a list of "a" and "b". So it goes to the parser with a byte at
// its end that no argument can have, and every option takes that away.

constexpr char kNoArgumentHas = '\0';

/// The arguments, the last first as the parser wants them.
std::vector<std::string> markedArguments(std::vector<std::string> marked) {
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
    app.set_version_flag("--version", "brackwell " BRACKWELL_VERSION_STRING, "Print the version and exit");
    app.get_formatter()->column_width(kHelpColumn);
    for (const Command* command : commands::all()) declareCommand(app, *command, options, texts);
    declareUnmarking(app);
}

// ---------------------------------------------------------------------------------------------
// Files in places where the parser does not look for them

bool exists(const std::string& name) {
    std::error_code unknown;
    return std::filesystem::exists(name, unknown);
}

bool isCommand(const std::string& name) {
    return std::ranges::any_of(commands::all(),
                               [&](const Command* command) { return command->name == name; });
}

bool mayBeFile(const std::string& text) { return text == "-" || exists(text) || hasNameOfDocument(text); }

/// The arguments after the program's name. Where there are files, and no command, they are to be shown; an
/// option before them may have a value. "help" is understood, too.
std::vector<std::string> argumentsOf(int count, const char* const* arguments) {
    std::vector<std::string> texts(arguments + 1, arguments + std::max(count, 1));
    if (texts.empty()) return texts;
    if (texts.front() == "help" && !exists("help")) {
        texts.erase(texts.begin());
        texts.emplace_back("--help");
    }
    const bool isOptionFirst = texts.front().starts_with('-') && texts.front() != "-";
    const bool hasFile = isOptionFirst ? std::ranges::any_of(texts, mayBeFile) : mayBeFile(texts.front());
    const bool hasCommand = isOptionFirst ? std::ranges::any_of(texts, isCommand) : isCommand(texts.front());
    if (hasFile && !hasCommand) texts.emplace(texts.begin(), commands::kShow.name);
    return texts;
}

/// What to do about files whose names begin like options.
std::string adviceOnNames(const std::vector<std::string>& arguments) {
    std::string advice;
    for (const std::string& name : arguments) {
        if (name == "--") break;
        if (name.starts_with('-') && name != "-" && (exists(name) || hasNameOfDocument(name)))
            advice.append("\"")
                .append(name)
                .append("\" was taken for an option, since it begins with a hyphen; write \"./")
                .append(name)
                .append("\" for the file\n");
    }
    return advice;
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

/// An archive never gives way to what was made of one of its members.
void checkOutput(const Options& options) {
    if (!options.outputFile) return;
    const bool isArchiveRead = std::ranges::any_of(options.named.files, &InputSource::isInArchive);
    const OutputRules rules{options.replacesDocuments,
                            options.command->has(kMayReplaceItsFile) && !isArchiveRead};
    const std::string objection = objectionTo(*options.outputFile, inputFilesOf(options), rules);
    if (!objection.empty()) throw CLI::ValidationError("--output", *options.outputFile + " " + objection);
}

void checkFiles(const Options& options) {
    if (std::ranges::count(options.fileNames, "-") > 1)
        throw CLI::ValidationError("FILE", "standard input can be read only once");
}

void understand(Options& options, const Texts& texts) {
    brackwell::OpenOptions& reading = options.reading;
    if (texts.isAsIs) reading = brackwell::OpenOptions::asIs();
    reading.encoding = brackwell::textEncodingNamed(texts.encoding);  // none for "auto"
    if (texts.decimalSeparator || texts.groupingSeparator)
        reading.numberFormatter = std::make_shared<brackwell::DecimalNumberFormatter>(numberFormat(texts));
    if (texts.datePattern)
        reading.dateFormatter = std::make_shared<brackwell::PatternDateFormatter>(*texts.datePattern);
    options.filter = understoodFilter(texts.filter);
    checkFiles(options);
    options.named =
        namedFiles(options.fileNames, options.command->has(kSeveralFiles) ? FileCount::any : FileCount::one,
                   options.anonymize.folder.value_or(""));
    checkOutput(options);
    if (options.command->check != nullptr) options.command->check(options);
}

}  // namespace

std::vector<std::string> inputFilesOf(const Options& options) {
    std::vector<std::string> names = options.fileNames;
    for (const InputSource& file : options.named.files)
        if (names.empty() || names.back() != file.path()) names.push_back(file.path());
    return names;
}

CommandLine readCommandLine(int count, const char* const* arguments) {
    CommandLine line;
    Texts texts;
    CLI::App app("Reads Open Financial Exchange (OFX) documents.", "brackwell");
    declare(app, line.options, texts);
    const std::vector<std::string> given = argumentsOf(count, arguments);
    try {
        std::vector<std::string> marked = markedArguments(given);
        app.parse(marked);
        understand(line.options, texts);
    } catch (const CLI::ParseError& outcome) {
        std::ostringstream text;
        std::ostringstream error;
        line.exitStatus = app.exit(outcome, text, error) == 0 ? 0 : 2;
        line.text = text.str();
        line.error = error.str();
        if (outcome.get_name() == "ArgumentMismatch" && line.error.starts_with("FILE:"))
            line.error =
                "FILE: this command takes a single document\nRun with --help for more information.\n";
        // An error about further arguments goes by the name of the command.
        const auto code = static_cast<CLI::ExitCodes>(outcome.get_exit_code());
        const bool isIncomplete =
            code == CLI::ExitCodes::RequiredError || code == CLI::ExitCodes::ExtrasError;
        if (std::string unknown = isIncomplete ? unknownOptionIn(app) : ""; !unknown.empty())
            line.error = std::move(unknown);
        if (*line.exitStatus != 0 && !given.empty() && !given[0].starts_with('-') &&
            app.get_subcommands().empty())
            line.error = unknownCommand(app, given[0]);
        if (given.empty())
            line.error = std::string(kFirstSteps) + "Run with --help for a list of the commands.\n";
        std::erase(line.error, kNoArgumentHas);
        if (*line.exitStatus != 0) line.error.insert(0, adviceOnNames(given));
    }
    return line;
}

}  // namespace tool
