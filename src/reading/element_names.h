// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

/// \file
/// The element names that documents are known to hold, each with a small number, so that readers
/// compare integers. Names that are not known get their numbers per document (name_table.h).

namespace brackwell::reading {

/// The number of an element name: below kKnownElementCount one of the names here.
using NameID = std::uint32_t;

/// The order is free; the position is the number.
inline constexpr auto kElementNames = std::to_array<std::string_view>({
    // Document and message sets
    "OFX",
    "SIGNONMSGSRSV1",
    "SIGNUPMSGSRSV1",
    "BANKMSGSRSV1",
    "CREDITCARDMSGSRSV1",
    "INVSTMTMSGSRSV1",
    "INTERXFERMSGSRSV1",
    "WIREXFERMSGSRSV1",
    "BILLPAYMSGSRSV1",
    "EMAILMSGSRSV1",
    "SECLISTMSGSRSV1",
    "PROFMSGSRSV1",
    // Wrappers, responses, status
    "SONRS",
    "ACCTINFOTRNRS",
    "ACCTINFORS",
    "PROFTRNRS",
    "PROFRS",
    "STMTTRNRS",
    "STMTRS",
    "CCSTMTTRNRS",
    "CCSTMTRS",
    "INVSTMTTRNRS",
    "INVSTMTRS",
    "TRNUID",
    "CLTCOOKIE",
    "STATUS",
    "CODE",
    "SEVERITY",
    "MESSAGE",
    // Sign-on
    "DTSERVER",
    "USERKEY",
    "TSKEYEXPIRE",
    "LANGUAGE",
    "DTPROFUP",
    "DTACCTUP",
    "FI",
    "ORG",
    "FID",
    "SESSCOOKIE",
    "ACCESSKEY",
    "INTU.BID",
    "INTU.USERID",
    // Accounts and account information
    "BANKACCTFROM",
    "BANKACCTTO",
    "CCACCTFROM",
    "CCACCTTO",
    "INVACCTFROM",
    "BANKID",
    "BRANCHID",
    "ACCTID",
    "ACCTTYPE",
    "ACCTKEY",
    "BROKERID",
    "ACCTINFO",
    "BANKACCTINFO",
    "CCACCTINFO",
    "INVACCTINFO",
    "DESC",
    "PHONE",
    "SUPTXDL",
    "XFERSRC",
    "XFERDEST",
    "SVCSTATUS",
    "USPRODUCTTYPE",
    "CHECKING",
    "OPTIONLEVEL",
    "INVACCTTYPE",
    // Statements and transactions
    "CURDEF",
    "BANKTRANLIST",
    "DTSTART",
    "DTEND",
    "STMTTRN",
    "LEDGERBAL",
    "AVAILBAL",
    "BALAMT",
    "DTASOF",
    "MKTGINFO",
    "TRNTYPE",
    "DTPOSTED",
    "DTUSER",
    "DTAVAIL",
    "TRNAMT",
    "FITID",
    "CORRECTFITID",
    "CORRECTACTION",
    "SRVRTID",
    "CHECKNUM",
    "REFNUM",
    "SIC",
    "PAYEEID",
    "NAME",
    "EXTDNAME",
    "PAYEE",
    "MEMO",
    "CURRENCY",
    "ORIGCURRENCY",
    "CURRATE",
    "CURSYM",
    "TVOFX_ORIGINAL_STRING",
    // Payees and addresses
    "ADDR1",
    "ADDR2",
    "ADDR3",
    "CITY",
    "STATE",
    "POSTALCODE",
    "COUNTRY",
    "PHONENUMBER",
    // Profile
    "FINAME",
    "URL",
    "EMAIL",
    "TSPHONE",
    "CSPHONE",
    "FAXPHONE",
    "SIGNONINFOLIST",
    "SIGNONINFO",
    "MSGSETLIST",
    "BANKMSGSET",
    "BANKMSGSETV1",
    "SIGNONMSGSET",
    "SIGNONMSGSETV1",
    "CREDITCARDMSGSET",
    "CREDITCARDMSGSETV1",
    "SIGNUPMSGSET",
    "SIGNUPMSGSETV1",
    "EMAILMSGSET",
    "EMAILMSGSETV1",
    "PROFMSGSET",
    "PROFMSGSETV1",
    "BILLPAYMSGSET",
    "BILLPAYMSGSETV1",
    "MSGSETCORE",
    "VER",
    "SPNAME",
    "OFXSEC",
    "TRANSPSEC",
    "SIGNONREALM",
    "SYNCMODE",
    "RESPFILEER",
    "CLOSINGAVAIL",
    "XFERPROF",
    "PROCDAYSOFF",
    "PROCENDTM",
    "CANSCHED",
    "CANRECUR",
    "CANMODXFERS",
    "CANMODMDLS",
    "MODELWND",
    "DAYSWITH",
    "DFLTDAYSTOPAY",
    "EMAILPROF",
    "CANEMAIL",
    "CANNOTIFY",
    "CLIENTENROLL",
    "ACCTREQUIRED",
    "WEBENROLL",
    "OTHERENROLL",
    "CHGUSERINFO",
    "AVAILACCTS",
    "CLIENTACTREQ",
    "MIN",
    "MAX",
    "CHARTYPE",
    "CASESEN",
    "SPECIAL",
    "SPACES",
    "PINCH",
    "CHGPINFIRST",
    "USERCRED1LABEL",
    "USERCRED2LABEL",
    "CLIENTUIDREQ",
    "AUTHTOKENFIRST",
    "AUTHTOKENLABEL",
    "AUTHTOKENINFOURL",
    "MFACHALLENGESUPT",
    "MFACHALLENGEFIRST",
});

inline constexpr NameID kKnownElementCount = kElementNames.size();

/// The number of a known name, found by the compiler; a name that is not known does not compile.
consteval NameID element(std::string_view name) {
    for (NameID id = 0; id < kKnownElementCount; ++id)
        if (kElementNames[id] == name) return id;
    throw "not a known element name";
}

/// What two names are compared by first: their length, and their bytes read as two overlapping words.
/// Names of up to 16 bytes are equal when their keys are.
struct NameKey {
    std::uint64_t head = 0;
    std::uint64_t tail = 0;
    std::size_t size = 0;
    bool operator==(const NameKey&) const = default;
};

template <class Word>
constexpr std::uint64_t loadWord(const char* bytes) noexcept {
    Word word = 0;
    if (std::is_constant_evaluated() || std::endian::native != std::endian::little) {
        for (std::size_t i = 0; i < sizeof(Word); ++i)
            word |= static_cast<Word>(static_cast<Word>(static_cast<unsigned char>(bytes[i])) << (8 * i));
    } else {
        std::memcpy(&word, bytes, sizeof(Word));
    }
    return word;
}

constexpr NameKey nameKey(std::string_view name) noexcept {
    const char* p = name.data();
    const std::size_t size = name.size();
    if (size >= 8) return {loadWord<std::uint64_t>(p), loadWord<std::uint64_t>(p + size - 8), size};
    if (size >= 4) return {loadWord<std::uint32_t>(p), loadWord<std::uint32_t>(p + size - 4), size};
    if (size == 0) return {};
    const auto byte = [p](std::size_t i) { return std::uint64_t{static_cast<unsigned char>(p[i])}; };
    return {byte(0) | byte(size / 2) << 8 | byte(size - 1) << 16, 0, size};
}

/// The number of a name if it is known, otherwise kKnownElementCount. A perfect hash: one look-up and
/// one comparison.
NameID findKnownElement(std::string_view name) noexcept;

}  // namespace brackwell::reading
