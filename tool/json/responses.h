// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/brackwell.h>

#include "json/choice.h"

/// \file
/// The objects of the model as JSON: each field that has a getter, under its name, in the order in which
/// the class declares its fields.

namespace tool {

class JsonWriter;

void writeMessage(JsonWriter& json, const brackwell::TvOFXMessage& message);
void writeStatus(JsonWriter& json, const brackwell::TvOFXStatus& status);
/// Any response: its class, what its wrapper said, and the fields of its class, with the accounts and
/// transactions that are wanted. Nothing for the statement of an account that is not.
void writeResponse(JsonWriter& json, const brackwell::TvOFXResponse& response, const Choice& choice);

}  // namespace tool
