// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

namespace tool {

class TextPage;
struct Options;

/// The securities of a document that none of its positions and transactions names.
void showOtherSecurities(TextPage& page, const brackwell::OpenedDocument& document, const Options& options);

}  // namespace tool
