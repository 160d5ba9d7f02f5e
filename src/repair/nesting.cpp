// SPDX-License-Identifier: Apache-2.0
#include "repair/nesting.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "platform/ascii_case.h"
#include "repair/partners.h"

namespace brackwell::repair {
namespace {

using elements::Element;
using elements::Kind;

/// True when one name may be a misspelling of the other: shortened at an end, or with at most two letters
/// in a row that differ.
bool resembles(std::string_view a, std::string_view b) noexcept {
    if (a.size() > b.size()) std::swap(a, b);
    if (a.size() < 3) return equalsIgnoringCase(a, b);
    if (b.starts_with(a) || b.ends_with(a)) return true;
    const auto same = [](char x, char y) { return smallLetter(x) == smallLetter(y); };
    const auto begin = std::ranges::mismatch(a, b, same).in1 - a.begin();
    const auto end = std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend(), same).first - a.rbegin();
    return static_cast<std::size_t>(begin + end) + 2 >= b.size();
}

/// The children of an open aggregate that have come by, as bits by their place in its row.
class ChildSet {
public:
    bool has(const elements::Child& child, Element parent) const noexcept {
        return (words_[index(child, parent) / 64] & bit(child, parent)) != 0;
    }
    void add(const elements::Child& child, Element parent) noexcept {
        words_[index(child, parent) / 64] |= bit(child, parent);
    }
    void remove(const elements::Child& child, Element parent) noexcept {
        words_[index(child, parent) / 64] &= ~bit(child, parent);
    }

private:
    static std::size_t index(const elements::Child& child, Element parent) noexcept {
        return static_cast<std::size_t>(&child - elements::childrenOf(parent).data()) % 128;
    }
    static std::uint64_t bit(const elements::Child& child, Element parent) noexcept {
        return std::uint64_t{1} << index(child, parent) % 64;
    }
    std::array<std::uint64_t, 2> words_{};
};

/// Follows the body parser through the tags as they will stand: which aggregates are open, and which
/// element is pending. So it knows of each close tag whether the parser will accept it.
class NestingRepair {
public:
    NestingRepair(std::string_view body, const std::vector<Tag>& tags, reading::NameTable& names)
        : body_(body),
          tags_(tags),
          extended_(extendedNames(tags, names)),
          partners_(partnersOf(tags, extended_)),
          depths_(extended_.size(), 0),
          uses_(extended_.size()),
          cuts_(extended_.size()) {
        frames_.push_back({kNone, 0, elements::kUnknown, 0, 0, {}});
        for (std::uint32_t i = 0; i < tags_.size(); ++i) {
            if (tags_[i].isClose()) continue;
            Use& use = uses_[tags_[i].name];
            if (tags_[i].hasText)
                use.asLeaf = true;
            else if (partners_[i] != kNone && partners_[i] != i + 1)
                use.asAggregate = true;
        }
    }

    Edits run() {
        for (std::uint32_t i = 0; i < tags_.size();) {
            if (tags_[i].isClose()) {
                close(i);
                ++i;
            } else {
                i = open(i);
            }
        }
        closeDownTo(0, body_.size(), [](std::string_view name) {
            return "the document ends while " + openTag(name) + " is open";
        });
        // Of open tags that are missing, an outer one is found after those inside of it.
        std::ranges::reverse(opened_);
        std::ranges::stable_sort(opened_, {}, &Edit::offset);
        return withOpened();
    }

private:
    /// The element that the parser would give a text to: a leaf, which has its own; a leaf that was to be
    /// closed by a tag that is dropped; or the innermost aggregate, just opened.
    enum class Pending : std::uint8_t { nothing, leaf, finishedLeaf, aggregate };

    struct Use {
        bool asLeaf = false;
        bool asAggregate = false;
    };

    /// An open aggregate. The first one stands for the document, in which all others are.
    struct Frame {
        std::uint32_t tag;
        std::uint32_t outer;  ///< depth of the next one of the same name; 0: none
        Element element;
        std::size_t firstChild;  ///< in children_
        std::size_t settled;     ///< the children before this one have no open tag to get
        ChildSet seen;
    };

