// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/message_sets.h>

#include <string>
#include <string_view>

#include "fields/description.h"

namespace brackwell {

/// Appends the values with commas between them, inside marks; nothing when there are none. A value that
/// is no text reads as its OFX text.
inline void appendList(std::string& to, std::string_view begin, const OptionalList& values,
                       std::string_view end) {
    if (!values || values->empty()) return;
    std::string_view separator = begin;
    for (const ParseValue& value : *values) {
        to.append(separator);
        if (const auto dictionary = value.dictionary())
            to.append(TvOFXHelper::ofxDictionaryToString(*dictionary));
        else
            to.append(orAbsent(value.text()));
        separator = ", ";
    }
    to.append(end);
}

}  // namespace brackwell
