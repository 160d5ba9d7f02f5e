// SPDX-License-Identifier: Apache-2.0
#include "repair/nesting.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "repair/deepest.h"
#include "repair/likeness.h"
#include "repair/nesting_edits.h"
#include "repair/open_aggregates.h"
#include "repair/partners.h"

namespace brackwell::repair {
namespace {

using elements::Element;
using elements::Kind;

/// Follows the body parser through the tags as they will stand: which aggregates are open, and which
/// element is pending. So it knows of each close tag whether the parser will accept it.
class NestingRepair {
public:
    NestingRepair(std::string_view body, const std::vector<Tag>& tags, reading::NameTable& names)
        : body_(body),
          tags_(tags),
          names_(names),
          extended_(extendedNames(tags, names)),
          partners_(partnersOf(tags, extended_)),
          uses_(extended_.size()),
          cuts_(extended_.size()),
          open_(extended_.size()),
          edits_(body, names) {
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
        return std::move(edits_).finish();
    }

private:
    /// The element that the parser would give a text to: a leaf, which has its own; a leaf that was to be
    /// closed by a tag that is dropped; or the innermost aggregate, just opened.
    enum class Pending : std::uint8_t { nothing, leaf, finishedLeaf, aggregate };

    struct Use {
        bool asLeaf = false;
        bool asAggregate = false;
    };

    /// The last aggregate of a name that was closed without a close tag of its own.
    struct Cut {
        std::uint32_t tag = kNone;
        std::size_t closeEdit = 0;  ///< in edits_
    };

    // -----------------------------------------------------------------------------------------
    // What the tags say

    std::string_view nameOf(const Tag& tag) const noexcept { return names_.name(tag.name); }
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
        return isInside(leaf + 1, open_.innermost().element);
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

    /// The depth of the innermost aggregate that this close tag closes; 0: none.
    std::uint32_t depthClosedBy(std::uint32_t tag) const noexcept {
        const std::uint32_t name = tags_[tag].name;
        return std::max(open_.depthOf(name), extended_[name] == kNone ? 0 : open_.depthOf(extended_[name]));
    }
    std::uint32_t depth() const noexcept { return open_.depth(); }
    std::uint32_t innermost() const noexcept { return open_.innermost().tag; }
    void push(std::uint32_t tag) {
        if (hasPartner(tag)) ++closedLater_;
        open_.push(tag, tags_[tag]);
        pending_ = Pending::aggregate;
    }
    void pop() noexcept {
        if (hasPartner(innermost())) --closedLater_;
        open_.pop();
        pending_ = Pending::nothing;
    }
    /// Closes what is deeper, before this place.
    template <class Reason>
    void closeDownTo(std::uint32_t wanted, std::size_t offset, Reason reason) {
        while (depth() > wanted) {
            const std::string_view name = nameOf(tags_[innermost()]);
            edits_.insert(offset, RepairKind::missingClose, closeTag(name), reason(name));
            cuts_[tags_[innermost()].name] = {innermost(), edits_.last()};
            pop();
        }
    }

    /// Closes aggregates without a close tag of their own when this element cannot stand in them, but can
    /// in one around them.
    void endAggregatesBefore(const Tag& tag) {
        if (elements::parentsOf(tag.element).empty()) return;
        const std::uint32_t last = depth() > kDeepest ? depth() - kDeepest : 0;
        for (std::uint32_t wanted = depth(); wanted > last; --wanted) {
            if (open_[wanted].hasRoomFor(tag.element)) return endDownTo(wanted, tag);
            if (hasPartner(open_[wanted].tag)) return;
        }
    }
    void endDownTo(std::uint32_t wanted, const Tag& tag) {
        closeDownTo(wanted, tag.begin, [this, &tag](std::string_view name) {
            const bool isSecond = elements::findChild(tag.element, open_.innermost().element) != nullptr;
            return (isSecond ? "a second " : "") + openTag(nameOf(tag)) + " is not allowed in " +
                   openTag(name) + ", so " + endingOne(tag, name) + " ends before it";
        });
    }