    /// The last aggregate of a name that was closed without a close tag of its own.
    struct Cut {
        std::uint32_t tag = kNone;
        std::size_t closeEdit = 0;  ///< in edits_
    };

    /// A child of an open aggregate.
    struct Child {
        Element element;
        std::size_t begin;
        std::uint32_t tag;
    };

    // -----------------------------------------------------------------------------------------
    // What the tags say

    bool hasPartner(std::uint32_t tag) const noexcept { return partners_[tag] != kNone; }
    bool closes(std::uint32_t closeTag, std::uint32_t openTag) const noexcept {
        const std::uint32_t name = tags_[closeTag].name;
        return tags_[openTag].name == name || tags_[openTag].name == extended_[name];
    }
    /// For elements without text.
    bool isAggregate(std::uint32_t tag) const noexcept {
        switch (elements::kindOf(tags_[tag].element)) {
            case Kind::aggregate:
                return true;
            case Kind::leaf:
                return hasPartner(tag) && !holdsNothing(tag);
            case Kind::either:
                return hasPartner(tag) || holdsOwn(tag);
            default:
                break;
        }
        const Use& use = uses_[tags_[tag].name];
        return hasPartner(tag) || (use.asAggregate && !use.asLeaf);
    }
    bool isInside(std::size_t child, Element parent) const noexcept {
        return child < tags_.size() && !tags_[child].isClose() &&
               elements::findChild(tags_[child].element, parent) != nullptr;
    }
    /// True when an element of its own comes next, after the same tag once more perhaps.
    bool holdsOwn(std::uint32_t tag) const noexcept {
        const bool isTwice = tag + 1 < tags_.size() && tags_[tag + 1].form == Tag::Form::open &&
                             tags_[tag + 1].name == tags_[tag].name && !tags_[tag + 1].hasText;
        return isInside(tag + (isTwice ? 2U : 1U), tags_[tag].element);
    }
    /// True for a leaf that has a close tag further on, although the next element belongs to the aggregate
    /// around it.
    bool holdsNothing(std::uint32_t leaf) const noexcept {
        return isInside(leaf + 1, frames_.back().element);
    }
    static bool isAggregateName(const Tag& tag) noexcept { return elements::isAggregate(tag.element); }
    static bool mayBeAggregate(const Tag& tag) noexcept {
        return isAggregateName(tag) || elements::kindOf(tag.element) == Kind::either;
    }
    static bool isLeafName(const Tag& tag) noexcept {
        return tag.element != elements::kUnknown && !isAggregateName(tag);
    }

    // -----------------------------------------------------------------------------------------
    // What is open

    std::uint32_t depth() const noexcept { return static_cast<std::uint32_t>(frames_.size() - 1); }
    std::uint32_t innermost() const noexcept { return frames_.back().tag; }
    /// The depth of the innermost aggregate that this close tag closes; 0: none.
    std::uint32_t depthClosedBy(std::uint32_t tag) const noexcept {
        const std::uint32_t name = tags_[tag].name;
        return std::max(depths_[name], extended_[name] == kNone ? 0 : depths_[extended_[name]]);
    }
    void push(std::uint32_t tag) {
        if (hasPartner(tag)) ++closedLater_;
        const std::size_t child = children_.size();
        frames_.push_back({tag, depths_[tags_[tag].name], tags_[tag].element, child, child, {}});
        depths_[tags_[tag].name] = depth();
        pending_ = Pending::aggregate;
    }
    void pop() noexcept {
        if (hasPartner(innermost())) --closedLater_;
        depths_[tags_[innermost()].name] = frames_.back().outer;
        children_.erase(children_.begin() + static_cast<std::ptrdiff_t>(frames_.back().firstChild),
                        children_.end());
        frames_.pop_back();
        pending_ = Pending::nothing;
    }
    /// Closes what is deeper, in front of this place.
    template <class Reason>
    void closeDownTo(std::uint32_t wanted, std::size_t offset, Reason reason) {
        while (depth() > wanted) {
            const std::string_view name = tags_[innermost()].text;
            insert(offset, RepairKind::missingClose, closeTag(name), reason(name));
            cuts_[tags_[innermost()].name] = {innermost(), edits_.size() - 1};
            pop();
        }
    }

