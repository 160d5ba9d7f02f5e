// SPDX-License-Identifier: Apache-2.0
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "open/accounting.h"
#include "open/shown_text.h"
#include "repair/remains.h"

namespace brackwell::opening {
namespace {

using reading::Document;

struct UnreadWords {
    std::string_view one;
    std::string_view several;
};
/// By Unread.
constexpr UnreadWords kUnreadWords[] = {
    {"transaction", "transactions"},
    {"transfer", "transfers"},
    {"payment", "payments"},
    {"order", "orders"},
    {"position", "positions"},
    {"security", "securities"},
    {"account number", "account numbers"},
    {"amount", "amounts"},
    {"value", "values"},
};
static_assert(std::size(kUnreadWords) == kUnreadCount);

/// "; in it are 2 transactions, 3 amounts and 12 values"; nothing for what is one value itself.
std::string contentsOf(const UnreadGroup& group) {
    std::vector<std::string> parts;
    for (std::size_t i = 0; i < kUnreadCount; ++i)
        if (group.contents[i] != 0)
            parts.push_back(counted(group.contents[i], kUnreadWords[i].one, kUnreadWords[i].several));
    return enumerated(parts);
}

class UnreadReporter {
public:
    UnreadReporter(FindingList& findings, const Document& document, const TreePlaces& places)
        : findings_(findings), document_(document), places_(places) {}

    void say(const UnreadGroup& group) {
        switch (group.kind) {
            case NameKind::read:
                return;
            case NameKind::treeOnly:
                return sayTreeOnly(group);
            case NameKind::extension:
                return sayExtension(group);
            case NameKind::notCapitals:
            case NameKind::unknown:
                return sayUnknown(group);
            case NameKind::noName:
                return add(group, FindingKind::brokenTag, FindingSeverity::warning,
                           counted(group.count, "tag is not valid, so the text after it",
                                   "tags are not valid, so the text after them") +
                               " is not read" + first(group) + shownBroken(tagOf(group)) + ".");
        }
    }

    void sayOddTexts(const UnreadGroup& odd) {
        if (odd.count == 0) return;
        add(odd, FindingKind::brokenTag, FindingSeverity::warning,
            counted(odd.count, "text seems to contain a tag that has lost its \"<\"",
                    "texts seem to contain tags that have lost their \"<\"") +
                first(odd) + shown(document_.text(document_.node(odd.first))) + " of " +
                tagOfName(nameOf(odd.first)) + ".");
    }

    void sayTextOnly(const UnreadGroup& group) {
        if (group.count == 0) return;
        add(group, FindingKind::notDelivered, FindingSeverity::warning,
            counted(group.count, "aggregate has text instead of elements, so it is not read",
                    "aggregates have text instead of elements, so they are not read") +
                first(group) + tagOfName(nameOf(group.first)) + ", " +
                shown(document_.text(document_.node(group.first))) + ".");
    }

    void sayLooseTexts(const reading::Leftovers& leftovers) {
        if (leftovers.looseTexts == 0) return;
        const std::string_view text = document_.body().substr(leftovers.firstLooseText);
        const std::size_t offset = document_.bodyOffset() + leftovers.firstLooseText;
        findings_.add(FindingKind::looseText, FindingSeverity::warning,
                      counted(leftovers.looseTexts, "text is between elements and belongs to none",
                              "texts are between elements and belong to none") +
                          (leftovers.looseTexts == 1 ? ": " : "; the first is ") +
                          shown(trimWhiteSpace(text.substr(0, text.find('<')))) + ".",
                      leftovers.looseTexts, places_.originalOffset(offset));
    }

