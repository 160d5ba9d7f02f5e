// SPDX-License-Identifier: Apache-2.0
#include "open/accounting.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

#include "elements/roles.h"
#include "investments/record_names.h"
#include "open/content.h"
#include "open/judged_places.h"
#include "open/tag_remains.h"

namespace brackwell::opening {
namespace {

using elements::Element;
using reading::Document;
using reading::element;
using reading::NameID;
using reading::Node;

constexpr NameID kSource = element("TVOFX_ORIGINAL_STRING");

/// What an element that is not read is to people.
struct UnreadName {
    std::string_view name;
    Unread what;
};
constexpr UnreadName kUnreadNames[] = {
    {"STMTTRN", Unread::transaction},
    {"STMTTRNP", Unread::transaction},
    {"LOANSTMTTRN", Unread::transaction},
    {"INVTRAN", Unread::transaction},
    {"XFERINFO", Unread::transfer},
    {"PMTINFO", Unread::payment},
    {"OO", Unread::order},
    {"INVPOS", Unread::position},
    {"SECINFO", Unread::security},
    {"ACCTID", Unread::account},
    {"LOANACCTID", Unread::account},
    {"PRESACCTID", Unread::account},
};

/// The elements of an answer that a class reads even when no class reads the rest of it.
constexpr NameID kAnswerParts[] = {element("TRNUID"), element("CLTCOOKIE"), kSource};

bool isAmountOfMoney(std::string_view text) noexcept {
    const std::size_t mark = text.find_last_of(".,");
    if (mark == text.npos || mark + 3 != text.size()) return false;
    return text.find_first_not_of("+-0123456789.,' ") == text.npos;
}

}  // namespace

bool UnreadGroup::holdsRecords() const noexcept {
    return std::any_of(contents.begin(), contents.end() - 1, [](std::size_t number) { return number != 0; });
}

/// Walks through a tree once.
class AccountingWalk {
public:
    AccountingWalk(Accounting& result, const Document& document)
        : result_(result),
          document_(document),
          groups_(document.names().end(), kRead),
          unknown_(document.names().end() - reading::kKnownElementCount) {
        lastOfKind_.fill(kRead);
        quietPlaces_.fill(~std::uint64_t{0});  // of no element
    }

    void run() {
        result_.leftovers_ = document_.leftovers();
        for (std::uint32_t index = 1; index < document_.size(); ++index) {
            while (open_.back().end <= index) open_.pop_back();
            const Node& node = document_.node(index);
            const std::uint32_t group = groupOf(index, node);
            if (group != kRead) addContents(result_.groups_[group], node);
            if (node.isAggregate()) open_.push_back({index, document_.endOf(index), group});
        }
        result_.mendable_ += result_.leftovers_.looseTexts + result_.oddTexts_.count;
    }

private:
    static constexpr std::uint32_t kRead = ~std::uint32_t{0};  ///< no group
    /// Further names share one group of their kind: a longer list would not be read by anybody.
    static constexpr std::size_t kMostGroups = 12;

    /// An aggregate whose children are walked through; the first one is the document.
    struct Open {
        std::uint32_t node;
        std::uint32_t end;
        std::uint32_t group = kRead;  ///< the one that it is in with all its children
    };
    const ElementNature& natureOfNode(const Node& node) {
        const NameID name = node.name();
        if (name < reading::kKnownElementCount) return natureOfKnown(name);
        std::optional<ElementNature>& nature = unknown_[name - reading::kKnownElementCount];
        if (!nature) nature = natureOf(document_.name(node));
        return *nature;
    }
    Element elementOf(std::uint32_t node) {
        return node == 0 ? elements::kUnknown : natureOfNode(document_.node(node)).element;
    }

    /// The group of what is not read, that of the aggregate around it, or kRead.
    std::uint32_t groupOf(std::uint32_t index, const Node& node) {
        const Open& around = open_.back();
        if (around.node == 0 || around.group != kRead || result_.leftovers_.hasOddText)
            return findGroup(index, node);
        // Most elements have the name and the parent of an earlier one that needed no remark.
        const NameID parent = document_.node(around.node).name();
        const std::uint64_t place = std::uint64_t{parent} << 32U | node.nameAndKind;
        std::uint64_t& quiet = quietPlaces_[(place ^ place >> 29U) % quietPlaces_.size()];
        if (quiet == place) return kRead;
        const std::size_t remarks = remarkCount();
        const std::uint32_t group = findGroup(index, node);
        if (group == kRead && remarkCount() == remarks) quiet = place;
        return group;
    }
    std::size_t remarkCount() const noexcept {
        return result_.misplaced_.count + result_.misplaced_.repeated + result_.textOnly_.count;
    }

    std::uint32_t findGroup(std::uint32_t index, const Node& node) {
        const Open& around = open_.back();
        // Records are found wherever they stand.
        if (around.group != kRead && investments::recordNamed(node.name()) == nullptr) return around.group;
        const ElementNature& nature = natureOfNode(node);
        switch (nature.kind) {
            case NameKind::read:
                if (around.node != 0 &&
                    isUnreadIn(document_.name(node), document_.name(document_.node(around.node))))
                    return begin(nature, NameKind::treeOnly, index);
                judge(index, node, nature.element);
                return node.name() == element("STMTTRNP") ? quietGroup() : kRead;
            case NameKind::treeOnly:
                return judge(index, node, nature.element) ? begin(nature, NameKind::treeOnly, index)
                                                          : quietGroup();
            case NameKind::unknown:
                return begin(nature, isAnswer(node, around.node) ? NameKind::treeOnly : NameKind::unknown,
                             index);
            default:
                return begin(nature, nature.kind, index);
        }
    }

