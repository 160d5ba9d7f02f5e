// SPDX-License-Identifier: Apache-2.0
#include <brackwell/profile.h>

#include "support/transcript.h"
#include "target.h"
#include "trees.h"

/// \file
/// A profile that an application stored.

namespace brackwell::fuzz {
namespace {

std::string answersOf(const TvOFXFIProfile& profile) {
    profile.supportsSignUp();
    profile.supportsBanking();
    for (std::uint64_t number = 0; number < 6; ++number) profile.profileForMessageSet(number);
    return profile.description() + std::string(profile.fiName().value_or("nothing")) +
           tests::transcriptOf(*profile.fiProfileResponse());
}

}  // namespace

void tryBytes(std::string_view bytes) {
    const auto profile = TvOFXFIProfile::initWithData(Data::view(bytes));
    require(profile && profile->fiProfileResponse(), "a profile is made of any bytes");
    const std::string answers = answersOf(*profile);
    require(answers == answersOf(*TvOFXFIProfile::initWithData(Data::copy(bytes))), "two readings agree");

    const std::optional<Data> data = profile->data();
    require(data.has_value(), "a profile that was read can be stored");
    const auto again = TvOFXFIProfile::initWithData(data);
    const std::optional<ParseDictionary>& tree = profile->fiProfileResponse()->originalParseData();
    if (!tree || tree->isEmpty() || !isPlain(*tree)) return;
    require(answersOf(*again) == answers && again->data() == data, "a stored profile is read as it was");
}

}  // namespace brackwell::fuzz
