// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>

extern "C" {

extern BRACKWELL_EXPORT const double BrackwellVersionNumber;
extern BRACKWELL_EXPORT const unsigned char BrackwellVersionString[];

// CMakeLists.txt says the version of the project; both carry its first number.
const double BrackwellVersionNumber = BRACKWELL_VERSION_MAJOR;
const unsigned char BrackwellVersionString[] =
    "@(#)PROGRAM:Brackwell  PROJECT:TovanaCore-" BRACKWELL_VERSION_MAJOR_TEXT "\n";
}
