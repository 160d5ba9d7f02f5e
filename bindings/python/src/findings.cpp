// SPDX-License-Identifier: Apache-2.0
#include <brackwell/open.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "document.h"
#include "enumeration.h"
#include "list.h"
#include "record.h"

/// \file
/// What a document holds that is not delivered, what was repaired, and why something was not read.

namespace brackwell::python {
namespace {

/// A line, column or offset; absent where there is no one place.
std::optional<std::uint64_t> place(std::size_t number) {
    return number != 0 ? std::optional<std::uint64_t>(number) : std::nullopt;
}

std::vector<std::string> namesOf(const std::vector<TextEncoding>& encodings) {
    std::vector<std::string> names;
    for (const TextEncoding encoding : encodings)
        if (const OptionalText name = nameOfTextEncoding(encoding)) names.emplace_back(*name);
    return names;
}

}  // namespace

template <>
const std::vector<Field<Finding>>& fieldsOf<Finding>() {
    using It = Finding;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("kind", &It::kind, "What it is about."),
        field<It>("severity", &It::severity, "How much it matters."),
        field<It>(
            "line", [](const It& object) { return place(object.line); },
            "The line of the first place, counted from 1; None when there is no one place."),
        field<It>(
            "column", [](const It& object) { return place(object.column); },
            "The column, in characters from 1."),
        field<It>("count", &It::count, "How many things it stands for."),
        field<It>("text", &It::text, "A sentence for a person."),
    };
    return *fields;
}

template <>
const std::vector<Field<RepairChange>>& fieldsOf<RepairChange>() {
    using It = RepairChange;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("kind", &It::kind, "What was wrong."),
        field<It>("line", &It::line, "Counted from 1."),
        field<It>("column", &It::column, "In characters from 1."),
        field<It>("was", &It::was, "What stood there; empty where something was put in."),
        field<It>("now", &It::now, "What stands there now; empty where something was dropped."),
        field<It>("reason", &It::reason, "Why; empty where the kind says it all."),
    };
    return *fields;
}

template <>
const std::vector<Field<OpenError>>& fieldsOf<OpenError>() {
    using It = OpenError;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("code", &It::code, "What went wrong."),
        field<It>("text", &It::text, "What happened, for a person."),
        field<It>("cause", &It::cause, "The likely cause; may be empty."),
        field<It>("remedy", &It::remedy, "What to do."),
        field<It>(
            "line", [](const It& object) { return place(object.line); },
            "Where reading ended, counted from 1; None when there is no place."),
        field<It>(
            "column", [](const It& object) { return place(object.column); }, "In characters from 1."),
        field<It>(
            "offset",
            [](const It& object) {
                return object.line != 0 ? std::optional<std::uint64_t>(object.offset) : std::nullopt;
            },
            "The place in the bytes of the text."),
        field<It>("isRepairable", &It::isRepairable, "True when a repair was not allowed and would read it."),
        field<It>(
            "readingEncodings", [](const It& object) { return namesOf(object.readingEncodings); },
            "The encodings in which the bytes are a document, when they are none in the one that was tried."),
        field<It>("description", &It::description, "Text, cause and remedy in one.").with(Use::derived),
    };
    return *fields;
}

List<Finding> findingsOf(const std::shared_ptr<Document>& document) {
    return listOfDocument<Finding>(
        document, "findings", document->file.findings().size(),
        [document](std::size_t, std::size_t index) { return document->file.findings()[index]; });
}

void bindFindings(nb::module_& module) {
    bindEnumeration<FindingKind>(module, "What a finding is about.");
    bindEnumeration<FindingSeverity>(module, "How much a finding matters.");
    bindEnumeration<OpenErrorCode>(module, "Why a file or a document was not read.");
    bindEnumeration<RepairKind>(module, "What was wrong with a text that was repaired.");
    bindValue<Finding>(module, "What a document holds that is not delivered, or not surely.");
    bindValue<RepairChange>(module, "What was changed so that a document could be read.");
    bindValue<OpenError>(module, "Why a file or a document was not read.");
    bindList<Finding>(module, "Findings, by document and then by severity.");
}

}  // namespace brackwell::python