    /// True for an element of a message set whose name is that of an answer, although the list of elements
    /// does not have it.
    bool isAnswer(const Node& node, std::uint32_t around) const noexcept {
        return around != 0 && document_.name(node).ends_with("RS") &&
               elements::isMessageSet(document_.name(document_.node(around)));
    }

    /// Counts an element of a name that is not read.
    std::uint32_t begin(const ElementNature& nature, NameKind kind, std::uint32_t index) {
        std::uint32_t& number = groups_[document_.node(index).name()];
        if (number == kRead) number = newGroup(kind);
        UnreadGroup& group = result_.groups_[number];
        if (group.count++ == 0) {
            group.meant = nature.element;
            group.first = index;
            group.parent = open_.back().node;
        }
        const bool isCut = kind == NameKind::unknown && cutsText(document_, index);
        if (isCut && group.firstCut == 0) group.firstCut = index;
        if (kind == NameKind::notCapitals || kind == NameKind::noName || isCut) ++result_.mendable_;
        return number;
    }

    std::uint32_t newGroup(NameKind kind) {
        auto& groups = result_.groups_;
        std::uint32_t& last = lastOfKind_[static_cast<std::size_t>(kind)];
        // Broken tags have no names to group them by, so they are one group.
        const bool isOne = kind == NameKind::noName || groups.size() >= kMostGroups;
        if (isOne && last != kRead) return last;
        last = static_cast<std::uint32_t>(groups.size());
        groups.emplace_back().kind = kind;
        return last;
    }

    void addContents(UnreadGroup& group, const Node& node) {
        const auto note = [&group](Unread what) { ++group.contents[static_cast<std::size_t>(what)]; };
        if (std::ranges::find(kAnswerParts, node.name()) != std::end(kAnswerParts)) return;
        const bool isLeaf = !node.isAggregate();
        if (isLeaf) {
            // A class reads the status of every answer, so its values are not unread.
            if (group.kind == NameKind::treeOnly && isInStatus()) return;
            note(Unread::value);
        }
        const auto* const row = std::ranges::find(kUnreadNames, document_.name(node), &UnreadName::name);
        if (row != std::end(kUnreadNames)) return note(row->what);
        if (!isLeaf) return;
        const Element known = natureOfNode(node).element;
        if (elements::valueTypeOf(known) == elements::ValueType::amount ||
            (known == elements::kUnknown && isAmountOfMoney(document_.text(node))))
            note(Unread::amount);
    }
    bool isInStatus() const noexcept {
        const std::uint32_t around = open_.back().node;
        return around != 0 && document_.node(around).name() == element("STATUS");
    }

    /// False for a known element that has no place where it stands, which is counted.
    bool judge(std::uint32_t index, const Node& node, Element child) {
        if (!node.isAggregate()) lookAtText(index, node, child);
        const std::uint32_t around = open_.back().node;
        if (around == 0) return true;
        const Place place{child, elementOf(around), node.isRepeated()};
        if (!standsWhereItIsRead(place)) {
            result_.misplaced_.add(index, around);
            return false;
        }
        if (countsThere(place)) return true;
        if (isReadOften(place))
            result_.misplaced_.addFurther(index);
        else
            result_.misplaced_.addRepeated(index);
        return true;
    }

    /// The group of what is inside elements that are counted elsewhere, and needs no finding of its own.
    std::uint32_t quietGroup() {
        if (quietGroup_ == kRead) {
            quietGroup_ = static_cast<std::uint32_t>(result_.groups_.size());
            result_.groups_.emplace_back();
        }
        return quietGroup_;
    }

    void lookAtText(std::uint32_t index, const Node& node, Element element) {
        if (node.name() == kSource) return;
        // Records, which people look for, are counted separately.
        if (elements::isAggregate(element) && !isSought(NameFactsTable::known().contentOf(node.name())))
            count(result_.textOnly_, index);
        if (result_.leftovers_.hasOddText && holdsRemains(document_.text(node), element))
            count(result_.oddTexts_, index);
    }
    static void count(UnreadGroup& group, std::uint32_t index) noexcept {
        if (group.count++ == 0) group.first = index;
    }

    Accounting& result_;
    const Document& document_;
    std::vector<std::uint32_t> groups_;                  ///< by name: the group of its elements, or kRead
    std::vector<std::optional<ElementNature>> unknown_;  ///< by name, from the first unknown one on
    /// Places that need no remark: name and kind of an element, and the name of the aggregate around it.
    std::array<std::uint64_t, 256> quietPlaces_;
    std::vector<Open> open_{{0, ~std::uint32_t{0}}};
    std::uint32_t quietGroup_ = kRead;
    std::array<std::uint32_t, kNameKindCount> lastOfKind_;  ///< the last group of each kind, or kRead
};

Accounting::Accounting(const Document& document) { AccountingWalk(*this, document).run(); }

}  // namespace brackwell::opening
