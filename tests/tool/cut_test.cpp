// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>

#include "support/documents.h"
#include "tool/commands.h"
#include "tool/tool.h"

/// \file
/// Documents that end early: wherever a file of the examples is cut, every command ends in an error, or says
/// that something may be missing.

using namespace brackwell::tests;

namespace {

constexpr std::size_t kStep = 37;

/// A tag as it stands in a document: in UTF-16, each character takes two bytes.
std::string tagIn(const std::string& document, const std::string& tag) {
    if (!document.starts_with("\xFF\xFE")) return tag;
    std::string wide;
    for (const char c : tag) wide.append({c, '\0'});
    return wide;
}

/// The document cut off at every 37th byte of its body.
std::vector<std::string> cutsOf(const std::string& document) {
    const std::string open = tagIn(document, "<OFX>");
    const std::size_t begin = document.find(open);
    const std::size_t end = document.rfind(tagIn(document, "</OFX>"));
    REQUIRE(begin != document.npos);
    REQUIRE(end != document.npos);
    std::vector<std::string> cuts;
    for (std::size_t size = begin + open.size(); size <= end; size += kStep)
        cuts.push_back(document.substr(0, size));
    return cuts;
}

std::vector<std::string> examples() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(BRACKWELL_EXAMPLES_DIR))
        if (entry.path().extension() == ".ofx") names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

/// What a command says of files: in one run where it takes several.
std::string errorsOf(const std::string& command, std::vector<std::string> files) {
    if (takesSeveralFiles(command)) {
        files.insert(files.begin(), command);
        return tool(files).error;
    }
    std::string errors;
    for (const std::string& file : files) errors += tool({command, file}).error;
    return errors;
}

/// True when more is said of a file than how it was read.
bool isSaid(const std::vector<std::string>& messages, const std::string& file) {
    return std::ranges::any_of(messages, [&file](const std::string& message) {
        if (!message.starts_with(file + ":")) return false;
        return !contains(message, " text encoding") && !contains(message, ": Repaired in ");
    });
}

void checkCuts(const std::string& command) {
    for (const std::string& name : examples()) {
        CAPTURE(name);
        const std::string document(exampleData(name).bytes());
        const TemporaryFolder folder;
        std::vector<std::string> files;
        for (const std::string& cut : cutsOf(document))
            files.push_back(folder.file(std::to_string(cut.size()), cut));
        REQUIRE(files.size() > 8);
        const std::string errors = errorsOf(command, files);
        // Nothing here is read as it is.
        CHECK_FALSE(contains(errors, "Without --as-is"));
        const std::vector<std::string> messages = linesOf(errors);
        for (const std::string& file : files) CHECK_MESSAGE(isSaid(messages, file), file);
    }
}

}  // namespace

TEST_CASE("show tells of every cut of an example") { checkCuts("show"); }
TEST_CASE("json tells of every cut of an example") { checkCuts("json"); }
TEST_CASE("csv tells of every cut of an example") { checkCuts("csv"); }
TEST_CASE("report tells of every cut of an example") { checkCuts("report"); }
TEST_CASE("accounts tells of every cut of an example") { checkCuts("accounts"); }
TEST_CASE("duplicates tells of every cut of an example") { checkCuts("duplicates"); }
TEST_CASE("tree tells of every cut of an example") { checkCuts("tree"); }
TEST_CASE("pretty tells of every cut of an example") { checkCuts("pretty"); }
TEST_CASE("repair tells of every cut of an example") { checkCuts("repair"); }
TEST_CASE("check tells of every cut of an example") { checkCuts("check"); }
