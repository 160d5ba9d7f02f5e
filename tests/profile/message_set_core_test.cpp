// SPDX-License-Identifier: Apache-2.0
#include <brackwell/message_sets.h>

#include "profile/reading_rules.h"
#include "profile/same_archive.h"
#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using Core = TvOFXMessageSetCore;

std::shared_ptr<Core> coreIn(const std::optional<ParseDictionary>& node) {
    return Core::initWithParseDict(node);
}

std::shared_ptr<Core> coreIn(const char* element, const ParseValue& value) {
    return coreIn(ParseDictionary{{element, value}});
}

void checkDefaults(const Core& core) {
    CHECK(core.version() == 0);
    CHECK_FALSE(core.serviceProviderName());
    CHECK_FALSE(core.url());
    CHECK(core.security() == TvOFXMessageSetSecurityNone);
    CHECK_FALSE(core.usesTransportLevelSecurity());
    CHECK_FALSE(core.signonRealm());
    CHECK_FALSE(core.languages());
    CHECK(core.syncMode() == TvOFXSyncModeUnknown);
    CHECK_FALSE(core.supportsErrorRecovery());
}

constexpr const char* kEnd = " sync_mode:UNKNOWN supports_error_recovery:NO";

}  // namespace

TEST_CASE("a core reads all its elements") {
    const auto core =
        coreIn(parsed("<VER>1<URL>https://ofx.example/bank<OFXSEC>TYPE1<TRANSPSEC>Y<SIGNONREALM>MyRealm"
                      "<LANGUAGE>ENG<SYNCMODE>FULL<RESPFILEER>Y<SPNAME>Provider"));
    CHECK(core->version() == 1);
    CHECK(shown(core->url()) == "https://ofx.example/bank");
    CHECK(core->security() == TvOFXMessageSetSecurityType1);
    CHECK(core->usesTransportLevelSecurity());
    CHECK(shown(core->signonRealm()) == "MyRealm");
    CHECK(core->languages() == std::vector<ParseValue>{"ENG"});
    CHECK(core->syncMode() == TvOFXSyncModeFull);
    CHECK(core->supportsErrorRecovery());
    CHECK(shown(core->serviceProviderName()) == "Provider");
    CHECK(core->className() == "TvOFXMessageSetCore");
}

TEST_CASE("a core without elements, without a node or made in code has its defaults") {
    checkDefaults(Core());
    checkDefaults(*coreIn(std::nullopt));
    checkDefaults(*coreIn(ParseDictionary{}));
    checkDefaults(*coreIn(ParseDictionary{{"ver", "1"}, {"OTHER", "Y"}}));
}

TEST_CASE("a core's flags are true exactly for Y") {
    checkFlag(
        [](const ParseValue& value) { return coreIn("TRANSPSEC", value)->usesTransportLevelSecurity(); });
    checkFlag([](const ParseValue& value) { return coreIn("RESPFILEER", value)->supportsErrorRecovery(); });
}

TEST_CASE("a core's version is the leading integer of its text") {
    checkInteger([](const ParseValue& value) { return coreIn("VER", value)->version(); });
}

TEST_CASE("a core's texts are kept as they stand") {
    const auto textOf = [](const char* element, OptionalText (Core::*get)() const noexcept) {
        checkText([=](const ParseValue& value) {
            const auto core = coreIn(element, value);
            const OptionalText text = ((*core).*get)();
            return text ? std::optional(std::string(*text)) : std::nullopt;
        });
    };
    textOf("URL", &Core::url);
    textOf("SIGNONREALM", &Core::signonRealm);
    textOf("SPNAME", &Core::serviceProviderName);
}

TEST_CASE("a core's languages are one or several texts in document order") {
    checkList([](const ParseValue& value) { return coreIn("LANGUAGE", value)->languages(); });
    CHECK(coreIn(parsed("<LANGUAGE>ENG<VER>1<LANGUAGE>FRA"))->languages() ==
          std::vector<ParseValue>{"ENG", "FRA"});
}

TEST_CASE("a core's security is read from exact words") {
    struct Row {
        ParseValue value;
        TvOFXMessageSetSecurity security;
    };
    const std::vector<Row> rows{
        {"NONE", TvOFXMessageSetSecurityNone},
        {"TYPE1", TvOFXMessageSetSecurityType1},
        {"TYPE 1", TvOFXMessageSetSecurityType1},  // accepted on purpose
        {"type1", TvOFXMessageSetSecurityNone},
        {"TYPE2", TvOFXMessageSetSecurityNone},
        {"", TvOFXMessageSetSecurityNone},
        {ParseDictionary{}, TvOFXMessageSetSecurityNone},
        {ParseValue::array({"TYPE1", "TYPE1"}), TvOFXMessageSetSecurityNone},
    };
    for (const Row& row : rows) {
        CAPTURE(shown(row.value.text()));
        CHECK(coreIn("OFXSEC", row.value)->security() == row.security);
    }
    CHECK(coreIn("OFXSEC", "type1")->description().find(" security:NONE ") != std::string::npos);
}

