// SPDX-License-Identifier: Apache-2.0
#include <brackwell/version.h>
#include <nanobind/nanobind.h>

#include "document.h"

// Classes come before those whose attributes they are the default of; signatures are texts and may name any.
NB_MODULE(_core, module) {
    using namespace brackwell::python;
    module.doc() = "The classes of the module brackwell.";
    module.attr("VERSION") = BRACKWELL_VERSION_STRING;
    bindAccounts(module);
    bindTransactions(module);
    bindInvestmentTransactions(module);
    bindHoldings(module);
    bindPlans(module);
    bindSecurities(module);
    bindInvestmentAccounts(module);
    bindProfile(module);
    bindFindings(module);
    bindDocument(module);
}
