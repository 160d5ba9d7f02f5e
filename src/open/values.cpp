// SPDX-License-Identifier: Apache-2.0
#include "open/values.h"

#include "open/shown_text.h"

namespace brackwell::opening {
namespace {

std::string shown(const Decimal& amount) { return amount.toString(); }
std::string shown(Date date) { return dateDescription(date).substr(0, 10); }

/// Values of which the same is to be said: how many, and the first of them.
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
    /// The same of a value that is read as one and means another.
    template <class Value>
    void add(std::uint32_t at, std::string_view written, const Value& read, const Value& meant) {
        add(at, written, std::optional(read));
        if (count == 1) value += ", not as " + shown(meant);
    }
};

struct OddValues {
    Odd unreadable;
    Odd byEvidence;
    Odd doubtful;
    Odd contradicted;  ///< the caller's formatter makes another value of it
};

template <class Value>
void sort(OddValues& odd, std::uint32_t node, std::string_view text, const WrittenValue<Value>& reading,
          const std::optional<Value>& given) {
    if (given) {
        // Whoever gives a format knows it, unless the document clearly says otherwise.
        const bool isClear = reading.how == ReadingKind::prescribed || reading.how == ReadingKind::byEvidence;
        if (isClear && shown(*given) != shown(*reading.value))
            odd.contradicted.add(node, text, *given, *reading.value);
        return;
    }
    switch (reading.how) {
        case ReadingKind::unreadable:
            return odd.unreadable.add(node, text, reading.value);
        case ReadingKind::byEvidence:
            return odd.byEvidence.add(node, text, reading.value);
        case ReadingKind::doubtful:
            return odd.doubtful.add(node, text, reading.value);
        case ReadingKind::prescribed:
            return;
    }
}

/// A sentence of an odd value: what is said when there is one, and when there are several.
struct Sentence {
    std::string_view one;      ///< stands after "The amount "-0,99" "
    std::string_view several;  ///< stands after "3 amounts such as "-0,99" "
};

class Reporter {
public:
    Reporter(FindingList& findings, const TreePlaces& places, std::string_view one, std::string_view several)
        : findings_(findings), places_(places), one_(one), several_(several) {}

    void say(const Odd& odd, FindingKind kind, FindingSeverity severity, const Sentence& sentence) const {
        if (odd.count == 0) return;
        const bool isOne = odd.count == 1;
        std::string text = isOne ? "The " + std::string(one_)
                                 : std::to_string(odd.count) + " " + std::string(several_) + " such as";
        text.append(" ").append(odd.text).append(" ").append(isOne ? sentence.one : sentence.several);
        if (!odd.value.empty() && (text.ends_with(" as") || text.ends_with(" means")))
            text.append(" ").append(odd.value);
        findings_.add(kind, severity, text.append("."), odd.count, places_.offsetOf(odd.node));
    }

private:
    FindingList& findings_;
    const TreePlaces& places_;
    std::string_view one_;
    std::string_view several_;
};

void reportAmounts(const Reporter& reporter, const OddValues& odd, bool asWritten) {
    reporter.say(odd.contradicted, FindingKind::doubtfulValue, FindingSeverity::warning,
                 {"is, with the number format that was given, read as",
                  "are read with the number format that was given; the first as"});
    reporter.say(odd.unreadable, FindingKind::unreadableValue, FindingSeverity::warning,
                 {"cannot be read and is left out", "cannot be read and are left out"});
    if (asWritten)
        reporter.say(odd.byEvidence, FindingKind::doubtfulValue, FindingSeverity::note,
                     {"is not written as OFX has it; it is read as",
                      "are not written as OFX has it; the first is read as"});
    else
        reporter.say(
            odd.byEvidence, FindingKind::doubtfulValue, FindingSeverity::warning,
            {"is not written as OFX has it and is read wrongly or not at all; it probably means",
             "are not written as OFX has it and are read wrongly or not at all; the first probably means"});
    reporter.say(odd.doubtful, FindingKind::doubtfulValue, FindingSeverity::warning,
                 {"can be read in two ways; it is read as", "can be read in two ways; the first is read as"});
}

void reportDates(const Reporter& reporter, const OddValues& odd, bool asWritten) {
    reporter.say(odd.contradicted, FindingKind::doubtfulValue, FindingSeverity::warning,
                 {"is, with the date format that was given, read as",
                  "are read with the date format that was given; the first as"});
    reporter.say(odd.unreadable, FindingKind::unreadableValue, FindingSeverity::warning,
                 {"cannot be read and is left out", "cannot be read and are left out"});
    if (asWritten)
        reporter.say(odd.byEvidence, FindingKind::doubtfulValue, FindingSeverity::note,
                     {"is not written as OFX has it; it is read as",
                      "are not written as OFX has it; the first is read as"});
    else
        reporter.say(odd.byEvidence, FindingKind::doubtfulValue, FindingSeverity::warning,
                     {"is not written as OFX has it and is not read; it probably means",
                      "are not written as OFX has it and are not read; the first probably means"});
    reporter.say(odd.doubtful, FindingKind::doubtfulValue, FindingSeverity::note,
                 {"is improbable; it is read as", "are improbable; the first is read as"});
}

}  // namespace

void findOddValues(FindingList& findings, const reading::Document& document, const Survey& survey,
                   const OpenOptions& options, const TreePlaces& places) {
    const NumberFormatter* const numbers = options.numberFormatter.get();
    const DateFormatter* const days = options.dateFormatter.get();
    const bool isPlain = survey.amounts.arePlain() && survey.dates.arePlain() && survey.improbableDates == 0;
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
        DateReading reading = survey.dates.read(text);
        if (reading.value && isDoubtful(*reading.value)) reading.how = ReadingKind::doubtful;
        sort(dates, index, text, reading, days != nullptr ? days->dateFromString(text) : std::nullopt);
    }
    reportAmounts({findings, places, "amount", "amounts"}, amounts, options.asWritten);
    reportDates({findings, places, "date", "dates"}, dates, options.asWritten);
}

}  // namespace brackwell::opening