    /// What stands beside records and is not read, all in one finding.
    void sayDetails() {
        if (details_.count == 0) return;
        add(details_, FindingKind::treeOnly, FindingSeverity::note,
            counted(details_.count, "element is", "elements are") +
                " available only in the parse tree: " + detailNames_ + ".");
    }

private:
    std::string_view nameOf(std::uint32_t node) const noexcept {
        return document_.name(document_.node(node));
    }
    std::string_view tagOf(const UnreadGroup& group) const noexcept { return nameOf(group.first); }
    /// A part of the text; what the tree has of its own, with entities in it, is not looked up.
    std::string shown(std::string_view text) const {
        const std::string_view source = document_.source().bytes();
        const bool isPart =
            text.data() >= source.data() && text.data() + text.size() <= source.data() + source.size();
        if (!isPart) return "(not shown)";
        return quotedUnlessSecret(source, static_cast<std::size_t>(text.data() - source.data()), text.size());
    }
    /// Of a broken tag that begins with a known name no more than that: the rest may be a key.
    std::string shownBroken(std::string_view text) const {
        const std::string_view name = repair::nameWithoutEnd(text);
        return name.empty() ? shown(text) : quoted(name);
    }
    static const char* first(const UnreadGroup& group) noexcept {
        return group.count == 1 ? ": " : "; the first is ";
    }

    void add(const UnreadGroup& group, FindingKind kind, FindingSeverity severity, std::string text) {
        findings_.add(kind, severity, std::move(text), group.count, places_.offsetOf(group.first));
    }

    void sayTreeOnly(const UnreadGroup& group) {
        if (group.isEmpty()) return;
        if (!group.holdsRecords()) return addDetail(group);
        add(group, FindingKind::treeOnly, FindingSeverity::warning,
            counted(group.count, "element is", "elements are") +
                " available only in the parse tree: " + tagOfName(tagOf(group)) + contents(group) + ".");
    }

    void addDetail(const UnreadGroup& group) {
        constexpr std::size_t longest = 200;
        if (details_.count == 0)
            details_ = group;
        else
            details_.count += group.count;
        if (detailNames_.size() < longest)
            detailNames_.append(detailNames_.empty() ? "" : ", ").append(tagOfName(tagOf(group)));
    }

    void sayExtension(const UnreadGroup& group) {
        const bool isLeaf = !document_.node(group.first).isAggregate();
        if (group.isEmpty() || (isLeaf && !group.holdsRecords())) return;
        add(group, FindingKind::unknownElement,
            group.holdsRecords() ? FindingSeverity::warning : FindingSeverity::note,
            counted(group.count, "private element of the institution is",
                    "private elements of the institution are") +
                " not read: " + tagOfName(tagOf(group)) + contents(group) + ".");
    }

    void sayUnknown(const UnreadGroup& group) {
        if (group.isEmpty()) return;
        std::string text = counted(group.count, "element is", "elements are") +
                           " not read: " + tagOfName(tagOf(group)) + " is not in the OFX standard";
        const elements::Element parent = elements::findElement(nameOf(group.parent));
        const std::string_view meant = group.meant != elements::kUnknown
                                           ? elements::nameOf(group.meant)
                                           : similarElement(tagOf(group), parent);
        if (!meant.empty()) text.append(", which has ").append(tagOfName(meant));
        if (group.firstCut != 0)
            text.append("; it cuts off the text of ")
                .append(tagOfName(nameOf(group.firstCut - 1)))
                .append(" before it");
        add(group, FindingKind::unknownElement, FindingSeverity::warning, text + contents(group) + ".");
    }

    std::string contents(const UnreadGroup& group) const {
        if (!document_.node(group.first).isAggregate() || group.isEmpty()) return {};
        return (group.count == 1 ? "; in it: " : "; in them: ") + contentsOf(group);
    }

    FindingList& findings_;
    const Document& document_;
    const TreePlaces& places_;
    UnreadGroup details_;
    std::string detailNames_;
};

}  // namespace

void Accounting::addFindings(FindingList& findings, const Document& document,
                             const TreePlaces& places) const {
    UnreadReporter reporter(findings, document, places);
    for (const UnreadGroup& group : groups_) reporter.say(group);
    reporter.sayTextOnly(textOnly_);
    reporter.sayOddTexts(oddTexts_);
    reporter.sayLooseTexts(leftovers_);
    reporter.sayDetails();
}

}  // namespace brackwell::opening
