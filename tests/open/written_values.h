// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "open/written_value.h"

/// \file
/// Documents of amounts, or of dates, and how they are read.

namespace brackwell::tests {

using Texts = std::vector<std::string>;

/// What a document says of its values that consists of these texts.
template <class Document>
Document documentOf(const Texts& texts) {
    Document document;
    for (const std::string& text : texts) document.add(text);
    return document;
}

struct ReadingRow {
    std::string text;
    std::string reading;
};

/// Each text as the document that consists of `others` and itself reads it. `shown` is a reading as the rows
/// have it, and `import` what an import finds that was given the document's formatter.
template <class Document, class Shown, class Import>
void checkReadingsOf(const std::vector<ReadingRow>& rows, const Texts& others, Shown shown, Import import) {
    for (const ReadingRow& row : rows) {
        CAPTURE(row.text);
        Document document = documentOf<Document>(others);
        document.add(row.text);
        const auto reading = document.read(row.text);
        CHECK(shown(reading) == row.reading);
        CHECK(import(document, row.text) == reading.value);
        if (document.arePlain()) CHECK(reading.how == opening::ReadingKind::prescribed);
    }
}

}  // namespace brackwell::tests
