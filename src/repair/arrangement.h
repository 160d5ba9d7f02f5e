// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <unordered_map>

#include "repair/edit.h"
#include "repair/tree.h"

namespace brackwell::repair {

/// What has been done to a node, and why.
struct Mark {
    RepairKind kind = RepairKind::misplaced;
    std::string reason;       ///< of the node's own place
    std::string closeReason;  ///< of the place where it ends, when that differs
    bool isRenamed = false;
};

/// The marks of a tree's nodes, of which most documents have few or none.
class Marks {
public:
    /// That of a node without one says nothing.
    const Mark& operator[](NodeID node) const noexcept {
        static const Mark kNothing;
        const auto found = marks_.find(node);
        return found == marks_.end() ? kNothing : found->second;
    }
    /// To be changed.
    Mark& of(NodeID node) { return marks_[node]; }

private:
    std::unordered_map<NodeID, Mark> marks_;
};

/// A tree whose nodes have been put where the standard has a place for them.
struct Arrangement {
    Tree tree;
    Marks marks;
    bool isChanged = false;
};

/// Puts the known elements of a tree where they may stand, in four ways, from the innermost to the outermost:
/// - An element that an open tag is missing around gets it: a STMTTRN in a STMTRS its BANKTRANLIST, or the
///   one that is there.
/// - An aggregate whose children all belong in another gets that one's name: a BANKMSGSRSV1 that holds
///   nothing but CCSTMTTRNRS.
/// - An element that belongs further out is moved there.
/// - Aggregates that stand twice where one may become one, or are parted: two STMTRS in one STMTTRNRS get a
///   STMTTRNRS each.
/// Elements that are not known stay where they are, and go where those around them go. What no way helps
/// stays, too.
Arrangement arranged(Tree tree);

}  // namespace brackwell::repair