    /// How a reason names the aggregate that ends before a tag, which may have the same name.
    std::string endingOne(const Tag& tag, std::string_view name) const {
        return name == nameOf(tag) ? "the first" : openTag(name);
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
            open_.add(tags_[i], i);
            edits_.replace(tag, RepairKind::selfClosedTag, openTag(nameOf(tag)) + closeTag(nameOf(tag)));
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
    /// elements, and what comes next does not belong in it.
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
        edits_.replace(
            tag, RepairKind::wrongClose, closeTag(nameOf(tag)),
            openTag(nameOf(tag)) + " is already open, and what follows does not belong in a second one");
        pop();
        return i + 1;
    }
    /// Takes the open tag of the innermost aggregate away, which is the last tag that was seen.
    void dropInnermost() {
        const Tag& tag = tags_[innermost()];
        pop();
        open_.dropLastChild();
        edits_.undoOf(tag);
        edits_.replace(tag, RepairKind::repeated, {},
                       openTag(nameOf(tag)) + " is opened twice in a row but closed once");
    }

    /// A close tag that it has further on belongs to nothing any more.
    void openEmptyLeaf(std::uint32_t i) {
        const Tag& tag = tags_[i];
        open_.add(tags_[i], i);
        edits_.keepOpen(tag);
        edits_.insert(tag.end, RepairKind::emptyLeaf, closeTag(nameOf(tag)),
                      openTag(nameOf(tag)) + " has neither a text nor a close tag");
        pending_ = Pending::nothing;
        if (!hasPartner(i)) return;
        partners_[partners_[i]] = kNone;
        partners_[i] = kNone;
    }

    void openAggregate(std::uint32_t i) {
        const Tag& tag = tags_[i];
        // No aggregate holds another of its name, so one without a close tag has ended here.
        const std::uint32_t same = open_.depthOf(tag.name);
        if (same != 0 && !hasPartner(open_[same].tag))
            closeDownTo(same - 1, tag.begin, [this, &tag](std::string_view name) {
                return openTag(nameOf(tag)) + " is not allowed in another " + openTag(nameOf(tag)) + ", so " +
                       endingOne(tag, name) + " ends before it";
            });
        open_.add(tags_[i], i);
        edits_.keepOpen(tag);
        push(i);
    }

    std::uint32_t openWithText(std::uint32_t i) {
        if (isAggregateName(tags_[i]) && lacksOpenTag(i + 1)) {
            openAggregate(i);
            return i + 1;
        }
        open_.add(tags_[i], i);
        edits_.keepOpen(tags_[i]);
        pending_ = Pending::leaf;
        leaf_ = i;
        return skipTextLikeTags(i);
    }

    /// Tags with small letters in a leaf with a close tag are text.
    std::uint32_t skipTextLikeTags(std::uint32_t leaf) {
        const std::uint32_t end = partners_[leaf];
        if (end == kNone || hasSmallLetter(nameOf(tags_[leaf]))) return leaf + 1;
        for (std::uint32_t i = leaf + 1; i < end; ++i)
            if (!hasSmallLetter(nameOf(tags_[i]))) return leaf + 1;
        for (std::uint32_t i = leaf + 1; i < end; ++i) edits_.escape(tags_[i]);
        return end;
    }

    /// True for a close tag that matches nothing and can have an open tag before the text before it.
    bool lacksOpenTag(std::uint32_t i) const noexcept {
        return i < tags_.size() && tags_[i].isClose() && !hasPartner(i) && depthClosedBy(i) == 0 &&
               isName(nameOf(tags_[i]));
    }

    // -----------------------------------------------------------------------------------------
    // Close tags

