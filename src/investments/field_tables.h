// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "investments/field_table.h"

/// \file
/// The fields of each class; each table stands at the top of the class's source.

namespace brackwell::investments {

extern const FieldTable kStatementFields;
extern const FieldTable kTransactionFields;
extern const FieldTable kPositionFields;
extern const FieldTable kBalanceFields;
extern const FieldTable kListedBalanceFields;
extern const FieldTable kPlanFields;
extern const FieldTable kLoanFields;
extern const FieldTable kPeriodFields;
extern const FieldTable kAmountsFields;
extern const FieldTable kSecurityFields;
extern const FieldTable kPortionFields;

}  // namespace brackwell::investments
