// SPDX-License-Identifier: Apache-2.0
#include "repair/repair.h"

#include <brackwell/reading.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "parser/document_reader.h"
#include "repair/arrangement.h"
#include "repair/changes.h"
#include "repair/faults.h"
#include "repair/front.h"
#include "repair/oddities.h"
#include "repair/rewriting.h"
#include "repair/tags.h"

namespace brackwell {
namespace {

using repair::Edit;
using repair::Edits;
using repair::Tree;

/// From the worst to the best.
enum class Reading : std::uint8_t { notOFX, fails, readsNothing, reads };

/// What the import makes of a text. It reads nothing where the element is missing in which all is looked
/// for.
Reading readingOf(std::string_view text) {
    Data data = Data::view(text);
    TextEncoding encoding = TextEncodingUTF8;
    const std::optional<Data> decoded = reading::decodeDocument(data, encoding);
    if (!decoded || text.empty()) return Reading::fails;
    TvOFXParserResult result;
    reading::BodyFailure failure;
    switch (reading::readDocument(*decoded, result, failure)) {
        case reading::DocumentReading::notOFX:
            return Reading::notOFX;
        case reading::DocumentReading::malformed:
            return Reading::fails;
        case reading::DocumentReading::read:
            break;
    }
    return (*result.ofxData)["OFX"].isNothing() ? Reading::readsNothing : Reading::reads;
}

/// Where the body begins in a document that has nothing but a byte order mark and white space before it.
std::size_t bodyIndexOf(std::string_view text) {
    const std::size_t begin = repair::recognisedBegin(text);
    const std::string_view document = trimWhiteSpace(text.substr(begin));
    if (!document.starts_with("<?")) return begin;
    ParseDictionary header;
    return begin + TvOFXParser::parseXmlHeader(document, &header);
}

Tree treeOf(std::string_view text) { return {text, bodyIndexOf(text)}; }

/// How much of a text is wrong.
struct Flaws {
    std::size_t oddities = 0;  ///< counted first: what they hide counts for nothing
    repair::Loss loss;
    auto operator<=>(const Flaws&) const = default;
};

/// A text on its way, and all that has been changed in it. What it is worth is found out when somebody asks.
class Repair {
public:
    Repair(std::string_view text, Reading reading) : before_(text), reading_(reading) {}

    Reading reading() {
        if (!reading_) reading_ = readingOf(current());
        return *reading_;
    }
    bool isWhole() {
        return reading() == Reading::reads && flaws().oddities == 0 && flaws().loss.faults == 0;
    }
    /// True when the import finds more in this text than in the other one.
    bool isBetterThan(Repair& other) {
        if (reading() != other.reading()) return reading() > other.reading();
        return reading() == Reading::reads && flaws() < other.flaws();
    }

    void apply(Edits edits) {
        if (edits.empty()) return;
        std::string text = repair::applied(current(), edits);
        apply(std::move(edits), std::move(text), std::nullopt);
    }

    /// Tags and how they are nested.
    void mendTags() {
        const std::size_t begin = bodyIndexOf(current());
        const std::string_view body = current().substr(begin);
        Edits edits = repair::tagEdits(body);
        for (Edit& edit : edits) edit.offset += begin;
        apply(std::move(edits));
    }

    /// Elements where they cannot stand. The parser's word counts: what it would refuse is not done.
    void mendStructure() {
        Edits edits = repair::editsFor(repair::arranged(treeOf(current())));
        if (edits.empty()) return;
        std::string text = repair::applied(current(), edits);
        const Reading after = readingOf(text);
        if (after == Reading::reads || after >= reading()) apply(std::move(edits), std::move(text), after);
    }

    std::vector<RepairChange> takeChanges() { return repair::changesOf(before_, std::move(edits_)); }
    /// Nothing else is to be asked afterwards.
    std::string takeText() { return changed_ ? std::move(*changed_) : std::string(before_); }

private:
    std::string_view current() const noexcept { return changed_ ? std::string_view(*changed_) : before_; }

    void apply(Edits edits, std::string text, std::optional<Reading> reading) {
        edits_ = edits_.empty() ? std::move(edits) : repair::composed(before_, std::move(edits_), edits);
        changed_ = std::make_shared<std::string>(std::move(text));
        reading_ = reading;
        flaws_.reset();
    }

    const Flaws& flaws() {
        if (!flaws_) {
            const Tree tree = treeOf(current());
            flaws_ = Flaws{repair::odditiesOf(tree), repair::lossOf(tree)};
        }
        return *flaws_;
    }

    std::string_view before_;
    std::shared_ptr<std::string> changed_;  ///< the text; null while it is the one before. Copies share it
    Edits edits_;
    std::optional<Reading> reading_;  ///< what the import makes of the text
    std::optional<Flaws> flaws_;
};

/// Nothing for a text that is out of scope.
std::optional<Repair> repairOf(std::string_view text, RepairScope scope) {
    if (!isValidUTF8(text) || isOFCText(text)) return std::nullopt;
    const Reading reading = readingOf(text);
    if (reading == Reading::reads && scope == RepairScope::unread) return std::nullopt;

    Repair repair(text, reading);
    if (reading == Reading::notOFX) {
        repair::Front front = repair::findFront(text);
        if (!front.isDocument) return std::nullopt;
        repair.apply(std::move(front.edits));
    } else {
        repair.apply(repair::headerEdits(text));
    }
    // One round is nearly always enough; what shows only after something else was repaired takes another.
    constexpr int kRounds = 8;
    for (int round = 0; round < kRounds && !repair.isWhole(); ++round) {
        Repair next = repair;
        next.mendTags();
        next.mendStructure();
        if (!next.isBetterThan(repair)) break;
        repair = std::move(next);
        if (scope == RepairScope::unread && repair.reading() == Reading::reads) break;
    }
    return repair;
}

}  // namespace

bool isOFCText(std::string_view text) noexcept { return repair::isOFC(text); }

RepairedText repairOFXText(std::string_view text, RepairScope scope) {
    std::optional<Repair> repair = repairOf(text, scope);
    if (!repair) return {std::string(text), {}, {}};
    RepairedText repaired;
    repaired.text = repair->takeText();
    repaired.changes = repair->takeChanges();
    repaired.remaining = repair::remarksOf(treeOf(repaired.text));
    return repaired;
}

std::vector<RepairChange> repair::changesOfRepair(std::string_view text) {
    std::optional<Repair> repair = repairOf(text, RepairScope::unread);
    return repair ? repair->takeChanges() : std::vector<RepairChange>();
}

}  // namespace brackwell
