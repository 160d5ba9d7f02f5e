// SPDX-License-Identifier: Apache-2.0
#include "tree/element_names.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <set>
#include <string>

#include "elements/element_list.h"
#include "support/random_text.h"

using namespace brackwell;
using namespace brackwell::tests;
using namespace brackwell::reading;

namespace {

NameID searchLinearly(std::string_view name) {
    const auto found = std::find(kElementNames.begin(), kElementNames.end(), name);
    return static_cast<NameID>(found - kElementNames.begin());
}

void compare(const std::string& name) {
    CAPTURE(name);
    REQUIRE(findKnownElement(name) == searchLinearly(name));
    // The key as it is read from a longer text must be the same.
    const std::string longer = name + std::string(kKeyedBytes, '>');
    REQUIRE(nameKeyOfReadable(longer.data(), name.size()) == nameKey(name));
}

}  // namespace

TEST_CASE("no name is known twice, and the empty name is not known") {
    CHECK(std::set<std::string_view>(kElementNames.begin(), kElementNames.end()).size() ==
          kKnownElementCount);
    CHECK(findKnownElement("") == kKnownElementCount);
    CHECK(std::count(kElementNames.begin(), kElementNames.end(), "") == 0);
}

TEST_CASE("every known name is found, and so numbered by the compiler as at run time") {
    for (NameID id = 0; id < kKnownElementCount; ++id) CHECK(findKnownElement(kElementNames[id]) == id);
    CHECK(element("OFX") == findKnownElement("OFX"));
    CHECK(element("STMTTRN") == findKnownElement("STMTTRN"));
    CHECK(element("TVOFX_ORIGINAL_STRING") == findKnownElement("TVOFX_ORIGINAL_STRING"));
}

TEST_CASE("names that are nearly known are not") {
    for (const std::string_view known : kElementNames) {
        const std::string name(known);
        compare(name);
        for (std::size_t i = 0; i <= name.size(); ++i) {
            compare(name.substr(0, i));
            compare(name.substr(i));
            for (const char c : {'X', 'x', ' ', '\0', '\xFF', '1'}) {
                compare(name.substr(0, i) + c + name.substr(i));
                if (i < name.size()) compare(name.substr(0, i) + c + name.substr(i + 1));
            }
            if (i < name.size()) compare(name.substr(0, i) + name.substr(i + 1));
        }
        compare("INTU." + name);
        compare(name + name);
    }
}

TEST_CASE("random names are known only when a search through all finds them") {
    RandomText random(7);
    constexpr std::string_view letters = "ACDEFINORSTX.1";
    for (int i = 0; i < 50000; ++i) {
        std::string name;
        for (std::size_t size = random.below(25); size > 0; --size) name += random.oneOf(letters);
        compare(name);
    }
}

TEST_CASE("two keys are equal when the names' lengths and first sixteen bytes are") {
    CHECK(nameKey("ABCDEFGHIJKLMNOP") == nameKey("ABCDEFGHIJKLMNOP"));
    CHECK_FALSE(nameKey("ABCDEFGHIJKLMNOP") == nameKey("ABCDEFGHIJKLMNOQ"));
    CHECK_FALSE(nameKey("ABCDEFGHIJKLMNOP") == nameKey("ABCDEFGHIJKLMNOPQ"));
    CHECK_FALSE(nameKey("A") == nameKey(std::string_view("A\0", 2)));
}

TEST_CASE("two keys of longer names are equal when the first and the last eight bytes are") {
    constexpr std::string_view name = "ABCDEFGHIJKLMNOPQRS";
    for (std::size_t i = 0; i < name.size(); ++i) {
        std::string other(name);
        other[i] = '.';
        CAPTURE(other);
        CHECK((nameKey(name) == nameKey(other)) == (i >= 8 && i < name.size() - 8));
        CHECK_FALSE(sameName(nameKey(name), name, nameKey(other), other));
    }
    CHECK(sameName(nameKey(name), name, nameKey(std::string(name)), name));
}

TEST_CASE("no two names of the OFX standard have one key, so that each can be made a known one") {
    std::set<std::uint64_t> mixed;
    for (const elements::ElementRow& row : elements::kElementRows) {
        CAPTURE(row.name);
        CHECK(mixed.insert(kKnownElements.mixed(nameKey(row.name))).second);
    }
}
