// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nanobind/nanobind.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "document.h"
#include "kept_text.h"
#include "record.h"
#include "table.h"

/// \file
/// Sequences of objects in Python, which make an object when it is asked for. They hold nothing of Python.

namespace brackwell::python {

/// What the module calls the list of a class.
template <class T>
struct ListNameOf;

/// A column that has the same value for all objects of a part, such as the number of their account.
struct SharedColumn {
    Column column;
    std::function<Cell(std::size_t part)> cell;
};

/// Objects of one or several statements in their order.
template <class T>
struct List {
    std::vector<std::size_t> ends;  ///< of each part, counted over all of them
    std::function<Handle<T>(std::size_t part, std::size_t index)> at;
    std::vector<SharedColumn> shared;
    std::function<nb::object()> owner;  ///< whose attribute the list is
    const char* attribute = "";

    std::size_t size() const { return ends.empty() ? 0 : ends.back(); }
    std::size_t begin(std::size_t part) const { return part == 0 ? 0 : ends[part - 1]; }
    Handle<T> operator[](std::size_t index) const {
        const auto end = std::upper_bound(ends.begin(), ends.end(), index);
        const auto part = static_cast<std::size_t>(end - ends.begin());
        return at(part, index - begin(part));
    }
};

template <class T>
class ListTable final : public Table {
public:
    /// Holds every object, since a column is asked for after the other and each would be made as often.
    explicit ListTable(const List<T>& list) : shared_(list.shared), ends_(list.ends) {
        for (const SharedColumn& shared : shared_) columns_.push_back(shared.column);
        for (const Field<T>& field : fieldsOf<T>()) {
            if (!field.isColumn()) continue;
            fields_.push_back(&field);
            columns_.push_back({field.name, field.kind});
        }
        objects_.reserve(list.size());
        for (std::size_t part = 0; part < ends_.size(); ++part)
            for (std::size_t i = 0; i < ends_[part] - list.begin(part); ++i)
                objects_.push_back(list.at(part, i));
        leaveOutColumns();
    }
    std::size_t rowCount() const override { return objects_.size(); }
    const std::vector<Column>& columns() const override { return columns_; }
    void eachCell(std::size_t column, std::size_t begin, std::size_t end,
                  const std::function<void(const Cell&)>& take) const override {
        if (column < shared_.size()) return eachShared(shared_[column], begin, end, take);
        const Field<T>& field = fieldOf(column);
        for (; begin < end; ++begin) take(field.cell(HandleOf<T>::object(objects_[begin])));
    }
    bool fill(std::size_t column, std::size_t begin, std::size_t end, ArrowColumn& into) const override {
        if (isEmpty_[column]) return into.appendNulls(end - begin);
        if (column >= shared_.size())
            return fieldOf(column).fill(std::span(objects_).subspan(begin, end - begin), into);
        bool fits = true;
        eachShared(shared_[column], begin, end, [&](const Cell& cell) { fits = fits && into.append(cell); });
        return fits;
    }
    int fractionDigits(std::size_t column) const override {
        // What all rows of a part share is no amount.
        if (column < shared_.size()) return 0;
        return isEmpty_[column] ? 0 : fieldOf(column).fractionDigits(objects_);
    }

private:
    const Field<T>& fieldOf(std::size_t column) const { return *fields_[column - shared_.size()]; }
    /// Finds the columns for which no object meets the condition of their field.
    void leaveOutColumns() {
        isEmpty_.assign(columns_.size(), false);
        const std::function<bool(const T&)>* asked = nullptr;
        bool isMet = false;
        for (std::size_t column = shared_.size(); column < columns_.size(); ++column) {
            const auto* condition = fieldOf(column).condition.get();
            if (condition == nullptr) continue;
            if (condition != asked)
                isMet = std::any_of(objects_.begin(), objects_.end(), [condition](const Handle<T>& handle) {
                    return (*condition)(HandleOf<T>::object(handle));
                });
            asked = condition;
            isEmpty_[column] = !isMet;
        }
    }
    void eachShared(const SharedColumn& shared, std::size_t begin, std::size_t end,
                    const std::function<void(const Cell&)>& take) const {
        for (std::size_t part = 0; part < ends_.size() && begin < end; ++part) {
            const std::size_t last = std::min(end, ends_[part]);
            if (begin >= last) continue;
            const Cell same = shared.cell(part);
            for (; begin < last; ++begin) take(same);
        }
    }

