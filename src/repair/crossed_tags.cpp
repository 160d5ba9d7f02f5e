// SPDX-License-Identifier: Apache-2.0
#include "repair/crossed_tags.h"

#include <cstddef>
#include <limits>
#include <utility>

#include "repair/deepest.h"

namespace brackwell::repair {
namespace {

using elements::Element;

/// True when it is known that an element has no place in another.
bool isKnownNotToStandIn(Element child, Element parent) noexcept {
    return child != elements::kUnknown && parent != elements::kUnknown &&
           !elements::mayStandIn(child, parent);
}

class Uncrosser {
public:
    explicit Uncrosser(std::vector<Tag>& tags) : tags_(tags) {}

    void run() {
        for (std::size_t i = 0; i < tags_.size(); ++i) {
            if (i + 1 < tags_.size() && areCrossed(i)) exchange(tags_[i], tags_[i + 1]);
            follow(i);
        }
    }

private:
    Element innermost() const noexcept { return open_.empty() ? elements::kUnknown : open_.back(); }
    Element outer() const noexcept { return open_.size() < 2 ? elements::kUnknown : open_[open_.size() - 2]; }

    bool areCrossed(std::size_t i) const noexcept {
        const Tag& first = tags_[i];
        const Tag& second = tags_[i + 1];
        if (first.form != Tag::Form::open || first.hasText || first.element == elements::kUnknown)
            return false;
        if (second.isClose()) return opensBeforeEnd(first, second, isOpenedBefore(first, i + 2));
        return second.form == Tag::Form::open && isInsideOut(first, second);
    }

    /// An open tag right before the close tag of a leaf, or of an aggregate that it has no place in.
    bool opensBeforeEnd(const Tag& first, const Tag& second, bool isAggregate) const noexcept {
        if (second.name == first.name && second.element != innermost()) return false;
        if (second.name == leaf_) return second.hasText || isAggregate;
        return second.element != elements::kUnknown && second.element == innermost() &&
               isKnownNotToStandIn(first.element, second.element) &&
               elements::findChild(first.element, outer()) != nullptr;
    }

    /// The open tag of an element right before that of the aggregate it belongs in.
    bool isInsideOut(const Tag& first, const Tag& second) const noexcept {
        return elements::findChild(first.element, second.element) != nullptr &&
               isKnownNotToStandIn(second.element, first.element) &&
               elements::findChild(second.element, innermost()) != nullptr &&
               elements::findChild(first.element, innermost()) == nullptr &&
               second.hasText != elements::isAggregate(first.element);
    }

    static void exchange(Tag& first, Tag& second) noexcept {
        std::swap(first.name, second.name);
        std::swap(first.element, second.element);
        const Tag::Form form = first.form;  // std::swap takes no bit-fields
        first.form = second.form;
        second.form = form;
        first.flaw = second.flaw = RepairKind::crossedTags;
    }

    /// Keeps the aggregates that are open, as far as their tags say.
    void follow(std::size_t i) {
        const Tag& tag = tags_[i];
        if (tag.isClose()) {
            close(tag.element);
            leaf_ = kNoName;
        } else if (tag.hasText) {
            leaf_ = tag.name;
        } else if (isOpenedBefore(tag, i + 1)) {
            open_.push_back(tag.element);
            leaf_ = kNoName;
        }
    }

    /// True for an aggregate, and for what may be a leaf as well (CURRENCY) when one of its own comes next.
    bool isOpenedBefore(const Tag& tag, std::size_t next) const noexcept {
        if (elements::isAggregate(tag.element)) return true;
        return next < tags_.size() && tags_[next].form == Tag::Form::open &&
               elements::findChild(tags_[next].element, tag.element) != nullptr;
    }

    void close(Element element) {
        for (std::size_t depth = open_.size(); depth > 0 && open_.size() - depth < kDeepest; --depth)
            if (open_[depth - 1] == element) return open_.resize(depth - 1);
    }

    static constexpr reading::NameID kNoName = std::numeric_limits<reading::NameID>::max();

    std::vector<Tag>& tags_;
    std::vector<Element> open_;
    reading::NameID leaf_ = kNoName;  ///< that has a text and may be closed next
};

}  // namespace

void uncross(std::vector<Tag>& tags) { Uncrosser(tags).run(); }

}  // namespace brackwell::repair