    /// Notes an element of the innermost aggregate.
    void addChild(std::uint32_t i) {
        const Tag& tag = tags_[i];
        Frame& frame = frames_.back();
        const elements::Child* const child = elements::findChild(tag.element, frame.element);
        if (child != nullptr) frame.seen.add(*child, frame.element);
        children_.push_back({tag.element, tag.begin, i});
    }

    /// True when an element has a place in an aggregate that is not taken.
    static bool fits(Element element, const Frame& frame) noexcept {
        const elements::Child* const child = elements::findChild(element, frame.element);
        return child != nullptr && (child->mayRepeat || !frame.seen.has(*child, frame.element));
    }

    /// Closes aggregates without a close tag of their own when this element cannot stand in them, but can
    /// in one around them. No document that means well nests deeper than kDeepest.
    void endAggregatesBefore(const Tag& tag) {
        if (elements::parentsOf(tag.element).empty()) return;
        constexpr std::uint32_t kDeepest = 16;
        const std::uint32_t last = depth() > kDeepest ? depth() - kDeepest : 0;
        for (std::uint32_t wanted = depth(); wanted > last; --wanted) {
            if (fits(tag.element, frames_[wanted])) return endDownTo(wanted, tag);
            if (hasPartner(frames_[wanted].tag)) return;
        }
    }
    void endDownTo(std::uint32_t wanted, const Tag& tag) {
        closeDownTo(wanted, tag.begin, [this, &tag](std::string_view name) {
            const bool isSecond = elements::findChild(tag.element, frames_.back().element) != nullptr;
            return (isSecond ? "a second " : "") + openTag(tag.text) + " cannot stand in " + openTag(name) +
                   ", so that ends before it";
        });
    }

    // -----------------------------------------------------------------------------------------
    // What is changed

    void insert(std::size_t offset, RepairKind kind, std::string now, std::string reason) {
        edits_.push_back({offset, 0, kind, std::move(now), std::move(reason)});
    }
    void replace(const Tag& tag, RepairKind kind, std::string now, std::string reason = {}) {
        if (body_.substr(tag.begin, tag.end - tag.begin) == now) return;
        edits_.push_back({tag.begin, tag.end - tag.begin, kind, std::move(now), std::move(reason)});
    }
    void keepOpen(const Tag& tag) { replace(tag, tag.flaw, openTag(tag.text)); }
    void keepClose(const Tag& tag) { replace(tag, tag.flaw, closeTag(tag.text)); }

    /// All edits. At the same place, what is closed there comes before what is opened.
    Edits withOpened() {
        const auto closesThere = [](const Edit& edit) {
            return edit.size == 0 &&
                   (edit.kind == RepairKind::missingClose || edit.kind == RepairKind::emptyLeaf);
        };
        Edits edits;
        std::merge(std::make_move_iterator(opened_.begin()), std::make_move_iterator(opened_.end()),
                   std::make_move_iterator(edits_.begin()), std::make_move_iterator(edits_.end()),
                   std::back_inserter(edits), [closesThere](const Edit& a, const Edit& b) {
                       if (a.offset != b.offset) return a.offset < b.offset;
                       return closesThere(a) && !closesThere(b);
                   });
        std::erase_if(edits, [](const Edit& edit) { return edit.size == 0 && edit.now.empty(); });
        return edits;
    }

    // -----------------------------------------------------------------------------------------
    // Open tags; each returns the tag to go on with

