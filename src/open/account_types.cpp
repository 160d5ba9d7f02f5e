// SPDX-License-Identifier: Apache-2.0
#include "open/account_types.h"

#include <cstddef>

#include "open/shown_text.h"
#include "tree/node_ref.h"

namespace brackwell::opening {
namespace {

using reading::element;
using reading::NodeRef;

/// How many types are not known, and the first of them.
struct Unknown {
    std::size_t count = 0;
    NodeRef first;

    /// Adds the type of a BANKACCTFROM. A missing type is not an unknown one.
    void addTypeOf(const NodeRef& account) {
        if (!account.isDictionary()) return;
        const NodeRef type = account[element("ACCTTYPE")];
        if (!type.isText() || trimWhiteSpace(type.text()).empty()) return;
        if (TvOFXBankAccount::accountTypeFromString(type.text()) != TvOFXBankAccountTypeUnknown) return;
        if (count++ == 0) first = type;
    }
};

}  // namespace

void findUnknownAccountTypes(FindingList& findings, const KnownResponses& responses,
                             const TreePlaces& places) {
    Unknown unknown;
    for (const auto& statement : responses.statements)
        if (responseAs<TvOFXStatementResponse>(*statement) != nullptr && statement->originalParseData())
            if (const NodeRef node = NodeRef::of(*statement->originalParseData()); node.isDictionary())
                unknown.addTypeOf(node[element("BANKACCTFROM")]);
    for (const TvOFXAccountInfoResponse* const list : responses.accountLists) {
        if (!list->originalParseData()) continue;
        for (const NodeRef& record : NodeRef::of(*list->originalParseData())[element("ACCTINFO")].elements())
            if (record.isDictionary())
                if (const NodeRef bank = record[element("BANKACCTINFO")]; bank.isDictionary())
                    unknown.addTypeOf(bank[element("BANKACCTFROM")]);
    }
    if (unknown.count == 0) return;
    findings.add(FindingKind::treeOnly, FindingSeverity::note,
                 counted(unknown.count, "account has a type that is", "accounts have types that are") +
                     " available only in the parse tree" + (unknown.count == 1 ? ": " : "; the first is ") +
                     quoted(unknown.first.text()) + ".",
                 unknown.count, places.offsetOf(unknown.first.index()));
}

}  // namespace brackwell::opening