    void close(std::uint32_t i) {
        const std::uint32_t closed = depthClosedBy(i);
        if (pending_ == Pending::leaf && closes(i, leaf_))
            closeLeaf(i, nameOf(tags_[i]), tags_[i].flaw);
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
        const std::string_view outer = nameOf(tags_[open_[closed].tag]);
        closeDownTo(closed, tags_[i].begin, [outer](std::string_view name) {
            return openTag(name) + " is still open where " + openTag(outer) + " ends";
        });
        edits_.keepClose(tags_[i]);
        pop();
    }

    /// Puts the open tag of an aggregate, of which only this close tag is there, before the last elements
    /// that belong in it, when one of them cannot stand where it is. False when there are none.
    bool opensBefore(std::uint32_t i) {
        const Tag& tag = tags_[i];
        if (!mayBeAggregate(tag) || tag.hasText || !open_.innermost().mayHold(tag.element)) return false;
        std::size_t first = open_.beginOfContent(tag.element);
        if (!open_.holdsLost(first)) {
            open_.settle();
            return false;
        }
        if (isMisspeltOpenTag(first, tag))
            correctOpenTag(open_.child(--first), tag);
        else if (!raiseOpenTag(tag, open_.child(first).begin))
            edits_.open(open_.child(first).begin, RepairKind::missingOpen, nameOf(tag),
                        "only the close tag of " + openTag(nameOf(tag)) +
                            " is present; it starts at the first element that belongs in it");
        edits_.keepClose(tag);
        open_.closeOver(first, tag.element);
        return true;
    }

    /// True when right before this child an unknown tag stands that holds nothing and is called like a close
    /// tag that found nothing.
    bool isMisspeltOpenTag(std::size_t child, const Tag& close) const noexcept {
        if (child == open_.innermost().firstChild || open_.child(child - 1).element != elements::kUnknown)
            return false;
        const std::uint32_t i = open_.child(child - 1).tag;
        return i + 1 == open_.child(child).tag && !tags_[i].hasText && !hasPartner(i) &&
               resembles(nameOf(tags_[i]), nameOf(close));
    }
    void correctOpenTag(const OpenAggregates::Child& child, const Tag& close) {
        const Tag& tag = tags_[child.tag];
        edits_.undoOf(tag);
        edits_.replaceLate(tag, RepairKind::wrongName, openTag(nameOf(close)),
                           closeTag(nameOf(close)) + " ends the element that starts here");
    }

    /// Moves an open tag that is inside of what belongs in it to this place. False when there is none.
    bool raiseOpenTag(const Tag& close, std::size_t begin) {
        Cut& cut = cuts_[close.name];
        if (cut.tag == kNone || tags_[cut.tag].begin <= begin) return false;
        const Tag& tag = tags_[cut.tag];
        edits_.undoOf(tag);
        edits_.undo(cut.closeEdit);
        cut.tag = kNone;
        const std::string reason =
            openTag(nameOf(tag)) + " is nested too deep; it starts at the first element that belongs in it";
        edits_.open(begin, RepairKind::misplaced, nameOf(tag), reason);
        edits_.replaceLate(tag, RepairKind::misplaced, {}, reason);
        return true;
    }
    void openText(std::uint32_t i) {
        edits_.insert(tags_[i - 1].textBegin, RepairKind::missingOpen, openTag(nameOf(tags_[i])),
                      "the text has only a close tag");
        open_.add(tags_[i], i);
        open_.lastChild().begin = tags_[i - 1].textBegin;
        edits_.keepClose(tags_[i]);
        pending_ = Pending::nothing;
    }

    void turnIntoOpen(std::uint32_t i) {
        edits_.replace(tags_[i], RepairKind::wrongClose, openTag(nameOf(tags_[i])),
                       closeTag(nameOf(tags_[i])) + " closes nothing, and a text follows it");
        open_.add(tags_[i], i);
        pending_ = Pending::leaf;
        leaf_ = i;
    }