    std::uint32_t open(std::uint32_t i) {
        const Tag& tag = tags_[i];
        if (isCloseWithoutSlash(i)) return closeWithoutSlash(i);
        if (isOpenedTwice(i)) dropInnermost();
        endAggregatesBefore(tag);
        if (tag.hasText) return openWithText(i);
        if (tag.form == Tag::Form::selfClosed) {
            addChild(i);
            replace(tag, RepairKind::selfClosedTag, openTag(tag.text) + closeTag(tag.text));
            pending_ = Pending::nothing;
        } else if (isAggregate(i)) {
            openAggregate(i);
        } else {
            openEmptyLeaf(i);
        }
        return i + 1;
    }

    /// True for an aggregate that was opened right before under the same name, and has a close tag fewer. No
    /// known aggregate holds another of its name.
    bool isOpenedTwice(std::uint32_t i) const noexcept {
        return depth() > 0 && innermost() + 1 == i && tags_[i].name == tags_[innermost()].name &&
               !hasPartner(innermost()) && mayBeAggregate(tags_[i]) && !tags_[i].hasText &&
               tags_[i].form == Tag::Form::open;
    }

    /// True for the open tag of the aggregate that is open, when neither has a close tag, the aggregate has
    /// elements, and what comes next is none of its own.
    bool isCloseWithoutSlash(std::uint32_t i) const noexcept {
        const Tag& tag = tags_[i];
        if (depth() == 0 || tag.name != tags_[innermost()].name || tag.form != Tag::Form::open) return false;
        if (hasPartner(innermost()) || hasPartner(i) || !mayBeAggregate(tag) || tag.hasText) return false;
        if (innermost() + 1 == i || i + 1 == tags_.size()) return false;
        const Tag& next = tags_[i + 1];
        return next.isClose() ||
               (next.element != elements::kUnknown && !elements::mayStandIn(next.element, tag.element));
    }
    std::uint32_t closeWithoutSlash(std::uint32_t i) {
        const Tag& tag = tags_[i];
        replace(tag, RepairKind::wrongClose, closeTag(tag.text),
                openTag(tag.text) + " is open, and what follows does not belong in another");
        pop();
        return i + 1;
    }
    /// Takes the open tag of the innermost aggregate away, which is the last tag that was seen.
    void dropInnermost() {
        const Tag& tag = tags_[innermost()];
        pop();
        Frame& frame = frames_.back();
        children_.pop_back();
        if (const auto* child = elements::findChild(tag.element, frame.element))
            frame.seen.remove(*child, frame.element);
        if (!edits_.empty() && edits_.back().offset == tag.begin && edits_.back().size != 0)
            edits_.pop_back();
        replace(tag, RepairKind::repeated, {},
                openTag(tag.text) + " is opened twice in a row, and closed once");
    }

    /// A close tag that it has further on belongs to nothing any more.
    void openEmptyLeaf(std::uint32_t i) {
        const Tag& tag = tags_[i];
        addChild(i);
        keepOpen(tag);
        insert(tag.end, RepairKind::emptyLeaf, closeTag(tag.text),
               openTag(tag.text) + " has neither a text nor a close tag");
        pending_ = Pending::nothing;
        if (!hasPartner(i)) return;
        partners_[partners_[i]] = kNone;
        partners_[i] = kNone;
    }

    void openAggregate(std::uint32_t i) {
        const Tag& tag = tags_[i];
        // No aggregate holds another of its name, so one without a close tag has ended here.
        const std::uint32_t same = depths_[tag.name];
        if (same != 0 && !hasPartner(frames_[same].tag))
            closeDownTo(same - 1, tag.begin, [&tag](std::string_view name) {
                return openTag(tag.text) + " cannot stand in another, so " + openTag(name) +
                       " ends before it";
            });
        addChild(i);
        keepOpen(tag);
        push(i);
    }

    std::uint32_t openWithText(std::uint32_t i) {
        if (isAggregateName(tags_[i]) && lacksOpenTag(i + 1)) {
            openAggregate(i);
            return i + 1;
        }
        addChild(i);
        keepOpen(tags_[i]);
        pending_ = Pending::leaf;
        leaf_ = i;
        return skipTextLikeTags(i);
    }

