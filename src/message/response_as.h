// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/model.h>

#include <memory>
#include <type_traits>
#include <typeinfo>

namespace brackwell {

/// The response as one of that class, which has no classes derived from it; null when it is of another. In a
/// small document this takes noticeably less time than a dynamic_cast.
template <class Class>
const Class* responseAs(const TvOFXResponse& response) noexcept {
    static_assert(std::is_final_v<Class>);
    return typeid(response) == typeid(Class) ? static_cast<const Class*>(&response) : nullptr;
}

/// The same, with a share in the response.
template <class Class>
std::shared_ptr<Class> sharedAs(const std::shared_ptr<TvOFXResponse>& response) noexcept {
    if (responseAs<Class>(*response) == nullptr) return nullptr;
    return std::static_pointer_cast<Class>(response);
}

}  // namespace brackwell
