// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include <iterator>

#include "elements/structure.h"
#include "support/documents.h"
#include "support/invalid_elements.h"

/// How often a document comes out as before after one of its tags was lost, at every place of every example:
/// all leaves at their places, but for the source texts of transactions. And whatever comes out is valid by
/// the standard, or says where it is not.

using namespace brackwell;
using namespace brackwell::tests;

namespace {

void addLeaves(std::string& all, const std::string& path, const ParseValue& value) {
    if (const auto text = value.text(); text && !path.ends_with("/TVOFX_ORIGINAL_STRING"))
        all += path + "=" + std::string(*text) + "\n";
    std::size_t number = 0;
    for (const ParseValue& element : value.elements())
        addLeaves(all, path + "[" + std::to_string(number++) + "]", element);
    if (const auto dictionary = value.dictionary())
        for (const auto& [name, child] : *dictionary) addLeaves(all, path + "/" + std::string(name), child);
}

std::string leavesOf(std::string_view text) {
    TvOFXParser parser(Data::view(text));
    parser.setStringEncoding(TextEncodingUTF8);
    Error error;
    const auto result = parser.parseWithError(&error);
    std::string all;
    if (result && result->ofxData) addLeaves(all, "", ParseValue(*result->ofxData));
    return all;
}

struct Place {
    std::size_t begin;
    std::size_t end;
    bool isClose;
    bool isAggregate;
};

std::vector<Place> tagsOf(std::string_view text) {
    std::vector<Place> tags;
    for (std::size_t at = text.find("<OFX>"); at < text.size(); at = text.find('<', at + 1)) {
        const std::size_t end = text.find('>', at) + 1;
        const bool isClose = text[at + 1] == '/';
        const std::size_t name = at + (isClose ? 2 : 1);
        tags.push_back({at, end, isClose,
                        elements::isAggregate(elements::findElement(text.substr(name, end - 1 - name)))});
    }
    return tags;
}

struct Share {
    std::size_t all = 0;
    std::size_t same = 0;
    std::size_t told = 0;   ///< differ, with changes or remarks that say so
    std::size_t valid = 0;  ///< have no more elements where they cannot stand than the sound document
    double percent() const noexcept { return 100.0 * static_cast<double>(same) / static_cast<double>(all); }
};

struct Sound {
    std::string leaves;
    std::size_t invalid;  ///< elements
};

/// Repairs one damaged document and compares it with the sound one.
void compare(Share& share, const std::string& damaged, const Sound& wanted) {
    const RepairedText repaired = repairOFXText(damaged, RepairScope::structure);
    ++share.all;
    REQUIRE(untold(repaired) == "");
    if (repaired.remaining.size() <= wanted.invalid) ++share.valid;
    if (leavesOf(repaired.text) == wanted.leaves)
        ++share.same;
    else if (!repaired.changes.empty() || !repaired.remaining.empty())
        ++share.told;
}

/// Damages every example document at every place: `damage(text, tags, i)` gives the damaged text, or an empty
/// one where there is nothing to damage.
template <class Damage>
Share shareAfter(Damage damage) {
    Share share;
    for (const Example& example : examples()) {
        const Data data = exampleData(example.name);
        const auto decoded = decodeText(data, example.name == "utf_16.ofx"           ? TextEncodingUTF16
                                              : example.encoding != TextEncodingNone ? example.encoding
                                                                                     : TextEncodingUTF8);
        REQUIRE(decoded);
        const std::string whole(decoded->bytes());
        const Sound wanted{leavesOf(whole), invalidElementsOf(whole).size()};
        const std::vector<Place> tags = tagsOf(whole);
        for (std::size_t i = 0; i < tags.size(); ++i)
            if (const std::string damaged = damage(whole, tags, i); !damaged.empty())
                compare(share, damaged, wanted);
    }
    MESSAGE(share.same << " of " << share.all << " as before, " << share.told << " differ and say so, "
                       << share.valid << " are as valid as before");
    return share;
}

}  // namespace

TEST_CASE("nearly every document that lost one tag of an aggregate comes out as before") {
    for (const bool losesClose : {true, false}) {
        CAPTURE(losesClose);
        const Share share = shareAfter([=](std::string text, const std::vector<Place>& tags, std::size_t i) {
            if (tags[i].isClose != losesClose || !tags[i].isAggregate) return std::string();
            return text.erase(tags[i].begin, tags[i].end - tags[i].begin);
        });
        CHECK(share.all > 200);
        CHECK(share.percent() >= 99);
        CHECK(share.valid * 100 >= share.all * 99);
        CHECK(share.same + share.told == share.all);
    }
}

TEST_CASE("most documents in which two neighbouring tags changed places come out as before") {
    const Share share = shareAfter([](std::string text, const std::vector<Place>& tags, std::size_t i) {
        if (i + 1 == tags.size()) return std::string();
        const std::size_t gap = tags[i + 1].begin - tags[i].end;
        if (!trimWhiteSpace(std::string_view(text).substr(tags[i].end, gap)).empty()) return std::string();
        const std::string first = text.substr(tags[i].begin, tags[i].end - tags[i].begin);
        const std::string second = text.substr(tags[i + 1].begin, tags[i + 1].end - tags[i + 1].begin);
        const std::string between = text.substr(tags[i].end, gap);
        return text.replace(tags[i].begin, tags[i + 1].end - tags[i].begin, second + between + first);
    });
    CHECK(share.all > 200);
    CHECK(share.percent() >= 98);
    CHECK(share.valid * 100 >= share.all * 99);
}
