// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// All of the library: reads Open Financial Exchange documents into an object model. Start with
/// TovanaOFXController in reading.h and TvOFXMessage in model.h.
///
/// What threads may share:
/// - Distinct objects may be used by distinct threads at the same time, also when they come from one
///   document: the document behind them never changes, and whoever has the last of them releases it.
/// - One object may be asked by several threads at the same time through `const` operations, as long as
///   none changes it. Two questions keep their answer and so are not `const`:
///   TvOFXMessage::accountsFound and TvOFXStatementTransaction::sort_date. Once answered, they only read.
///   A `const` message answers the first without keeping it, and dayPosted, in place of the second, is
///   `const`.
/// - TvOFXHelper::defaultHelper is the one object that all threads share. Any thread may be the first to
///   ask for it. Formatters are set on it, if at all, while no other thread uses the library.
/// - A formatter is asked by every object that it was handed to, so by several threads when these are
///   used by several. The library's own may be; one of the application's must bear it then.
/// - The library reads the environment (TZ, TZDIR, LC_ALL, LC_TIME, LANG) and never changes it or the
///   process's locale. Nor may anybody else while it is in use: that is a rule of the C library.

/// \namespace brackwell
/// All of the library but its macros and the two constants of its version.

#include <brackwell/accounts.h>
#include <brackwell/anonymize.h>
#include <brackwell/convert.h>
#include <brackwell/investments.h>
#include <brackwell/model.h>
#include <brackwell/open.h>
#include <brackwell/platform.h>
#include <brackwell/profile.h>
#include <brackwell/reading.h>
#include <brackwell/repair.h>
#include <brackwell/requests.h>
#include <brackwell/statements.h>
#include <brackwell/version.h>

extern "C" {

/// The major version of the library as a number: 1 for 1.0.0.
extern BRACKWELL_EXPORT const double BrackwellVersionNumber;
/// The major version inside a line of text that begins with "@(#)", so that it is found in a program's
/// bytes; ends in a zero byte.
extern BRACKWELL_EXPORT const unsigned char BrackwellVersionString[];
}
