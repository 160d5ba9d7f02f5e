// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "bookkeeping/book.h"
#include "bookkeeping/drafts.h"
#include "bookkeeping/known_journal.h"

namespace tool {

/// How books are made.
struct BookSettings {
    BookFormat format = BookFormat::hledger;
    bool hasOpenings = true;    ///< accounts that no journal has begin with what their balances ask for
    bool hasAssertions = true;  ///< balances are asserted; else they are comments
};

/// A sentence about a file.
struct BookNote {
    std::string file;
    std::string text;
};

/// What books do not say, or not surely, besides the findings of the documents.
using BookNotes = std::vector<BookNote>;

/// Makes a book of drafts, without what journals have already. The statements of the history must be in the
/// order of time, so that the order of files changes nothing. The drafts and the journal have to live as long
/// as the book.
Book makeBook(Drafts& drafts, KnownJournal& journal, const BookSettings& settings, BookNotes& notes);

}  // namespace tool
