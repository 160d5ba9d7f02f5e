// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/accounts.h>
#include <doctest/doctest.h>

/// \file
/// Checks of what the blocks of an account-information record have in common.

namespace brackwell::tests {

/// Values that are no single text.
inline std::vector<ParseValue> otherKinds(const char* text) {
    return {ParseDictionary{}, ParseDictionary{{"A", text}}, ParseValue::array({text, text})};
}

template <class Read>
void checkExactFlag(const Read& read) {
    CHECK(read("Y"));
    for (const char* text : {"N", "y", "YES", " Y", ""}) {
        CAPTURE(text);
        CHECK_FALSE(read(text));
    }
    for (const ParseValue& value : otherKinds("Y")) CHECK_FALSE(read(value));
    CHECK_FALSE(read(ParseValue()));
}

/// The flags of a block that is read with initWithParserDict.
template <class Block>
void checkBlockFlags() {
    struct Row {
        const char* element;
        bool (Block::*get)() const noexcept;
    };
    const std::array<Row, 3> rows{{{"SUPTXDL", &Block::supportsTransactionDownload},
                                   {"XFERSRC", &Block::isTransferSourceAccount},
                                   {"XFERDEST", &Block::isTransferDestinationAccount}}};
    for (const Row& row : rows) {
        CAPTURE(row.element);
        checkExactFlag([&row](const ParseValue& value) {
            return ((*Block::initWithParserDict(ParseDictionary{{row.element, value}})).*row.get)();
        });
        const auto block = Block::initWithParserDict(ParseDictionary{{row.element, "Y"}});
        for (const Row& other : rows) CHECK(((*block).*other.get)() == (row.element == other.element));
    }
}

template <class Read>
void checkServiceStatusOf(const Read& read) {
    CHECK(read("AVAIL") == TvOFXServiceStatusAvailable);
    CHECK(read("PEND") == TvOFXServiceStatusPending);
    CHECK(read("ACTIVE") == TvOFXServiceStatusActive);
    for (const char* text : {"active", "ACTIVE ", "CLOSED", ""}) {
        CAPTURE(text);
        CHECK(read(text) == TvOFXServiceStatusNone);
    }
    for (const ParseValue& value : otherKinds("ACTIVE")) CHECK(read(value) == TvOFXServiceStatusNone);
    CHECK(read(ParseValue()) == TvOFXServiceStatusNone);
}

/// The SVCSTATUS of a class that is read with initWithParserDict.
template <class Record>
void checkServiceStatus() {
    checkServiceStatusOf([](const ParseValue& value) {
        return Record::initWithParserDict(ParseDictionary{{"SVCSTATUS", value}})->serviceStatus();
    });
}

}  // namespace brackwell::tests
