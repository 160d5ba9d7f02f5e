// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>

#include "support/transcript.h"
#include "target.h"
#include "trees.h"

/// \file
/// The user's accounts as an application stored them.

namespace brackwell::fuzz {
namespace {

std::string answersOf(const TvOFXUserAccountInfo& info) {
    require(info.allAccountInfos() != nullptr && info.allAccountInfos()->size() == info.allAccounts().size(),
            "each record is an account");
    std::string answers = tests::transcriptOf(*info.acctInfoResponse());
    for (const auto& account : info.allAccounts()) answers += account->description();
    return answers;
}

}  // namespace

void tryBytes(std::string_view bytes) {
    const auto info = TvOFXUserAccountInfo::initWithData(Data::view(bytes));
    require(info && info->acctInfoResponse(), "a response is made of any bytes");
    const std::string answers = answersOf(*info);
    require(answers == answersOf(*TvOFXUserAccountInfo::initWithData(Data::copy(bytes))),
            "two readings agree");

    const std::optional<Data> data = info->data();
    require(data.has_value(), "a response that was read can be stored");
    const auto again = TvOFXUserAccountInfo::initWithData(data);
    const std::optional<ParseDictionary>& tree = info->acctInfoResponse()->originalParseData();
    if (!tree || tree->isEmpty() || !isPlain(*tree)) return;
    require(answersOf(*again) == answers && again->data() == data, "stored accounts are read as they were");
}

}  // namespace brackwell::fuzz
