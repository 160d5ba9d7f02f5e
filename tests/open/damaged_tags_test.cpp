// SPDX-License-Identifier: Apache-2.0
#include <brackwell/open.h>
#include <doctest/doctest.h>

#include <algorithm>
#include <iterator>
#include <set>

#include "elements/structure.h"
#include "support/documents.h"

/// \file
/// Damages tags of the example documents and asks whether what is not delivered any more is named.

using namespace brackwell;
using namespace brackwell::tests;

namespace {

/// The values that a document delivers, with what they are.
class DeliveredValues {
public:
    explicit DeliveredValues(const OpenedFile& file) {
        if (const auto signOn = file.signOn()) addSignOn(*signOn);
        if (const auto profile = file.profile()) addProfile(*profile);
        for (const auto& statement : file.statements()) addStatement(*statement);
        for (const InvestmentStatement& statement : file.investmentStatements()) addInvestments(statement);
        for (const Security& security : file.securities().all()) {
            add("security", security.name());
            add("ticker", security.ticker());
        }
        for (const ListedAccount& account : file.accounts()) {
            add("description", account.record->accountDescription());
            if (account.bank) add("listed number", account.bank->accountID());
        }
    }

    /// How many values of the other one are not here.
    std::size_t lostFrom(const DeliveredValues& other) const {
        std::vector<std::string> lost;
        std::ranges::set_difference(other.values_, values_, std::back_inserter(lost));
        return lost.size();
    }

private:
    void add(const std::string& what, OptionalText text) {
        if (text) values_.insert(what + "=" + std::string(*text));
    }
    void add(const std::string& what, const std::optional<Decimal>& number) {
        if (number) values_.insert(what + "=" + number->toString());
    }
    void add(const std::string& what, std::optional<Date> date) {
        if (date) values_.insert(what + "=" + dateDescription(*date));
    }
    void addStatus(const TvOFXResponse& response) {
        if (!response.status()) return;
        values_.insert("code=" + std::to_string(response.status()->code()));
        add("severity", response.status()->severity());
    }
    void addSignOn(const TvOFXSignOnResponse& signOn) {
        addStatus(signOn);
        add("server", signOn.dateOfServer());
        add("language", signOn.language());
    }
    void addProfile(const TvOFXFIProfileResponse& profile) {
        add("institution", profile.fiName());
        add("city", profile.city());
        add("mail", profile.email());
    }
    void addStatement(const TvOFXAccountStatement& statement) {
        addStatus(statement);
        if (const auto* bank = dynamic_cast<const TvOFXStatementResponse*>(&statement))
            if (bank->bankAccountFrom()) add("number", bank->bankAccountFrom()->accountID());
        add("balance", statement.ledgerBalanceAmount());
        add("available", statement.availableBalanceAmount());
        for (const auto& transaction : statement.statementTransactions()) addTransaction(*transaction);
    }
    void addTransaction(const TvOFXStatementTransaction& transaction) {
        add("type", transaction.transactionType());
        add("posted", transaction.datePosted());
        add("amount", transaction.amount());
        add("identifier", transaction.fiTransactionID());
        add("payee", transaction.payeeName());
        add("memo", transaction.memo());
        add("check", transaction.checkOrReferenceNumber());
    }
    void addInvestments(const InvestmentStatement& statement) {
        for (const InvestmentTransaction& transaction : statement.transactions()) {
            add("trade", transaction.tradeDate());
            add("units", transaction.units());
            add("total", transaction.total());
            if (const auto bank = transaction.bankTransaction()) addTransaction(*bank);
        }
        for (const Position& position : statement.positions()) add("value", position.marketValue());
    }

