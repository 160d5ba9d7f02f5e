// SPDX-License-Identifier: Apache-2.0
#include "repair/rewriting.h"

#include <brackwell/platform.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brackwell::repair {
namespace {

/// A tag of an aggregate, or a leaf, in the order that the result has them.
struct Item {
    NodeID node;
    bool isClose;
    bool isKept;  ///< at its place in the text
    NodeID why;   ///< the node whose mark has the reason when it is not
};

/// Finds the most items that can stay where they are: those of the longest sequence in which each stands
/// after the one before it.
class LongestRun {
public:
    explicit LongestRun(std::size_t size) : before_(size) {}

    void add(std::uint32_t item, std::uint32_t place) {
        auto at = ends_.end();
        if (!ends_.empty() && place < ends_.back().place)
            at = std::ranges::lower_bound(ends_, place, {}, &End::place);
        before_[item] = at == ends_.begin() ? kNowhere : std::prev(at)->item;
        if (at == ends_.end())
            ends_.push_back({place, item});
        else
            *at = {place, item};
    }

    template <class Use>
    void forEach(Use use) const {
        for (std::uint32_t item = ends_.empty() ? kNowhere : ends_.back().item; item != kNowhere;
             item = before_[item])
            use(item);
    }

private:
    struct End {
        std::uint32_t place;
        std::uint32_t item;
    };
    std::vector<End> ends_;  ///< by length: of the sequences of this length, the one that ends first
    std::vector<std::uint32_t> before_;
};

class Rewriter {
public:
    explicit Rewriter(const Arrangement& arrangement)
        : tree_(arrangement.tree), marks_(arrangement.marks), text_(tree_.text()) {}

    Edits run() {
        listItems();
        keepMost();
        keepCloseTags();
        explainRest();
        Edits put = insertions();
        return merged(std::move(put), drops());
    }

private:
    // -----------------------------------------------------------------------------------------
    // The items and which of them stay

    /// Walks through the tree without recursion. What has no reason of its own moves for that of the
    /// aggregate around it.
    void listItems() {
        std::vector<NodeID> reasons{kNoNode};  // of the open nodes
        NodeID node = tree_[Tree::kDocument].first;
        while (node != kNoNode) {
            const NodeID why = hasMark(node) ? node : reasons.back();
            items_.push_back({node, false, false, why});
            if (tree_[node].first != kNoNode) {
                reasons.push_back(why);
                node = tree_[node].first;
                continue;
            }
            if (!tree_[node].isLeaf) items_.push_back({node, true, false, why});
            while (node != kNoNode && tree_[node].next == kNoNode) {
                node = tree_[node].parent;
                if (node == Tree::kDocument) return;
                items_.push_back({node, true, false, reasons.back()});
                reasons.pop_back();
            }
            node = tree_[node].next;
        }
    }
    bool hasMark(NodeID node) const noexcept { return !marks_[node].reason.empty(); }

    const Stretch& placeOf(const Item& item) const noexcept {
        return item.isClose ? tree_[item.node].close : tree_[item.node].open;
    }

    /// Close tags are left to the next step: what is inside of an aggregate decides where it ends.
    void keepMost() {
        LongestRun run(items_.size());
        for (std::uint32_t i = 0; i < items_.size(); ++i)
            if (!items_[i].isClose && placeOf(items_[i]).isThere()) run.add(i, placeOf(items_[i]).begin);
        run.forEach([this](std::size_t item) { items_[item].isKept = true; });
    }

    /// Keeps a close tag that is already between the items before and after it.
    void keepCloseTags() {
        std::vector<std::uint32_t> nexts(items_.size());
        auto next = static_cast<std::uint32_t>(text_.size());
        for (std::size_t i = items_.size(); i > 0;) {
            nexts[--i] = next;
            if (items_[i].isKept) next = placeOf(items_[i]).begin;
        }
        std::size_t at = 0;
        for (std::size_t i = 0; i < items_.size(); ++i) {
            Item& item = items_[i];
            const Stretch& place = placeOf(item);
            if (item.isClose && place.isThere()) item.isKept = place.begin >= at && place.end <= nexts[i];
            if (item.isKept) at = place.end;
        }
    }

    /// An item that moves only to make room for another takes over the reason of the nearest one that has a
    /// reason, before it or else after it.
    void explainRest() {
        NodeID why = kNoNode;
        const auto explain = [&why](Item& item) {
            if (item.why != kNoNode)
                why = item.why;
            else if (!item.isKept)
                item.why = why;
        };
        std::ranges::for_each(items_, explain);
        why = kNoNode;
        for (auto item = items_.rbegin(); item != items_.rend(); ++item) explain(*item);
    }

    // -----------------------------------------------------------------------------------------
    // Insertions

    std::string textOf(const Item& item) const {
        const Node& node = tree_[item.node];
        if (item.isClose) return closeTag(tree_.name(item.node));
        if (!node.isLeaf) return openTag(tree_.name(item.node));
        return std::string(text_.substr(node.open.begin, node.open.end - node.open.begin));
    }
    bool isRenamed(const Item& item) const noexcept { return marks_[item.node].isRenamed; }

