// SPDX-License-Identifier: Apache-2.0
#include "document.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "list.h"
#include "record.h"

namespace brackwell::python {
namespace {

/// How the caller wants a file to be opened; named like the arguments of brackwell.open.
OpenOptions optionsOf(std::optional<std::string_view> encoding, bool repair, bool asWritten,
                      std::optional<std::size_t> maximumSize, std::optional<std::size_t> maximumDepth) {
    OpenOptions options;
    if (encoding) {
        options.encoding = textEncodingNamed(*encoding);
        if (options.encoding == TextEncodingNone)
            throw nb::value_error(("no encoding is called " + std::string(*encoding)).c_str());
    }
    options.repair = repair ? OpenRepair::whenNeeded : OpenRepair::never;
    options.asWritten = asWritten;
    options.maximumSize = maximumSize.value_or(options.maximumSize);
    options.maximumDepth = maximumDepth.value_or(options.maximumDepth);
    return options;
}

/// The document, or the reason why there is none.
nb::object documentOrFailure(OpenedFile file, OpenOptions options, std::optional<std::string> path) {
    if (!file) return nb::cast(Record<OpenError>{file.error(), nb::object()});
    return nb::cast(
        std::make_shared<Document>(Document{std::move(file), std::move(options), std::move(path)}));
}

/// A path or a "file:" URL; a path that is given as bytes is never taken for a URL.
nb::object openPath(nb::bytes path, bool mayBeURL, const OpenOptions& options) {
    std::string text(path.c_str(), path.size());
    OpenedFile file = [&] {
        nb::gil_scoped_release unlocked;
        return mayBeURL ? openFile(std::string_view(text), options)
                        : openFile(std::filesystem::path(text), options);
    }();
    return documentOrFailure(std::move(file), options, std::move(text));
}

/// The bytes are not copied before they are read: nobody changes an object of the type bytes.
nb::object openBytes(nb::bytes data, const OpenOptions& options) {
    const Data view = Data::view(std::string_view(data.c_str(), data.size()));
    OpenedFile file = [&] {
        nb::gil_scoped_release unlocked;
        return openData(view, options);
    }();
    return documentOrFailure(std::move(file), options, std::nullopt);
}

nb::bytes bytesOf(std::string_view bytes) { return nb::bytes(bytes.data(), bytes.size()); }

nb::tuple stateOf(const Document& document) {
    return nb::make_tuple(bytesOf(document.file.bytes().bytes()), document.options.encoding,
                          document.options.repair == OpenRepair::whenNeeded, document.options.asWritten,
                          document.options.maximumSize, document.options.maximumDepth,
                          document.path ? nb::object(bytesOf(*document.path)) : nb::object(nb::none()));
}

/// Reads the bytes once more, with the same options: that gives the same document.
void restore(Document& self, const nb::tuple& state) {
    const nb::bytes data = nb::cast<nb::bytes>(state[0]);
    OpenOptions options;
    options.encoding = nb::cast<TextEncoding>(state[1]);
    options.repair = nb::cast<bool>(state[2]) ? OpenRepair::whenNeeded : OpenRepair::never;
    options.asWritten = nb::cast<bool>(state[3]);
    options.maximumSize = nb::cast<std::size_t>(state[4]);
    options.maximumDepth = nb::cast<std::size_t>(state[5]);
    std::optional<std::string> path;
    if (const nb::object given = state[6]; !given.is_none()) {
        const nb::bytes name = nb::cast<nb::bytes>(given);
        path.emplace(name.c_str(), name.size());
    }
    const Data view = Data::view(std::string_view(data.c_str(), data.size()));
    OpenedFile file = [&] {
        nb::gil_scoped_release unlocked;
        return openData(view, options);
    }();
    new (&self) Document{std::move(file), std::move(options), std::move(path)};
}

bool areEqual(const Document& a, const Document& b) {
    return a.file.bytes() == b.file.bytes() && a.options.encoding == b.options.encoding &&
           a.options.repair == b.options.repair && a.options.asWritten == b.options.asWritten;
}

nb::object pathOf(const Document& document) {
    if (!document.path) return nb::none();
    return nb::steal(PyUnicode_DecodeFSDefaultAndSize(document.path->data(),
                                                      static_cast<Py_ssize_t>(document.path->size())));
}

template <class Value, class Get>
nb::tuple tupleOf(const Document& document, Get get) {
    nb::list items;
    for (const OpenedDocument& each : document.file.documents())
        for (const Value& value : std::invoke(get, each))
            items.append(nb::cast(Record<Value>{value, nb::object()}));
    return nb::tuple(items);
}

std::vector<OpenError> failureOf(const OpenedDocument& document) {
    if (document) return {};
    return {document.error()};
}

std::string representationOf(const Document& document) {
    const auto count = [](std::size_t number, const char* one, const char* many) {
        return std::to_string(number) + " " + (number == 1 ? one : many);
    };
    std::string text = "<Document";
    if (document.path) text += " " + nb::cast<std::string>(nb::repr(pathOf(document)));
    std::size_t transactions = 0;
    for (const auto& statement : document.file.statements())
        transactions += statement->statementTransactions().size();
    return text + ": " + count(document.file.statements().size(), "account", "accounts") + ", " +
           count(transactions, "transaction", "transactions") + ", " +
           count(document.file.investmentStatements().size(), "investment account", "investment accounts") +
           ", " + count(document.file.findings().size(), "finding", "findings") + ">";
}

// ---------------------------------------------------------------------------------------------
// Attributes

using Bound = nb::class_<Document>;

template <class T>
void bindLists(Bound& bound, const char* name, List<T> (*listOf)(const std::shared_ptr<Document>&),
               const char* doc) {
    const std::string signature = std::string("def ") + name + "(self, /) -> " + ListNameOf<T>::value;
    bound.def_prop_ro(name, listOf, nb::sig(kept(signature)), doc);
}

void bindContent(Bound& bound) {
    bindLists<TvOFXAccountStatement>(bound, "accounts", accountsOf,
                                     "The statements of bank accounts and cards.");
    bindLists<TvOFXStatementTransaction>(bound, "transactions", transactionsOf,
                                         "The transactions of all accounts, in the order of the accounts.");
    bindLists<InvestmentStatement>(bound, "investments", investmentAccountsOf,
                                   "The statements of investment accounts.");
    bindLists<InvestmentTransaction>(bound, "investment_transactions", investmentTransactionsOf,
                                     "The transactions of all investment accounts.");
    bindLists<Position>(bound, "positions", positionsOf, "What all investment accounts hold.");
    bindLists<Security>(bound, "securities", securitiesOf, "The securities that the document brings along.");
    bindLists<Finding>(bound, "findings", findingsOf,
                       "What the document holds that is not delivered, or not surely.");
}

void bindSmallerParts(Bound& bound) {
    bound
        .def_prop_ro(
            "listed_accounts",
            [](const Document& self) { return tupleOf<ListedAccount>(self, &OpenedDocument::accounts); },
            nb::sig("def listed_accounts(self, /) -> tuple[ListedAccount, ...]"),
            "The accounts of account lists.")
        .def_prop_ro(
            "changes",
            [](const Document& self) { return tupleOf<RepairChange>(self, &OpenedDocument::changes); },
            nb::sig("def changes(self, /) -> tuple[Change, ...]"),
            "What was changed so that it could be read.")
        .def_prop_ro(
            "failures", [](const Document& self) { return tupleOf<OpenError>(self, failureOf); },
            nb::sig("def failures(self, /) -> tuple[Failure, ...]"),
            "Why some of several documents in the file were not read; mostly empty.")
        .def_prop_ro(
            "sign_on",
            [](const Document& self) {
                return ObjectOf<std::shared_ptr<TvOFXSignOnResponse>>::object(self.file.signOn());
            },
            nb::sig("def sign_on(self, /) -> SignOn | None"), "The answer to the sign-on.")
        .def_prop_ro(
            "profile",
            [](const Document& self) {
                return ObjectOf<std::shared_ptr<TvOFXFIProfileResponse>>::object(self.file.profile());
            },
            nb::sig("def profile(self, /) -> Profile | None"), "The profile of the institution.");
}

/// The first security with the identifier of a position or a transaction.
nb::object securityOf(const Document& document, TextArgument id, TextArgument type) {
    return ObjectOf<std::optional<Security>>::object(document.file.securities().find(id, type));
}

void bindSource(Bound& bound) {
    bound
        .def_prop_ro("path", &pathOf, nb::sig("def path(self, /) -> str | None"),
                     "What was opened; None for bytes and file objects.")
        .def_prop_ro(
            "data", [](const Document& self) { return bytesOf(self.file.bytes().bytes()); },
            "All bytes of the file.")
        .def_prop_ro(
            "encoding",
            [](const Document& self) {
                return toPython(
                    CellOf<OptionalText>::cell(nameOfTextEncoding(self.file.documents()[0].encoding())));
            },
            nb::sig("def encoding(self, /) -> str | None"),
            "The encoding that the text was read in, of several documents that of the first.")
        .def(
            "find_security",
            [](const Document& self, std::optional<std::string_view> id,
               std::optional<std::string_view> type) { return securityOf(self, id, type); },
            nb::arg("id").none(), nb::arg("id_type") = nb::none(),
            nb::sig("def find_security(self, id: str | None, id_type: str | None = None) -> Security | None"),
            "The security with an identifier, such as position.security_id, and the type of it (CUSIP). "
            "Where one of "
            "the two names no type, the identifier alone decides.");
}

void bindTables(Bound& bound) {
    const auto transactions = [](const std::shared_ptr<Document>& self) {
        return nb::cast(transactionsOf(self));
    };
    bound
        .def(
            "to_pandas",
            [transactions](const std::shared_ptr<Document>& self) {
                return transactions(self).attr("to_pandas")();
            },
            nb::sig("def to_pandas(self, /) -> pandas.DataFrame"), "The transactions as a pandas.DataFrame.")
        .def(
            "__arrow_c_stream__",
            [transactions](const std::shared_ptr<Document>& self, nb::handle schema) {
                return transactions(self).attr("__arrow_c_stream__")(schema);
            },
            nb::arg("requested_schema") = nb::none(),
            nb::sig("def __arrow_c_stream__(self, requested_schema: object = None) -> object"),
            "The table of the transactions.")
        .def(
            "__arrow_c_schema__",
            [transactions](const std::shared_ptr<Document>& self) {
                return transactions(self).attr("__arrow_c_schema__")();
            },
            nb::sig("def __arrow_c_schema__(self, /) -> object"), "The schema of that table.");
}

void bindObject(Bound& bound) {
    bound
        .def(
            "__eq__",
            [](const Document& self, nb::handle other) -> nb::object {
                if (!nb::isinstance<Document>(other)) return nb::borrow(nb::handle(Py_NotImplemented));
                return nb::bool_(areEqual(self, nb::cast<const Document&>(other)));
            },
            nb::sig("def __eq__(self, other: object, /) -> bool"), "The same bytes, read in the same way.")
        .def(
            "__hash__", [](const Document& self) { return nb::hash(bytesOf(self.file.bytes().bytes())); },
            nb::sig("def __hash__(self, /) -> int"))
        .def("__repr__", &representationOf, nb::sig("def __repr__(self, /) -> str"))
        .def(
            "_repr_html_",
            [](nb::handle self) { return nb::module_::import_("brackwell._html").attr("of_document")(self); },
            nb::sig("def _repr_html_(self, /) -> str"), "Tables for notebooks.")
        .def("__getstate__", &stateOf, nb::sig("def __getstate__(self, /) -> tuple[typing.Any, ...]"))
        .def("__setstate__", &restore,
             nb::sig("def __setstate__(self, state: tuple[typing.Any, ...], /) -> None"));
}

}  // namespace

void bindDocument(nb::module_& module) {
    Bound bound(
        module, "Document",
        "An opened file: all that its documents hold. Everything that is taken from it keeps it alive.");
    bindContent(bound);
    bindSmallerParts(bound);
    bindSource(bound);
    bindTables(bound);
    bindObject(bound);

    nb::class_<OpenOptions>(module, "Options",
                            "How to open files; brackwell.open says what the arguments mean.")
        .def(
            "__init__",
            [](OpenOptions* self, std::optional<std::string_view> encoding, bool repair, bool asWritten,
               std::optional<std::size_t> maximumSize, std::optional<std::size_t> maximumDepth) {
                new (self) OpenOptions(optionsOf(encoding, repair, asWritten, maximumSize, maximumDepth));
            },
            nb::arg("encoding").none(), nb::arg("repair"), nb::arg("as_written"),
            nb::arg("maximum_size").none(), nb::arg("maximum_depth").none());
    module.def(
        "open_path", &openPath, nb::arg("path"), nb::arg("may_be_url"), nb::arg("options"),
        nb::sig("def open_path(path: bytes, may_be_url: bool, options: Options) -> Document | Failure"),
        "Opens a file. Others may run while it is read.");
    module.def("open_bytes", &openBytes, nb::arg("data"), nb::arg("options"),
               nb::sig("def open_bytes(data: bytes, options: Options) -> Document | Failure"),
               "Opens the bytes of a file. Others may run while they are read.");
}

}  // namespace brackwell::python
