// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Makes of a document one that can be given away, for example with a report of a mistake: every value that
/// says who somebody is, or how much they have, is replaced, and everything else stays as it is, mistakes
/// included.
///
///     brackwell::Anonymizer anonymizer;
///     std::optional<brackwell::Data> bytes = brackwell::Data::fromFile("july.ofx");
///     if (bytes) std::cout << anonymizer.anonymize(*bytes).bytes.bytes();

#include <brackwell/platform.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace brackwell {

/// What is replaced beside what always is.
struct AnonymizeOptions {
    /// True replaces what names the institution, too: its name, identifiers, addresses on the web, telephone
    /// numbers. Often a mistake cannot be found without knowing whose document it is.
    bool institution = false;
    /// By how many days all dates are moved; 0 leaves them as they are. Dates with marks between their
    /// numbers ("31.03.2024", "2024-03-31T10:00:00") are moved, too. Some stay, see
    /// AnonymizedDocument::unmovedDates.
    std::int32_t shiftDays = 0;
    /// From the first day of the year 1 to the last one of 9999: by more days no date can be moved.
    static constexpr std::int32_t mostDays = 3'652'058;
};

/// Elements of one name that the OFX standard does not have.
struct UnknownElements {
    std::string name;       ///< as the document writes it
    std::size_t count = 0;  ///< how often it begins

    bool operator==(const UnknownElements&) const = default;  ///< the same name as often
};

/// A document without what says who.
struct AnonymizedDocument {
    /// As many bytes as the document had, in its encoding.
    Data bytes;
    /// How many values were replaced.
    std::size_t replaced = 0;
    /// Elements whose names stay although nobody knows what they mean, in the order of their first places,
    /// 20 at most. Their values are replaced. Look at them before you give the document away.
    std::vector<UnknownElements> unknown;
    /// How many dates stay although dates are moved: those in a form that openData does not read, or whose
    /// day and month nothing tells apart, those of no day, and those that would leave the years 1 to 9999, or
    /// get a number with more digits than they have room for ("9.5.2025").
    std::size_t unmovedDates = 0;
};

/// Replaces the values of documents: names, memos, account numbers, identifiers, amounts, balances, keys,
/// cookies, addresses, telephone numbers, whatever stands in comments, and every other text that is not one
/// of the codes of the OFX standard.
///
/// - A letter becomes a letter, a digit a digit; capitals stay capitals. Signs, blanks, entities and every
///   tag stay. An amount keeps its sign, its marks, its places and its zeros at the front; one of nothing but
///   zeros stays.
/// - Alike stays alike: a word becomes the same word wherever it stands, in all documents of one object, so
///   an account number can be followed from one file to the next; different words of ASCII characters become
///   different words. Other letters are replaced by letters of the same document.
/// - What is replaced cannot be found out without the object's key, which is random and never leaves it.
///   How long a word is can be seen, and that two are the same.
/// - Codes stay: types of accounts and transactions, currencies, status codes, flags. In an element of codes
///   that is whatever looks like one, a word in capitals or a number of few digits. So do dates, unless they
///   are moved, the header but for identifiers of files, and up to three letters beside an amount.
/// - The sums of a document are not true afterwards: balances do not follow from transactions, and the total
///   of an investment is not its units times its price.
///
/// The document need not be one that reads. Takes time in proportion to it.
class BRACKWELL_EXPORT Anonymizer {
public:
    /// With a new key.
    explicit Anonymizer(AnonymizeOptions options = {});
    /// @{
    /// A copy shares the key, and so does what was moved from.
    Anonymizer(const Anonymizer&) noexcept = default;
    Anonymizer& operator=(const Anonymizer&) noexcept = default;
    ~Anonymizer() = default;
    /// @}

    /// The document without what says who. `encoding` is the one it is in, such as
    /// OpenedDocument::encoding tells. A byte order mark of UTF-16 or UTF-32 counts more. With
    /// TextEncodingNone, or when the bytes are not what that encoding makes of their text, it is one in which
    /// they are a text: UTF-8, or, where there are zero bytes, UTF-16 or UTF-32; all else counts as one byte
    /// for a character.
    AnonymizedDocument anonymize(const Data& bytes, TextEncoding encoding = TextEncodingNone) const;

private:
    struct BRACKWELL_INTERNAL State;
    std::shared_ptr<const State> state_;
};

}  // namespace brackwell
