// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// \file
/// Reports as a browser shows and prints them.

namespace brackwell::tests {

/// False on a machine without a browser; ctest knows the message and counts the test as skipped.
bool hasBrowser();

/// What a browser makes of a page.
struct Shown {
    std::string page;                   ///< as it is once the script has run
    std::string console;                ///< what the page's console says
    std::vector<std::string> requests;  ///< the addresses that the page asked for
};

/// Shows a page in a browser that reaches no host, with a filter in its address.
Shown shownInBrowser(const std::string& page, const std::string& filter, int width = 800);

/// A page as a browser prints it, as PDF.
std::string printedByBrowser(const std::string& page);

/// A page in which any script runs.
std::string withoutPolicy(std::string page);

}  // namespace brackwell::tests
