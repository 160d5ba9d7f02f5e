// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <memory>
#include <vector>

#include "open/document_state.h"

namespace brackwell::opening {

/// Opens the bytes of a file, which may hold several documents.
std::vector<std::shared_ptr<DocumentState>> openDocuments(const Data& bytes, const OpenOptions& options);

}  // namespace brackwell::opening
