// SPDX-License-Identifier: Apache-2.0
#include "tool/accounting.h"

#include <brackwell/platform.h>

#include <algorithm>
#include <sstream>

namespace brackwell::tests {
namespace {

const std::map<std::string, std::string> kPrograms = {
    {"hledger", BRACKWELL_HLEDGER}, {"ledger", BRACKWELL_LEDGER}, {"beancount", BRACKWELL_BEAN_CHECK}};

Finished runOn(const std::string& journal, const std::string& name, std::vector<std::string> arguments) {
    const TemporaryFolder folder;
    folder.file(name, journal);
    Command command{std::move(arguments)};
    command.directory = folder.path();
    // hledger takes the encoding of the locale; the home is where the programs look for settings.
    command.environment = {{"LANG", "C.UTF-8"}, {"HOME", folder.path()}, {"PYTHONUTF8", "1"}};
    return run(command);
}

std::vector<std::string> fieldsOf(std::string line, char delimiter) {
    std::erase(line, '"');
    std::erase(line, '\r');
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, delimiter);) {
        while (field.starts_with(' ')) field.erase(0, 1);
        while (field.ends_with(' ')) field.pop_back();
        fields.push_back(field);
    }
    return fields;
}

/// How to ask a program for lines of account, commodity and number.
struct Question {
    std::vector<std::string> arguments;
    char delimiter;
    std::size_t account, commodity, number;
};

Question questionFor(const std::string& format) {
    if (format == "hledger")
        return {{kPrograms.at(format), "-f", "journal", "bal", "--flat", "--no-total", "--empty", "-O", "csv",
                 "--layout", "bare", "-c", "1.00000000 USD", "-c", "1.00000000 EUR"},
                ',',
                0,
                1,
                2};
    if (format == "ledger")
        return {{kPrograms.at(format), "--args-only", "-f", "journal", "reg", "--no-rounding", "--format",
                 "%(account)\t%(commodity(scrub(display_amount)))\t%(quantity(scrub(display_amount)))\n"},
                '\t',
                0,
                1,
                2};
    return {{BRACKWELL_BEAN_QUERY, "-f", "csv", "journal",
             "select account, currency, sum(number) group by account, currency"},
            ',',
            0,
            1,
            2};
}

}  // namespace

bool hasBookProgram(const std::string& format) {
    if (!kPrograms.at(format).empty()) return true;
    MESSAGE("skipped: no program for ", format, " is installed here");
    return false;
}

std::string complaintsAbout(const std::string& format, const std::string& journal) {
    const std::string& program = kPrograms.at(format);
    Finished finished;
    if (format == "hledger")
        finished = runOn(journal, "journal", {program, "-f", "journal", "check", "--strict"});
    else if (format == "ledger")
        finished = runOn(journal, "journal", {program, "--args-only", "-f", "journal", "bal"});
    else
        finished = runOn(journal, "journal", {program, "--no-cache", "journal"});
    return finished.status == 0 ? finished.error : "failed: " + finished.error + finished.output;
}

BookTotals totalsOf(const std::string& format, const std::string& journal) {
    const Question question = questionFor(format);
    const Finished finished = runOn(journal, "journal", question.arguments);
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    BookTotals totals;
    for (const std::string& line : linesOf(finished.output)) {
        const std::vector<std::string> fields = fieldsOf(line, question.delimiter);
        if (fields.size() < 3) continue;
        const auto number = Decimal::fromString(fields[question.number]);
        if (!number) continue;
        Decimal& total = totals[{fields[question.account], fields[question.commodity]}];
        total = total.plus(*number).value_or(Decimal());
    }
    std::erase_if(totals, [](const auto& each) { return each.second.isZero(); });
    return totals;
}

std::string journalOf(const std::string& format, const std::vector<std::string>& arguments) {
    std::vector<std::string> all{"convert", "--quiet", "--to", format};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const Finished finished = tool(all);
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    return finished.output;
}

std::string journalOfDocument(const std::string& format, const std::string& document,
                              const std::vector<std::string>& options) {
    const TemporaryFolder folder;
    std::vector<std::string> arguments = options;
    arguments.push_back(folder.file("document.ofx", document));
    return journalOf(format, arguments);
}

std::size_t countOf(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + part.size())) ++count;
    return count;
}

std::vector<std::string> entryWith(const std::string& journal, const std::string& text) {
    std::vector<std::string> entry;
    bool isIt = false;
    for (const std::string& line : linesOf(journal + "\n\n")) {
        if (line.empty() && isIt) return entry;
        if (line.empty()) entry.clear();
        if (!line.empty()) entry.push_back(line);
        isIt = isIt || contains(line, text);
        if (line.empty()) isIt = false;
    }
    return {};
}

}  // namespace brackwell::tests
