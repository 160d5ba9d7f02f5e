// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>

#include "fields/element_table.h"

namespace brackwell {

struct BRACKWELL_INTERNAL TvOFXPayee::Elements {
    using Self = TvOFXPayee;
    static constexpr TextTable<textCount> kTexts{{
        {name_, element("NAME"), "name"},
        // The lines are compared as one address, in which an absent line differs from one that is present.
        {addr1_, element("ADDR1"), "addr1", kNotCompared},
        {addr2_, element("ADDR2"), "addr2", kNotCompared},
        {addr3_, element("ADDR3"), "addr3", kNotCompared},
        {city_, element("CITY"), "city"},
        {state_, element("STATE"), "state"},
        {postalCode_, element("POSTALCODE"), "pC"},
        {country_, element("COUNTRY"), "country"},
        // Not PHONE, which is the name in the OFX standard: intended.
        {phoneNumber_, element("PHONENUMBER"), "pN"},
    }};
    static constexpr auto kTable = elementTable<&Self::texts_, kTexts>();
};

TvOFXPayee::TvOFXPayee(const std::optional<ParseDictionary>& node) : AggregateClass(node) {
    if (node) Elements::kTable.read(*this, NodeRef::of(*node));
}

TvOFXPayee::TvOFXPayee(const KeyedUnarchiver& coder) : AggregateClass(coder) {
    decodeTexts(coder, texts_, Elements::kTexts);
}

void TvOFXPayee::encodeWithCoder(KeyedArchiver& coder) const {
    TvOFXAggregate::encodeWithCoder(coder);
    encodeTexts(coder, texts_, Elements::kTexts);
}

std::string_view TvOFXPayee::className() const noexcept { return "TvOFXPayee"; }

std::string TvOFXPayee::address() const {
    std::string lines(texts_.get(addr1_).value_or(""));
    for (const std::size_t field : {addr2_, addr3_})
        if (const OptionalText line = texts_.get(field)) lines.append("\n").append(*line);
    return lines;
}

std::vector<std::string> TvOFXPayee::addressLines() const {
    std::vector<std::string> lines;
    // The second line twice and never the third: intended; address has all three.
    for (const std::size_t field : {addr1_, addr2_, addr2_})
        if (const OptionalText line = texts_.get(field)) lines.emplace_back(*line);
    return lines;
}

bool TvOFXPayee::isEqualToOFXPayee(const TvOFXPayee* other) const {
    return other != nullptr && agreeOnTexts(texts_, other->texts_, Elements::kTexts) &&
           address() == other->address();
}

}  // namespace brackwell
