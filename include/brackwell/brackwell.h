// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// All of the library: reads Open Financial Exchange documents into an object model. Start with
/// TovanaOFXController in reading.h and TvOFXMessage in model.h.

#include <brackwell/accounts.h>
#include <brackwell/convert.h>
#include <brackwell/model.h>
#include <brackwell/platform.h>
#include <brackwell/profile.h>
#include <brackwell/reading.h>
#include <brackwell/repair.h>
#include <brackwell/requests.h>
#include <brackwell/statements.h>

extern "C" {

/// The version of the system as a number.
extern BRACKWELL_EXPORT const double BrackwellVersionNumber;
/// The version of the system as a text, in the form that version tools look for.
extern BRACKWELL_EXPORT const unsigned char BrackwellVersionString[];
}