TEST_CASE("a core's synchronisation is read from exact words") {
    struct Row {
        ParseValue value;
        TvOFXSyncMode mode;
    };
    const std::vector<Row> rows{
        {"FULL", TvOFXSyncModeFull},
        {"LITE", TvOFXSyncModeLite},
        {"full", TvOFXSyncModeUnknown},
        {"", TvOFXSyncModeUnknown},
        {ParseDictionary{}, TvOFXSyncModeUnknown},
        {ParseValue::array({"FULL", "FULL"}), TvOFXSyncModeUnknown},
    };
    for (const Row& row : rows) {
        CAPTURE(shown(row.value.text()));
        CHECK(coreIn("SYNCMODE", row.value)->syncMode() == row.mode);
    }
}

TEST_CASE("every field of a core can be set") {
    Core core;
    core.setVersion(3);
    core.setServiceProviderName("Provider");
    core.setUrl("https://ofx.example");
    core.setSecurity(TvOFXMessageSetSecurityType1);
    core.setUsesTransportLevelSecurity(true);
    core.setSignonRealm("Realm");
    core.setLanguages(std::vector<ParseValue>{"ENG", "DEU"});
    core.setSyncMode(TvOFXSyncModeLite);
    core.setSupportsErrorRecovery(true);
    CHECK(core.version() == 3);
    CHECK(core.languages() == std::vector<ParseValue>{"ENG", "DEU"});
    CHECK(core.description() ==
          "MessageSetCore: provider:Provider version:3 url:https://ofx.example security:TYPE1"
          " uses_transport_level_security:YES signon_realm:Realm languages:{ENG, DEU} sync_mode:LITE"
          " supports_error_recovery:YES");
}

TEST_CASE("a core describes itself on one line") {
    CHECK(coreIn(parsed("<VER>1<OFXSEC>NONE<TRANSPSEC>Y<SIGNONREALM>MyRealm<LANGUAGE>ENG<SYNCMODE>LITE"
                        "<RESPFILEER>N<SPNAME>Provider"))
              ->description() ==
          "MessageSetCore: provider:Provider version:1 security:NONE uses_transport_level_security:YES"
          " signon_realm:MyRealm languages:{ENG} sync_mode:LITE supports_error_recovery:NO");
}

TEST_CASE("a core without fields describes its defaults") {
    CHECK(Core().description() ==
          std::string("MessageSetCore: security:NONE uses_transport_level_security:NO") + kEnd);
}

TEST_CASE("a core describes texts only when they are not empty, and versions only above zero") {
    Core core;
    const std::string defaults = core.description();
    core.setServiceProviderName("");
    core.setUrl("");
    core.setSignonRealm("");
    core.setLanguages(std::vector<ParseValue>{});
    core.setVersion(-1);
    CHECK(core.description() == defaults);
    CHECK(coreIn("VER", "abc")->description() == defaults);
    CHECK(coreIn("VER", "2a")->description() ==
          std::string("MessageSetCore: version:2 security:NONE uses_transport_level_security:NO") + kEnd);
}

TEST_CASE("a core describes several languages with commas") {
    CHECK(coreIn(parsed("<LANGUAGE>ENG<LANGUAGE>FRA"))->description() ==
          std::string("MessageSetCore: security:NONE uses_transport_level_security:NO languages:{ENG, FRA}") +
              kEnd);
}

TEST_CASE("a core describes a language that is an aggregate by its text, and an absent one as (null)") {
    Core core;
    core.setLanguages(std::vector<ParseValue>{"ENG", ParseDictionary{{"A", "B"}}, ParseValue()});
    CHECK(core.description().find(" languages:{ENG, <A>B\n, (null)}") != std::string::npos);
}

TEST_CASE("a core describes numbers that only a caller sets as UNKNOWN") {
    Core core;
    for (const int number : {-1, 2, 7}) {
        CAPTURE(number);
        core.setSecurity(static_cast<TvOFXMessageSetSecurity>(number));
        CHECK(core.description().find(" security:UNKNOWN ") != std::string::npos);
    }
    for (const int number : {-1, 0, 3}) {
        CAPTURE(number);
        core.setSyncMode(static_cast<TvOFXSyncMode>(number));
        CHECK(core.description().find(" sync_mode:UNKNOWN ") != std::string::npos);
    }
    core.setSyncMode(TvOFXSyncModeFull);
    CHECK(core.description().find(" sync_mode:FULL ") != std::string::npos);
}

TEST_CASE("a core renders and archives what an aggregate does") {
    const auto core = coreIn(parsed("<VER>1<URL>https://ofx.example"));
    CHECK(core->ofxString() == "<VER>1\n<URL>https://ofx.example\n");
    CHECK(archivesLikeItsBase(*core));
    CHECK(Core().ofxString().empty());
}
