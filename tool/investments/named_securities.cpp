// SPDX-License-Identifier: Apache-2.0
#include "investments/named_securities.h"

#include <string_view>

#include "text/folded_case.h"

namespace tool {
namespace {

using namespace brackwell;

std::string folded(std::string_view type) {
    std::string text;
    appendFoldedCase(text, type);
    return text;
}

/// Most objects name what others named before: nothing is made for these.
template <class Names>
auto& placeOf(Names& names, std::string_view name) {
    const auto place = names.find(name);
    return place != names.end() ? place->second : names[std::string(name)];
}

template <class Names, class Object>
void addName(Names& names, const Object& object) {
    const OptionalText id = object.securityID();
    if (!id) return;
    auto& types = placeOf(names, *id);
    types.insert(folded(object.securityIDType().value_or("")));
}

}  // namespace

void NamedSecurities::add(const InvestmentStatement& statement) {
    for (const Position& position : statement.positions()) addName(names_, position);
    for (const InvestmentTransaction& transaction : statement.transactions()) addName(names_, transaction);
}

bool NamedSecurities::has(const Security& security) const {
    const auto named = names_.find(security.id().value_or(""));
    if (named == names_.end()) return false;
    const std::string type = folded(security.idType().value_or(""));
    const auto& types = named->second;
    return type.empty() || types.contains("") || types.contains(type);
}

}  // namespace tool
