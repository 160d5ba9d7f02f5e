// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace tool {

class ListedAccounts;
struct Filter;

/// What is asked of a document besides its responses.
struct Choice {
    const Filter& filter;
    const ListedAccounts& listed;
};

}  // namespace tool