    /// Tags with small letters in a leaf with a close tag are text.
    std::uint32_t skipTextLikeTags(std::uint32_t leaf) {
        const std::uint32_t end = partners_[leaf];
        if (end == kNone || hasSmallLetter(tags_[leaf].text)) return leaf + 1;
        for (std::uint32_t i = leaf + 1; i < end; ++i)
            if (!hasSmallLetter(tags_[i].text)) return leaf + 1;
        for (std::uint32_t i = leaf + 1; i < end; ++i)
            edits_.push_back({tags_[i].begin, 1, RepairKind::lessThan, "&lt;", {}});
        return end;
    }

    /// True for a close tag that matches nothing and can have an open tag before the text before it.
    bool lacksOpenTag(std::uint32_t i) const noexcept {
        return i < tags_.size() && tags_[i].isClose() && !hasPartner(i) && depthClosedBy(i) == 0 &&
               isName(tags_[i].text);
    }

    // -----------------------------------------------------------------------------------------
    // Close tags

    void close(std::uint32_t i) {
        const std::uint32_t closed = depthClosedBy(i);
        if (pending_ == Pending::leaf && closes(i, leaf_))
            closeLeaf(i, tags_[i].text, tags_[i].flaw);
        else if (closed != 0)
            closeAggregate(i, closed);
        else if (opensBefore(i))
            pending_ = Pending::nothing;
        else if (pending_ != Pending::leaf && i > 0 && tags_[i - 1].hasText && lacksOpenTag(i))
            openText(i);
        else if (meansOpen(i))
            turnIntoOpen(i);
        else if (pending_ == Pending::leaf)
            correctAtLeaf(i);
        else
            correctBetweenElements(i);
    }

    void closeAggregate(std::uint32_t i, std::uint32_t closed) {
        const std::string_view outer = tags_[frames_[closed].tag].text;
        closeDownTo(closed, tags_[i].begin, [outer](std::string_view name) {
            return openTag(name) + " is still open where " + openTag(outer) + " ends";
        });
        keepClose(tags_[i]);
        pop();
    }

    /// Puts the open tag of an aggregate, of which only this close tag is there, before the last elements
    /// that belong in it, when one of them cannot stand where it is. False when there are none.
    bool opensBefore(std::uint32_t i) {
        const Tag& tag = tags_[i];
        Frame& frame = frames_.back();
        if (!mayBeAggregate(tag) || tag.hasText || !mayOpenIn(tag.element, frame)) return false;
        const auto begin =
            children_.begin() + static_cast<std::ptrdiff_t>(beginOfContent(tag.element, frame));
        const auto isLost = [&frame](const Child& child) {
            return frame.tag == kNone || !elements::mayStandIn(child.element, frame.element);
        };
        if (std::none_of(begin, children_.end(), isLost)) {
            frame.settled = children_.size();
            return false;
        }
        auto first = static_cast<std::size_t>(begin - children_.begin());
        if (isMisspeltOpenTag(first, tag))
            correctOpenTag(children_[--first], tag);
        else if (!raiseOpenTag(tag, begin->begin))
            opened_.push_back({begin->begin, 0, RepairKind::missingOpen, openTag(tag.text),
                               "only the close tag of " + openTag(tag.text) +
                                   " is there; it begins with the first element that belongs in it"});
        keepClose(tag);
        closeOver(first, tag.element);
        return true;
    }

