// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <vector>

namespace tool {

class ListedAccounts;
class TextPage;
struct Options;

void showAccountInfo(TextPage& page, const brackwell::TvOFXAccountInfoResponse& response,
                     const ListedAccounts& listed, const Options& options);
/// The accounts of all account lists; what several of them say alike once.
void showListedAccounts(TextPage& page, const std::vector<brackwell::ListedAccount>& accounts, bool isFull);

}  // namespace tool