    /// True for a close tag with a value after it, where an open tag should be.
    bool meansOpen(std::uint32_t i) const noexcept {
        const Tag& tag = tags_[i];
        if (!tag.hasText || depth() == 0 || !isName(nameOf(tag)) || isAggregateName(tag)) return false;
        if (hasSmallLetter(nameOf(tag))) return false;
        if (pending_ == Pending::leaf && resembles(nameOf(tag), nameOf(tags_[leaf_]))) return false;
        return hasPartner(innermost()) || !resembles(nameOf(tag), nameOf(tags_[innermost()]));
    }

    /// Closes the pending leaf with this name. Where the aggregate around it would be closed in its
    /// stead, which happens when both have the same name, the leaf gets no close tag.
    void closeLeaf(std::uint32_t i, std::string_view name, RepairKind kind) {
        const std::uint32_t leafName = tags_[leaf_].name;
        const bool closesAggregate =
            depth() > 0 && (tags_[innermost()].name == leafName ||
                            tags_[innermost()].name == extended_[leafName] || closes(i, innermost()));
        if (closesAggregate && !tags_[i].hasText) {
            edits_.replace(tags_[i], RepairKind::strayClose, {},
                           closeTag(name) + " would close the aggregate around the leaf");
            pending_ = Pending::finishedLeaf;
            return;
        }
        edits_.replace(tags_[i], kind, closeTag(name),
                       kind == RepairKind::wrongClose ? openTag(name) + " is the element that ends here"
                                                      : std::string());
        if (closesAggregate) pop();
        pending_ = Pending::nothing;
    }

    void correctAtLeaf(std::uint32_t i) {
        const bool meansAggregate = !resembles(nameOf(tags_[i]), nameOf(tags_[leaf_])) &&
                                    meansInnermost(i, isAggregateName(tags_[i]));
        if (meansAggregate)
            closeInnermost(i);
        else
            closeLeaf(i, nameOf(tags_[leaf_]), RepairKind::wrongClose);
    }

    void correctBetweenElements(std::uint32_t i) {
        const bool meansAggregate = meansInnermost(i, !isLeafName(tags_[i]));
        // Without a tag between them, text would make a leaf of the aggregate before it.
        if (meansAggregate || (pending_ != Pending::nothing && tags_[i].hasText))
            closeInnermost(i);
        else
            edits_.replace(tags_[i], RepairKind::strayClose, {},
                           closeTag(nameOf(tags_[i])) + " closes nothing");
    }

    /// True when a close tag under a wrong name may be that of the innermost aggregate: it looks like it, or
    /// could be any aggregate's and one further out is closed later. Where the document is cut off, nothing
    /// is, and what follows belongs inside.
    bool meansInnermost(std::uint32_t i, bool mayBeAggregate) const noexcept {
        if (depth() == 0 || hasPartner(innermost())) return false;
        return resembles(nameOf(tags_[i]), nameOf(tags_[innermost()])) ||
               (mayBeAggregate && closedLater_ > 0);
    }

    void closeInnermost(std::uint32_t i) {
        const std::string_view name = nameOf(tags_[innermost()]);
        edits_.replace(tags_[i], RepairKind::wrongClose, closeTag(name),
                       openTag(name) + " is the element that ends here");
        pop();
    }

    std::string_view body_;
    const std::vector<Tag>& tags_;
    const reading::NameTable& names_;
    std::vector<std::uint32_t> extended_;
    std::vector<std::uint32_t> partners_;
    std::vector<Use> uses_;  ///< by name
    std::vector<Cut> cuts_;  ///< by name
    OpenAggregates open_;
    std::size_t closedLater_ = 0;  ///< how many of these have a close tag of their own
    Pending pending_ = Pending::nothing;
    std::uint32_t leaf_ = 0;  ///< while one is pending
    NestingEdits edits_;
};

}  // namespace

Edits repairNesting(std::string_view body, const std::vector<Tag>& tags, reading::NameTable& names) {
    return NestingRepair(body, tags, names).run();
}

}  // namespace brackwell::repair
