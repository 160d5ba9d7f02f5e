// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nanobind/nanobind.h>

#include "field.h"
#include "list.h"

namespace brackwell::python {

/// A field that is a list with a class of its own.
template <class Item, class Statement>
Field<Statement> listField(const char* name, const char* doc,
                           List<Item> (*listOf)(const Handle<Statement>&)) {
    Field<Statement> made;
    made.name = name;
    made.doc = doc;
    made.type = ListNameOf<Item>::value;
    made.kind = Kind::object;
    made.isOptional = false;
    made.object = [listOf](const Handle<Statement>& handle) { return nb::cast(listOf(handle)); };
    return made;
}

}  // namespace brackwell::python
