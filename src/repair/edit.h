// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/repair.h>

namespace brackwell::repair {

/// A change whose place is an offset only, in a body.
struct Edit {
    std::size_t offset;
    std::size_t size;  ///< of what stood there
    RepairKind kind;
    std::string now;
};

}  // namespace brackwell::repair
