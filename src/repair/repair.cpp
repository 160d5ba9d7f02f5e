// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>
#include <brackwell/repair.h>

#include "reading/document_reader.h"
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

/// Where the body begins in a document that has nothing but a mark and white space in front of it.
std::size_t bodyIndexOf(std::string_view text) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    const std::string_view document = trimWhiteSpace(text.substr(text.starts_with(mark) ? mark.size() : 0));
    const auto begin = static_cast<std::size_t>(document.data() - text.data());
    if (!document.starts_with("<?")) return begin;
    ParseDictionary header;
    return begin + TvOFXParser::parseXmlHeader(document, &header);
}

Tree treeOf(std::string_view text) { return {text, bodyIndexOf(text)}; }

/// A text on its way, and all that has been changed in it.
class Repair {
public:
    explicit Repair(std::string_view text) : before_(text), text_(text) {}

    const std::string& text() const noexcept { return text_; }

    void apply(Edits edits) {
        if (edits.empty()) return;
        std::string text = repair::applied(text_, edits);
        edits_ = edits_.empty() ? std::move(edits) : repair::composed(before_, std::move(edits_), edits);
        text_ = std::move(text);
    }

    /// Tags and how they are nested.
    void mendTags() {
        const std::size_t begin = bodyIndexOf(text_);
        const std::string_view body = std::string_view(text_).substr(begin);
        Edits edits = repair::tagEdits(body);
        for (Edit& edit : edits) edit.offset += begin;
        apply(std::move(edits));
    }

    /// Elements where they cannot stand. The parser's word counts: what it would refuse is not done.
    void mendStructure() {
        const Edits edits = repair::editsFor(repair::arranged(treeOf(text_)));
        if (edits.empty()) return;
        const Reading reading = readingOf(repair::applied(text_, edits));
        if (reading == Reading::reads || reading >= readingOf(text_)) apply(edits);
    }

    RepairedText finish() && {
        RepairedText repaired{std::move(text_), repair::changesOf(before_, std::move(edits_)), {}};
        repaired.remaining = repair::remarksOf(treeOf(repaired.text));
        return repaired;
    }

private:
    std::string_view before_;
    std::string text_;
    Edits edits_;
};

/// How much of a text the import finds, from the worst to the best.
struct Worth {
    explicit Worth(std::string_view text) : Worth(text, readingOf(text)) {}
    Worth(std::string_view text, Reading itsReading) : reading(itsReading) {
        if (reading != Reading::reads) return;
        const Tree tree = treeOf(text);
        oddities = repair::odditiesOf(tree);
        loss = repair::lossOf(tree);
    }
    bool isWhole() const noexcept { return reading == Reading::reads && loss.faults == 0 && oddities == 0; }
    bool operator<(const Worth& other) const noexcept {
        if (reading != other.reading) return reading < other.reading;
        return oddities != other.oddities ? other.oddities < oddities : other.loss < loss;
    }

    Reading reading;
    std::size_t oddities = 0;  ///< counted first: what they hide counts for nothing
    repair::Loss loss;
};

RepairedText unchanged(std::string_view text) { return {std::string(text), {}, {}}; }

}  // namespace

bool isOFCText(std::string_view text) noexcept { return repair::isOFC(text); }

RepairedText repairOFXText(std::string_view text, RepairScope scope) {
    if (!isValidUTF8(text) || isOFCText(text)) return unchanged(text);
    const Reading reading = readingOf(text);
    if (reading == Reading::reads && scope == RepairScope::unread) return unchanged(text);

    Repair repair(text);
    if (reading == Reading::notOFX) {
        repair::Front front = repair::findFront(text);
        if (!front.isDocument) return unchanged(text);
        repair.apply(std::move(front.edits));
    } else {
        repair.apply(repair::headerEdits(text));
    }
    // Nearly always once is enough. What is found only after something else was mended takes another round.
    constexpr int kRounds = 8;
    Worth worth = repair.text() == text ? Worth(text, reading) : Worth(repair.text());
    for (int round = 0; round < kRounds && !worth.isWhole(); ++round) {
        Repair next = repair;
        next.mendTags();
        next.mendStructure();
        const Worth nextWorth(next.text());
        if (!(worth < nextWorth)) break;
        repair = std::move(next);
        worth = nextWorth;
        if (scope == RepairScope::unread && worth.reading == Reading::reads) break;
    }
    return std::move(repair).finish();
}

}  // namespace brackwell
