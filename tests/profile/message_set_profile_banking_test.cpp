// SPDX-License-Identifier: Apache-2.0
#include <brackwell/message_sets.h>

#include "profile/reading_rules.h"
#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using Banking = TvOFXMessageSetProfileBanking;

std::shared_ptr<Banking> bankingIn(const std::optional<ParseDictionary>& node) {
    return Banking::initWithParseDict(node);
}

/// Where an element stands: in the message set itself ("") or in an aggregate of it.
std::shared_ptr<Banking> bankingIn(std::string_view aggregate, std::string_view element,
                                   const ParseValue& value) {
    const ParseDictionary inner{{element, value}};
    return bankingIn(aggregate.empty() ? inner : ParseDictionary{{aggregate, inner}});
}

template <class Value>
struct Field {
    const char* aggregate;
    const char* element;
    Value (Banking::*get)() const noexcept;
    void (Banking::*set)(Value) noexcept;
};

const std::array<Field<bool>, 7> kFlags{
    {{"", "CLOSINGAVAIL", &Banking::closingStatementInformationAvailable,
      &Banking::setClosingStatementInformationAvailable},
     {"XFERPROF", "CANSCHED", &Banking::supportsScheduledTransfers, &Banking::setSupportsScheduledTransfers},
     {"XFERPROF", "CANRECUR", &Banking::supportsRecurringTransfers, &Banking::setSupportsRecurringTransfers},
     {"XFERPROF", "CANMODXFERS", &Banking::supportsModifyTransfers, &Banking::setSupportsModifyTransfers},
     {"XFERPROF", "CANMODMDLS", &Banking::supportsModifyModels, &Banking::setSupportsModifyModels},
     {"EMAILPROF", "CANEMAIL", &Banking::supportsEMail, &Banking::setSupportsEMail},
     {"EMAILPROF", "CANNOTIFY", &Banking::supportsNotification, &Banking::setSupportsNotification}}};

const std::array<Field<std::int64_t>, 3> kIntegers{
    {{"XFERPROF", "MODELWND", &Banking::modelWindow, &Banking::setModelWindow},
     {"XFERPROF", "DAYSWITH", &Banking::daysWith, &Banking::setDaysWith},
     {"XFERPROF", "DFLTDAYSTOPAY", &Banking::defaultNumberOfDaysToPay,
      &Banking::setDefaultNumberOfDaysToPay}}};

void checkDefaults(const Banking& banking) {
    for (const auto& field : kFlags) CHECK_FALSE((banking.*field.get)());
    for (const auto& field : kIntegers) CHECK((banking.*field.get)() == 0);
    CHECK_FALSE(banking.noProcessingDays());
    CHECK_FALSE(banking.processingEndTime());
}

}  // namespace

TEST_CASE("the banking flags are true exactly for Y, each at its place") {
    for (const auto& field : kFlags) {
        CAPTURE(field.element);
        checkFlag([&](const ParseValue& value) {
            return ((*bankingIn(field.aggregate, field.element, value)).*field.get)();
        });
        const std::string_view elsewhere = *field.aggregate != '\0' ? "" : "XFERPROF";
        CHECK_FALSE(((*bankingIn(elsewhere, field.element, "Y")).*field.get)());
    }
}

TEST_CASE("the banking integers are the leading integers of their texts") {
    for (const auto& field : kIntegers) {
        CAPTURE(field.element);
        checkInteger([&](const ParseValue& value) {
            return ((*bankingIn(field.aggregate, field.element, value)).*field.get)();
        });
    }
}

TEST_CASE("the days without processing are one or several texts in document order") {
    checkList([](const ParseValue& value) {
        return bankingIn("XFERPROF", "PROCDAYSOFF", value)->noProcessingDays();
    });
    CHECK(bankingIn(parsed("<XFERPROF><PROCDAYSOFF>SATURDAY</XFERPROF>"))->noProcessingDays() ==
          std::vector<ParseValue>{"SATURDAY"});
    CHECK(bankingIn(parsed("<XFERPROF><PROCDAYSOFF>SATURDAY<PROCDAYSOFF>SUNDAY</XFERPROF>"))
              ->noProcessingDays() == std::vector<ParseValue>{"SATURDAY", "SUNDAY"});
}

TEST_CASE("the end of processing is a text and not converted") {
    checkText([](const ParseValue& value) {
        const auto banking = bankingIn("XFERPROF", "PROCENDTM", value);
        const OptionalText text = banking->processingEndTime();
        return text ? std::optional(std::string(*text)) : std::nullopt;
    });
    CHECK(shown(bankingIn("XFERPROF", "PROCENDTM", "170000[-5:EST]")->processingEndTime()) ==
          "170000[-5:EST]");
}

