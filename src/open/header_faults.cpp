// SPDX-License-Identifier: Apache-2.0
#include "open/header_faults.h"

#include <bit>
#include <cstdint>
#include <span>

#include "elements/header_fields.h"
#include "repair/front.h"
#include "tree/node_ref.h"

namespace brackwell::opening {
namespace {

using reading::element;
using reading::NodeRef;

/// A set of header fields, which are next to each other among the names.
using FieldSet = std::uint32_t;

/// The bit of a field; 0 for other names.
constexpr FieldSet bitOf(reading::NameID name) noexcept {
    constexpr reading::NameID first = element(elements::kHeaderFields.front());
    return name >= first && name - first < elements::kHeaderFields.size() ? FieldSet{1} << (name - first) : 0;
}

consteval FieldSet setOf(std::span<const std::string_view> fields) {
    FieldSet set = 0;
    for (const std::string_view field : fields) set |= bitOf(element(field));
    return set;
}
constexpr FieldSet kFieldsOfPlain = setOf(elements::kHeaderFields);
constexpr FieldSet kFieldsOfXML = setOf(elements::kHeaderFieldsOfXML);
static_assert(std::popcount(kFieldsOfPlain) == elements::kHeaderFields.size(), "each has a bit of its own");

/// True for a header with all fields of its kind: then none can be hidden.
bool isHeaderWhole(const ParseDictionary& header) noexcept {
    FieldSet fields = 0;
    bool isXML = false;
    for (const NodeRef& field : NodeRef::of(header).children()) {
        fields |= bitOf(field.nameID());
        if (field.nameID() == element("OFXHEADER")) isXML = field.isText() && field.text() == "200";
    }
    const FieldSet wanted = isXML ? kFieldsOfXML : kFieldsOfPlain;
    return (fields & wanted) == wanted;
}

}  // namespace

std::size_t headerFaultsOf(const Parsed& parsed, std::string_view text) {
    // Finding the faults takes longer than importing a small statement, so only a header that lacks a field
    // is examined.
    const auto& header = parsed.content.ofxHeader;
    return header && isHeaderWhole(*header) ? 0 : repair::headerEdits(text).size();
}

}  // namespace brackwell::opening
