// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>

extern "C" {

extern BRACKWELL_EXPORT const double BrackwellVersionNumber;
extern BRACKWELL_EXPORT const unsigned char BrackwellVersionString[];

const double BrackwellVersionNumber = 1.0;
const unsigned char BrackwellVersionString[] = "@(#)PROGRAM:Brackwell  PROJECT:TovanaCore-1\n";
}
