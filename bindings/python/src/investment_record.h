// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investment_records.h>
#include <nanobind/nanobind.h>

#include <algorithm>
#include <string_view>

#include "record.h"

namespace brackwell::python {

/// The library's name of a field, the document's text of which is asked for by the name that the field has
/// here.
template <class T>
std::string_view libraryNameOf(std::string_view name) {
    for (const Field<T>& field : fieldsOf<T>())
        if (field.name == name && field.isAttribute()) return field.library;
    throw nb::attribute_error("no such field");
}

/// The fields that the library reads and the module has under no name.
template <class T>
nb::list unlistedFields(const Record<T>& record) {
    nb::list unlisted;
    if (!record.live) return unlisted;
    for (const InvestmentField& given : HandleOf<T>::object(*record.live).fields()) {
        const auto& fields = fieldsOf<T>();
        if (std::none_of(fields.begin(), fields.end(),
                         [&](const auto& each) { return each.library == given.name; }))
            unlisted.append(nb::str(given.name.data(), given.name.size()));
    }
    return unlisted;
}

/// What all objects of investments have besides.
template <class T>
nb::class_<Record<T>> bindInvestmentBase(nb::module_& module, const char* doc) {
    auto bound = bindRecord<T>(module, doc);
    bound
        .def(
            "text",
            [](const Record<T>& self, std::string_view name) -> nb::object {
                const std::string_view library = libraryNameOf<T>(name);
                if (!self.live)
                    throw nb::value_error("an object that comes from a pickle has no text of its document");
                const OptionalText text = HandleOf<T>::object(*self.live).text(library);
                return text ? nb::str(text->data(), text->size()) : nb::object(nb::none());
            },
            nb::sig("def text(self, name: str, /) -> str | None"),
            "The text of a field as the document has it: also where that is no amount or date, or a word "
            "that the OFX "
            "standard does not have. An object that comes from a pickle has none, and raises ValueError.")
        .def("_unlisted_fields", &unlistedFields<T>, nb::sig("def _unlisted_fields(self, /) -> list[str]"));
    return bound;
}

template <class T>
void bindInvestment(nb::module_& module, const char* doc) {
    auto bound = bindInvestmentBase<T>(module, doc);
    bindPickle(bound);
}

}  // namespace brackwell::python
