// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <string>
#include <string_view>
#include <vector>

/// \file
/// The columns of the tables of investments. Most of them are fields, under the names of their getters.

namespace tool {

class Row;
class SecurityLookup;

/// What a row is of.
template <class Object>
struct Item {
    const std::string& file;
    const brackwell::InvestmentStatement* statement;  ///< null: a security is of none
    const Object& object;
    const SecurityLookup& securities;
};

/// The names of the columns of the table of these objects.
template <class Object>
std::vector<std::string_view> columnNames();

/// The fields of a row, of all columns.
template <class Object>
void addFields(Row& row, const Item<Object>& item);

}  // namespace tool
