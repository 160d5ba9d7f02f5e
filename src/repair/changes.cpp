// SPDX-License-Identifier: Apache-2.0
#include "repair/changes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <utility>

namespace brackwell {
namespace {

/// What there is to say about a kind.
struct KindWords {
    std::string_view description;
    std::string_view one;   ///< "1 comment dropped"
    std::string_view many;  ///< "2 comments dropped"
};

/// By kind.
constexpr auto kWords = std::to_array<KindWords>({
    {"text before the document", "text before the document dropped", "texts before the document dropped"},
    {"comment", "comment dropped", "comments dropped"},
    {"instruction inside the body", "instruction inside the body dropped",
     "instructions inside the body dropped"},
    {"CDATA section", "CDATA section unwrapped", "CDATA sections unwrapped"},
    {"\"<\" inside a text", "\"<\" inside a text escaped", "\"<\" inside texts escaped"},
    {"blanks or attributes in a tag", "tag cleared of blanks or attributes",
     "tags cleared of blanks or attributes"},
    {"tag in lower case", "tag in lower case changed to capitals", "tags in lower case changed to capitals"},
    {"unfinished tag", "unfinished tag completed or dropped", "unfinished tags completed or dropped"},
    {"self-closed tag", "self-closed tag written in full", "self-closed tags written in full"},
    {"empty leaf without close tag", "empty leaf closed", "empty leaves closed"},
    {"close tag missing", "close tag inserted", "close tags inserted"},
    {"wrong close tag", "close tag corrected", "close tags corrected"},
    {"close tag without open tag", "close tag without open tag dropped",
     "close tags without open tag dropped"},
    {"open tag missing", "open tag inserted", "open tags inserted"},
    {"neighbouring tags crossed", "pair of crossed tags swapped", "pairs of crossed tags swapped"},
    {"header incomplete", "part of the header corrected", "parts of the header corrected"},
    {"element in a wrong place", "part of the document moved", "parts of the document moved"},
    {"aggregate repeated although only one is allowed", "repeated tag of an aggregate dropped",
     "repeated tags of aggregates dropped"},
    {"aggregate under a wrong name", "tag of a misnamed aggregate renamed",
     "tags of misnamed aggregates renamed"},
});
static_assert(kWords.size() == static_cast<std::size_t>(RepairKind::wrongName) + 1);

/// The kinds in the order of how much they say about what is read.
using enum RepairKind;
constexpr auto kByWeight = std::to_array<RepairKind>(
    {misplaced, repeated, wrongName, missingOpen, missingClose, strayClose, wrongClose, crossedTags,
     emptyLeaf, header, lowerCaseTag, lessThan, unfinishedTag, selfClosedTag, characterData, tagForm,
     textBeforeDocument, instruction, comment});
static_assert(kByWeight.size() == kWords.size());

/// The kind's place in that order.
std::size_t weightOf(RepairKind kind) noexcept {
    return static_cast<std::size_t>(std::ranges::find(kByWeight, kind) - kByWeight.begin());
}

const KindWords& wordsOf(RepairKind kind) noexcept { return kWords[static_cast<std::size_t>(kind)]; }

/// How many changes of a kind there are for a person: what is moved is dropped and put in, and two tags
/// have changed places.
std::size_t countOf(RepairKind kind, std::size_t drops, std::size_t all) noexcept {
    if (kind == misplaced) return std::max(drops, all - drops);
    return kind == crossedTags ? (all + 1) / 2 : all;
}

}  // namespace

std::string_view describe(RepairKind kind) noexcept { return wordsOf(kind).description; }

std::vector<RepairGroup> summaryOf(const std::vector<RepairChange>& changes) {
    std::vector<RepairGroup> groups;
    std::vector<std::size_t> drops;  // by group
    std::map<std::pair<RepairKind, std::string_view>, std::size_t> known;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        const RepairChange& change = changes[i];
        const auto [entry, isNew] = known.try_emplace({change.kind, change.reason}, groups.size());
        if (isNew) {
            groups.push_back({change.kind, 0, i, {}, change.reason});
            drops.push_back(0);
        }
        ++groups[entry->second].count;
        if (change.now.empty()) ++drops[entry->second];
    }
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const std::size_t count = countOf(groups[i].kind, drops[i], groups[i].count);
        const KindWords& words = wordsOf(groups[i].kind);
        groups[i].text.append(std::to_string(count)).append(" ").append(count == 1 ? words.one : words.many);
    }
    std::ranges::stable_sort(groups, {}, [](const RepairGroup& group) { return weightOf(group.kind); });
    return groups;
}

namespace repair {
namespace {

/// Goes through a text from the front and counts its lines and columns.
class Position {
public:
    explicit Position(std::string_view text) : text_(text) {}

    void advanceTo(std::size_t offset) noexcept {
        for (; at_ < offset; ++at_) {
            const char c = text_[at_];
            const bool isFirstOfTwo = c == '\r' && at_ + 1 < text_.size() && text_[at_ + 1] == '\n';
            if (c == '\n' || (c == '\r' && !isFirstOfTwo)) {
                ++line_;
                column_ = 1;
            } else if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) {
                ++column_;
            }
        }
    }
    std::size_t line() const noexcept { return line_; }
    std::size_t column() const noexcept { return column_; }

private:
    std::string_view text_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
    std::size_t column_ = 1;
};

}  // namespace

std::vector<RepairChange> changesOf(std::string_view text, Edits edits) {
    std::vector<RepairChange> changes;
    changes.reserve(edits.size());
    Position position(text);
    for (Edit& edit : edits) {
        position.advanceTo(edit.offset);
        changes.push_back({edit.kind, edit.offset, position.line(), position.column(),
                           std::string(text.substr(edit.offset, edit.size)), std::move(edit.now),
                           std::move(edit.reason)});
    }
    return changes;
}

std::vector<RepairRemark> remarksOf(const Tree& tree) {
    std::vector<Fault> faults = faultsOf(tree);
    std::ranges::sort(faults, {}, &Fault::node);  // which is the order of the text
    std::vector<RepairRemark> remarks;
    remarks.reserve(faults.size());
    Position position(tree.text());
    for (const Fault& fault : faults) {
        const std::size_t offset = tree[fault.node].open.begin;
        position.advanceTo(offset);
        remarks.push_back({offset, position.line(), position.column(), reasonOf(tree, fault)});
    }
    return remarks;
}

}  // namespace repair
}  // namespace brackwell
