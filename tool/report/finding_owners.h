// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <vector>

namespace tool {

/// The statement that a finding is about, and the transaction in it; null: none, or it is not known. Each is
/// known by an address that is its own as long as the document is kept: identityOf says which.
struct FindingOwner {
    const void* statement = nullptr;
    const void* transaction = nullptr;
};

/// @{
/// That of a part of an investment statement is its source text; null when it has none.
inline const void* identityOf(const brackwell::TvOFXAccountStatement& statement) noexcept {
    return &statement;
}
inline const void* identityOf(const brackwell::TvOFXStatementTransaction& transaction) noexcept {
    return &transaction;
}
inline const void* identityOf(const brackwell::InvestmentRecord& record) noexcept {
    const brackwell::OptionalText text = record.originalText();
    return text ? text->data() : nullptr;
}
/// @}

/// An owner for each finding of a file, by their places in its text. What is said of the document as a whole
/// has none, and neither have the findings of a file with several documents. Takes time in proportion to the
/// file, and hardly any when no finding has a place.
std::vector<FindingOwner> ownersOfFindings(const brackwell::OpenedFile& file);

}  // namespace tool
