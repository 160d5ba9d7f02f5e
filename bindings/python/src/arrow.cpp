// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "arrow_column.h"
#include "arrow_interface.h"
#include "table.h"

namespace brackwell::python {
namespace {

constexpr int kUsualScale = 10;
/// As many rows come at once; a consumer so need not hold a long list twice.
constexpr std::size_t kRowsOfBatch = std::size_t{1} << 16;
/// Of so many rows all columns are filled before the next ones, as long as the objects are in fast memory.
constexpr std::size_t kRowsOfBlock = 256;

/// How the columns are laid out. Amounts are looked through once, for a scale that all of them fit.
std::vector<ArrowType> typesOf(const Table& table) {
    std::vector<ArrowType> types;
    for (std::size_t i = 0; i < table.columns().size(); ++i) {
        ArrowType type{table.columns()[i].kind};
        if (type.kind == Kind::amount) {
            // Not more digits after the point than all that there are.
            type.scale = std::clamp(table.fractionDigits(i), kUsualScale, Decimal::maximumDigits);
        }
        types.push_back(type);
    }
    return types;
}

// ---------------------------------------------------------------------------------------------
// Schemas

struct SchemaTexts {
    std::string format;
    std::string name;
    std::vector<ArrowSchema*> children;
};

void releaseSchema(ArrowSchema* schema) {
    for (std::int64_t i = 0; i < schema->n_children; ++i) {
        std::unique_ptr<ArrowSchema> child(schema->children[i]);
        if (child->release != nullptr) child->release(child.get());
    }
    delete static_cast<SchemaTexts*>(schema->private_data);
    schema->release = nullptr;
}

void writeSchema(ArrowSchema* schema, std::unique_ptr<SchemaTexts> texts) {
    *schema = ArrowSchema{};
    schema->format = texts->format.c_str();
    schema->name = texts->name.c_str();
    schema->flags = kArrowFlagNullable;
    schema->n_children = static_cast<std::int64_t>(texts->children.size());
    schema->children = texts->children.data();
    schema->private_data = texts.release();
    schema->release = releaseSchema;
}

/// The schema of a table is that of a structure whose fields are the columns.
void writeSchema(ArrowSchema* schema, const Table& table, const std::vector<ArrowType>& types) {
    auto root = std::make_unique<SchemaTexts>();
    root->format = "+s";
    root->children.reserve(types.size());
    writeSchema(schema, std::move(root));
    auto& children = static_cast<SchemaTexts*>(schema->private_data)->children;
    try {
        for (std::size_t i = 0; i < types.size(); ++i) {
            auto child = std::make_unique<ArrowSchema>();
            writeSchema(child.get(), std::make_unique<SchemaTexts>(
                                         SchemaTexts{types[i].format(), table.columns()[i].name, {}}));
            children.push_back(child.release());
            schema->children = children.data();
            schema->n_children = static_cast<std::int64_t>(children.size());
        }
    } catch (...) {
        releaseSchema(schema);
        throw;
    }
}

// ---------------------------------------------------------------------------------------------
// Arrays

struct ArrayChildren {
    std::vector<ArrowArray*> children;
    const void* noValidity = nullptr;
};

void releaseArray(ArrowArray* array) {
    for (std::int64_t i = 0; i < array->n_children; ++i) {
        std::unique_ptr<ArrowArray> child(array->children[i]);
        if (child->release != nullptr) child->release(child.get());
    }
    delete static_cast<ArrayChildren*>(array->private_data);
    array->release = nullptr;
}

/// A structure without children, which are added one by one.
void writeArray(ArrowArray* array, std::size_t length, std::size_t columns) {
    auto root = std::make_unique<ArrayChildren>();
    root->children.reserve(columns);
    *array = ArrowArray{};
    array->length = static_cast<std::int64_t>(length);
    array->n_buffers = 1;
    array->buffers = &root->noValidity;
    array->children = root->children.data();
    array->private_data = root.release();
    array->release = releaseArray;
}

void addColumn(ArrowArray* array, ArrowColumn&& column) {
    auto child = std::make_unique<ArrowArray>();
    std::move(column).moveTo(child.get());
    auto& children = static_cast<ArrayChildren*>(array->private_data)->children;
    children.push_back(child.release());
    array->n_children = static_cast<std::int64_t>(children.size());
}

// ---------------------------------------------------------------------------------------------
// The stream

struct Stream {
    std::shared_ptr<const Table> table;
    std::vector<ArrowType> types;
    std::size_t next = 0;
    std::string error;
};

Stream& streamOf(ArrowArrayStream* stream) { return *static_cast<Stream*>(stream->private_data); }

/// Nothing may be thrown through the interface.
template <class Action>
int guarded(Stream& stream, Action action) {
    try {
        return action();
    } catch (const std::bad_alloc&) {
        // A text that needs no memory.
        stream.error = "no memory";
        return ENOMEM;
    }
}

/// False when a value does not fit; the stream then has an error.
bool fillColumns(Stream& stream, std::size_t end, std::vector<ArrowColumn>& columns) {
    for (std::size_t begin = stream.next; begin < end; begin += kRowsOfBlock) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (stream.table->fill(i, begin, std::min(end, begin + kRowsOfBlock), columns[i])) continue;
            stream.error = "row " + std::to_string(stream.next + columns[i].length()) + ": the value of " +
                           stream.table->columns()[i].name + " does not fit into a column of the type " +
                           stream.types[i].format();
            return false;
        }
    }
    return true;
}

