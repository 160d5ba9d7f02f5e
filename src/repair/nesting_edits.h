// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "repair/edit.h"
#include "repair/markup.h"

namespace brackwell::repair {

/// What is changed about tags and their nesting: edits in the order of the tags, and late ones of open tags,
/// which are found out where the close tag stands.
class NestingEdits {
public:
    NestingEdits(std::string_view body, const reading::NameTable& names) : body_(body), names_(names) {}

    void insert(std::size_t offset, RepairKind kind, std::string now, std::string reason) {
        edits_.push_back({offset, 0, kind, std::move(now), std::move(reason)});
    }
    /// Does nothing when the tag is written so.
    void replace(const Tag& tag, RepairKind kind, std::string now, std::string reason = {});
    void keepOpen(const Tag& tag) { replace(tag, tag.flaw, openTag(names_.name(tag.name))); }
    void keepClose(const Tag& tag) { replace(tag, tag.flaw, closeTag(names_.name(tag.name))); }
    /// Makes text of a tag.
    void escape(const Tag& tag) { edits_.push_back({tag.begin, 1, RepairKind::lessThan, "&lt;", {}}); }

    /// Puts in an open tag before what has been read already.
    void open(std::size_t offset, RepairKind kind, std::string_view name, std::string reason) {
        late_.push_back({offset, 0, kind, openTag(name), std::move(reason)});
    }
    /// Replaces a tag that has been read already; its own edits must be undone.
    void replaceLate(const Tag& tag, RepairKind kind, std::string now, std::string reason) {
        late_.push_back({tag.begin, tag.end - tag.begin, kind, std::move(now), std::move(reason)});
    }

    /// The number of the last one that is not late.
    std::size_t last() const noexcept { return edits_.size() - 1; }
    void undo(std::size_t number) noexcept;
    /// Undoes what was changed of a tag, and a close tag that was put in right after it.
    void undoOf(const Tag& tag) noexcept;

    /// All of them. At the same place, what is closed there comes before what is opened.
    Edits finish() &&;

private:
    std::string_view body_;
    const reading::NameTable& names_;
    Edits edits_;
    Edits late_;
};

}  // namespace brackwell::repair
