// SPDX-License-Identifier: Apache-2.0
#include "repair/edit.h"

#include <doctest/doctest.h>

#include "support/effort.h"
#include "support/random_text.h"

using namespace brackwell;
using namespace brackwell::repair;
using namespace brackwell::tests;

namespace {

Edits randomEdits(RandomText& random, std::size_t size) {
    Edits edits;
    for (std::size_t at = random.below(4); at <= size; at += random.below(5)) {
        Edit edit{at, random.below(4), RepairKind::comment, {}, {}};
        edit.size = std::min(edit.size, size - at);
        for (std::size_t i = random.below(3); i > 0; --i) edit.now += random.oneOf(std::string_view("xyz"));
        if (edit.size > 0 || !edit.now.empty()) edits.push_back(edit);
        at += edit.size;
    }
    return edits;
}

std::string shown(const Edits& edits) {
    std::string text;
    for (const Edit& edit : edits)
        text += std::to_string(edit.offset) + "+" + std::to_string(edit.size) + "=" + edit.now + " ";
    return text;
}

Edit put(std::size_t offset, std::size_t size, std::string now) {
    return {offset, size, RepairKind::comment, std::move(now), {}};
}

}  // namespace

TEST_CASE("two lists of edits as one make what both make one after the other") {
    RandomText random(5);
    for (std::size_t i = 0; i < scaled(20000); ++i) {
        std::string text;
        for (std::size_t size = random.below(20); size > 0; --size)
            text += random.oneOf(std::string_view("abc"));
        const Edits first = randomEdits(random, text.size());
        const std::string between = applied(text, first);
        const Edits second = randomEdits(random, between.size());
        const Edits both = composed(text, first, second);
        const std::string wanted = applied(between, second);
        std::size_t at = 0;
        bool inOrder = true;
        for (const Edit& edit : both) {
            inOrder = inOrder && edit.offset >= at && text.substr(edit.offset, edit.size) != edit.now;
            at = edit.offset + edit.size;
        }
        if (applied(text, both) == wanted && inOrder) continue;
        CAPTURE(text);
        CAPTURE(shown(first));
        CAPTURE(shown(second));
        CAPTURE(shown(both));
        CHECK(inOrder);
        REQUIRE(applied(text, both) == wanted);
    }
}

TEST_CASE("edits that undo each other vanish, and those that touch become one") {
    struct Row {
        Edits first;
        Edits second;
        std::string both;
    };
    for (const Row& row : {Row{{put(2, 0, "xy")}, {put(2, 2, "")}, ""},
                           {{put(2, 1, "")}, {put(2, 0, "c")}, ""},
                           {{put(1, 1, "x")}, {put(1, 1, "b")}, ""},
                           {{put(1, 1, "x")}, {put(0, 3, "y")}, "0+3=y "},
                           {{put(1, 0, "x")}, {put(3, 1, "y")}, "1+0=x 2+1=y "},
                           {{put(1, 0, "x")}, {}, "1+0=x "},
                           {{}, {put(4, 0, "x")}, "4+0=x "},
                           {{put(2, 0, "xyz")}, {put(3, 1, "")}, "2+0=xz "}}) {
        CAPTURE(shown(row.first));
        CAPTURE(shown(row.second));
        CHECK(shown(composed("abcd", row.first, row.second)) == row.both);
    }
}
