// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>

#include "model/element_table.h"
#include "model/text_table.h"

namespace brackwell {

struct BRACKWELL_INTERNAL TvOFXPayee::Elements {
    using Self = TvOFXPayee;
    static constexpr auto kTable = elementTable<Self>({
        {element("NAME"), text<&Self::texts_, name_>},
        {element("ADDR1"), text<&Self::texts_, addr1_>},
        {element("ADDR2"), text<&Self::texts_, addr2_>},
        {element("ADDR3"), text<&Self::texts_, addr3_>},
        {element("CITY"), text<&Self::texts_, city_>},
        {element("STATE"), text<&Self::texts_, state_>},
        {element("POSTALCODE"), text<&Self::texts_, postalCode_>},
        {element("COUNTRY"), text<&Self::texts_, country_>},
        // Not PHONE: intended.
        {element("PHONENUMBER"), text<&Self::texts_, phoneNumber_>},
    });
    static constexpr std::array<TextKey, 9> archive{{{name_, "name"},
                                                     {addr1_, "addr1"},
                                                     {addr2_, "addr2"},
                                                     {addr3_, "addr3"},
                                                     {city_, "city"},
                                                     {state_, "state"},
                                                     {postalCode_, "pC"},
                                                     {country_, "country"},
                                                     {phoneNumber_, "pN"}}};
    static constexpr std::array<std::size_t, 6> compared{name_,       city_,    state_,
                                                         postalCode_, country_, phoneNumber_};
};

TvOFXPayee::TvOFXPayee(const std::optional<ParseDictionary>& node) : TvOFXAggregate(node) {
    if (node) Elements::kTable.read(*this, NodeRef::of(*node));
}

TvOFXPayee::TvOFXPayee(const KeyedUnarchiver& coder) : TvOFXAggregate(coder) {
    decodeTexts(coder, texts_, Elements::archive);
}

std::shared_ptr<TvOFXPayee> TvOFXPayee::initWithParseDict(const std::optional<ParseDictionary>& node) {
    return std::make_shared<TvOFXPayee>(node);
}

std::shared_ptr<TvOFXPayee> TvOFXPayee::initWithCoder(const KeyedUnarchiver& coder) {
    return std::make_shared<TvOFXPayee>(coder);
}

void TvOFXPayee::encodeWithCoder(KeyedArchiver& coder) const {
    TvOFXAggregate::encodeWithCoder(coder);
    encodeTexts(coder, texts_, Elements::archive);
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
    return other != nullptr && agreeOnTexts(texts_, other->texts_, Elements::compared) &&
           address() == other->address();
}

}  // namespace brackwell
