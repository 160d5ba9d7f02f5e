// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>
#include <brackwell/version.h>

#define BRACKWELL_TEXT_OF(NUMBER) #NUMBER
#define BRACKWELL_TEXT_OF_VALUE(MACRO) BRACKWELL_TEXT_OF(MACRO)

extern "C" {

extern BRACKWELL_EXPORT const double BrackwellVersionNumber;
extern BRACKWELL_EXPORT const unsigned char BrackwellVersionString[];

// CMakeLists.txt says the version of the project; both carry its first number.
const double BrackwellVersionNumber = BRACKWELL_VERSION_MAJOR;
const unsigned char BrackwellVersionString[] =
    "@(#)PROGRAM:Brackwell  PROJECT:TovanaCore-" BRACKWELL_TEXT_OF_VALUE(BRACKWELL_VERSION_MAJOR) "\n";
}
