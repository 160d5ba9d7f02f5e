// SPDX-License-Identifier: Apache-2.0
#include "repair/nesting.h"

#include <algorithm>

#include "platform/ascii_case.h"
#include "repair/aggregate_names.h"
#include "repair/partners.h"

namespace brackwell::repair {
namespace {

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
          uses_(extended_.size()) {
        for (std::uint32_t i = 0; i < tags_.size(); ++i) {
            if (tags_[i].isClose()) continue;
            Use& use = uses_[tags_[i].name];
            if (tags_[i].hasText)
                use.asLeaf = true;
            else if (partners_[i] != kNone && partners_[i] != i + 1)
                use.asAggregate = true;
        }
    }

    std::vector<Edit> run() {
        for (std::uint32_t i = 0; i < tags_.size();) {
            if (tags_[i].isClose()) {
                close(i);
                ++i;
            } else {
                i = open(i);
            }
        }
        closeDownTo(0, body_.size());
        return merged(std::move(opened_), std::move(edits_));
    }

private:
    /// The element that the parser would give a text to: a leaf, which has its own; a leaf that was to be
    /// closed by a tag that is dropped; or the innermost aggregate, just opened.
    enum class Pending : std::uint8_t { nothing, leaf, finishedLeaf, aggregate };

    struct Use {
        bool asLeaf = false;
        bool asAggregate = false;
    };
    struct Aggregate {
        std::uint32_t tag;
        std::uint32_t outer;  ///< depth of the next one of the same name; 0: none
    };

    /// An aggregate that has just been closed, and behind which stands what another of its kind begins with.
    struct Sibling {
        std::uint32_t name = kNone;
        std::uint32_t firstElement = kNone;  ///< the name of the first one in it
        std::size_t end = 0;                 ///< of its close tag
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
        if (hasPartner(tag) || isAggregateName(tags_[tag].text)) return true;
        const Use& use = uses_[tags_[tag].name];
        return use.asAggregate && !use.asLeaf;
    }
    static bool isLeafName(std::string_view name) noexcept {
        return reading::findKnownElement(name) != reading::kKnownElementCount && !isAggregateName(name);
    }

    // -----------------------------------------------------------------------------------------
    // What is open

    std::uint32_t depth() const noexcept { return static_cast<std::uint32_t>(open_.size()); }
    std::uint32_t innermost() const noexcept { return open_.back().tag; }
    /// The depth of the innermost aggregate that this close tag closes; 0: none.
    std::uint32_t depthClosedBy(std::uint32_t tag) const noexcept {
        const std::uint32_t name = tags_[tag].name;
        return std::max(depths_[name], extended_[name] == kNone ? 0 : depths_[extended_[name]]);
    }
    void push(std::uint32_t tag) {
        if (hasPartner(tag)) ++closedLater_;
        sibling_ = {};
        open_.push_back({tag, depths_[tags_[tag].name]});
        depths_[tags_[tag].name] = depth();
        pending_ = Pending::aggregate;
    }
    void pop() noexcept {
        sibling_ = {};
        if (hasPartner(innermost())) --closedLater_;
        depths_[tags_[innermost()].name] = open_.back().outer;
        open_.pop_back();
        pending_ = Pending::nothing;
    }
    /// Closes what is deeper, in front of this place.
    void closeDownTo(std::uint32_t wanted, std::size_t offset) {
        while (depth() > wanted) {
            insert(offset, RepairKind::missingClose, closeTag(tags_[innermost()].text));
            pop();
        }
    }

    // -----------------------------------------------------------------------------------------
    // What is changed

    void insert(std::size_t offset, RepairKind kind, std::string now) {
        edits_.push_back({offset, 0, kind, std::move(now), {}});
    }
    void replace(const Tag& tag, RepairKind kind, std::string now) {
        if (body_.substr(tag.begin, tag.end - tag.begin) == now) return;
        edits_.push_back({tag.begin, tag.end - tag.begin, kind, std::move(now), {}});
    }
    void keepOpen(const Tag& tag) { replace(tag, tag.flaw, openTag(tag.text)); }
    void keepClose(const Tag& tag) { replace(tag, tag.flaw, closeTag(tag.text)); }

    // -----------------------------------------------------------------------------------------
    // Open tags; each returns the tag to go on with

    std::uint32_t open(std::uint32_t i) {
        const Tag& tag = tags_[i];
        if (tag.name == sibling_.name) sibling_ = {};
        if (tag.hasText) return openWithText(i);
        if (tag.form == Tag::Form::selfClosed) {
            replace(tag, RepairKind::selfClosedTag, openTag(tag.text) + closeTag(tag.text));
            pending_ = Pending::nothing;
        } else if (isAggregate(i)) {
            openAggregate(i);
        } else {
            keepOpen(tag);
            insert(tag.end, RepairKind::emptyLeaf, closeTag(tag.text));
            pending_ = Pending::nothing;
        }
        return i + 1;
    }

    void openAggregate(std::uint32_t i) {
        // No aggregate holds another of its name, so one without a close tag has ended here.
        const std::uint32_t same = depths_[tags_[i].name];
        if (same != 0 && !hasPartner(open_[same - 1].tag)) closeDownTo(same - 1, tags_[i].begin);
        keepOpen(tags_[i]);
        push(i);
    }