TEST_CASE("banking options that are no aggregates are not read") {
    const ParseDictionary transfers{{"CANSCHED", "Y"}, {"PROCENDTM", "17"}};
    checkDefaults(*bankingIn(ParseDictionary{{"XFERPROF", "Y"}, {"EMAILPROF", "Y"}}));
    checkDefaults(*bankingIn(ParseDictionary{{"XFERPROF", ParseValue::array({transfers, transfers})}}));
    checkDefaults(*bankingIn(std::nullopt));
    checkDefaults(Banking());
}

TEST_CASE("account types without support and options on stopping checks are not read") {
    checkDefaults(*bankingIn(
        parsed("<INVALIDACCTTYPE>CHECKING<STPCHKPROF><PROCDAYSOFF>SUNDAY<PROCENDTM>17<CANUSERANGE>Y"
               "<CANUSEDESC>Y<STPCHKFEE>5</STPCHKPROF>")));
    CHECK(bankingIn(parsed("<INVALIDACCTTYPE>CHECKING"))->description() == Banking().description());
}

TEST_CASE("every banking option can be set") {
    for (const auto& field : kFlags) {
        CAPTURE(field.element);
        Banking banking;
        (banking.*field.set)(true);
        for (const auto& other : kFlags) CHECK((banking.*other.get)() == (field.element == other.element));
    }
    for (const auto& field : kIntegers) {
        CAPTURE(field.element);
        Banking banking;
        (banking.*field.set)(-5);
        for (const auto& other : kIntegers)
            CHECK((banking.*other.get)() == (field.element == other.element ? -5 : 0));
    }
    Banking banking;
    banking.setNoProcessingDays(std::vector<ParseValue>{"SUNDAY"});
    CHECK(banking.noProcessingDays() == std::vector<ParseValue>{"SUNDAY"});
    banking.setProcessingEndTime("17");
    CHECK(shown(banking.processingEndTime()) == "17");
}

TEST_CASE("a banking message set describes all its options") {
    const auto banking = bankingIn(
        parsed("<MSGSETCORE><VER>1</MSGSETCORE><CLOSINGAVAIL>Y"
               "<XFERPROF><PROCDAYSOFF>SATURDAY<PROCDAYSOFF>SUNDAY<PROCENDTM>170000<CANSCHED>Y<CANRECUR>N"
               "<CANMODXFERS>Y<CANMODMDLS>N<MODELWND>3<DAYSWITH>-2<DFLTDAYSTOPAY>5</XFERPROF>"
               "<EMAILPROF><CANEMAIL>Y<CANNOTIFY>N</EMAILPROF>"));
    // The doubled word is intended.
    CHECK(banking->description() ==
          "TvOFXMessageSetProfileBanking:\n"
          "MessageSetCore: version:1 security:NONE uses_transport_level_security:NO sync_mode:UNKNOWN"
          " supports_error_recovery:NO"
          "\n   closing statement info available: YES"
          "\n   no processing days: (SATURDAY, SUNDAY)"
          "\n   processing end time: 170000"
          "\n   supports scheduled transfers: YES"
          "\n   supports recurring transfers: NO"
          "\n   supports modify transfers: YES"
          "\n   supports modify models: NO"
          "\n   supports supports email: YES"
          "\n   supports notification: NO"
          "\n   model window: 3"
          "\n   days with: -2"
          "\n   default number of days to pay: 5");
}

TEST_CASE("a banking message set with a core alone has no options") {
    const auto banking = bankingIn(parsed("<MSGSETCORE><VER>1</MSGSETCORE>"));
    checkDefaults(*banking);
    CHECK(banking->description().ends_with(
        "\n   model window: 0\n   days with: 0\n   default number of days to pay: 0"));
}

TEST_CASE("a banking message set without fields describes its flags and integers") {
    Banking banking;
    const std::string text =
        "TvOFXMessageSetProfileBanking:\n"
        "\n   closing statement info available: NO"
        "\n   supports scheduled transfers: NO"
        "\n   supports recurring transfers: NO"
        "\n   supports modify transfers: NO"
        "\n   supports modify models: NO"
        "\n   supports supports email: NO"
        "\n   supports notification: NO"
        "\n   model window: 0"
        "\n   days with: 0"
        "\n   default number of days to pay: 0";
    CHECK(banking.description() == text);
    banking.setNoProcessingDays(std::vector<ParseValue>{});
    banking.setProcessingEndTime("");
    CHECK(banking.description() == text);
}

TEST_CASE("a single day without processing stands alone in its brackets") {
    CHECK(bankingIn(parsed("<XFERPROF><PROCDAYSOFF>SATURDAY</XFERPROF>"))
              ->description()
              .find("\n   no processing days: (SATURDAY)\n") != std::string::npos);
}
