// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <forward_list>
#include <memory>
#include <string>
#include <string_view>

#include "memory/pod_vector.h"
#include "memory/unpredictable_hash.h"
#include "tree/element_names.h"

namespace brackwell::reading {

/// Numbers the element names of one document: the known names have theirs, any other gets the next
/// one when it first appears. Looking a name up takes the same time however many there are.
class NameTable {
public:
    /// The number of a name whose characters live as long as the table.
    NameID number(std::string_view name) { return number(name, nameKey(name)); }
    NameID number(std::string_view name, const NameKey& key) {
        const NameID known = findKnownElement(key, name);
        return known != kKnownElementCount ? known : numberOfUnknown(name, false);
    }
    /// The same for a name that does not live so long.
    NameID numberOfCopy(std::string_view name) {
        const NameID known = findKnownElement(name);
        return known != kKnownElementCount ? known : numberOfUnknown(name, true);
    }
    std::string_view name(NameID id) const noexcept {
        return id < kKnownElementCount ? kElementNames[id] : unknown_[id - kKnownElementCount].name;
    }
    NameKey key(NameID id) const noexcept {
        return id < kKnownElementCount ? kKnownElements.keys[id] : nameKey(name(id));
    }
    /// All numbers are below this.
    NameID end() const noexcept { return kKnownElementCount + unknown_.size(); }

private:
    struct Entry {
        std::string_view name;
        std::uint64_t hash;
    };
    NameID numberOfUnknown(std::string_view name, bool copy);
    void rehash();

    std::unique_ptr<UnpredictableHash> hash_;  ///< made for the first unknown name
    PodVector<Entry> unknown_;
    PodVector<std::uint32_t> slots_;  ///< open addressing; position in unknown_ + 1, 0 is free
    std::forward_list<std::string> copies_;
};

}  // namespace brackwell::reading
