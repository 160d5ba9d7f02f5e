// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "arrow_column.h"
#include "cell.h"
#include "enumerators.h"

/// \file
/// The fields of a class as data. Attributes, their types in the stubs, comparison, representation, pickles
/// and the columns of tables all come from these rows.

namespace brackwell::python {

template <class T>
struct Record;

/// How the module keeps an object of the library alive.
template <class T>
struct HandleOf {
    using type = T;
    static const T& object(const T& handle) { return handle; }
};
template <class T>
using Handle = typename HandleOf<T>::type;

/// What the module calls a class of the library; each class has its own.
template <class T>
struct NameOf;

/// What a field is for besides being an attribute.
enum class Use : std::uint8_t {
    everything,
    source,   ///< the document's text: in no table, no comparison and no representation
    derived,  ///< says again what another field says: in no comparison, but in tables and representations
    secret,   ///< in no representation and no table
    column,   ///< in tables only
};

template <class T>
struct Field {
    std::string name;     ///< in Python
    std::string library;  ///< the name of the getter in the library; empty where there is none
    std::string doc;
    std::string type;  ///< of what the attribute holds, without None
    Kind kind;
    bool isOptional = true;
    Use use = Use::everything;
    std::function<Cell(const T&)> cell;  ///< empty for objects
    /// Appends the cells of objects to a column, which is far faster than one by one; empty for objects.
    std::function<bool(std::span<const Handle<T>>, ArrowColumn&)> fill;
    std::function<int(std::span<const Handle<T>>)> fractionDigits;  ///< for amounts only, see Table
    /// What must hold for the field to be there; fields that share it are asked together. Null: nothing.
    std::shared_ptr<const std::function<bool(const T&)>> condition;
    std::function<nb::object(const Handle<T>&)> object;  ///< for objects only

