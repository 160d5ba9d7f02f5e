// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tool/report.h"

/// \file
/// Documents with investments.

namespace brackwell::tests {

using Cells = std::vector<std::string>;

inline std::string security(const std::string& id, const std::string& name, const std::string& ticker) {
    return "<STOCKINFO><SECINFO><SECID><UNIQUEID>" + id + "<UNIQUEIDTYPE>CUSIP</SECID><SECNAME>" + name +
           "<TICKER>" + ticker + "<UNITPRICE>4</SECINFO></STOCKINFO>";
}

inline std::string securityList(const std::string& securities) {
    return "<SECLISTMSGSRSV1><SECLIST>" + securities + "</SECLIST></SECLISTMSGSRSV1>";
}

inline std::string position(const std::string& id, const std::string& value, const std::string& rest = "") {
    return "<POSSTOCK><INVPOS><SECID><UNIQUEID>" + id +
           "<UNIQUEIDTYPE>CUSIP</SECID><UNITS>2.5<UNITPRICE>4<MKTVAL>" + value + "<DTPRICEASOF>20240630" +
           rest + "</INVPOS></POSSTOCK>";
}

inline std::string purchase(const std::string& number, const std::string& date, const std::string& id,
                            const std::string& total) {
    return "<BUYSTOCK><INVBUY><INVTRAN><FITID>" + number + "<DTTRADE>" + date +
           "</INVTRAN><SECID><UNIQUEID>" + id +
           "<UNIQUEIDTYPE>CUSIP</SECID><UNITS>2<UNITPRICE>3<COMMISSION>1<TOTAL>" + total +
           "</INVBUY><BUYTYPE>BUY</BUYSTOCK>";
}

inline std::string moneyIn(const std::string& number, const std::string& amount) {
    return "<INVBANKTRAN><STMTTRN><TRNTYPE>CREDIT<DTPOSTED>20240105<TRNAMT>" + amount + "<FITID>" + number +
           "<NAME>Payroll<MEMO>Salary</STMTTRN><SUBACCTFUND>CASH</INVBANKTRAN>";
}

/// The statement of an investment account.
inline std::string held(const std::string& account, const std::string& transactions,
                        const std::string& positions,
                        const std::string& rest = "<INVBAL><AVAILCASH>5.5</INVBAL>") {
    return "<INVSTMTMSGSRSV1><INVSTMTTRNRS><TRNUID>1<INVSTMTRS><DTASOF>20240630<CURDEF>USD<INVACCTFROM>"
           "<BROKERID>broker<ACCTID>" +
           account + "</INVACCTFROM><INVTRANLIST>" + transactions + "</INVTRANLIST><INVPOSLIST>" + positions +
           "</INVPOSLIST>" + rest + "</INVSTMTRS></INVSTMTTRNRS></INVSTMTMSGSRSV1>";
}

/// An account with two transactions and two positions, and three securities.
inline std::string sample() {
    return version1(held("778899001122", purchase("T1", "20240110", "100", "-7") + moneyIn("B1", "50"),
                         position("100", "10") + position("200", "30")) +
                    securityList(security("100", "Alder Railways", "ALDR") +
                                 security("200", "Harbour, Lines", "HBRL") +
                                 security("300", "Nobody Holds", "NBDY")));
}

inline std::string income(const std::string& kind, const std::string& number, const std::string& date,
                          const std::string& total, const std::string& rest = "") {
    return "<" + kind + "><INVTRAN><FITID>" + number + (date.empty() ? "" : "<DTTRADE>" + date) +
           "</INVTRAN><SECID><UNIQUEID>100<UNIQUEIDTYPE>CUSIP</SECID><INCOMETYPE>DIV<TOTAL>" + total + rest +
           "</" + kind + ">";
}

inline std::string checking(const std::string& transactions) {
    return "<BANKMSGSRSV1>" +
           statement("55667788", "USD", transactions, "<LEDGERBAL><BALAMT>100<DTASOF>20240630</LEDGERBAL>") +
           "</BANKMSGSRSV1>";
}

}  // namespace brackwell::tests
