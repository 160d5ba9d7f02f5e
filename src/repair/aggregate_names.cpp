// SPDX-License-Identifier: Apache-2.0
#include "repair/aggregate_names.h"

#include <algorithm>
#include <array>

#include "platform/ascii_case.h"

namespace brackwell::repair {
namespace {

/// In alphabetical order.
// clang-format off
constexpr auto kNames = std::to_array<std::string_view>({
    "ACCTINFO", "ADJUSTMENT", "AVAILBAL", "BAL", "BALLIST", "BANKACCTFROM", "BANKACCTINFO", "BANKACCTTO",
    "BANKTRANLIST", "BANKTRANLISTP", "BPACCTINFO", "BUYDEBT", "BUYMF", "BUYOPT", "BUYOTHER", "BUYSTOCK",
    "CCACCTFROM", "CCACCTINFO", "CCACCTTO", "CLOSUREOPT", "CONTACTINFO", "DEBTINFO", "DISCOUNT", "EMAILPROF",
    "EXTDPMT", "EXTDPMTINV", "FI", "FIASSETCLASS", "FIMFASSETCLASS", "FIPORTION", "INCOME", "INV401K",
    "INV401KBAL", "INV401KSUMMARY", "INVACCTFROM", "INVACCTINFO", "INVACCTTO", "INVBAL", "INVBANKTRAN",
    "INVBUY", "INVEXPENSE", "INVOICE", "INVOOLIST", "INVPOS", "INVPOSLIST", "INVSELL", "INVTRAN",
    "INVTRANLIST", "JRNLFUND", "JRNLSEC", "LEDGERBAL", "LINEITEM", "LOANACCTFROM", "LOANACCTINFO",
    "LOANACCTTO", "MAIL", "MARGININTEREST", "MFASSETCLASS", "MFINFO", "MIGRATE", "MSGSETCORE", "MSGSETLIST",
    "OFX", "OO", "OOBUYDEBT", "OOBUYMF", "OOBUYOPT", "OOBUYOTHER", "OOBUYSTOCK", "OOSELLDEBT", "OOSELLMF",
    "OOSELLOPT", "OOSELLOTHER", "OOSELLSTOCK", "OPTINFO", "OTHERINFO", "PAYEE", "PENDING", "PENDINGLIST",
    "PMTINFO", "PORTION", "POSDEBT", "POSMF", "POSOPT", "POSOTHER", "POSSTOCK", "PRESACCTFROM", "PRESACCTTO",
    "REINVEST", "RETOFCAP", "SECID", "SECINFO", "SECLIST", "SELLDEBT", "SELLMF", "SELLOPT", "SELLOTHER",
    "SELLSTOCK", "SIGNONINFO", "SIGNONINFOLIST", "SONRQ", "SONRS", "SPLIT", "STATUS", "STMTTRN", "STMTTRNP",
    "STOCKINFO", "STPCHKPROF", "TRANSFER", "WIREBENEFICIARY", "WIREDESTBANK", "XFERINFO", "XFERPROF",
});
// clang-format on
static_assert(std::ranges::is_sorted(kNames));

/// Message sets, wrappers, responses and requests, which end alike.
constexpr auto kEnds =
    std::to_array<std::string_view>({"MSGSET", "MSGSETV1", "MSGSRQV1", "MSGSRSV1", "MTRS", "MTRQ", "NFORS",
                                     "NFORQ", "PROFRQ", "PROFRS", "TRNRQ", "TRNRS"});

constexpr std::size_t kLongest = 32;

}  // namespace

bool isAggregateName(std::string_view name) noexcept {
    if (name.size() > kLongest) return false;
    std::array<char, kLongest> capitals{};
    std::ranges::transform(name, capitals.begin(), capitalLetter);
    const std::string_view wanted(capitals.data(), name.size());
    return std::ranges::binary_search(kNames, wanted) ||
           std::ranges::any_of(kEnds, [wanted](std::string_view end) { return wanted.ends_with(end); });
}

}  // namespace brackwell::repair
