// SPDX-License-Identifier: Apache-2.0
#include "documents.h"
#include "lines.h"
#include "target.h"

/// \file
/// A document with all that a caller can say about it: a line with the name of an encoding, one with the
/// marks of a number formatter, one with the pattern of a date formatter, then the document. An empty
/// line leaves its setting out.

namespace brackwell::fuzz {
namespace {

std::shared_ptr<const NumberFormatter> numberFormatter(std::string_view marks) {
    if (marks.empty()) return nullptr;
    NumberFormat format;
    format.decimalSeparator = marks.substr(0, 1);
    format.groupingSeparator = marks.substr(1);
    return std::make_shared<DecimalNumberFormatter>(std::move(format));
}

std::shared_ptr<const DateFormatter> dateFormatter(std::string_view pattern) {
    if (pattern.empty()) return nullptr;
    return std::make_shared<PatternDateFormatter>(std::string(pattern), TimeZone(), "C");
}

}  // namespace

void tryBytes(std::string_view bytes) {
    Lines lines(bytes);
    Settings settings;
    settings.encoding = textEncodingNamed(lines.next());
    settings.numberFormatter = numberFormatter(lines.next());
    settings.dateFormatter = dateFormatter(lines.next());
    requireSoundImport(lines.rest(), settings);
}

}  // namespace brackwell::fuzz
