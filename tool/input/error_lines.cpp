// SPDX-License-Identifier: Apache-2.0
#include "input/error_lines.h"

#include <string_view>

#include "input/excerpt.h"

namespace tool {
namespace {

using brackwell::OpenError;
using brackwell::OpenErrorCode;

std::string shownPlace(std::string_view text, std::size_t offset) {
    const brackwell::TextPlace place = brackwell::placeInText(text, offset);
    return "line " + std::to_string(place.line) + ", column " + std::to_string(place.column);
}

/// The two tags that do not match, each with its lines.
std::string explainTags(const OpenError& error, std::string_view text, std::size_t width) {
    const ExcerptSource source{text, brackwell::secretsInOFXText(text), width};
    std::string lines;
    if (error.openedAt)
        lines += "  The innermost open element starts at " + shownPlace(text, *error.openedAt) + ":\n" +
                 excerpt(source, *error.openedAt, 0, 0);
    lines += "  The close tag is at " + shownPlace(text, error.offset) + ":\n";
    return lines + excerpt(source, error.offset, 2, 1);
}

std::string remedyFor(const OpenError& error) {
    if (error.isRepairable)
        return "Without --as-is the file is repaired; \"brackwell repair\" lists the changes.";
    if (error.readingEncodings.empty()) return error.remedy;
    std::string names;
    for (const brackwell::TextEncoding encoding : error.readingEncodings)
        names.append(names.empty() ? "" : ", ").append(*brackwell::nameOfTextEncoding(encoding));
    return "--encoding NAME reads it with one of these names: " + names + ".";
}

}  // namespace

std::string errorLines(const InputFile& input, std::size_t width) {
    const OpenError& error = input.error();
    std::string lines;
    if (error.code == OpenErrorCode::tagsDoNotMatch && !input.file.documents().empty())
        lines += explainTags(error, input.file.documents().front().text().bytes(), width);
    if (!error.cause.empty()) lines += "  Likely cause: " + error.cause + "\n";
    if (const std::string remedy = remedyFor(error); !remedy.empty()) lines += "  " + remedy + "\n";
    return lines;
}

}  // namespace tool
