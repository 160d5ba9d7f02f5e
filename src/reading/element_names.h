// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>
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
    "CURDEF", "BANKTRANLIST", "DTSTART", "DTEND", "STMTTRN", "STMTTRNP", "LEDGERBAL", "AVAILBAL", "BALAMT", "DTASOF",
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
    // Investments: wrappers, lists, what securities are called
    "SECLISTTRNRS", "SECLISTRS", "SECLIST", "INVTRANLIST", "INVPOSLIST", "SECID", "UNIQUEID", "UNIQUEIDTYPE",
    // Investment transactions
    "BUYDEBT", "BUYMF", "BUYOPT", "BUYOTHER", "BUYSTOCK", "CLOSUREOPT", "INCOME", "INVEXPENSE", "JRNLFUND",
    "JRNLSEC", "MARGININTEREST", "REINVEST", "RETOFCAP", "SELLDEBT", "SELLMF", "SELLOPT", "SELLOTHER",
    "SELLSTOCK", "SPLIT", "TRANSFER", "INVBANKTRAN", "INVTRAN", "INVBUY", "INVSELL", "SRVRTID2", "DTTRADE",
    "DTSETTLE", "REVERSALFITID", "MEMO2", "UNITS", "UNITPRICE", "MARKUP", "MARKDOWN", "COMMISSION", "TAXES",
    "FEES", "LOAD", "WITHHOLDING", "STATEWITHHOLDING", "PENALTY", "TAXEXEMPT", "TOTAL", "REVERSALFEES",
    "GAIN", "ACCRDINT", "BUYTYPE", "SELLTYPE", "OPTBUYTYPE", "OPTSELLTYPE", "OPTACTION", "SHPERCTRCT",
    "RELFITID", "RELTYPE", "SECURED", "SELLREASON", "AVGCOSTBASIS", "INCOMETYPE", "SUBACCTSEC",
    "SUBACCTFUND", "SUBACCTTO", "SUBACCTFROM", "OLDUNITS", "NEWUNITS", "NUMERATOR", "DENOMINATOR",
    "FRACCASH", "TFERACTION", "POSTYPE", "DTPURCHASE", "LOANID", "LOANPRINCIPAL", "LOANINTEREST",
    "INV401KSOURCE", "DTPAYROLL", "PRIORYEARCONTRIB",
    // Positions and balances
    "POSDEBT", "POSMF", "POSOPT", "POSOTHER", "POSSTOCK", "INVPOS", "HELDINACCT", "MKTVAL", "DTPRICEASOF",
    "UNITSSTREET", "UNITSUSER", "REINVDIV", "REINVCG", "INVBAL", "AVAILCASH", "MARGINBALANCE",
    "SHORTBALANCE", "BUYPOWER", "BALLIST", "BAL", "BALTYPE", "VALUE",
    // Securities
    "DEBTINFO", "MFINFO", "OPTINFO", "OTHERINFO", "STOCKINFO", "SECINFO", "SECNAME", "TICKER", "FIID",
    "RATING", "PARVALUE", "DEBTTYPE", "DEBTCLASS", "COUPONRT", "DTCOUPON", "COUPONFREQ", "CALLPRICE",
    "YIELDTOCALL", "DTCALL", "CALLTYPE", "YIELDTOMAT", "DTMAT", "MFTYPE", "YIELD", "YLD", "DTYIELDASOF",
    "OPTTYPE", "STRIKEPRICE", "DTEXPIRE", "STOCKTYPE", "TYPEDESC", "ASSETCLASS", "FIASSETCLASS",
    "PORTION", "FIPORTION", "PERCENT",
    // Retirement plans
    "INV401K", "INV401KBAL", "CASHBAL", "PRETAX", "AFTERTAX", "MATCH", "PROFITSHARING", "ROLLOVER",
    "OTHERVEST", "OTHERNONVEST", "EMPLOYERNAME", "PLANID", "PLANJOINDATE", "EMPLOYERCONTACTINFO",
    "BROKERCONTACTINFO", "DEFERPCTPRETAX", "DEFERPCTAFTERTAX", "MATCHINFO", "MATCHPCT", "MAXMATCHAMT",
    "MAXMATCHPCT", "STARTOFYEAR", "BASEMATCHAMT", "BASEMATCHPCT", "CURRENTVESTPCT", "VESTINFO", "VESTDATE",
    "VESTPCT", "LOANINFO", "LOANDESC", "INITIALLOANBAL", "LOANSTARTDATE", "CURRENTLOANBAL", "LOANRATE",
    "LOANPMTAMT", "LOANPMTFREQ", "LOANPMTSINITIAL", "LOANPMTSREMAINING", "LOANMATURITYDATE",
    "LOANTOTALPROJINTEREST", "LOANINTERESTTODATE", "LOANNEXTPMTDATE", "YEARTODATE", "INCEPTTODATE",
    "INCEPTODATE", "PERIODTODATE", "CONTRIBUTIONS", "WITHDRAWALS", "EARNINGS",
});
// clang-format on

inline constexpr NameID kKnownElementCount = kElementNames.size();

/// A perfect hash: every known name has a slot of its own, so that a look-up compares one name. The compiler
/// finds it. A mixed key has a bucket; a bucket says which bits of its mixed keys are their slots, and these
/// bits are chosen so that no two names meet. Where that fails, all begins anew with another multiplier.
struct KnownElements {
    static constexpr unsigned kBucketBits = 8;
    static constexpr unsigned kSlotBits = std::bit_width(4 * kKnownElementCount);  ///< so most slots are free
    static constexpr unsigned kHighestShift = 64 - kBucketBits - kSlotBits;
    static constexpr unsigned kLowestShift = 16;  ///< a product's lower bits depend on few of a key's

