// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/statements.h>

/// \file
/// The fields of a transaction as tables, for tests that hold for each of them.

namespace brackwell::tests {

/// A text: its element, archive key and getter, and whether equality looks at it.
struct TransactionText {
    std::string element;
    std::string key;
    OptionalText (TvOFXStatementTransaction::*get)() const noexcept;
    bool compared = true;
};
inline const auto kTransactionTexts = std::to_array<TransactionText>(
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
     {"TVOFX_ORIGINAL_STRING", "oDS", &TvOFXStatementTransaction::originalDataString, false}});

struct TransactionDate {
    std::string element;
    std::string key;
    std::optional<Date> (TvOFXStatementTransaction::*get)() const noexcept;
};
inline const auto kTransactionDates =
    std::to_array<TransactionDate>({{"DTPOSTED", "dP", &TvOFXStatementTransaction::datePosted},
                                    {"DTUSER", "dUI", &TvOFXStatementTransaction::dateUserInit},
                                    {"DTAVAIL", "dFA", &TvOFXStatementTransaction::dateFundsAvailable}});

/// An aggregate: its element, archive key, and two contents that differ.
struct TransactionParty {
    std::string element;
    std::string key;
    std::string text;
};
inline const auto kTransactionParties = std::to_array<TransactionParty>(
    {{"PAYEE", "pObj", "NAME"}, {"BANKACCTTO", "bAObj", "ACCTID"}, {"CCACCTTO", "cCAObj", "ACCTID"}});

}  // namespace brackwell::tests
