// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/statements.h>

/// \file
/// The fields of a transaction as tables, for tests that hold for each of them.

namespace brackwell::tests {

/// A text: its element, archive key and getter, and whether equality looks at it.
struct TransactionText {
    const char* element;
    const char* key;
    OptionalText (TvOFXStatementTransaction::*get)() const noexcept;
    bool compared = true;
};
inline constexpr std::array<TransactionText, 14> kTransactionTexts{
    {{"TRNTYPE", "type", &TvOFXStatementTransaction::transactionType},
     {"FITID", "fiTID", &TvOFXStatementTransaction::fiTransactionID},
     {"CORRECTFITID", "cFITID", &TvOFXStatementTransaction::correctionFITID},
     {"CORRECTACTION", "cA", &TvOFXStatementTransaction::correctionAction},
     {"SRVRTID", "sTID", &TvOFXStatementTransaction::serverTransactionID},
     {"CHECKNUM", "cORN", &TvOFXStatementTransaction::checkOrReferenceNumber},
     {"REFNUM", "rN", &TvOFXStatementTransaction::referenceNumber},
     {"SIC", "sIC", &TvOFXStatementTransaction::standardIndustrialCode},
     {"PAYEEID", "pID", &TvOFXStatementTransaction::payeeID},
     {"NAME", "pN", &TvOFXStatementTransaction::payeeName},
     {"MEMO", "memo", &TvOFXStatementTransaction::memo},
     {"CURRENCY", "cur", &TvOFXStatementTransaction::currency},
     {"ORIGCURRENCY", "oCur", &TvOFXStatementTransaction::origCurrency},
     {"TVOFX_ORIGINAL_STRING", "oDS", &TvOFXStatementTransaction::originalDataString, false}}};

struct TransactionDate {
    const char* element;
    const char* key;
    std::optional<Date> (TvOFXStatementTransaction::*get)() const noexcept;
};
inline constexpr std::array<TransactionDate, 3> kTransactionDates{
    {{"DTPOSTED", "dP", &TvOFXStatementTransaction::datePosted},
     {"DTUSER", "dUI", &TvOFXStatementTransaction::dateUserInit},
     {"DTAVAIL", "dFA", &TvOFXStatementTransaction::dateFundsAvailable}}};

/// An aggregate: its element, archive key, and two contents that differ.
struct TransactionParty {
    const char* element;
    const char* key;
    const char* text;
};
inline constexpr std::array<TransactionParty, 3> kTransactionParties{
    {{"PAYEE", "pObj", "NAME"}, {"BANKACCTTO", "bAObj", "ACCTID"}, {"CCACCTTO", "cCAObj", "ACCTID"}}};

}  // namespace brackwell::tests
