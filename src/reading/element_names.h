// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string_view>

#include "reading/byte_block.h"
#include "reading/name_key.h"

/// \file
/// The element names that documents are known to hold, each with a small number, so that readers
/// compare integers. Names that are not known get their numbers per document (name_table.h).

namespace brackwell::reading {

/// The number of an element name: below kKnownElementCount one of the names here.
using NameID = std::uint32_t;

/// The order is free; the position is the number.
// clang-format off
inline constexpr auto kElementNames = std::to_array<std::string_view>({
    // Headers
    "OFXHEADER", "DATA", "VERSION", "SECURITY", "ENCODING", "CHARSET", "COMPRESSION", "OLDFILEUID",
    "NEWFILEUID",
    // Document and message sets
    "OFX", "SIGNONMSGSRSV1", "SIGNUPMSGSRSV1", "BANKMSGSRSV1", "CREDITCARDMSGSRSV1", "INVSTMTMSGSRSV1",
    "INTERXFERMSGSRSV1", "WIREXFERMSGSRSV1", "BILLPAYMSGSRSV1", "EMAILMSGSRSV1", "SECLISTMSGSRSV1",
    "PROFMSGSRSV1",
    // Wrappers, responses, status
    "SONRS", "ACCTINFOTRNRS", "ACCTINFORS", "PROFTRNRS", "PROFRS", "STMTTRNRS", "STMTRS", "CCSTMTTRNRS",
    "CCSTMTRS", "INVSTMTTRNRS", "INVSTMTRS", "TRNUID", "CLTCOOKIE", "STATUS", "CODE", "SEVERITY", "MESSAGE",
    // Sign-on
    "DTSERVER", "USERKEY", "TSKEYEXPIRE", "LANGUAGE", "DTPROFUP", "DTACCTUP", "FI", "ORG", "FID",
    "SESSCOOKIE", "ACCESSKEY", "INTU.BID", "INTU.USERID",
    // Accounts and account information
    "BANKACCTFROM", "BANKACCTTO", "CCACCTFROM", "CCACCTTO", "INVACCTFROM", "BANKID", "BRANCHID", "ACCTID",
    "ACCTTYPE", "ACCTKEY", "BROKERID", "ACCTINFO", "BANKACCTINFO", "CCACCTINFO", "INVACCTINFO", "DESC",
    "PHONE", "SUPTXDL", "XFERSRC", "XFERDEST", "SVCSTATUS", "USPRODUCTTYPE", "CHECKING", "OPTIONLEVEL",
    "INVACCTTYPE",
    // Statements and transactions
    "CURDEF", "BANKTRANLIST", "DTSTART", "DTEND", "STMTTRN", "LEDGERBAL", "AVAILBAL", "BALAMT", "DTASOF",
    "MKTGINFO", "TRNTYPE", "DTPOSTED", "DTUSER", "DTAVAIL", "TRNAMT", "FITID", "CORRECTFITID",
    "CORRECTACTION", "SRVRTID", "CHECKNUM", "REFNUM", "SIC", "PAYEEID", "NAME", "EXTDNAME", "PAYEE", "MEMO",
    "CURRENCY", "ORIGCURRENCY", "CURRATE", "CURSYM", "TVOFX_ORIGINAL_STRING",
    // Payees and addresses
    "ADDR1", "ADDR2", "ADDR3", "CITY", "STATE", "POSTALCODE", "COUNTRY", "PHONENUMBER",
    // Profile
    "FINAME", "URL", "EMAIL", "TSPHONE", "CSPHONE", "FAXPHONE", "SIGNONINFOLIST", "SIGNONINFO",
    "MSGSETLIST", "BANKMSGSET", "BANKMSGSETV1", "SIGNONMSGSET", "SIGNONMSGSETV1", "CREDITCARDMSGSET",
    "CREDITCARDMSGSETV1", "SIGNUPMSGSET", "SIGNUPMSGSETV1", "EMAILMSGSET", "EMAILMSGSETV1", "PROFMSGSET",
    "PROFMSGSETV1", "BILLPAYMSGSET", "BILLPAYMSGSETV1", "MSGSETCORE", "VER", "SPNAME", "OFXSEC",
    "TRANSPSEC", "SIGNONREALM", "SYNCMODE", "RESPFILEER", "CLOSINGAVAIL", "XFERPROF", "PROCDAYSOFF",
    "PROCENDTM", "CANSCHED", "CANRECUR", "CANMODXFERS", "CANMODMDLS", "MODELWND", "DAYSWITH",
    "DFLTDAYSTOPAY", "EMAILPROF", "CANEMAIL", "CANNOTIFY", "CLIENTENROLL", "ACCTREQUIRED", "WEBENROLL",
    "OTHERENROLL", "CHGUSERINFO", "AVAILACCTS", "CLIENTACTREQ", "MIN", "MAX", "CHARTYPE", "CASESEN",
    "SPECIAL", "SPACES", "PINCH", "CHGPINFIRST", "USERCRED1LABEL", "USERCRED2LABEL", "CLIENTUIDREQ",
    "AUTHTOKENFIRST", "AUTHTOKENLABEL", "AUTHTOKENINFOURL", "MFACHALLENGESUPT", "MFACHALLENGEFIRST",
});
// clang-format on

inline constexpr NameID kKnownElementCount = kElementNames.size();

/// The number of a known name, found by the compiler; a name that is not known does not compile.
consteval NameID element(std::string_view name) {
    for (NameID id = 0; id < kKnownElementCount; ++id)
        if (kElementNames[id] == name) return id;
    throw "not a known element name";
}

inline constexpr unsigned kSlotBits = 11;
inline constexpr std::size_t kSlots = std::size_t{1} << kSlotBits;
/// Found by trying random odd numbers until no two names shared a slot.
inline constexpr std::uint64_t kMultiplier = 0x21553dad8182cd21;
static_assert(kKnownElementCount < 255, "slots hold one byte");

constexpr std::size_t slotOf(const NameKey& key) noexcept {
    const std::uint64_t mixed = (key.head ^ std::rotl(key.tail, 23) ^ key.size << 59) * kMultiplier;
    return mixed >> (64 - kSlotBits);
}

/// A perfect hash: every known name has a slot of its own.
struct KnownElements {
    std::array<std::uint8_t, kSlots> slots{};
    std::array<NameKey, kKnownElementCount + 1> keys{};
    bool perfect = true;
};

constexpr KnownElements makeKnownElements() noexcept {
    KnownElements table;
    table.slots.fill(kKnownElementCount);
    for (NameID id = 0; id < kKnownElementCount; ++id) {
        table.keys[id] = nameKey(kElementNames[id]);
        std::uint8_t& slot = table.slots[slotOf(table.keys[id])];
        if (slot != kKnownElementCount) table.perfect = false;
        slot = static_cast<std::uint8_t>(id);
    }
    return table;
}

inline constexpr KnownElements kKnownElements = makeKnownElements();
static_assert(kKnownElements.perfect, "two names share a slot: try another multiplier");

/// The number of the known name that has this key, otherwise kKnownElementCount: one look-up and one
/// comparison. The empty name has the key of the place behind the last name, which is the right answer.
inline NameID findKnownElement(const NameKey& key, std::string_view name) noexcept {
    const NameID id = kKnownElements.slots[slotOf(key)];
    if (kKnownElements.keys[id] != key) return kKnownElementCount;
    return key.size <= kKeyedBytes || kElementNames[id] == name ? id : kKnownElementCount;
}
inline NameID findKnownElement(std::string_view name) noexcept {
    return findKnownElement(nameKey(name), name);
}

/// A known name as it stands in a tag, ">" included, for comparing 16 bytes at once.
struct TagText {
    std::array<char, ByteBlock::size> bytes{};
    unsigned mask = 0;  ///< which bytes count; of a name that is too long, a bit that none has
    unsigned size = 0;  ///< of the name
};

inline constexpr auto kTagTexts = [] {
    std::array<TagText, kKnownElementCount> texts{};
    for (NameID id = 0; id < kKnownElementCount; ++id) {
        const std::string_view name = kElementNames[id];
        TagText& text = texts[id];
        text.size = static_cast<unsigned>(name.size());
        text.mask = 1U << ByteBlock::size;
        if (name.size() >= ByteBlock::size) continue;
        std::copy(name.begin(), name.end(), text.bytes.begin());
        text.bytes[name.size()] = '>';
        text.mask = (2U << name.size()) - 1;
    }
    return texts;
}();

/// True when a block begins with this known name and ">".
inline bool beginsWithTag(const ByteBlock& block, NameID id) noexcept {
    const TagText& text = kTagTexts[id];
    return (~block.equal(ByteBlock(text.bytes.data())) & text.mask) == 0;
}

}  // namespace brackwell::reading
