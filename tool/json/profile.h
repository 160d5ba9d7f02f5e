// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/profile.h>

#include "json/choice.h"

namespace tool {

class JsonWriter;

/// @{
/// The fields of a response, without what all responses have.
void writeSignOnFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Choice& choice);
void writeProfileFields(JsonWriter& json, const brackwell::TvOFXResponse& response, const Choice& choice);
/// @}

}  // namespace tool