    /// True when right before this child an unknown tag stands that holds nothing and is called like a close
    /// tag that found nothing.
    bool isMisspeltOpenTag(std::size_t child, const Tag& close) const noexcept {
        if (child == frames_.back().firstChild || children_[child - 1].element != elements::kUnknown)
            return false;
        const std::uint32_t i = children_[child - 1].tag;
        return i + 1 == children_[child].tag && !tags_[i].hasText && !hasPartner(i) &&
               resembles(tags_[i].text, close.text);
    }
    void correctOpenTag(const Child& child, const Tag& close) {
        const Tag& tag = tags_[child.tag];
        for (auto edit = std::ranges::lower_bound(edits_, tag.begin, {}, &Edit::offset);
             edit != edits_.end() && edit->offset <= tag.end && edit->kind != RepairKind::missingClose;
             ++edit)
            undo(*edit);
        opened_.push_back({tag.begin, tag.end - tag.begin, RepairKind::wrongName, openTag(close.text),
                           closeTag(close.text) + " ends what begins here"});
    }

    /// Moves an open tag that stands inside of what belongs in it to this place. False when there is none.
    bool raiseOpenTag(const Tag& close, std::size_t begin) {
        Cut& cut = cuts_[close.name];
        if (cut.tag == kNone || tags_[cut.tag].begin <= begin) return false;
        const Tag& tag = tags_[cut.tag];
        const auto flaw = std::ranges::lower_bound(edits_, tag.begin, {}, &Edit::offset);
        for (auto edit = flaw; edit != edits_.end() && edit->offset == tag.begin; ++edit)
            if (edit->size != 0) undo(*edit);
        undo(edits_[cut.closeEdit]);
        cut.tag = kNone;
        const std::string reason =
            openTag(tag.text) + " stands too far in; it begins with the first element that belongs in it";
        opened_.push_back({begin, 0, RepairKind::misplaced, openTag(tag.text), reason});
        opened_.push_back({tag.begin, tag.end - tag.begin, RepairKind::misplaced, {}, reason});
        return true;
    }
    /// Makes an edit one that changes nothing.
    static void undo(Edit& edit) noexcept {
        edit.size = 0;
        edit.now.clear();
    }

    static bool mayOpenIn(Element element, const Frame& frame) noexcept {
        if (frame.tag == kNone) return elements::nameOf(element) == "OFX";
        return frame.element == elements::kUnknown || elements::findChild(element, frame.element) != nullptr;
    }

    /// Where the children begin, up to the last one, that may all stand in an aggregate.
    std::size_t beginOfContent(Element element, const Frame& frame) const noexcept {
        ChildSet seen;
        std::size_t begin = children_.size();
        for (std::size_t at = begin; at > frame.settled; --at) {
            const Element known = children_[at - 1].element;
            if (elements::parentsOf(known).empty()) continue;  // may stand anywhere
            const elements::Child* const child = elements::findChild(known, element);
            if (child == nullptr || (!child->mayRepeat && seen.has(*child, element))) break;
            seen.add(*child, element);
            begin = at - 1;
        }
        return begin;
    }

    /// Makes one child of those from `begin` on.
    void closeOver(std::size_t begin, Element element) {
        Frame& frame = frames_.back();
        for (std::size_t at = begin; at < children_.size(); ++at)
            if (const auto* child = elements::findChild(children_[at].element, frame.element))
                frame.seen.remove(*child, frame.element);
        children_.erase(children_.begin() + static_cast<std::ptrdiff_t>(begin) + 1, children_.end());
        children_[begin].element = element;
        if (const auto* child = elements::findChild(element, frame.element))
            frame.seen.add(*child, frame.element);
    }

    void openText(std::uint32_t i) {
        insert(tags_[i - 1].textBegin, RepairKind::missingOpen, openTag(tags_[i].text),
               "the text has a close tag only");
        addChild(i);
        children_.back().begin = tags_[i - 1].textBegin;
        keepClose(tags_[i]);
        pending_ = Pending::nothing;
    }

    void turnIntoOpen(std::uint32_t i) {
        replace(tags_[i], RepairKind::wrongClose, openTag(tags_[i].text),
                closeTag(tags_[i].text) + " closes nothing, and a text follows it");
        addChild(i);
        pending_ = Pending::leaf;
        leaf_ = i;
    }

