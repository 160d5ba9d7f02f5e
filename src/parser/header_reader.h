// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/reading.h>

#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

#include "tree/node_ref.h"
#include "tree/tree_writer.h"

namespace brackwell::reading {

/// The encoding that the XML declaration at the beginning of a text names; nothing when it names none, or
/// there is no declaration.
OptionalText encodingInDeclaration(std::string_view text) noexcept;

/// Collects header names with copies of their values: a later value of a name replaces an earlier one
/// and keeps its place.
class HeaderCollector {
public:
    void set(std::string_view name, std::string_view value) {
        writer_.setLeaf(writer_.names().numberOfCopy(name), value);
    }
    ParseDictionary finish() {
        writer_.finish();
        return NodeRef::root(std::move(document_));
    }

private:
    static constexpr std::size_t kExpectedNames = 12;
    static constexpr std::size_t kExpectedText = 128;
    std::shared_ptr<Document> document_ = std::make_shared<Document>();
    TreeWriter writer_{*document_, kExpectedNames, kExpectedText};
};

}  // namespace brackwell::reading
