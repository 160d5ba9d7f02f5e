// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bookkeeping/drafts.h"

namespace tool {

/// Finds the drafts that are the two ends of one transfer: one names the account of the other, and they are
/// of the same day and of opposite amounts in one currency, and no other two could be meant. Everything else
/// stays as it is.
void pairTransfers(Drafts& drafts);

/// Makes one entry of two that are partners, or lets the one of them that is not in a journal end in the
/// account of transfers, where its partner ends, too. Drafts that are not needed are left out.
void joinTransfers(Drafts& drafts);

}  // namespace tool
