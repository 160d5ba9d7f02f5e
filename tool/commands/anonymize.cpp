// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include <brackwell/anonymize.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "console/document_output.h"
#include "console/messages.h"
#include "console/output_target.h"
#include "input/run.h"

namespace tool {
namespace {

// ---------------------------------------------------------------------------------------------
// What is said of the result

/// How much a file holds, which its anonymous form must hold as well.
struct Shape {
    explicit Shape(const brackwell::OpenedFile& file)
        : isRead(file),
          error(file.error().code),
          documents(file.documents().size()),
          statements(file.statements().size()),
          investmentStatements(file.investmentStatements().size()),
          securities(file.securities().all().size()) {
        for (const auto& statement : file.statements())
            transactions += statement->statementTransactions().size();
        for (const auto& statement : file.investmentStatements())
            transactions += statement.transactions().size();
    }
    bool operator==(const Shape&) const = default;

    bool isRead;
    brackwell::OpenErrorCode error;
    std::size_t documents;
    std::size_t statements;
    std::size_t transactions = 0;
    std::size_t investmentStatements;
    std::size_t securities;
};

/// How many findings of each kind a file has.
using FindingCounts = std::array<std::size_t, 32>;
static_assert(static_cast<std::size_t>(brackwell::FindingKind::repaired) < FindingCounts().size());

FindingCounts findingsOf(const brackwell::OpenedFile& file) {
    FindingCounts counts{};
    for (const brackwell::Finding& finding : file.findings())
        counts[static_cast<std::size_t>(finding.kind)] += finding.count;
    return counts;
}

/// "unreadableValue (3 instead of 0)", for each kind of findings that the two files differ in.
std::string differenceOf(const FindingCounts& before, const FindingCounts& after) {
    std::string kinds;
    for (std::size_t i = 0; i != before.size(); ++i)
        if (before[i] != after[i])
            kinds.append(kinds.empty() ? "" : ", ")
                .append(nameOf(static_cast<brackwell::FindingKind>(i)))
                .append(" (" + std::to_string(after[i]) + " instead of " + std::to_string(before[i]) + ")");
    return kinds;
}

/// What the anonymous form is held against, so that the file need not be kept beside it.
struct Expected {
    explicit Expected(const brackwell::OpenedFile& file) : shape(file), findings(findingsOf(file)) {}

    Shape shape;
    FindingCounts findings;
};

/// What somebody has to know who gives the document away.
void sayResult(const Run& run, const std::string& name, const Expected& expected,
               const brackwell::AnonymizedDocument& document) {
    if (run.options.isQuiet) return;
    std::string unknown;
    for (const brackwell::UnknownElements& element : document.unknown)
        unknown.append(unknown.empty() ? "" : ", ").append("<" + element.name + ">");
    if (!unknown.empty())
        say(name, "The OFX standard does not have these elements, whose names stay: " + unknown + ".");

    if (document.unmovedDates != 0)
        say(name, "These dates are not moved, since their form or their place in time does not allow it: " +
                      std::to_string(document.unmovedDates) + ".");

    const brackwell::OpenedFile after = brackwell::openData(document.bytes, run.options.reading);
    if (Shape(after) != expected.shape)
        say(name, "The anonymous form does not hold as much as the file does. Please report that.");
    const FindingCounts findings = findingsOf(after);
    constexpr auto totals = static_cast<std::size_t>(brackwell::FindingKind::doesNotAddUp);
    if (const std::string kinds = differenceOf(expected.findings, findings); !kinds.empty())
        say(name, "The anonymous form has other findings: " + kinds + "." +
                      (findings[totals] > expected.findings[totals]
                           ? " Each amount is replaced by itself, so totals of investments do not add up."
                           : ""));
}

// ---------------------------------------------------------------------------------------------
// Where the result goes

/// The file's own name may say who.
std::string nameInFolder(const std::string& folder, const std::string& name, std::size_t number) {
    std::string ending = std::filesystem::path(name).extension().string();
    std::ranges::transform(ending, ending.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c; });
    if (ending != ".qfx" && ending != ".qbo") ending = ".ofx";
    return (std::filesystem::path(folder) / ("anonymous-" + std::to_string(number) + ending)).string();
}

/// Says which file became which, as the new name does not.
bool writeToFolder(Run& run, const std::string& source, const std::string& name, std::string_view bytes) {
    Output output(name, run.options.replacesDocuments, run.progress);
    output.write(bytes);
    output.keep();
    if (!output.close()) return false;
    if (!run.options.isQuiet) sayText(source + " -> " + name + "\n");
    return true;
}

bool makeFolder(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) say(folder, error.message() + ".");
    return !error;
}

// ---------------------------------------------------------------------------------------------
// The command

