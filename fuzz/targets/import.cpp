// SPDX-License-Identifier: Apache-2.0
#include "documents.h"
#include "target.h"

/// \file
/// A document as it comes from a bank.

void brackwell::fuzz::tryBytes(std::string_view bytes) { requireSoundImport(bytes, {}); }