    std::multiset<std::string> values_;
};

struct Share {
    std::size_t all = 0;
    std::size_t whole = 0;   ///< delivered as before
    std::size_t named = 0;   ///< something is missing, and an error or a new warning says so
    std::size_t noted = 0;   ///< there are new notes only
    std::size_t silent = 0;  ///< there is nothing
    double percent(std::size_t part) const {
        return 100.0 * static_cast<double>(part) / static_cast<double>(all);
    }
};

/// The findings of which it is to be known whether they are new.
std::multiset<std::string> textsOf(const OpenedFile& file, FindingSeverity least) {
    std::multiset<std::string> texts;
    for (const Finding& finding : file.findings())
        if (finding.severity >= least)
            texts.insert(std::string(nameOf(finding.kind)) + std::to_string(finding.count));
    return texts;
}
bool hasMore(const std::multiset<std::string>& texts, const std::multiset<std::string>& before) {
    return !std::ranges::includes(before, texts);
}

void compare(Share& share, const OpenedFile& sound, const std::string& damagedText) {
    const OpenedFile damaged = openData(Data::copy(damagedText));
    ++share.all;
    if (DeliveredValues(damaged).lostFrom(DeliveredValues(sound)) == 0) {
        ++share.whole;
        return;
    }
    const auto isNew = [&](FindingSeverity least) {
        return hasMore(textsOf(damaged, least), textsOf(sound, least));
    };
    if (!damaged || isNew(FindingSeverity::warning))
        ++share.named;
    else if (isNew(FindingSeverity::note))
        ++share.noted;
    else
        ++share.silent;
}

/// A tag of a text, from its "<" to after its ">", and where the next one begins.
struct Tag {
    std::size_t begin;
    std::size_t end;
    std::size_t next;
};

std::vector<Tag> tagsOf(const std::string& text) {
    std::vector<Tag> tags;
    for (std::size_t at = text.find("<OFX>"); at < text.size();) {
        const std::size_t next = text.find('<', at + 1);
        tags.push_back({at, text.find('>', at) + 1, std::min(next, text.size())});
        at = next;
    }
    return tags;
}

/// The tag without its brackets when it is one of an aggregate; "" otherwise.
std::string aggregateTag(const std::string& text, const Tag& tag) {
    const std::string inside = text.substr(tag.begin + 1, tag.end - tag.begin - 2);
    const std::string name = inside.substr(inside.starts_with('/') ? 1 : 0);
    return elements::isAggregate(elements::findElement(name)) ? inside : "";
}

/// Damages every document at every `step`-th tag, where that changes it.
template <class Damage>
Share shareAfter(std::size_t step, Damage damage) {
    Share share;
    for (const char* name : {"account_information.ofx", "card.ofx", "checking.ofx", "errors.ofx",
                             "household.ofx", "investments.ofx", "profile.ofx", "sign_on_failure.ofx"}) {
        const Data data = exampleData(name);
        const std::string text(decodeText(data, TextEncodingUTF8)->bytes());
        const OpenedFile sound = openData(Data::copy(text));
        const std::vector<Tag> tags = tagsOf(text);
        for (std::size_t i = step / 2; i < tags.size(); i += step)
            if (const std::string damaged = damage(text, tags[i]); damaged != text)
                compare(share, sound, damaged);
    }
    MESSAGE(share.all << ": " << share.whole << " whole, " << share.named << " named, " << share.noted
                      << " noted, " << share.silent << " silent");
    return share;
}

}  // namespace

TEST_CASE("what a damaged tag loses is named") {
    struct Row {
        const char* why;
        std::string (*damage)(std::string text, const Tag& tag);
        double mostUnnamed;  ///< percent of the documents that lose something without a warning
    };
    const Row rows[] = {
        {"a name in small letters",
         [](std::string text, const Tag& tag) {
             for (std::size_t at = tag.begin; at < tag.end; ++at)
                 text[at] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[at])));
             return text;
         },
         0},
        {"a letter of the name is another",
         [](std::string text, const Tag& tag) {
             text[tag.end - 2] = 'Q';
             return text;
         },
         0},
        {"the first letter of the name is lost",
         [](std::string text, const Tag& tag) {
             return text.erase(tag.begin + (text[tag.begin + 1] == '/' ? 2 : 1), 1);
         },
         0},
        {"no \"<\"", [](std::string text, const Tag& tag) { return text.erase(tag.begin, 1); }, 0},
        {"no \">\"", [](std::string text, const Tag& tag) { return text.erase(tag.end - 1, 1); }, 0},
        {"a \"<\" in the name",
         [](std::string text, const Tag& tag) { return text.insert(tag.begin + 3, "<"); }, 0},
        {"a \"<\" in the value",
         [](std::string text, const Tag& tag) {
             return text.insert(std::min(tag.end + 2, text.size()), "<");
         },
         0},
    };
    for (const Row& row : rows) {
        CAPTURE(std::string(row.why));
        const Share share = shareAfter(5, row.damage);
        CHECK(share.all > 100);
        CHECK(share.percent(share.silent + share.noted) <= row.mostUnnamed);
    }
}

TEST_CASE("what a lost tag of an aggregate, or two that changed places, lose is named") {
    struct Row {
        const char* why;
        std::string (*damage)(std::string text, const Tag& tag);
    };
    const Row rows[] = {
        {"no close tag",
         [](std::string text, const Tag& tag) {
             const bool isLost = aggregateTag(text, tag).starts_with('/');
             return isLost ? text.erase(tag.begin, tag.end - tag.begin) : text;
         }},
        {"no open tag",
         [](std::string text, const Tag& tag) {
             const std::string inside = aggregateTag(text, tag);
             const bool isLost = !inside.empty() && !inside.starts_with('/');
             return isLost ? text.erase(tag.begin, tag.end - tag.begin) : text;
         }},
        {"two tags crossed",
         [](std::string text, const Tag& tag) {
             const std::string between = text.substr(tag.end, tag.next - tag.end);
             if (tag.next == text.size() || between.find_first_not_of(" \r\n") != between.npos) return text;
             const std::size_t end = text.find('>', tag.next) + 1;
             const std::string first = text.substr(tag.begin, tag.end - tag.begin);
             return text.replace(tag.begin, end - tag.begin,
                                 text.substr(tag.next, end - tag.next) + between + first);
         }},
    };
    for (const Row& row : rows) {
        CAPTURE(std::string(row.why));
        const Share share = shareAfter(1, row.damage);
        CHECK(share.all > 200);
        CHECK(share.percent(share.whole) >= 99);
        CHECK(share.silent + share.noted == 0);
    }
}
