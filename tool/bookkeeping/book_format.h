// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "bookkeeping/book.h"

namespace tool {

class Output;

/// Writes a book in a format, in the order of days; nothing for a book without content. What documents say
/// besides is in tags or metadata, what a format cannot hold in comments.
void writeBook(Output& output, const Book& book, BookFormat format);

/// The line of a price, without its end.
std::string priceLine(const BookPrice& price, BookFormat format);

}  // namespace tool