    Field&& as(std::string pythonName) && {
        name = std::move(pythonName);
        return std::move(*this);
    }
    Field&& with(Use given) && {
        use = given;
        return std::move(*this);
    }
    bool isColumn() const { return kind != Kind::object && use != Use::source && use != Use::secret; }
    bool isAttribute() const { return use != Use::column; }
    bool isCompared() const { return use == Use::everything || use == Use::secret; }
    bool isShown() const { return use == Use::everything || use == Use::derived; }
    std::string signature() const {
        return "def " + name + "(self, /) -> " + type + (isOptional ? " | None" : "");
    }
};

/// The fields of a class in the order in which they are shown. Never destroyed.
template <class T>
const std::vector<Field<T>>& fieldsOf();

// ---------------------------------------------------------------------------------------------
// Kinds, by what a getter gives

template <class Enumeration>
std::string enumerationPythonName() {
    std::string_view name = enumerationName<Enumeration>();
    for (const std::string_view prefix : {"TvOFX", "Open"})
        if (name.starts_with(prefix)) name.remove_prefix(prefix.size());
    return std::string(name);
}

/// The names of an enumeration's members in Python, by number.
template <class Enumeration>
const std::vector<std::string>& memberNames() {
    static const auto* names = [] {
        auto* made = new std::vector<std::string>();
        [made]<std::size_t... Numbers>(std::index_sequence<Numbers...>) {
            constexpr std::string_view scope = enumerationName<Enumeration>();
            for (std::string_view name :
                 {enumeratorName<Enumeration, static_cast<Enumeration>(Numbers)>()...}) {
                if (name.starts_with(scope)) name.remove_prefix(scope.size());
                made->push_back(upperSnakeCase(name));
            }
        }
        (std::make_index_sequence<enumeratorCount<Enumeration>()>());
        return made;
    }();
    return *names;
}

template <class Enumeration>
Word wordOf(Enumeration value) {
    const auto number = static_cast<std::uint64_t>(value);
    return {memberNames<Enumeration>()[number],
            [](std::uint64_t made) { return nb::cast(static_cast<Enumeration>(made)); }, number};
}

template <class Value>
inline constexpr bool kIsOptional = false;
template <class Value>
inline constexpr bool kIsOptional<std::optional<Value>> = true;

/// The kind of what a getter gives, its type in Python, and how it becomes a cell.
template <class Value>
struct CellOf {
    static constexpr bool isWord = std::is_enum_v<Value>;
    static constexpr bool isText = std::same_as<Value, std::string_view> || std::same_as<Value, std::string>;
    static constexpr bool isInteger = std::integral<Value> && !std::same_as<Value, bool>;
    static constexpr bool isCell = isWord || isText || isInteger || std::same_as<Value, bool> ||
                                   std::same_as<Value, Decimal> || std::same_as<Value, Date> ||
                                   std::same_as<Value, std::chrono::year_month_day>;
    static constexpr Kind kind() {
        if constexpr (isWord) return Kind::word;
        if constexpr (isText) return Kind::text;
        if constexpr (isInteger) return Kind::integer;
        if constexpr (std::same_as<Value, bool>) return Kind::flag;
        if constexpr (std::same_as<Value, Decimal>) return Kind::amount;
        if constexpr (std::same_as<Value, Date>) return Kind::moment;
        if constexpr (std::same_as<Value, std::chrono::year_month_day>) return Kind::day;
        return Kind::object;
    }
    static std::string type() {
        if constexpr (isWord) return enumerationPythonName<Value>();
        return std::string(typeOf(kind()));
    }
    static Cell cell(const Value& value) {
        if constexpr (isWord)
            return wordOf(value);
        else if constexpr (isInteger)
            return static_cast<std::int64_t>(value);
        else
            return value;
    }
    static bool append(const Value& value, ArrowColumn& column) {
        if constexpr (isText)
            return column.appendText(value);
        else if constexpr (std::same_as<Value, Decimal>)
            return column.appendAmount(value);
        else
            return column.append(cell(value));
    }
    static int fractionDigits(const Value& value) {
        if constexpr (std::same_as<Value, Decimal>) return fractionDigitsOf(value);
        return 0;
    }
};
template <class Value>
struct CellOf<std::optional<Value>> : CellOf<Value> {
    static Cell cell(const std::optional<Value>& value) {
        return value ? CellOf<Value>::cell(*value) : Cell();
    }
    static bool append(const std::optional<Value>& value, ArrowColumn& column) {
        return value ? CellOf<Value>::append(*value, column) : column.appendNull();
    }
    static int fractionDigits(const std::optional<Value>& value) {
        return value ? CellOf<Value>::fractionDigits(*value) : 0;
    }
};

/// How an object in an object becomes one of Python: the record of its class, a tuple of them, or None.
template <class Value>
struct ObjectOf {
    static constexpr bool isOptional = false;
    static std::string type() { return NameOf<Value>::value; }
    static nb::object object(const Value& value) { return nb::cast(Record<Value>{value, nb::object()}); }
};
template <>
struct ObjectOf<std::string> {
    static constexpr bool isOptional = false;
    static std::string type() { return "str"; }
    static nb::object object(const std::string& text) { return nb::str(text.data(), text.size()); }
};
template <class Value>
struct ObjectOf<std::shared_ptr<Value>> {
    static constexpr bool isOptional = true;
    static std::string type() { return NameOf<std::remove_const_t<Value>>::value; }
    static nb::object object(const std::shared_ptr<Value>& value) {
        if (!value) return nb::none();
        return nb::cast(Record<std::remove_const_t<Value>>{value, nb::object()});
    }
};
template <class Value>
struct ObjectOf<std::optional<Value>> {
    static constexpr bool isOptional = true;
    static std::string type() { return ObjectOf<Value>::type(); }
    static nb::object object(const std::optional<Value>& value) {
        return value ? ObjectOf<Value>::object(*value) : nb::none();
    }
};
template <class Value>
struct ObjectOf<std::vector<Value>> {
    static constexpr bool isOptional = false;
    static std::string type() { return "tuple[" + ObjectOf<Value>::type() + ", ...]"; }
    static nb::object object(const std::vector<Value>& values) {
        nb::list made;
        for (const Value& value : values) made.append(ObjectOf<Value>::object(value));
        return nb::tuple(made);
    }
};

/// A field that a getter gives: a member function of the class, or a function of a const T&. Its kind follows
/// from what that returns.
template <class T, class Getter>
Field<T> field(std::string library, Getter getter, std::string doc) {
    using Value = std::remove_cvref_t<std::invoke_result_t<Getter, const T&>>;
    Field<T> made;
    made.name = snakeCase(library);
    made.library = std::move(library);
    made.doc = std::move(doc);
    if constexpr (CellOf<Value>::isCell) {
        made.kind = CellOf<Value>::kind();
        made.type = CellOf<Value>::type();
        made.isOptional = kIsOptional<Value>;
        made.cell = [getter](const T& object) { return CellOf<Value>::cell(std::invoke(getter, object)); };
        made.fill = [getter](std::span<const Handle<T>> objects, ArrowColumn& column) {
            return std::all_of(objects.begin(), objects.end(), [&](const Handle<T>& handle) {
                return CellOf<Value>::append(std::invoke(getter, HandleOf<T>::object(handle)), column);
            });
        };
        if (made.kind == Kind::amount)
            made.fractionDigits = [getter](std::span<const Handle<T>> objects) {
                int most = 0;
                for (const Handle<T>& handle : objects)
                    most = std::max(most, CellOf<Value>::fractionDigits(
                                              std::invoke(getter, HandleOf<T>::object(handle))));
                return most;
            };
    } else {
        made.kind = Kind::object;
        made.type = ObjectOf<Value>::type();
        made.isOptional = ObjectOf<Value>::isOptional;
        made.object = [getter](const Handle<T>& handle) {
            return ObjectOf<Value>::object(std::invoke(getter, HandleOf<T>::object(handle)));
        };
    }
    return made;
}

}  // namespace brackwell::python
