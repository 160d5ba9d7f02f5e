// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "documents.h"

namespace brackwell::benchmarks {

/// A document that is measured. Each comes as OFX 2 and as OFX 1: "ofx2-2000", "ofx1-2000".
struct Case {
    std::string name;
    Shape shape;

    /// How many there are of what repeats: transactions, or realms of a profile.
    std::size_t items() const noexcept {
        return shape.realms > 0 ? shape.realms : shape.statements * shape.transactions;
    }
    bool hasBankTransactions() const noexcept { return shape.realms == 0 && shape.positions == 0; }
};

/// All documents of one version, in the order of the tables.
std::vector<Case> casesOfVersion(int version);

/// The case with that name, such as "ofx2-2000"; the program ends when there is none.
Case caseNamed(std::string_view name);

}  // namespace brackwell::benchmarks
