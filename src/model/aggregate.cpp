// SPDX-License-Identifier: Apache-2.0
#include <brackwell/model.h>

#include <sstream>

#include "model/archived_tree.h"

namespace brackwell {
namespace {

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
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << '<' << className() << ": " << static_cast<const void*>(this) << '>';
    return text.str();
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
