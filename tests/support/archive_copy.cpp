// SPDX-License-Identifier: Apache-2.0
#include "support/archive_copy.h"

#include "archives/cbor.h"

namespace brackwell::tests {

std::optional<KeyedArchiver> copyOf(const KeyedUnarchiver& archive, std::string_view map) {
    KeyedArchiver copy;
    for (auto count = *cbor::takeArgument(map, cbor::Major::map); count > 0; --count) {
        const std::string_view key = *cbor::takeString(map, cbor::Major::text);
        const std::string_view value = map;
        if (!cbor::skipItem(map)) return std::nullopt;
        int kinds = 0;
        if (const auto found = archive.decodeText(key)) ++kinds, copy.encodeText(key, *found);
        if (const auto found = archive.decodeUnsigned(key)) ++kinds, copy.encodeUnsigned(key, *found);
        if (const auto found = archive.decodeDate(key)) ++kinds, copy.encodeDate(key, *found);
        if (const auto found = archive.decodeDecimal(key)) ++kinds, copy.encodeDecimal(key, *found);
        if (const auto found = archive.decodeList(key)) ++kinds, copy.encodeList(key, *found);
        if (const auto found = archive.decodeObject(key)) {
            const std::optional<KeyedArchiver> object = copyOf(*found, value);
            if (!object) return std::nullopt;
            ++kinds, copy.encodeObject(key, *object);
        }
        if (kinds != 1) return std::nullopt;
    }
    return copy;
}

}  // namespace brackwell::tests
