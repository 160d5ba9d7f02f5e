// SPDX-License-Identifier: Apache-2.0
#include "console/pager.h"

namespace tool {

// A console here scrolls, and there is no pager that reads colours and texts in UTF-8 everywhere.

std::optional<std::string> wantedPager() { return std::nullopt; }

Pager::Pager(const std::string& /*command*/) {}

bool Pager::finish() { return wasRun_; }

}  // namespace tool
