// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <concepts>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "json/writer.h"
#include "text/value_text.h"

namespace tool {

// A field of an object under its name. A field that is absent is left out; an empty text, 0 and false
// are written.

inline void writeField(JsonWriter& json, std::string_view name, brackwell::OptionalText value) {
    if (!value) return;
    json.field(name);
    json.text(*value);
}

inline void writeField(JsonWriter& json, std::string_view name, std::optional<brackwell::Date> value) {
    if (!value) return;
    json.field(name);
    json.text(DateText(*value));
}

inline void writeField(JsonWriter& json, std::string_view name,
                       const std::optional<brackwell::Decimal>& value) {
    if (!value) return;
    json.field(name);
    json.text(value->toString());
}

template <std::same_as<bool> Flag>
void writeField(JsonWriter& json, std::string_view name, Flag value) {
    json.field(name);
    json.boolean(value);
}

template <std::same_as<bool> Flag>
void writeField(JsonWriter& json, std::string_view name, std::optional<Flag> value) {
    if (value) writeField(json, name, *value);
}

/// Integers and enumerations.
template <class Number>
requires(std::unsigned_integral<Number> &&
         !std::same_as<Number, bool>) void writeField(JsonWriter& json, std::string_view name, Number value) {
    json.field(name);
    json.number(std::uint64_t{value});
}

template <std::signed_integral Number>
void writeField(JsonWriter& json, std::string_view name, Number value) {
    json.field(name);
    json.number(std::int64_t{value});
}

template <class Enumeration>
requires std::is_enum_v<Enumeration>
void writeField(JsonWriter& json, std::string_view name, Enumeration value) {
    writeField(json, name, static_cast<std::underlying_type_t<Enumeration>>(value));
}

/// An object of the model, written by a function of its own.
template <class Object>
void writeField(JsonWriter& json, std::string_view name, const std::shared_ptr<Object>& object,
                void (*write)(JsonWriter&, const std::remove_const_t<Object>&)) {
    if (!object) return;
    json.field(name);
    write(json, *object);
}

/// A list of objects, which is written when it is empty, too. An object is left out for which the function
/// writes nothing.
template <class List, class Write>
void writeList(JsonWriter& json, std::string_view name, const List& list, const Write& write) {
    json.field(name);
    json.beginArray();
    for (const auto& element : list) {
        if (!json.isGood()) break;
        write(json, *element);
    }
    json.endArray();
}

}  // namespace tool
