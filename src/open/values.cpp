// SPDX-License-Identifier: Apache-2.0
#include "open/values.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "open/shown_text.h"

namespace brackwell::opening {
namespace {

std::string shown(const Decimal& amount) { return amount.toString(); }
std::string dayOf(Date date) { return dateDescription(date).substr(0, 10); }

/// The day, and the time where there is one.
std::string shown(Date date) {
    const bool isDay = date == std::chrono::floor<std::chrono::days>(date);
    return isDay ? dayOf(date) : dateDescription(date).substr(0, 19) + " UTC";
}

/// Two formats may read more or less of the time.
bool isSame(const Decimal& a, const Decimal& b) { return a == b; }
bool isSame(Date a, Date b) { return dayOf(a) == dayOf(b); }

/// Values that share one finding: how many there are, and the first of them.
struct Odd {
    std::size_t count = 0;
    std::uint32_t node = 0;
    std::string text;   ///< as the document has it
    std::string value;  ///< as it is read

    template <class Value>
    void add(std::uint32_t at, std::string_view written, const std::optional<Value>& read) {
        if (count++ != 0) return;
        node = at;
        text = quoted(written);
        if (read) value = shown(*read);
    }
    /// The same for a value that is read as one number or date but means another.
    template <class Value>
    void add(std::uint32_t at, std::string_view written, const Value& read, const Value& meant) {
        add(at, written, std::optional(read));
        if (count == 1) value += ", not as " + shown(meant);
    }
};

struct OddValues {
    Odd unreadable;
    Odd ambiguous;  ///< of dates: the text can mean two days
    Odd byEvidence;
    Odd byOrder;  ///< of dates: the same, but the other dates of the file show which
    Odd doubtful;
    Odd contradicted;  ///< the caller's formatter makes another value of it
};

template <class Value>
void sort(OddValues& odd, std::uint32_t node, std::string_view text, const WrittenValue<Value>& reading,
          const std::optional<Value>& given) {
    if (given) {
        // Whoever gives a format knows it, unless the document clearly says otherwise.
        const bool isClear = reading.how == ReadingKind::prescribed || reading.how == ReadingKind::byEvidence;
        if (isClear && !isSame(*given, *reading.value))
            odd.contradicted.add(node, text, *given, *reading.value);
        return;
    }
    switch (reading.how) {
        case ReadingKind::unreadable:
        case ReadingKind::ambiguous:
            return odd.unreadable.add(node, text, reading.value);
        case ReadingKind::byEvidence:
            return odd.byEvidence.add(node, text, reading.value);
        case ReadingKind::doubtful:
            return odd.doubtful.add(node, text, reading.value);
        case ReadingKind::prescribed:
            return;
    }
}

/// A date that by itself can mean two days.
void sortEither(OddValues& odd, std::uint32_t node, std::string_view text, const EitherDay& either) {
    const std::optional<Date> day = either.day();
    Odd& group = day ? odd.byOrder : odd.ambiguous;
    group.add(node, text, day);
    if (group.count != 1) return;
    if (day)
        group.value.append(", with the ")
            .append(either.order == DateOrder::dayFirst ? "day" : "month")
            .append(" first, like the other dates of the file");
    else
        group.value = shown(either.dayFirst) + " or " + shown(either.monthFirst);
}

/// The rest of the sentence about odd values, for one and for several. "{}" is replaced by the value.
struct Sentence {
    std::string_view one;      ///< follows "The amount "-0,99" "
    std::string_view several;  ///< follows "3 amounts such as "-0,99" "
};

/// The words that differ between amounts and dates.
struct Words {
    std::string_view one;
    std::string_view several;
    Sentence contradicted;
    Sentence notAsWritten;
    Sentence doubtful;
    FindingSeverity doubtfulSeverity;
};

constexpr Words kAmountWords{
    "amount",
    "amounts",
    {"is read as {}, because of the given number format",
     "are read with the given number format; the first as {}"},
    {"is not in OFX format and is read wrongly or not at all; it probably means {}",
     "are not in OFX format and are read wrongly or not at all; the first probably means {}"},
    {"can be read in two ways; it is read as {}", "can be read in two ways; the first is read as {}"},
    FindingSeverity::warning,
};
constexpr Words kDateWords{
    "date",
    "dates",
    {"is read as {}, because of the given date format",
     "are read with the given date format; the first as {}"},
    {"is not in OFX format and is not read; it probably means {}",
     "are not in OFX format and are not read; the first probably means {}"},
    {"is improbable; it is read as {}", "are improbable; the first is read as {}"},
    FindingSeverity::note,
};

class OddValueReporter {
public:
    OddValueReporter(FindingList& findings, const TreePlaces& places, const Words& words, bool asWritten)
        : findings_(findings), places_(places), words_(words), asWritten_(asWritten) {}