/// Makes the anonymous form of a file and says what is to be said of it; nothing for a file without bytes.
std::optional<brackwell::AnonymizedDocument> anonymized(Run& run, const brackwell::Anonymizer& anonymizer,
                                                        const InputSource& source) {
    std::optional<InputFile> input = readFile(run, source);
    const Expected expected(input->file);
    const auto& documents = input->file.documents();
    const auto encoding = documents.empty() ? brackwell::TextEncodingNone : documents.front().encoding();
    std::optional<brackwell::Data> bytes = input->file.bytes();
    input.reset();  // what was read takes several times the memory of the bytes
    if (bytes->isEmpty()) return std::nullopt;
    brackwell::AnonymizedDocument document = anonymizer.anonymize(*bytes, encoding);
    bytes.reset();
    sayResult(run, source.name, expected, document);
    return document;
}

/// A file that does not read is the one that somebody asks for, so nothing but its bytes is needed.
bool runAnonymize(Run& run) {
    const AnonymizeRequest& request = run.options.anonymize;
    if (request.folder && !makeFolder(*request.folder)) return false;
    const brackwell::Anonymizer anonymizer(request.what);
    bool areAllWritten = true;
    std::size_t number = 0;
    for (const InputSource& source : run.options.named.files) {
        ++number;
        const bool isWritten = withEnoughMemory(run, source.name, [&] {
            const auto document = anonymized(run, anonymizer, source);
            if (!document) return false;
            if (request.folder)
                return writeToFolder(run, source.name, nameInFolder(*request.folder, source.name, number),
                                     document->bytes.bytes());
            writeDocument(run.output, document->bytes.bytes());
            run.output.keep();
            return true;
        });
        areAllWritten = areAllWritten && isWritten;
        if (!run.output.isGood()) break;
    }
    return areAllWritten;
}

/// Asks about every name before the first is written, since a file of that name may be read after it.
void checkFolder(const Options& options) {
    const InputFiles inputs(inputFilesOf(options));
    const OutputRules rules{.replacesDocuments = options.replacesDocuments, .choice = "folder"};
    std::size_t number = 0;
    for (const InputSource& file : options.named.files) {
        const std::string name = nameInFolder(*options.anonymize.folder, file.name, ++number);
        const std::string objection = objectionTo(name, inputs, rules);
        if (!objection.empty())
            throw CLI::ValidationError("--into", std::string(name).append(" ").append(objection));
    }
}

void checkTargets(const Options& options) {
    const bool hasFolder = options.anonymize.folder.has_value();
    if (hasFolder && options.outputFile) throw CLI::ValidationError("--into", "excludes --output");
    if (options.named.files.size() > 1 && !hasFolder)
        throw CLI::ValidationError("FILE", "several files need --into FOLDER");
    if (hasFolder) checkFolder(options);
}

/// The number of days that a text stands for, if dates can be moved by so many.
std::optional<std::int32_t> daysOf(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    std::int32_t days = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), days);
    constexpr std::int32_t most = brackwell::AnonymizeOptions::mostDays;
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber && days >= -most && days <= most ? std::optional(days) : std::nullopt;
}

std::string checkDays(const std::string& text) {
    const std::string most = std::to_string(brackwell::AnonymizeOptions::mostDays);
    if (daysOf(text)) return {};
    return "not a number of days from -" + most + " to " + most + ", such as -41: \"" + text + "\"";
}

void declareAnonymizeOptions(CLI::App& command, Options& options) {
    AnonymizeRequest& request = options.anonymize;
    command
        .add_option("--into", request.folder,
                    "Write a file for each FILE into this folder: anonymous-1.ofx and so on")
        ->type_name("FOLDER");
    command.add_flag("--institution", request.what.institution,
                     "Replace what names the institution, too: names, identifiers, web addresses");
    command
        .add_option_function<std::string>(
            "--shift-days", [&request](const std::string& days) { request.what.shiftDays = *daysOf(days); },
            "Move all dates by so many days; may be negative")
        ->type_name("DAYS")
        ->check(CLI::Validator(checkDays, ""));
}

constexpr const char* kAnonymizeHelp =
    "The same bytes, mistakes included, but for the values that say who somebody is, or how much they\n"
    "have: names, memos, account numbers, identifiers, amounts, balances, keys, addresses, comments. A\n"
    "letter becomes a letter and a digit a digit. The same word becomes the same word in all files of one\n"
    "call; amounts keep sign, marks and places. Codes and dates stay, and so does the institution, unless\n"
    "you say otherwise. Totals are not true afterwards. A file that cannot be read is taken as well.\n"
    "Look at the result before you give it away.\n\n"
    "Examples:\n"
    "  brackwell anonymize july.ofx --output for-the-report.ofx\n"
    "  brackwell anonymize Downloads --into for-the-report --shift-days -41\n";

}  // namespace

constexpr Command commands::kAnonymize({
    .name = "anonymize",
    .summary = "The document without what says who, to give away",
    .traits = kSeveralFiles | kOutput,
    .help = kAnonymizeHelp,
    .run = runAnonymize,
    .declareOptions = declareAnonymizeOptions,
    .check = checkTargets,
});

}  // namespace tool