    std::uint32_t openWithText(std::uint32_t i) {
        if (isAggregateName(tags_[i].text) && lacksOpenTag(i + 1)) {
            openAggregate(i);
            return i + 1;
        }
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
        else if (tags_[i].name == sibling_.name)
            openSibling(i);
        else if (pending_ != Pending::leaf && i > 0 && tags_[i - 1].hasText && lacksOpenTag(i))
            openText(i);
        else if (meansOpen(i))
            turnIntoOpen(i);
        else if (pending_ == Pending::leaf)
            correctAtLeaf(i);
        else
            correctBetweenElements(i);
    }

    void closeAggregate(std::uint32_t i, std::uint32_t depth) {
        closeDownTo(depth, tags_[i].begin);
        keepClose(tags_[i]);
        const std::uint32_t opened = innermost();
        pop();
        noteSibling({tags_[opened].name, tags_[opened + 1].name, tags_[i].end}, i);
    }

    /// Notes an aggregate that this tag has closed when another of its kind may follow without an open tag.
    void noteSibling(const Sibling& sibling, std::uint32_t i) noexcept {
        const Tag& tag = tags_[i];
        if (tag.hasText || i + 1 == tags_.size()) return;
        if (tag.name != sibling.name || extended_[tag.name] != kNone || !isAggregateName(tag.text)) return;
        const Tag& next = tags_[i + 1];
        if (!next.isClose() && next.hasText && next.name == sibling.firstElement) sibling_ = sibling;
    }

    void openSibling(std::uint32_t i) {
        opened_.push_back({sibling_.end, 0, RepairKind::missingOpen, openTag(tags_[i].text), {}});
        keepClose(tags_[i]);
        pending_ = Pending::nothing;
        const Sibling closed = std::exchange(sibling_, {});
        noteSibling({closed.name, closed.firstElement, tags_[i].end}, i);
    }

    void openText(std::uint32_t i) {
        insert(tags_[i - 1].textBegin, RepairKind::missingOpen, openTag(tags_[i].text));
        keepClose(tags_[i]);
        pending_ = Pending::nothing;
    }

    void turnIntoOpen(std::uint32_t i) {
        replace(tags_[i], RepairKind::wrongClose, openTag(tags_[i].text));
        pending_ = Pending::leaf;
        leaf_ = i;
    }

    /// True for a close tag with a value of its own behind it, which stands where an open tag should.
    bool meansOpen(std::uint32_t i) const noexcept {
        const Tag& tag = tags_[i];
        if (!tag.hasText || depth() == 0 || !isName(tag.text) || isAggregateName(tag.text)) return false;
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
            replace(tags_[i], RepairKind::strayClose, {});
            pending_ = Pending::finishedLeaf;
            return;
        }
        replace(tags_[i], kind, closeTag(name));
        if (closesAggregate) pop();
        pending_ = Pending::nothing;
    }

    void correctAtLeaf(std::uint32_t i) {
        const std::string_view name = tags_[i].text;
        const bool meansAggregate =
            !resembles(name, tags_[leaf_].text) && meansInnermost(i, isAggregateName(name));
        if (meansAggregate)
            closeInnermost(i);
        else
            closeLeaf(i, tags_[leaf_].text, RepairKind::wrongClose);
    }

    void correctBetweenElements(std::uint32_t i) {
        const std::string_view name = tags_[i].text;
        const bool meansAggregate = meansInnermost(i, !isLeafName(name));
        // Without a tag between them, text would make a leaf of the aggregate before it.
        if (meansAggregate || (pending_ != Pending::nothing && tags_[i].hasText))
            closeInnermost(i);
        else
            replace(tags_[i], RepairKind::strayClose, {});
    }

    /// True when a close tag under a wrong name may be that of the innermost aggregate: it looks like it, or
    /// could be any aggregate's and one further out is closed later. Where the document is cut off, nothing
    /// is, and what follows belongs inside.
    bool meansInnermost(std::uint32_t i, bool mayBeAggregate) const noexcept {
        if (depth() == 0 || hasPartner(innermost())) return false;
        return resembles(tags_[i].text, tags_[innermost()].text) || (mayBeAggregate && closedLater_ > 0);
    }

    void closeInnermost(std::uint32_t i) {
        replace(tags_[i], RepairKind::wrongClose, closeTag(tags_[innermost()].text));
        pop();
    }

    std::string_view body_;
    const std::vector<Tag>& tags_;
    std::vector<std::uint32_t> extended_;
    std::vector<std::uint32_t> partners_;
    std::vector<std::uint32_t> depths_;  ///< by name: of the innermost open aggregate; 0: none
    std::vector<Use> uses_;              ///< by name
    std::vector<Aggregate> open_;
    std::size_t closedLater_ = 0;  ///< how many of these have a close tag of their own
    Pending pending_ = Pending::nothing;
    std::uint32_t leaf_ = 0;  ///< while one is pending
    std::vector<Edit> edits_;
    std::vector<Edit> opened_;  ///< those of missing open tags, which are found late
    Sibling sibling_;           ///< without a name when there is none
};

}  // namespace

std::vector<Edit> repairNesting(std::string_view body, const std::vector<Tag>& tags,
                                reading::NameTable& names) {
    return NestingRepair(body, tags, names).run();
}

}  // namespace brackwell::repair