    /// True for a close tag with a value of its own behind it, which stands where an open tag should.
    bool meansOpen(std::uint32_t i) const noexcept {
        const Tag& tag = tags_[i];
        if (!tag.hasText || depth() == 0 || !isName(tag.text) || isAggregateName(tag)) return false;
        if (hasSmallLetter(tag.text)) return false;
        if (pending_ == Pending::leaf && resembles(tag.text, tags_[leaf_].text)) return false;
        return hasPartner(innermost()) || !resembles(tag.text, tags_[innermost()].text);
    }

    /// Closes the pending leaf with this name. Where the aggregate around it would be closed in its
    /// stead, which happens when both have one name, the leaf does without.
    void closeLeaf(std::uint32_t i, std::string_view name, RepairKind kind) {
        const std::uint32_t leafName = tags_[leaf_].name;
        const bool closesAggregate =
            depth() > 0 && (tags_[innermost()].name == leafName ||
                            tags_[innermost()].name == extended_[leafName] || closes(i, innermost()));
        if (closesAggregate && !tags_[i].hasText) {
            replace(tags_[i], RepairKind::strayClose, {},
                    closeTag(name) + " would close the aggregate around the leaf");
            pending_ = Pending::finishedLeaf;
            return;
        }
        replace(tags_[i], kind, closeTag(name),
                kind == RepairKind::wrongClose ? openTag(name) + " is what ends here" : std::string());
        if (closesAggregate) pop();
        pending_ = Pending::nothing;
    }

    void correctAtLeaf(std::uint32_t i) {
        const bool meansAggregate =
            !resembles(tags_[i].text, tags_[leaf_].text) && meansInnermost(i, isAggregateName(tags_[i]));
        if (meansAggregate)
            closeInnermost(i);
        else
            closeLeaf(i, tags_[leaf_].text, RepairKind::wrongClose);
    }

    void correctBetweenElements(std::uint32_t i) {
        const bool meansAggregate = meansInnermost(i, !isLeafName(tags_[i]));
        // Without a tag between them, text would make a leaf of the aggregate before it.
        if (meansAggregate || (pending_ != Pending::nothing && tags_[i].hasText))
            closeInnermost(i);
        else
            replace(tags_[i], RepairKind::strayClose, {}, closeTag(tags_[i].text) + " closes nothing");
    }

    /// True when a close tag under a wrong name may be that of the innermost aggregate: it looks like it, or
    /// could be any aggregate's and one further out is closed later. Where the document is cut off, nothing
    /// is, and what follows belongs inside.
    bool meansInnermost(std::uint32_t i, bool mayBeAggregate) const noexcept {
        if (depth() == 0 || hasPartner(innermost())) return false;
        return resembles(tags_[i].text, tags_[innermost()].text) || (mayBeAggregate && closedLater_ > 0);
    }

    void closeInnermost(std::uint32_t i) {
        const std::string_view name = tags_[innermost()].text;
        replace(tags_[i], RepairKind::wrongClose, closeTag(name), openTag(name) + " is what ends here");
        pop();
    }

    std::string_view body_;
    const std::vector<Tag>& tags_;
    std::vector<std::uint32_t> extended_;
    std::vector<std::uint32_t> partners_;
    std::vector<std::uint32_t> depths_;  ///< by name: of the innermost open aggregate; 0: none
    std::vector<Use> uses_;              ///< by name
    std::vector<Cut> cuts_;              ///< by name
    std::vector<Frame> frames_;
    std::vector<Child> children_;  ///< of all open aggregates, those of an inner one after those before it
    std::size_t closedLater_ = 0;  ///< how many of these have a close tag of their own
    Pending pending_ = Pending::nothing;
    std::uint32_t leaf_ = 0;  ///< while one is pending
    Edits edits_;
    Edits opened_;  ///< those of missing open tags, which are found late
};

}  // namespace

Edits repairNesting(std::string_view body, const std::vector<Tag>& tags, reading::NameTable& names) {
    return NestingRepair(body, tags, names).run();
}

}  // namespace brackwell::repair
