// SPDX-License-Identifier: Apache-2.0
#include "repair/open_aggregates.h"

#include <algorithm>

namespace brackwell::repair {

using elements::Element;

bool OpenAggregates::Frame::hasRoomFor(Element child) const noexcept {
    const elements::Child* const row = elements::findChild(child, element);
    return row != nullptr && (row->mayRepeat || !seen.has(*row, element));
}

bool OpenAggregates::Frame::mayHold(Element child) const noexcept {
    if (isDocument) return child == elements::kRoot;
    return element == elements::kUnknown || elements::findChild(child, element) != nullptr;
}

OpenAggregates::OpenAggregates(std::size_t names)
    : depths_(names, 0), frames_{{0, 0, 0, elements::kUnknown, 0, 0, true, {}}} {}

void OpenAggregates::push(std::uint32_t number, const Tag& tag) {
    const std::size_t child = children_.size();
    frames_.push_back({number, tag.name, depths_[tag.name], tag.element, child, child, false, {}});
    depths_[tag.name] = depth();
}

void OpenAggregates::pop() noexcept {
    const Frame& frame = frames_.back();
    depths_[frame.name] = frame.outer;
    children_.erase(children_.begin() + static_cast<std::ptrdiff_t>(frame.firstChild), children_.end());
    frames_.pop_back();
}

void OpenAggregates::add(const Tag& tag, std::uint32_t number) {
    Frame& frame = frames_.back();
    const elements::Child* const row = elements::findChild(tag.element, frame.element);
    if (row != nullptr) frame.seen.add(*row, frame.element);
    children_.push_back({tag.element, tag.begin, number});
}

void OpenAggregates::dropLastChild() noexcept {
    Frame& frame = frames_.back();
    if (const auto* row = elements::findChild(children_.back().element, frame.element))
        frame.seen.remove(*row, frame.element);
    children_.pop_back();
}

std::size_t OpenAggregates::beginOfContent(Element aggregate) const noexcept {
    ChildSet seen;
    // From the end, as long as the aggregate may contain the child.
    std::size_t begin = children_.size();
    for (std::size_t at = begin; at > innermost().settled; --at) {
        const Element known = children_[at - 1].element;
        if (elements::parentsOf(known).empty()) continue;  // may be anywhere
        const elements::Child* const row = elements::findChild(known, aggregate);
        if (row == nullptr || (!row->mayRepeat && seen.has(*row, aggregate))) break;
        seen.add(*row, aggregate);
        begin = at - 1;
    }
    return begin;
}

bool OpenAggregates::holdsLost(std::size_t begin) const noexcept {
    return std::any_of(
        children_.begin() + static_cast<std::ptrdiff_t>(begin), children_.end(), [this](const Child& child) {
            return innermost().isDocument || !elements::mayStandIn(child.element, innermost().element);
        });
}

void OpenAggregates::closeOver(std::size_t begin, Element aggregate) {
    Frame& frame = frames_.back();
    // The children are in the aggregate now, so they no longer take up their places around it.
    for (std::size_t at = begin; at < children_.size(); ++at)
        if (const auto* row = elements::findChild(children_[at].element, frame.element))
            frame.seen.remove(*row, frame.element);
    children_.erase(children_.begin() + static_cast<std::ptrdiff_t>(begin) + 1, children_.end());
    children_[begin].element = aggregate;
    if (const auto* row = elements::findChild(aggregate, frame.element)) frame.seen.add(*row, frame.element);
}

}  // namespace brackwell::repair