    std::uint64_t multiplier = 0;
    std::array<std::uint8_t, std::size_t{1} << kBucketBits> shifts{};  ///< by bucket
    std::array<std::uint16_t, std::size_t{1} << kSlotBits> slots{};
    std::array<NameKey, kKnownElementCount + 1> keys{};
    bool isPerfect = false;

    constexpr std::uint64_t mixed(const NameKey& key) const noexcept {
        return (key.head ^ std::rotl(key.tail, 29) ^ std::uint64_t{key.size} << 59) * multiplier;
    }
    static constexpr std::size_t bucket(std::uint64_t mixed) noexcept { return mixed >> (64 - kBucketBits); }
    static constexpr std::size_t slot(std::uint64_t mixed, unsigned shift) noexcept {
        return mixed >> shift & ((std::size_t{1} << kSlotBits) - 1);
    }
    constexpr NameID at(const NameKey& key) const noexcept {
        const std::uint64_t bits = mixed(key);
        return slots[slot(bits, shifts[bucket(bits)])];
    }
};
static_assert(kKnownElementCount < std::numeric_limits<std::uint16_t>::max(), "slots hold two bytes");

/// Finds the shifts that give every name a slot, the fullest buckets first.
class KnownElementsMaker {
public:
    static constexpr KnownElements make() noexcept {
        KnownElementsMaker maker;
        // Odd multiples of 2^64 divided by the golden ratio: numbers whose bits look random.
        constexpr std::uint64_t golden = 0x9E3779B97F4A7C15;
        for (std::uint64_t tries = 1; tries < 64 && !maker.table_.isPerfect; tries += 2)
            maker.tryMultiplier(golden * tries);
        return maker.table_;
    }

private:
    static constexpr std::uint16_t kNone = kKnownElementCount;

    constexpr KnownElementsMaker() noexcept {
        for (NameID id = 0; id < kKnownElementCount; ++id) table_.keys[id] = nameKey(kElementNames[id]);
    }
    constexpr void tryMultiplier(std::uint64_t multiplier) noexcept {
        table_.multiplier = multiplier;
        table_.slots.fill(kNone);
        fillBuckets();
        for (std::size_t size = largest_; size > 0; --size)
            for (std::size_t bucket = 0; bucket < sizes_.size(); ++bucket)
                if (sizes_[bucket] == size && !place(bucket)) return;
        table_.isPerfect = true;
    }
    /// Chains the names of each bucket.
    constexpr void fillBuckets() noexcept {
        first_.fill(kNone);
        sizes_.fill(0);
        largest_ = 0;
        for (std::uint16_t id = 0; id < kKnownElementCount; ++id) {
            mixed_[id] = table_.mixed(table_.keys[id]);
            const std::size_t bucket = KnownElements::bucket(mixed_[id]);
            next_[id] = first_[bucket];
            first_[bucket] = id;
            largest_ = std::max<std::size_t>(largest_, ++sizes_[bucket]);
        }
    }
    constexpr bool place(std::size_t bucket) noexcept {
        for (unsigned shift = KnownElements::kHighestShift; shift >= KnownElements::kLowestShift; --shift) {
            table_.shifts[bucket] = static_cast<std::uint8_t>(shift);
            if (takeSlots(bucket, shift)) return true;
        }
        return false;
    }
    /// Gives each name of a bucket its slot, or none of them when one is taken.
    constexpr bool takeSlots(std::size_t bucket, unsigned shift) noexcept {
        std::uint16_t id = first_[bucket];
        for (; id != kNone; id = next_[id]) {
            std::uint16_t& slot = table_.slots[KnownElements::slot(mixed_[id], shift)];
            if (slot != kNone) break;
            slot = id;
        }
        if (id == kNone) return true;
        for (std::uint16_t taken = first_[bucket]; taken != id; taken = next_[taken])
            table_.slots[KnownElements::slot(mixed_[taken], shift)] = kNone;
        return false;
    }

    KnownElements table_;
    std::array<std::uint64_t, kKnownElementCount> mixed_{};
    std::array<std::uint16_t, kKnownElementCount> next_{};
    std::array<std::uint16_t, std::size_t{1} << KnownElements::kBucketBits> first_{};
    std::array<std::uint16_t, std::size_t{1} << KnownElements::kBucketBits> sizes_{};
    std::size_t largest_ = 0;
};

inline constexpr KnownElements kKnownElements = KnownElementsMaker::make();
static_assert(kKnownElements.isPerfect,
              "a name stands there twice, or two have one length, one begin and one end");

/// The number of the known name that has this key, otherwise kKnownElementCount: one look-up and one
/// comparison. The empty name has the key of the place after the last name, which is the right answer.
constexpr NameID findKnownElement(const NameKey& key, std::string_view name) noexcept {
    const NameID id = kKnownElements.at(key);
    if (kKnownElements.keys[id] != key) return kKnownElementCount;
    return key.size <= kKeyedBytes || kElementNames[id] == name ? id : kKnownElementCount;
}
constexpr NameID findKnownElement(std::string_view name) noexcept {
    return findKnownElement(nameKey(name), name);
}

/// The number of a known name, found by the compiler; a name that is not known does not compile.
consteval NameID element(std::string_view name) {
    const NameID id = findKnownElement(name);
    if (id == kKnownElementCount) throw "not a known element name";
    return id;
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
