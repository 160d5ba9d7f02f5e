// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Conversion between OFX texts and values, and the writing of parse dictionaries as OFX text.
///
///     auto& helper = *brackwell::TvOFXHelper::defaultHelper();
///     helper.dateFromOFXDateString("20240131120000.123[-5:EST]");  // 12:00:00.123 UTC
///     helper.decimalNumberFromOFXAmountString("1,234.56");         // 1234.56

#include <brackwell/reading.h>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace brackwell {

/// Converts OFX dates and amounts. A caller's formatters, when set, are tried before the built-in
/// formats. A formatter lives for as long as it is asked, and may replace itself or the helper meanwhile.
class BRACKWELL_EXPORT TvOFXHelper {
public:
    /// The shared helper, made on first use, by any thread, and kept for the life of the process.
    /// Formatters that are set on it hold for every import without formatters of its own, in all threads,
    /// so set them, if at all, before the first import and before other threads use the library.
    static const std::shared_ptr<TvOFXHelper>& defaultHelper();

    /// A helper without formatters of a caller.
    TvOFXHelper();

    /// The date of an OFX text, or nothing. Tried in turn: the caller's formatter on the whole text;
    /// "yyyyMMddHHmmss.SSS" and "yyyyMMddHHmmss" on the text, cut to its first 18 characters when it is
    /// longer; "yyyyMMdd" on its first 8. Every date is read as UTC: a zone in brackets is never
    /// applied. That a date with time and zone but without milliseconds ("20240131120000[-5:EST]")
    /// so becomes midnight of its day is intended.
    std::optional<Date> dateFromOFXDateString(TextArgument text) const;

    /// The date as "yyyyMMddhhmmss" in the process's time zone. The hour is that of the 12-hour clock,
    /// without AM or PM: intended.
    static std::string ofxDateTimeStringFromDate(Date date);

    /// The number of an OFX amount, or nothing; the caller's formatter is tried first. "," groups
    /// digits, so "1,234.56" is 1234.56.
    std::optional<Decimal> decimalNumberFromOFXAmountString(TextArgument text) const;

    /// The number as the caller's formatter writes it, else with two decimals and grouped thousands
    /// ("1,234.50"). Nothing for nothing.
    std::optional<std::string> ofxAmountStringFromDecimalNumber(const std::optional<Decimal>& number) const;

    /// @{
    /// The caller's formatters; null when there is none.
    const std::shared_ptr<const DateFormatter>& dateFormatter() const noexcept { return userDateFormatter_; }
    void setDateFormatter(std::shared_ptr<const DateFormatter> formatter) noexcept;
    const std::shared_ptr<const NumberFormatter>& amountNumberFormatter() const noexcept {
        return userAmountNumberFormatter_;
    }
    void setAmountNumberFormatter(std::shared_ptr<const NumberFormatter> formatter) noexcept;
    /// @}

    /// @{
    /// The built-in formatters. The first two date formatters, which name a zone, take no part in any
    /// conversion: intended.
    const PatternDateFormatter& ofxDateFormatter() const noexcept { return dateFormatters_[0]; }
    const PatternDateFormatter& ofxDateFormatter2() const noexcept { return dateFormatters_[1]; }
    const PatternDateFormatter& ofxDateFormatter3() const noexcept { return dateFormatters_[2]; }
    const PatternDateFormatter& ofxDateFormatter4() const noexcept { return dateFormatters_[3]; }
    const PatternDateFormatter& ofxDateFormatter5() const noexcept { return dateFormatters_[4]; }
    const DecimalNumberFormatter& ofxAmountFormatter() const noexcept { return ofxAmountFormatter_; }
    /// @}

    /// A dictionary as OFX 1 text: leaves without close tags, aggregates with them, in the
    /// dictionary's order, nothing escaped. Texts inside an array are left out: intended, so a
    /// repeated leaf is lost. "TVOFX_ORIGINAL_STRING" is written like any other name.
    static std::string ofxDictionaryToString(const ParseDictionary& dictionary);

    /// OFX text with each line indented by one tab for each line above that ends in an open tag.
    /// A line that holds a whole leaf with its close tag counts as an open tag: intended.
    static std::string prettyPrintOfxMessageString(std::string_view text);

private:
    std::array<PatternDateFormatter, 5> dateFormatters_;
    std::shared_ptr<const DateFormatter> userDateFormatter_;
    DecimalNumberFormatter ofxAmountFormatter_;
    std::shared_ptr<const NumberFormatter> userAmountNumberFormatter_;
};

/// A tree as OFX text that is read as the same tree: one element a line, in document order, indented by
/// tabs, at most 16 of them so that no depth makes the text long. Leaves and aggregates are closed, "&", "<"
/// and ">" are escaped, and repeated leaves are written. "TVOFX_ORIGINAL_STRING", which the parser adds to
/// each transaction, is left out; reading adds it again, with the text that was read. The text begins with
/// the first element and has no header:
///
///     std::cout << indentedOFXText(tree);
///
/// No close tag is written for a leaf that is named like the aggregate around it, since that would close
/// the aggregate, nor for a name of more than 64 bytes where the parser can do without.
///
/// Every tree that was read from a document comes back. One that was built in code comes back when it
/// holds nothing that no document can hold. A document's names are not empty, have no ">", begin with no "/"
/// and have no white space at their ends; its texts are not empty and have no white space at their ends.
BRACKWELL_EXPORT std::string indentedOFXText(const ParseDictionary& tree);

/// Hands the text of indentedOFXText to `take` in pieces that end where a line does, so that it need not
/// be kept as a whole. Ends early, and returns false, once `take` returns false; also when `take` is empty.
/// `take` must not be assigned to while it runs.
BRACKWELL_EXPORT bool writeIndentedOFXText(const ParseDictionary& tree,
                                           const std::function<bool(std::string_view)>& take);

}  // namespace brackwell
