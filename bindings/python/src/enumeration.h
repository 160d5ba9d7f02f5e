// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nanobind/nanobind.h>

#include <cstddef>
#include <string>
#include <vector>

#include "field.h"
#include "kept_text.h"

namespace brackwell::python {

/// Adds the enumeration to the module, with the library's names of its enumerators.
template <class Enumeration>
void bindEnumeration(nb::module_& module, const char* doc) {
    nb::enum_<Enumeration> bound(module, kept(enumerationPythonName<Enumeration>()), doc);
    const std::vector<std::string>& names = memberNames<Enumeration>();
    for (std::size_t i = 0; i < names.size(); ++i) bound.value(names[i].c_str(), static_cast<Enumeration>(i));
}

}  // namespace brackwell::python
