// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/model.h>

namespace brackwell::tests {

/// True when a class adds nothing to its base's archive.
inline bool archivesLikeItsBase(const TvOFXAggregate& object) {
    KeyedArchiver own;
    object.encodeWithCoder(own);
    KeyedArchiver base;
    TvOFXAggregate(object.originalParseData()).encodeWithCoder(base);
    return own.archivedData() == base.archivedData();
}

}  // namespace brackwell::tests
