// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nanobind/nanobind.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "field.h"

/// \file
/// Attributes of objects without the detour over a property, a function and its arguments, which takes longer
/// than most attributes. The properties are there all the same: for subclasses, for whoever asks the class,
/// and for what goes wrong.

namespace brackwell::python {

template <class T>
nb::object valueOf(const Record<T>& record, const Field<T>& field);

/// The fields of a class by the names that the interpreter has for attributes, each of which is one object.
template <class T>
class FieldNames {
public:
    FieldNames() {
        for (const Field<T>& field : fieldsOf<T>()) {
            if (!field.isAttribute()) continue;
            PyObject* name = PyUnicode_InternFromString(field.name.c_str());
            if (name == nullptr) nb::raise_python_error();
            std::size_t place = placeOf(name);
            while (names_[place].name != nullptr) place = (place + 1) % names_.size();
            names_[place] = {name, &field};
        }
    }
    const Field<T>* find(const PyObject* name) const {
        for (std::size_t place = placeOf(name); names_[place].name != nullptr;
             place = (place + 1) % names_.size())
            if (names_[place].name == name) return names_[place].field;
        return nullptr;
    }

private:
    struct Name {
        const PyObject* name;
        const Field<T>* field;
    };
    std::size_t placeOf(const PyObject* name) const {
        // Addresses differ from the fifth bit on.
        return reinterpret_cast<std::uintptr_t>(name) / 16 % names_.size();
    }
    std::array<Name, 256> names_{};  // classes have at most some sixty
};

template <class T>
PyObject* attributeOf(PyObject* self, PyObject* name) {
    static const auto* names = new FieldNames<T>();
    static const nb::handle type = nb::type<Record<T>>();
    const nb::handle record = self;
    if (record.type().is(type) && nb::inst_ready(record)) {
        if (const Field<T>* field = names->find(name)) {
            try {
                return valueOf(*nb::inst_ptr<Record<T>>(record), *field).release().ptr();
            } catch (...) {
                // The property fails in the same way, and knows how exceptions get into Python.
            }
        }
    }
    return PyObject_GenericGetAttr(self, name);
}

/// For nb::class_<Record<T>>.
template <class T>
nb::type_slots attributeSlots() {
    static PyType_Slot slots[] = {{Py_tp_getattro, reinterpret_cast<void*>(&attributeOf<T>)}, {0, nullptr}};
    return nb::type_slots(slots);
}

}  // namespace brackwell::python
