// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <functional>
#include <map>
#include <set>
#include <string>

namespace tool {

/// The securities that positions and transactions name.
class NamedSecurities {
public:
    /// Adds what the positions and transactions of a statement name.
    void add(const brackwell::InvestmentStatement& statement);

    /// As SecurityList looks them up: where one of the two names no type, the identifier decides.
    bool has(const brackwell::Security& security) const;

private:
    /// The types under which each identifier is named, in folded case; "" where no type is given.
    std::map<std::string, std::set<std::string>, std::less<>> names_;
};

}  // namespace tool
