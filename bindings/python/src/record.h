// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nanobind/nanobind.h>

#include <optional>
#include <string>

#include "attributes.h"
#include "field.h"
#include "kept_text.h"

/// \file
/// An object of a document in Python. It reads a field when the attribute is asked for, and keeps the
/// document alive; one that comes from a pickle holds its values itself.

namespace brackwell::python {

template <class T>
struct Record {
    std::optional<Handle<T>> live;  ///< absent in what was restored
    nb::object values;              ///< of what was restored, a dict by field; otherwise no object
};

template <class T>
nb::object valueOf(const Record<T>& record, const Field<T>& field) {
    if (!record.live) {
        // A field that the version which wrote the pickle did not have.
        return record.values.attr("get")(field.name);
    }
    if (field.kind == Kind::object) return field.object(*record.live);
    return toPython(field.cell(HandleOf<T>::object(*record.live)));
}

template <class T>
nb::dict dictOf(const Record<T>& record) {
    nb::dict made;
    for (const Field<T>& field : fieldsOf<T>())
        if (field.isAttribute()) made[nb::str(field.name.data(), field.name.size())] = valueOf(record, field);
    return made;
}

template <class T>
bool areEqual(const Record<T>& a, const Record<T>& b) {
    for (const Field<T>& field : fieldsOf<T>())
        if (field.isAttribute() && field.isCompared() && !valueOf(a, field).equal(valueOf(b, field)))
            return false;
    return true;
}

/// Of the fields that are one value: equal objects have equal ones, and the others take long.
template <class T>
Py_hash_t hashOf(const Record<T>& record) {
    nb::list values;
    for (const Field<T>& field : fieldsOf<T>())
        if (field.isAttribute() && field.isCompared() && field.kind != Kind::object)
            values.append(valueOf(record, field));
    return nb::hash(nb::tuple(values));
}

/// "Payee(name='Harbour Row Lettings', city='Larkmoor')": the fields that the document has.
template <class T>
std::string representationOf(const Record<T>& record) {
    std::string text = std::string(NameOf<T>::value) + "(";
    for (const Field<T>& field : fieldsOf<T>()) {
        if (!field.isAttribute() || !field.isShown()) continue;
        const nb::object value = valueOf(record, field);
        if (value.is_none() || (nb::isinstance<nb::tuple>(value) && nb::len(value) == 0)) continue;
        if (text.back() != '(') text += ", ";
        text += field.name + "=" + nb::cast<std::string>(nb::repr(value));
    }
    return text + ")";
}

template <class T>
nb::tuple shownFields() {
    nb::list names;
    for (const Field<T>& field : fieldsOf<T>())
        if (field.isAttribute() && field.isShown())
            names.append(nb::str(field.name.data(), field.name.size()));
    return nb::tuple(names);
}

/// What every class of objects has; `fieldsOf` gives the attributes.
template <class T>
nb::class_<Record<T>> bindRecord(nb::module_& module, const char* doc) {
    nb::class_<Record<T>> bound(module, NameOf<T>::value, attributeSlots<T>(), doc);
    for (const Field<T>& field : fieldsOf<T>())
        if (field.isAttribute())
            bound.def_prop_ro(
                field.name.c_str(), [&field](const Record<T>& self) { return valueOf(self, field); },
                nb::sig(kept(field.signature())), field.doc.c_str());
    bound
        .def(
            "__eq__",
            [](const Record<T>& self, nb::handle other) -> nb::object {
                if (!nb::isinstance<Record<T>>(other)) return nb::borrow(nb::handle(Py_NotImplemented));
                return nb::bool_(areEqual(self, nb::cast<const Record<T>&>(other)));
            },
            nb::sig("def __eq__(self, other: object, /) -> bool"), "The same in all fields but source texts.")
        .def("__hash__", &hashOf<T>, nb::sig("def __hash__(self, /) -> int"))
        .def("__repr__", &representationOf<T>, nb::sig("def __repr__(self, /) -> str"))
        .def(
            "_repr_html_",
            [](nb::handle self) { return nb::module_::import_("brackwell._html").attr("of_record")(self); },
            nb::sig("def _repr_html_(self, /) -> str"), "A table for notebooks.")
        .def("as_dict", &dictOf<T>, nb::sig("def as_dict(self, /) -> dict[str, typing.Any]"),
             "All fields by name; None for what the document does not have.")
        .def_static("field_names", &shownFields<T>, nb::sig("def field_names() -> tuple[str, ...]"),
                    "The names of the fields, in their order, without source texts and secrets.");
    return bound;
}

/// Lets an object travel by its values, without its document.
template <class T>
void bindPickle(nb::class_<Record<T>>& bound) {
    bound.def("__getstate__", &dictOf<T>, nb::sig("def __getstate__(self, /) -> dict[str, typing.Any]"))
        .def(
            "__setstate__",
            [](Record<T>& self, nb::dict values) {
                new (&self) Record<T>{std::nullopt, std::move(values)};
            },
            nb::sig("def __setstate__(self, state: dict[str, typing.Any], /) -> None"));
}

template <class T>
void bindValue(nb::module_& module, const char* doc) {
    auto bound = bindRecord<T>(module, doc);
    bindPickle(bound);
}

}  // namespace brackwell::python
