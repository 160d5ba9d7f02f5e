// SPDX-License-Identifier: Apache-2.0
#include <brackwell/model.h>

#include <bit>
#include <charconv>

#include "fields/archived_tree.h"

namespace brackwell {
namespace {

/// Part of every archive, so it can never change.
constexpr std::string_view kNodeKey = "originalPD";

}  // namespace

TvOFXAggregate::TvOFXAggregate(const KeyedUnarchiver& coder)
    : originalParseData_(decodeTree(coder, kNodeKey)) {}

TvOFXAggregate::~TvOFXAggregate() = default;

std::shared_ptr<TvOFXAggregate> TvOFXAggregate::initWithParseDict(
    const std::optional<ParseDictionary>& node) {
    return std::make_shared<TvOFXAggregate>(node);
}

void TvOFXAggregate::parseDictionary(const std::optional<ParseDictionary>& node) {
    originalParseData_ = node;
}

std::string TvOFXAggregate::description() const {
    if (originalParseData_) return TvOFXHelper::ofxDictionaryToString(*originalParseData_);
    // Without a node there is nothing to show but which object it is.
    std::array<char, 16> digits{};  // of 64 bits
    char* const begin = digits.data();
    char* const end =
        std::to_chars(begin, begin + digits.size(), std::bit_cast<std::uintptr_t>(this), 16).ptr;
    std::string text("<");
    text.append(className()).append(": 0x").append(begin, end);
    return text.append(">");
}

std::string TvOFXAggregate::ofxString() const {
    return originalParseData_ ? TvOFXHelper::ofxDictionaryToString(*originalParseData_) : std::string();
}

std::shared_ptr<TvOFXAggregate> TvOFXAggregate::initWithCoder(const KeyedUnarchiver& coder) {
    return std::make_shared<TvOFXAggregate>(coder);
}

void TvOFXAggregate::encodeWithCoder(KeyedArchiver& coder) const {
    if (originalParseData_) encodeTree(coder, kNodeKey, *originalParseData_);
}

std::string_view TvOFXAggregate::className() const noexcept { return "TvOFXAggregate"; }

}  // namespace brackwell
