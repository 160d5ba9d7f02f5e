// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/model.h>
#include <brackwell/open.h>

#include <pugixml.hpp>

#include "cases.h"

namespace brackwell::benchmarks {

/// What a reader saw of a document: enough to know that two readers saw the same.
struct Totals {
    std::size_t transactions = 0;
    std::int64_t cents = 0;  ///< the sum of the amounts
    std::size_t realms = 0;

    bool operator==(const Totals&) const = default;
};

/// The import, as an application calls it. A Windows-1252 document needs its encoding told; the others
/// show theirs.
std::shared_ptr<TvOFXMessage> importDocument(const Data& data, const Shape& shape);

/// The layer above it, which opens the same bytes with its default options.
OpenedFile openDocument(const Data& data, const Shape& shape);

/// The peer's plain tree of an OFX 2 document with its default options. It knows no Windows-1252 and
/// reads such a document as Latin-1, which is the same for the letters that are generated.
bool loadTree(pugi::xml_document& tree, std::string_view bytes, const Shape& shape);

/// What an application asks of every bank transaction, so that two readers can be seen to answer alike.
struct Walk {
    std::int64_t days = 0;      ///< the sum of the days of posting, from 1970-01-01
    std::size_t outgoing = 0;   ///< amounts below zero
    std::size_t nameBytes = 0;  ///< of all payees

    bool operator==(const Walk&) const = default;
};
Walk walkOf(const TvOFXMessage& message);
/// By hand, as one who knows where everything stands would write it.
Walk walkOf(const pugi::xml_document& tree);

/// All end the program when the document is not what was written.
Totals totalsOfImport(const Case& document, std::string_view bytes);
Totals totalsOfOpening(const Case& document, std::string_view bytes);
Totals totalsOfTree(const Case& document, std::string_view bytes);

/// Ends the program unless every reader sees what was written, and the same: the import, the layer
/// above it, and for OFX 2 the peer; and unless the walks see the same.
void checkReaders(const Case& document, std::string_view bytes);

}  // namespace brackwell::benchmarks
