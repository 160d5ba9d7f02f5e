// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>

#include "survival.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

template <class Object>
std::string transcript(const std::shared_ptr<Object>& object) {
    return transcriptOf(*object);
}

/// The archive of an object, and the object that comes back from it.
template <class Object>
void surviveArchive(Tally& tally, const Object& object) {
    CAPTURE(std::string(object.className()));
    surviveMaking(
        tally, [&] { return restored(object); }, transcript<Object>);
}

}  // namespace

TEST_CASE("archives of all classes survive exhausted memory at every allocation") {
    Tally tally("archive round trips of responses and transactions");
    const auto interpreter = interpreted(exampleData("every_element.ofx").bytes());
    for (const char* name : {"every_element.ofx", "checking.ofx", "profile.ofx", "account_information.ofx"}) {
        CAPTURE(name);
        const auto read = interpreted(exampleData(name).bytes());
        for (const auto& response : read->allResponses()) {
            surviveArchive<TvOFXAggregate>(tally, *response);
            const auto* statement = dynamic_cast<const TvOFXAccountStatement*>(response.get());
            if (statement == nullptr) continue;
            for (const auto& transaction : statement->statementTransactions())
                surviveArchive(tally, *transaction);
        }
    }
}

TEST_CASE("archives of payees and accounts survive exhausted memory at every allocation") {
    Tally tally("archive round trips of payees and accounts");
    const ParseDictionary node{{"NAME", "A name of some length"},
                               {"ADDR1", "A street of some length"},
                               {"ACCTID", "00001111222233334444"},
                               {"BANKID", "121000248121000248"},
                               {"ACCTTYPE", "SAVINGS"},
                               {"UNKNOWN.NAME.OF.A.BANK", "text"},
                               {"INNER", ParseDictionary{{"A", "B"}}}};
    surviveArchive(tally, *TvOFXPayee::initWithParseDict(node));
    surviveArchive(tally, *TvOFXBankAccount::initWithParserDict(node));
    surviveArchive(tally, *TvOFXCreditCardAccount::initWithParseDict(node));
    surviveArchive(tally, *TvOFXAggregate::initWithParseDict(node));
}

TEST_CASE("a stored profile survives exhausted memory at every allocation") {
    Tally tally("stored profiles and account information");
    const auto profile = interpreted(exampleData("profile.ofx").bytes());
    const auto stored = TvOFXFIProfile::initWithProfileResponse(profile->fiProfileResponse());
    const std::optional<Data> data = stored->data();
    const auto bytes = [](const std::optional<Data>& made) { return std::string(made.value().bytes()); };
    surviveMaking(
        tally, [&] { return stored->data(); }, bytes);
    surviveMaking(
        tally, [&] { return TvOFXFIProfile::initWithData(data); },
        [&](const auto& made) { return bytes(made->data()); });

    const auto accounts = interpreted(exampleData("account_information.ofx").bytes());
    const auto response =
        std::dynamic_pointer_cast<TvOFXAccountInfoResponse>(accounts->responsesForKey("ACCTINFORS")->front());
    const auto info = TvOFXUserAccountInfo::initWithAccountInfoResponse(response);
    const std::optional<Data> kept = info->data();
    surviveMaking(
        tally, [&] { return TvOFXUserAccountInfo::initWithAccountInfoResponse(response)->data(); }, bytes);
    surviveMaking(
        tally, [&] { return TvOFXUserAccountInfo::initWithData(kept); },
        [&](const auto& made) { return bytes(made->data()); });
}
