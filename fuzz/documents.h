// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/brackwell.h>

namespace brackwell::fuzz {

/// How a document is imported.
struct Settings {
    TextEncoding encoding = TextEncodingNone;
    std::shared_ptr<const NumberFormatter> numberFormatter = nullptr;
    std::shared_ptr<const DateFormatter> dateFormatter = nullptr;
};

/// Imports a document in every way that there is, asks all that came of it for everything, and holds
/// the answers against each other.
void requireSoundImport(std::string_view bytes, const Settings& settings);

}  // namespace brackwell::fuzz