int nextBatch(Stream& stream, ArrowArray* array) {
    const std::size_t end = std::min(stream.table->rowCount(), stream.next + kRowsOfBatch);
    *array = ArrowArray{};
    if (stream.next == end) return 0;
    std::vector<ArrowColumn> columns;
    columns.reserve(stream.types.size());
    for (const ArrowType& type : stream.types) columns.emplace_back(type, end - stream.next);
    if (!fillColumns(stream, end, columns)) return EINVAL;
    writeArray(array, end - stream.next, columns.size());
    try {
        for (ArrowColumn& column : columns) addColumn(array, std::move(column));
    } catch (...) {
        releaseArray(array);
        throw;
    }
    stream.next = end;
    return 0;
}

int getSchema(ArrowArrayStream* stream, ArrowSchema* schema) {
    Stream& state = streamOf(stream);
    return guarded(state, [&] {
        writeSchema(schema, *state.table, state.types);
        return 0;
    });
}

int getNext(ArrowArrayStream* stream, ArrowArray* array) {
    Stream& state = streamOf(stream);
    return guarded(state, [&] { return nextBatch(state, array); });
}

const char* getLastError(ArrowArrayStream* stream) {
    const std::string& error = streamOf(stream).error;
    return error.empty() ? nullptr : error.c_str();
}

void releaseStream(ArrowArrayStream* stream) {
    delete static_cast<Stream*>(stream->private_data);
    stream->release = nullptr;
}

/// Releases what nobody has taken out of a capsule.
template <class Structure>
void releaseCapsule(PyObject* capsule) {
    auto* structure = static_cast<Structure*>(PyCapsule_GetPointer(capsule, PyCapsule_GetName(capsule)));
    if (structure->release != nullptr) structure->release(structure);
    delete structure;
}

template <class Structure>
nb::object capsuleOf(std::unique_ptr<Structure> structure, const char* name) {
    PyObject* capsule = PyCapsule_New(structure.get(), name, releaseCapsule<Structure>);
    if (capsule == nullptr) {
        structure->release(structure.get());
        nb::raise_python_error();
    }
    static_cast<void>(structure.release());
    return nb::steal(capsule);
}

}  // namespace

nb::object arrowStream(std::shared_ptr<const Table> table) {
    auto state = std::make_unique<Stream>();
    {
        nb::gil_scoped_release unlocked;
        state->types = typesOf(*table);
    }
    state->table = std::move(table);
    auto stream = std::make_unique<ArrowArrayStream>(
        ArrowArrayStream{getSchema, getNext, getLastError, releaseStream, nullptr});
    stream->private_data = state.release();
    return capsuleOf(std::move(stream), "arrow_array_stream");
}

nb::object arrowSchema(const Table& table) {
    auto schema = std::make_unique<ArrowSchema>();
    writeSchema(schema.get(), table, typesOf(table));
    return capsuleOf(std::move(schema), "arrow_schema");
}

nb::dict columnsOf(const Table& table) {
    nb::dict columns;
    for (std::size_t i = 0; i < table.columns().size(); ++i) {
        nb::list values;
        table.eachCell(i, 0, table.rowCount(), [&](const Cell& cell) { values.append(toPython(cell)); });
        columns[table.columns()[i].name.c_str()] = values;
    }
    return columns;
}

}  // namespace brackwell::python
