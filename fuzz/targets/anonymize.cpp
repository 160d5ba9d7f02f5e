// SPDX-License-Identifier: Apache-2.0
#include <brackwell/anonymize.h>

#include "target.h"

/// \file
/// The anonymous form of any bytes: as long as they are, the same for the same key, and what is markup stays.

namespace brackwell::fuzz {

void tryBytes(std::string_view bytes) {
    AnonymizeOptions options;
    options.institution = bytes.size() % 2 == 0;
    options.shiftDays = static_cast<std::int32_t>(bytes.size() % 1000) - 500;
    const Anonymizer anonymizer(options);
    const Data data = Data::view(bytes);
    const AnonymizedDocument document = anonymizer.anonymize(data);
    require(document.bytes.size() == bytes.size(), "the anonymous form is as long");
    require(anonymizer.anonymize(data).bytes.bytes() == document.bytes.bytes(), "one key gives one form");
    require((document.replaced == 0) == (document.bytes.bytes() == bytes), "what is replaced is counted");
    require(document.unknown.size() <= 20, "the list of unknown names is short");
    const std::string_view after = document.bytes.bytes();
    if (!isValidUTF8(bytes)) return;  // in other encodings a bracket may be half of a character
    for (std::size_t i = 0; i < bytes.size(); ++i)
        require((bytes[i] == '<') == (after[i] == '<') && (bytes[i] == '>') == (after[i] == '>'),
                "every bracket stays");
}

}  // namespace brackwell::fuzz
