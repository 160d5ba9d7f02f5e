// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/brackwell.h>

/// \file
/// All that an object answers, as one text: whatever a document was made of, every getter can be asked.
/// Two readings of one document have the same transcript.

namespace brackwell::tests {

/// A message with its accounts and their statements, and the result view of its banking set.
std::string transcriptOf(TvOFXMessage& message);

/// Every response of an interpreter, with all that is in it.
std::string transcriptOf(const TvOFXInterpreter& interpreter);

/// One object of any class.
std::string transcriptOf(TvOFXAggregate& object);

/// True when every transaction, and the payees and accounts in it, come back from an archive as they
/// were.
bool archivesWell(const TvOFXInterpreter& interpreter);

}  // namespace brackwell::tests
