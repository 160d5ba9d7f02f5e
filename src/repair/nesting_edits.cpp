// SPDX-License-Identifier: Apache-2.0
#include "repair/nesting_edits.h"

#include <algorithm>
#include <iterator>

namespace brackwell::repair {
namespace {

/// True for an inserted close tag.
bool closesThere(const Edit& edit) noexcept {
    return edit.size == 0 && (edit.kind == RepairKind::missingClose || edit.kind == RepairKind::emptyLeaf);
}

/// Makes an edit one that changes nothing, so that the others keep their numbers.
void clear(Edit& edit) noexcept {
    edit.size = 0;
    edit.now.clear();
}

}  // namespace

void NestingEdits::replace(const Tag& tag, RepairKind kind, std::string now, std::string reason) {
    if (body_.substr(tag.begin, tag.end - tag.begin) == now) return;
    edits_.push_back({tag.begin, tag.end - tag.begin, kind, std::move(now), std::move(reason)});
}

void NestingEdits::undo(std::size_t number) noexcept { clear(edits_[number]); }

void NestingEdits::undoOf(const Tag& tag) noexcept {
    for (auto edit = std::ranges::lower_bound(edits_, tag.begin, {}, &Edit::offset);
         edit != edits_.end() && edit->offset <= tag.end; ++edit) {
        const bool changesTag = edit->offset == tag.begin && edit->size != 0;
        const bool closesLeaf = edit->offset == tag.end && edit->kind == RepairKind::emptyLeaf;
        if (changesTag || closesLeaf) clear(*edit);
    }
}

Edits NestingEdits::finish() && {
    // Of missing open tags at one place, the outer ones are found after the inner ones.
    std::ranges::reverse(late_);
    std::ranges::stable_sort(late_, {}, &Edit::offset);
    Edits edits;
    std::merge(std::make_move_iterator(late_.begin()), std::make_move_iterator(late_.end()),
               std::make_move_iterator(edits_.begin()), std::make_move_iterator(edits_.end()),
               std::back_inserter(edits), [](const Edit& a, const Edit& b) {
                   if (a.offset != b.offset) return a.offset < b.offset;
                   return closesThere(a) && !closesThere(b);
               });
    std::erase_if(edits, [](const Edit& edit) { return edit.size == 0 && edit.now.empty(); });
    return edits;
}

}  // namespace brackwell::repair
