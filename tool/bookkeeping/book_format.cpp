// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/book_format.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <string_view>
#include <utility>

#include "bookkeeping/book_text.h"
#include "bookkeeping/drafts.h"
#include "command_line/day.h"
#include "console/output.h"
#include "text/value_text.h"
#include "text/visible_text.h"

namespace tool {
namespace {

/// What the formats do differently.
struct BookSyntax {
    BookFormat format;
    std::string_view indent;
    std::string_view factIndent;    ///< before a fact of an entry
    std::string_view detailIndent;  ///< before a fact of a posting
    std::string_view firstLines;
    std::string_view description;  ///< what a payee and a memo must not have
    std::string_view comment;      ///< what a fact must not have
    bool hasMemoInDescription;
};

/// In the order of BookFormat. In comments of hledger "date:" and "[2024-" have a meaning, in those of Ledger
/// the latter.
constexpr BookSyntax kSyntaxes[] = {
    {BookFormat::hledger, "    ", "    ; ", "    ; ", "decimal-mark .\n", ";|()", ":[", true},
    {BookFormat::ledger, "    ", "    ; ", "    ; ", "", ";()", ":[", false},
    {BookFormat::beancount, "  ", "  ", "    ", "", "", "", false},
};

const BookSyntax& syntaxOf(BookFormat format) noexcept { return kSyntaxes[static_cast<std::size_t>(format)]; }

std::string quotedCommodity(std::string_view name, BookFormat format) {
    const bool isPlain = std::ranges::all_of(name, [](char c) { return c >= 'A' && c <= 'Z'; });
    return isPlain || format == BookFormat::beancount ? std::string(name) : "\"" + std::string(name) + "\"";
}

std::string withDecimals(const brackwell::Decimal& number, int decimals) {
    std::string text = number.toString();
    const std::size_t point = text.find('.');
    const std::size_t has = point == text.npos ? 0 : text.size() - point - 1;
    const auto wanted = static_cast<std::size_t>(decimals);
    if (has < wanted && point == text.npos) text += '.';
    if (has < wanted) text.append(wanted - has, '0');
    return text;
}

/// A balance holds at the end of a day, which Beancount calls the beginning of the next.
std::string dayAfter(const std::string& day) {
    const auto date = dayOf(day);
    return date ? dayText(*date + std::chrono::days(1)) : day;
}

/// Writes one book.
class BookWriter {
public:
    BookWriter(Output& output, const Book& book, BookFormat format)
        : output_(output),
          book_(book),
          syntax_(syntaxOf(format)),
          balance_(book.balances.begin()),
          price_(book.prices.begin()) {}

    void write() {
        line("; Made by brackwell from OFX documents.");
        output_.write(syntax_.firstLines);
        writeDeclarations();
        for (const BookEntry& entry : book_.openings) writeEntry(entry);
        writeByDay();
        for (const DraftRemark& remark : book_.drafts->lists().remarks)
            writeRemark(book_.drafts->remarkOf(remark));
    }

private:
    bool isBeancount() const noexcept { return syntax_.format == BookFormat::beancount; }
    void line(std::string_view text) {
        output_.write(text);
        output_.write('\n');
    }
    std::string amountText(const brackwell::Decimal& number, std::string_view commodity,
                           int decimals = 0) const {
        const auto known = book_.decimals.find(commodity);
        const int least = std::max(decimals, known == book_.decimals.end() ? 0 : known->second);
        return withDecimals(number, least) + " " + quotedCommodity(commodity, syntax_.format);
    }
    void writeDeclarations();
    std::string declarationOf(const BookCommodity& commodity) const;
    void writeByDay();
    void writeBefore(std::string_view day);
    void writeEntry(const BookEntry& entry);
    void writePosting(const Posting& posting, int decimals);
    void writeBalance(const BookBalance& balance);
    void writeRemark(const BookRemark& remark);
    void writeFacts(const std::vector<BookFact>& facts, std::string_view indent);
    void writeFact(std::string_view name, std::string_view text, std::string_view indent);
    void writeIdentity(const BookIdentity& identity, std::string_view indent);
    void writeComments(const std::vector<BookFact>& facts, const BookIdentity& identity);
    std::string headOf(const BookEntry& entry) const;

