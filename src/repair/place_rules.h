// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <string_view>

#include "elements/structure.h"

/// \file
/// What a repair has to know about places and names, and the list of elements alone can say.

namespace brackwell::repair {

/// True for an aggregate that can be merged with another of its kind.
inline bool isList(elements::Element element) noexcept {
    return std::ranges::any_of(elements::childrenOf(element), &elements::Child::mayRepeat);
}

/// True when so few aggregates may contain the element that it is clear which one is missing.
inline bool hasClearPlace(elements::Element element) noexcept {
    return elements::parentsOf(element).size() <= 2;
}

/// True when only one child of an aggregate may hold an element.
inline bool isOnly(elements::Element parent, elements::Element element) {
    return std::ranges::count_if(elements::parentsOf(element), [parent](elements::Element between) {
               return elements::findChild(between, parent) != nullptr;
           }) == 1;
}

/// True for BANKACCTINFO and BANKACCTFROM, and other pairs with such names: the information about an account,
/// and the account. Other aggregates that contain an account do so for other reasons.
inline bool isInfoOf(elements::Element info, elements::Element account) noexcept {
    constexpr std::string_view kInfo = "INFO";
    constexpr std::string_view kAccount = "FROM";
    const std::string_view outer = elements::nameOf(info);
    const std::string_view inner = elements::nameOf(account);
    return outer.ends_with(kInfo) && inner.ends_with(kAccount) &&
           outer.substr(0, outer.size() - kInfo.size()) == inner.substr(0, inner.size() - kAccount.size());
}

/// True for the statement of an account: STMTRS, CCSTMTRS, INVSTMTRS and others of such names.
inline bool isStatement(elements::Element element) noexcept {
    return elements::nameOf(element).ends_with("STMTRS");
}

inline bool hasSameVersion(elements::Element a, elements::Element b) noexcept {
    return elements::nameOf(a).back() == elements::nameOf(b).back();
}

/// True for two names that differ in the version at their end only, one of them that of the third.
inline bool isVersionOf(elements::Element a, elements::Element b, elements::Element wanted) noexcept {
    const std::string_view first = elements::nameOf(a);
    const std::string_view second = elements::nameOf(b);
    return first.size() == second.size() &&
           first.substr(0, first.size() - 1) == second.substr(0, second.size() - 1) &&
           (hasSameVersion(a, wanted) || hasSameVersion(b, wanted));
}

}  // namespace brackwell::repair