    std::vector<SharedColumn> shared_;
    std::vector<std::size_t> ends_;
    std::vector<const Field<T>*> fields_;
    std::vector<Column> columns_;
    std::vector<Handle<T>> objects_;
    std::vector<bool> isEmpty_;  ///< by column: without a value in any row
};

template <class T>
nb::object itemOf(const List<T>& list, std::size_t index) {
    return nb::cast(Record<T>{list[index], nb::object()});
}

template <class T>
nb::object itemAt(const List<T>& list, Py_ssize_t index) {
    const auto size = static_cast<Py_ssize_t>(list.size());
    if (index < 0) index += size;
    if (index < 0 || index >= size) throw nb::index_error("no such element");
    return itemOf(list, static_cast<std::size_t>(index));
}

template <class T>
nb::list slicedOf(const List<T>& list, const nb::slice& slice) {
    const auto [start, stop, step, count] = slice.compute(list.size());
    nb::list items;
    for (std::size_t i = 0; i < count; ++i)
        items.append(itemOf(list, static_cast<std::size_t>(start + static_cast<Py_ssize_t>(i) * step)));
    return items;
}

template <class T>
bool areEqual(const List<T>& a, const List<T>& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (!areEqual(Record<T>{a[i], nb::object()}, Record<T>{b[i], nb::object()})) return false;
    return true;
}

template <class T>
Py_hash_t hashOf(const List<T>& list) {
    nb::list hashes;
    for (std::size_t i = 0; i < list.size(); ++i) hashes.append(hashOf(Record<T>{list[i], nb::object()}));
    return nb::hash(nb::tuple(hashes));
}

template <class T>
std::size_t countIn(const List<T>& list, nb::handle wanted) {
    if (!nb::isinstance<Record<T>>(wanted)) return 0;
    const auto& record = nb::cast<const Record<T>&>(wanted);
    std::size_t count = 0;
    for (std::size_t i = 0; i < list.size(); ++i)
        if (areEqual(Record<T>{list[i], nb::object()}, record)) ++count;
    return count;
}

template <class T>
std::size_t indexIn(const List<T>& list, nb::handle wanted) {
    if (nb::isinstance<Record<T>>(wanted)) {
        const auto& record = nb::cast<const Record<T>&>(wanted);
        for (std::size_t i = 0; i < list.size(); ++i)
            if (areEqual(Record<T>{list[i], nb::object()}, record)) return i;
    }
    throw nb::value_error("not in the list");
}

/// What a table of a list can be made into.
template <class T>
void bindTables(nb::class_<List<T>>& bound) {
    bound
        .def(
            "columns", [](const List<T>& self) { return columnsOf(ListTable<T>(self)); },
            nb::sig("def columns(self, /) -> dict[str, list[typing.Any]]"),
            "The values by column, in the order of the list; None for what the document does not have.")
        .def(
            "__arrow_c_stream__",
            [](const List<T>& self, nb::handle) { return arrowStream(std::make_shared<ListTable<T>>(self)); },
            nb::arg("requested_schema") = nb::none(),
            nb::sig("def __arrow_c_stream__(self, requested_schema: object = None) -> object"),
            "The table for whoever reads the Arrow C stream interface. The schema that is asked for is not "
            "heeded.")
        .def(
            "__arrow_c_schema__", [](const List<T>& self) { return arrowSchema(ListTable<T>(self)); },
            nb::sig("def __arrow_c_schema__(self, /) -> object"), "The schema of the table.")
        .def(
            "to_pandas",
            [](nb::handle self) { return nb::module_::import_("brackwell._pandas").attr("frame_of")(self); },
            nb::sig("def to_pandas(self, /) -> pandas.DataFrame"),
            "The table as a pandas.DataFrame. Amounts stay decimal.Decimal, and so exact.");
}

template <class T>
void bindSequence(nb::class_<List<T>>& bound) {
    const std::string item = NameOf<T>::value;
    bound.def("__len__", &List<T>::size, nb::sig("def __len__(self, /) -> int"))
        .def("__getitem__", &itemAt<T>, nb::sig(kept("def __getitem__(self, index: int, /) -> " + item)))
        .def("__getitem__", &slicedOf<T>,
             nb::sig(kept("def __getitem__(self, index: slice, /) -> list[" + item + "]")))
        .def(
            "__iter__", [](nb::handle self) { return nb::steal(PySeqIter_New(self.ptr())); },
            nb::sig(kept("def __iter__(self, /) -> collections.abc.Iterator[" + item + "]")))
        .def(
            "__contains__", [](const List<T>& self, nb::handle wanted) { return countIn(self, wanted) != 0; },
            nb::sig("def __contains__(self, item: object, /) -> bool"))
        .def("count", &countIn<T>, nb::sig("def count(self, item: object, /) -> int"),
             "How many are equal to it.")
        .def("index", &indexIn<T>, nb::sig("def index(self, item: object, /) -> int"),
             "The place of the first that is equal to it; ValueError when there is none.");
}

/// What every list has.
template <class T>
nb::class_<List<T>> bindList(nb::module_& module, const char* doc) {
    nb::class_<List<T>> bound(module, ListNameOf<T>::value, doc);
    bindSequence(bound);
    bindTables(bound);
    bound
        .def(
            "__eq__",
            [](const List<T>& self, nb::handle other) -> nb::object {
                if (!nb::isinstance<List<T>>(other)) return nb::borrow(nb::handle(Py_NotImplemented));
                return nb::bool_(areEqual(self, nb::cast<const List<T>&>(other)));
            },
            nb::sig("def __eq__(self, other: object, /) -> bool"), "Equal objects in the same order.")
        .def(
            "__hash__", [](const List<T>& self) { return hashOf(self); },
            nb::sig("def __hash__(self, /) -> int"))
        .def(
            "__repr__",
            [](const List<T>& self) {
                return "<" + std::string(ListNameOf<T>::value) + ": " + std::to_string(self.size()) + ">";
            },
            nb::sig("def __repr__(self, /) -> str"))
        .def(
            "_repr_html_",
            [](nb::handle self) { return nb::module_::import_("brackwell._html").attr("of_list")(self); },
            nb::sig("def _repr_html_(self, /) -> str"), "A table for notebooks, of the first objects.")
        .def(
            "__reduce__",
            [](const List<T>& self) {
                const nb::object getattr = nb::module_::import_("builtins").attr("getattr");
                return nb::make_tuple(getattr, nb::make_tuple(self.owner(), self.attribute));
            },
            nb::sig("def __reduce__(self, /) -> tuple[typing.Any, ...]"));
    return bound;
}

// clang-format off
/// @{
/// The names of the lists in Python.
template <> struct ListNameOf<TvOFXAccountStatement> { static constexpr const char* value = "Accounts"; };
template <> struct ListNameOf<TvOFXStatementTransaction> { static constexpr const char* value = "Transactions"; };
template <> struct ListNameOf<InvestmentStatement> { static constexpr const char* value = "InvestmentAccounts"; };
template <> struct ListNameOf<InvestmentTransaction> { static constexpr const char* value = "InvestmentTransactions"; };
template <> struct ListNameOf<Position> { static constexpr const char* value = "Positions"; };
template <> struct ListNameOf<Security> { static constexpr const char* value = "Securities"; };
template <> struct ListNameOf<Finding> { static constexpr const char* value = "Findings"; };
/// @}
// clang-format on

/// A list without parts, of the document's attribute.
template <class T>
List<T> listOfDocument(const std::shared_ptr<Document>& document, const char* attribute, std::size_t size,
                       std::function<Handle<T>(std::size_t, std::size_t)> at) {
    return {{size}, std::move(at), {}, [document] { return nb::cast(document); }, attribute};
}

/// @{
/// The lists of a document, and those of one of its statements.
List<TvOFXAccountStatement> accountsOf(const std::shared_ptr<Document>& document);
List<TvOFXStatementTransaction> transactionsOf(const std::shared_ptr<Document>& document);
List<TvOFXStatementTransaction> transactionsOf(const AccountHandle& account);
List<InvestmentStatement> investmentAccountsOf(const std::shared_ptr<Document>& document);
List<InvestmentTransaction> investmentTransactionsOf(const std::shared_ptr<Document>& document);
List<InvestmentTransaction> investmentTransactionsOf(const InvestmentHandle& account);
List<Position> positionsOf(const std::shared_ptr<Document>& document);
List<Position> positionsOf(const InvestmentHandle& account);
List<Security> securitiesOf(const std::shared_ptr<Document>& document);
List<Finding> findingsOf(const std::shared_ptr<Document>& document);
/// @}

}  // namespace brackwell::python