    void report(const OddValues& odd) const {
        say(odd.contradicted, FindingKind::doubtfulValue, FindingSeverity::warning, words_.contradicted);
        say(odd.unreadable, FindingKind::unreadableValue, FindingSeverity::warning,
            {"cannot be read and is left out", "cannot be read and are left out"});
        say(odd.ambiguous, FindingKind::unreadableValue, FindingSeverity::warning,
            {"can mean {}; the other dates of the file do not show which, so it is left out",
             "can mean two days, this one {}; the other dates of the file do not show which, so they are "
             "left out"});
        sayEvidence(odd.byEvidence);
        sayEvidence(odd.byOrder);
        say(odd.doubtful, FindingKind::doubtfulValue, words_.doubtfulSeverity, words_.doubtful);
    }

private:
    /// For values with a clear meaning that the prescribed reading does not find.
    void sayEvidence(const Odd& odd) const {
        if (asWritten_)
            say(odd, FindingKind::doubtfulValue, FindingSeverity::note,
                {"is not in OFX format; it is read as {}", "are not in OFX format; the first is read as {}"});
        else
            say(odd, FindingKind::doubtfulValue, FindingSeverity::warning, words_.notAsWritten);
    }

    void say(const Odd& odd, FindingKind kind, FindingSeverity severity, const Sentence& sentence) const {
        if (odd.count == 0) return;
        const bool isOne = odd.count == 1;
        std::string text = isOne ? "The " + std::string(words_.one)
                                 : std::to_string(odd.count) + " " + std::string(words_.several) + " such as";
        std::string said(isOne ? sentence.one : sentence.several);
        if (const std::size_t place = said.find("{}"); place != said.npos) said.replace(place, 2, odd.value);
        text.append(" ").append(odd.text).append(" ").append(said).append(".");
        findings_.add(kind, severity, std::move(text), odd.count, places_.offsetOf(odd.node));
    }

    FindingList& findings_;
    const TreePlaces& places_;
    const Words& words_;
    bool asWritten_;
};

}  // namespace

void findOddValues(FindingList& findings, const reading::Document& document, const Survey& survey,
                   const OpenOptions& options, const TreePlaces& places) {
    const NumberFormatter* const numbers = options.numberFormatter.get();
    const DateFormatter* const days = options.dateFormatter.get();
    const bool isPlain = survey.amounts.arePlain() && survey.dates.arePlain() && !survey.dates.areDoubtful();
    if (isPlain && numbers == nullptr && days == nullptr) return;
    OddValues amounts;
    OddValues dates;
    for (std::uint32_t index = 1; index < document.size(); ++index) {
        const reading::Node& node = document.node(index);
        const Content content = NameFactsTable::known().contentOf(node.name());
        if (!isLeafContent(content) || node.isAggregate()) continue;
        const std::string_view text = document.text(node);
        if (content == Content::amount)
            sort(amounts, index, text, survey.amounts.read(text),
                 numbers != nullptr ? numbers->numberFromString(text) : std::nullopt);
        if (content != Content::date) continue;
        const std::optional<Date> given = days != nullptr ? days->dateFromString(text) : std::nullopt;
        const std::optional<EitherDay> either = given ? std::nullopt : survey.dates.eitherDay(text);
        DateReading reading = survey.dates.read(text);
        if (reading.value && isDoubtful(*reading.value)) reading.how = ReadingKind::doubtful;
        if (either && reading.how != ReadingKind::doubtful)
            sortEither(dates, index, text, *either);
        else
            sort(dates, index, text, reading, given);
    }
    OddValueReporter(findings, places, kAmountWords, options.asWritten).report(amounts);
    OddValueReporter(findings, places, kDateWords, options.asWritten).report(dates);
}

}  // namespace brackwell::opening
