// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <memory>
#include <unordered_map>
#include <vector>

namespace tool {

/// The accounts of account lists by their records. A record itself has the block of a bank account only.
class ListedAccounts {
public:
    /// The accounts have to live as long as this.
    explicit ListedAccounts(const std::vector<brackwell::ListedAccount>& accounts);

    /// A record with all its blocks.
    brackwell::ListedAccount of(const std::shared_ptr<brackwell::TvOFXAccountInfo>& record) const;

private:
    std::unordered_map<const brackwell::TvOFXAccountInfo*, const brackwell::ListedAccount*> accounts_;
};

}  // namespace tool