    Output& output_;
    const Book& book_;
    const BookSyntax& syntax_;
    std::vector<BookBalance>::const_iterator balance_;  ///< the next one
    std::vector<BookPrice>::const_iterator price_;      ///< the next one
};

void BookWriter::writeDeclarations() {
    for (const BookCommodity& commodity : book_.commodities) {
        output_.write('\n');
        if (!isBeancount()) writeComments(commodity.facts, {});
        line(declarationOf(commodity));
        if (isBeancount()) writeFacts(commodity.facts, syntax_.factIndent);
    }
    if (!book_.accounts.empty()) output_.write('\n');
    for (const BookAccount& account : book_.accounts)
        line((isBeancount() ? account.day + " open " : "account ") + std::string(account.name));
}

/// hledger shows amounts with as many decimals as there are here.
std::string BookWriter::declarationOf(const BookCommodity& commodity) const {
    if (isBeancount()) return "1970-01-01 commodity " + commodity.name;
    const bool hasStyle = commodity.isCurrency && syntax_.format == BookFormat::hledger;
    const std::string style = withDecimals(brackwell::Decimal::fromInteger(1000), commodity.decimals);
    return "commodity " + (hasStyle ? style + (commodity.decimals == 0 ? ". " : " ") : "") +
           quotedCommodity(commodity.name, syntax_.format);
}

/// Entries, balances and prices of a day, in this order.
void BookWriter::writeByDay() {
    for (const std::uint32_t number : book_.entries) {
        if (!output_.isGood()) return;
        const BookEntry entry = book_.drafts->entryOf(book_.drafts->lists().entries[number]);
        writeBefore(entry.day);
        writeEntry(entry);
    }
    writeBefore("\x7F");  // comes after all days
}

/// The balances and prices that are left of the days before one.
void BookWriter::writeBefore(std::string_view day) {
    for (;;) {
        const bool hasBalance = balance_ != book_.balances.end() && balance_->day < day;
        const bool hasPrice = price_ != book_.prices.end() && price_->day < day;
        if (hasBalance && (!hasPrice || balance_->day <= price_->day)) {
            writeBalance(*balance_++);
        } else if (hasPrice) {
            output_.write('\n');
            line(priceLine(*price_++, syntax_.format));
        } else {
            return;
        }
    }
}

std::string BookWriter::headOf(const BookEntry& entry) const {
    std::string head = entry.day + " * ";
    if (isBeancount()) {
        if (!entry.payee.empty()) head += inQuotes(entry.payee) + " ";
        return head + inQuotes(entry.memo);
    }
    if (!entry.code.empty()) head += "(" + withoutMarks(entry.code, syntax_.description) + ") ";
    const bool hasBoth = !entry.payee.empty() && !entry.memo.empty() && entry.payee != entry.memo;
    head += withoutMarks(entry.payee.empty() ? entry.memo : entry.payee, syntax_.description);
    if (hasBoth && syntax_.hasMemoInDescription)
        head += " | " + withoutMarks(entry.memo, syntax_.description);
    while (head.ends_with(' ')) head.pop_back();
    return head;
}

void BookWriter::writeEntry(const BookEntry& entry) {
    output_.write('\n');
    line(headOf(entry));
    if (isBeancount() && !entry.code.empty())
        writeFact("checkOrReferenceNumber", entry.code, syntax_.factIndent);
    if (syntax_.format == BookFormat::ledger && !entry.payee.empty() && entry.memo != entry.payee)
        writeFact("memo", entry.memo, syntax_.factIndent);
    writeFacts(entry.facts, syntax_.factIndent);
    // Beancount makes a price of one unit of what all cost, and allows a difference only where there are
    // decimals.
    const bool hasCost =
        std::ranges::any_of(entry.postings, [](const Posting& posting) { return posting.cost.has_value(); });
    for (const Posting& posting : entry.postings) writePosting(posting, isBeancount() && hasCost ? 2 : 0);
}

void BookWriter::writePosting(const Posting& posting, int decimals) {
    output_.write(syntax_.indent);
    output_.write(posting.account);
    output_.write("  ");
    output_.write(amountText(posting.quantity, posting.commodity, posting.cost ? 0 : decimals));
    if (posting.cost) {
        output_.write(" @@ ");
        output_.write(amountText(*posting.cost, posting.costCommodity, decimals));
    }
    output_.write('\n');
    writeIdentity(posting.identity, syntax_.detailIndent);
    writeFacts(posting.facts, syntax_.detailIndent);
}

void BookWriter::writeBalance(const BookBalance& balance) {
    const std::string account(balance.account);
    const std::string amount = amountText(balance.amount, balance.commodity);
    const std::string next = dayAfter(balance.day);
    output_.write('\n');
    if (!balance.objection.empty()) {
        line("; " + balance.day + " balance " + account + " " + amount + ": " + balance.objection);
        return writeComments(balance.facts, balance.identity);
    }
    if (isBeancount()) {
        line(next + " balance " + account + " " + amount);
        writeFacts(balance.facts, syntax_.factIndent);
        return writeIdentity(balance.identity, syntax_.factIndent);
    }
    line(balance.day + " * Balance of the statement");
    writeFacts(balance.facts, syntax_.factIndent);
    line(std::string(syntax_.indent) + account + "  " + amountText({}, balance.commodity) + " = " + amount);
    writeIdentity(balance.identity, syntax_.detailIndent);
}

void BookWriter::writeRemark(const BookRemark& remark) {
    output_.write('\n');
    line("; " + remark.day + (remark.day.empty() ? "" : " ") + remark.text);
    writeComments(remark.facts, remark.identity);
}

/// Beancount has each name once in an entry.
void BookWriter::writeFacts(const std::vector<BookFact>& facts, std::string_view indent) {
    std::map<std::string_view, std::size_t> counts;
    for (const BookFact& fact : facts) {
        const std::size_t count = ++counts[fact.name];
        writeFact(count == 1 ? std::string(fact.name) : std::string(fact.name) + "-" + std::to_string(count),
                  fact.text, indent);
    }
}

void BookWriter::writeFact(std::string_view name, std::string_view text, std::string_view indent) {
    const std::string shown = isBeancount() ? inQuotes(text) : withoutMarks(text, syntax_.comment);
    if (shown.empty() || shown == "\"\"") return;
    output_.write(indent);
    output_.write(name);
    output_.write(": ");
    line(shown);
}

void BookWriter::writeIdentity(const BookIdentity& identity, std::string_view indent) {
    if (identity.isEmpty()) return;
    writeFact(kIdentifierName, identity.identifier, indent);
    writeFact(kDigestName, identity.digest, indent);
}

void BookWriter::writeComments(const std::vector<BookFact>& facts, const BookIdentity& identity) {
    for (const BookFact& fact : facts) {
        const std::string text = visibleText(fact.text);
        if (!text.empty()) line(";   " + std::string(fact.name) + ": " + text);
    }
    if (!identity.identifier.empty())
        line(";   " + std::string(kIdentifierName) + ": " + identity.identifier);
    if (!identity.isEmpty()) line(";   " + std::string(kDigestName) + ": " + identity.digest);
}

bool isEmptyBook(const Book& book) noexcept {
    return book.accounts.empty() && book.commodities.empty() && book.openings.empty() &&
           book.entries.empty() && book.balances.empty() && book.prices.empty() &&
           book.drafts->lists().remarks.empty();
}

}  // namespace

void writeBook(Output& output, const Book& book, BookFormat format) {
    if (!isEmptyBook(book)) BookWriter(output, book, format).write();
}

std::string priceLine(const BookPrice& price, BookFormat format) {
    const std::string commodity = quotedCommodity(price.commodity, format);
    const std::string amount = withDecimals(price.price, 2) + " " + quotedCommodity(price.currency, format);
    if (format == BookFormat::beancount) return price.day + " price " + commodity + " " + amount;
    return "P " + price.day + " " + commodity + " " + amount;
}

}  // namespace tool
