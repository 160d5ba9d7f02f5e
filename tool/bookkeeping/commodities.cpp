// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/commodities.h"

#include <utility>

#include "bookkeeping/book_text.h"
#include "bookkeeping/digest.h"
#include "money/foreign_amount.h"

namespace tool {
namespace {

using namespace brackwell;

std::string_view trimmedPart(OptionalText text) noexcept { return trimWhiteSpace(text.value_or("")); }

/// What a security is called where people do not name it.
std::string securityName(std::string_view id, std::string_view idType, const std::optional<Security>& known) {
    const std::string_view ticker = known ? trimmedPart(known->ticker()) : std::string_view();
    if (ticker.size() == 1 && !commodityNameOf(ticker).empty())
        return commodityNameOf("TICKER." + std::string(ticker));
    const bool isDigits = !ticker.empty() && ticker.front() >= '0' && ticker.front() <= '9';
    std::string name = isDigits ? "" : commodityNameOf(ticker);
    if (!name.empty()) return name;
    const std::string type(idType.empty() ? "ID" : idType);
    return commodityNameOf(type + "." + std::string(id));
}

std::vector<BookFact> factsOf(const Security& security) {
    std::vector<BookFact> facts;
    for (const InvestmentField& field : security.fields())
        facts.push_back({field.name, std::string(field.text)});
    return facts;
}

}  // namespace

std::string_view Commodities::currency(OptionalText text) {
    const std::string_view symbol = trimmedPart(text);
    const std::string key = "currency " + std::string(symbol);
    if (const auto named = names_.find(key); named != names_.end()) return named->second;
    const auto mapped = map_.commodity(symbol);
    std::string name = mapped.value_or(commodityNameOf(symbol));
    if (name.empty()) name = "XXX";
    BookCommodity commodity;
    commodity.isCurrency = true;
    commodity.decimals = decimalsOf(symbol);
    if (name != symbol && !symbol.empty()) commodity.facts.push_back({"currency", std::string(symbol)});
    return claim(std::move(name), key, std::move(commodity), mapped.has_value());
}

std::string_view Commodities::security(OptionalText id, OptionalText idType,
                                       const std::optional<Security>& known) {
    const std::string_view text = trimmedPart(id);
    if (text.empty() && !known) return {};
    // One that a list has is the same one whether or not its type is named.
    const std::string_view type = trimmedPart(known && known->idType() ? known->idType() : idType);
    const std::string key = Digest().add(text).add(type).text();
    if (const auto named = names_.find(key); named != names_.end()) return named->second;
    auto name = map_.commodity(text);
    if (!name && known) name = map_.commodity(trimmedPart(known->ticker()));
    BookCommodity commodity;
    if (known)
        commodity.facts = factsOf(*known);
    else
        commodity.facts = {{"id", std::string(text)}, {"idType", std::string(type)}};
    return claim(name.value_or(securityName(text, type, known)), key, std::move(commodity), name.has_value());
}

std::vector<BookCommodity> Commodities::all() const {
    std::vector<BookCommodity> all;
    for (const auto& [name, claimed] : claims_) all.push_back(claimed);
    return all;
}

std::string_view Commodities::claim(std::string name, const std::string& key, BookCommodity commodity,
                                    bool isShared) {
    constexpr std::size_t kept = 16;
    constexpr std::size_t told = 6;
    const auto taken = claims_.find(name);
    if (!isCommodityName(name) || (taken != claims_.end() && !isShared))
        name = commodityNameOf(name.substr(0, kept) + "." + Digest().add(key).text().substr(0, told));
    commodity.name = name;
    claims_.try_emplace(name, std::move(commodity));
    return names_.emplace(key, std::move(name)).first->second;
}

}  // namespace tool