    RepairKind kindOf(const Item& item) const noexcept {
        if (!placeOf(item).isThere())
            return item.isClose ? RepairKind::missingClose : RepairKind::missingOpen;
        return RepairKind::misplaced;
    }
    std::string reasonOf(const Item& item) const {
        if (item.isClose && !marks_[item.node].closeReason.empty()) return marks_[item.node].closeReason;
        return item.why == kNoNode ? std::string() : marks_[item.why].reason;
    }

    /// Inserts everything that does not stay at its new place, and writes the tags with a new name.
    Edits insertions() {
        Edits edits;
        std::size_t at = 0;
        for (std::size_t i = 0; i < items_.size();) {
            std::size_t end = i;
            while (end < items_.size() && !items_[end].isKept) ++end;
            // Open tags are inserted directly before what they contain; all else directly after what it
            // follows.
            std::size_t opens = end;
            while (opens > i && !items_[opens - 1].isClose && !tree_[items_[opens - 1].node].isLeaf) --opens;
            put(edits, i, opens, at);
            const std::size_t next = end < items_.size() ? placeOf(items_[end]).begin : text_.size();
            put(edits, opens, end, next);
            if (end == items_.size()) break;
            const Stretch& place = placeOf(items_[end]);
            if (isRenamed(items_[end]))
                edits.push_back({place.begin, place.end - place.begin, RepairKind::wrongName,
                                 textOf(items_[end]), marks_[items_[end].node].reason});
            at = place.end;
            i = end + 1;
        }
        return edits;
    }

    /// True for a leaf without close tag that would take what follows for its text.
    bool needsClose(const Item& item, std::size_t offset) const noexcept {
        if (item.isClose || !tree_[item.node].isLeaf) return false;
        const Stretch& place = placeOf(item);
        const std::string_view leaf = text_.substr(place.begin, place.end - place.begin);
        return leaf.rfind('<') == 0 &&
               text_[std::min(text_.find_first_not_of(" \t\r\n", offset), text_.size() - 1)] != '<';
    }

    /// Inserts items at one place. Neighbours that move for the same reason are one change.
    void put(Edits& edits, std::size_t begin, std::size_t end, std::size_t offset) {
        for (std::size_t i = begin; i < end; ++i) {
            const Item& item = items_[i];
            const RepairKind kind = kindOf(item);
            std::string reason = reasonOf(item);
            const bool continues = i > begin && edits.back().kind == kind && kind == RepairKind::misplaced &&
                                   edits.back().reason == reason;
            if (continues)
                edits.back().now.append(blanksAfter(items_[i - 1], item)).append(textOf(item));
            else
                edits.push_back({offset, 0, kind, textOf(item), std::move(reason)});
        }
        if (begin < end && needsClose(items_[end - 1], offset))
            edits.back().now += closeTag(tree_.name(items_[end - 1].node));
    }

    /// The blanks between two items that stay together.
    std::string_view blanksAfter(const Item& before, const Item& item) const noexcept {
        const std::size_t begin = placeOf(before).end;
        const std::size_t end = placeOf(item).begin;
        if (end < begin) return {};
        const std::string_view between = text_.substr(begin, end - begin);
        return trimWhiteSpace(between).empty() ? between : std::string_view();
    }

    // -----------------------------------------------------------------------------------------
    // Removals

    struct Drop {
        Stretch place;
        RepairKind kind;
        std::string reason;
    };

    Edits drops() {
        std::vector<Drop> found;
        std::vector<bool> isListed(tree_.size(), false);
        for (const Item& item : items_) {
            isListed[item.node] = true;
            if (!item.isKept && placeOf(item).isThere())
                found.push_back({placeOf(item), RepairKind::misplaced, reasonOf(item)});
        }
        // Nodes that are no longer in the tree were merged into others; only their tags go.
        for (NodeID node = 1; node < tree_.size(); ++node) {
            if (isListed[node]) continue;
            for (const Stretch& place : {tree_[node].open, tree_[node].close})
                if (place.isThere()) found.push_back({place, RepairKind::repeated, marks_[node].reason});
        }
        std::ranges::sort(found, {}, [](const Drop& drop) { return drop.place.begin; });
        Edits edits;
        for (Drop& drop : found) addDrop(edits, std::move(drop));
        return edits;
    }

    void addDrop(Edits& edits, Drop drop) {
        const std::size_t end = endWithText(drop.place.end);
        if (!edits.empty() && edits.back().kind == drop.kind && edits.back().reason == drop.reason) {
            Edit& last = edits.back();
            const std::size_t lastEnd = last.offset + last.size;
            if (trimWhiteSpace(text_.substr(lastEnd, drop.place.begin - lastEnd)).empty()) {
                last.size = end - last.offset;
                return;
            }
        }
        edits.push_back({drop.place.begin, end - drop.place.begin, drop.kind, {}, std::move(drop.reason)});
    }

    /// Text after a removed tag or leaf goes with it: it belongs to no element, and would become the text of
    /// another.
    std::size_t endWithText(std::size_t begin) const noexcept {
        const std::size_t end = std::min(text_.find('<', begin), text_.size());
        const std::string_view text = trimWhiteSpace(text_.substr(begin, end - begin));
        return text.empty() ? begin : end;
    }

    const Tree& tree_;
    const Marks& marks_;
    std::string_view text_;
    std::vector<Item> items_;
};

}  // namespace

Edits editsFor(const Arrangement& arrangement) {
    if (!arrangement.isChanged) return {};
    return Rewriter(arrangement).run();
}

}  // namespace brackwell::repair
