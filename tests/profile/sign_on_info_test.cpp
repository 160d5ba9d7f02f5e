// SPDX-License-Identifier: Apache-2.0
#include <brackwell/profile.h>

#include "profile/reading_rules.h"
#include "profile/same_archive.h"
#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using Info = TvOFXSignOnInfo;

std::shared_ptr<Info> signOnInfoIn(const std::optional<ParseDictionary>& node) {
    return Info::initWithParseDict(node);
}

std::string described(const char* element, const ParseValue& value) {
    return signOnInfoIn(ParseDictionary{{element, value}})->description();
}

const std::string kDefaults =
    "TvOFXSignOnInfo"
    "\n   minPasswordChars = 0"
    "\n   maxPasswordChars = 0"
    "\n   allowedPasswordChars = unknown"
    "\n   password is case sensitive = NO"
    "\n   password allows special chars = NO"
    "\n   password allows spaces = NO"
    "\n   password change allowed = NO"
    "\n   password change required on first login = NO"
    "\n   client uid required = NO"
    "\n   auth token required = NO"
    "\n   mfa supported = NO"
    "\n   mfa challenge required = NO";

}  // namespace

TEST_CASE("a realm reads the rules for passwords") {
    const auto info = signOnInfoIn(
        parsed("<SIGNONREALM>MyRealm<MIN>4<MAX>32<CHARTYPE>ALPHAANDNUMERIC<CASESEN>N<SPECIAL>Y<SPACES>N"
               "<PINCH>Y<CHGPINFIRST>N"));
    CHECK(shown(info->signonRealm()) == "MyRealm");
    CHECK(info->minPasswordChars() == 4);
    CHECK(info->maxPasswordChars() == 32);
    CHECK(info->allowedPasswordCharacters() == TvOFXCharacterSetAlphaAndNumeric);
    CHECK_FALSE(info->passwordIsCaseSensitive());
    CHECK(info->passwordAllowsSpecialChars());
    CHECK_FALSE(info->passwordAllowsSpaces());
    CHECK(info->passwordChangeAllowed());
    CHECK_FALSE(info->passwordChangeRequiredAtFirstSignon());
    CHECK(info->className() == "TvOFXSignOnInfo");
    CHECK(info->description().find("= alpha and numeric\n") != std::string::npos);
}

TEST_CASE("a realm without elements has its defaults") {
    for (const auto& info :
         {std::make_shared<Info>(), signOnInfoIn(std::nullopt), signOnInfoIn(ParseDictionary{}),
          signOnInfoIn(ParseDictionary{{"min", "4"}, {"OTHER", "Y"}})}) {
        CHECK_FALSE(info->signonRealm());
        CHECK(info->minPasswordChars() == 0);
        CHECK(info->maxPasswordChars() == 0);
        CHECK(info->allowedPasswordCharacters() == TvOFXCharacterSetUnknown);
        CHECK(info->description() == kDefaults);
    }
}

TEST_CASE("a realm's flags are true exactly for Y") {
    struct Row {
        const char* element;
        const char* label;
    };
    for (const Row& row :
         {Row{"CASESEN", "password is case sensitive"}, Row{"SPECIAL", "password allows special chars"},
          Row{"SPACES", "password allows spaces"}, Row{"PINCH", "password change allowed"},
          Row{"CHGPINFIRST", "password change required on first login"},
          Row{"CLIENTUIDREQ", "client uid required"}, Row{"AUTHTOKENFIRST", "auth token required"},
          Row{"MFACHALLENGESUPT", "mfa supported"}, Row{"MFACHALLENGEFIRST", "mfa challenge required"}}) {
        CAPTURE(row.element);
        std::string yes = kDefaults;
        const std::string label = std::string("\n   ") + row.label + " = ";
        yes.replace(yes.find(label + "NO"), label.size() + 2, label + "YES");
        CHECK(described(row.element, "Y") == yes);
        checkFlag([&](const ParseValue& value) {
            const std::string text = described(row.element, value);
            return text.find(label + "YES") != std::string::npos;
        });
    }
}

TEST_CASE("a realm's flags with getters answer what was read") {
    struct Row {
        const char* element;
        bool (Info::*get)() const noexcept;
        void (Info::*set)(bool) noexcept;
    };
    const std::array<Row, 5> rows{
        {{"CASESEN", &Info::passwordIsCaseSensitive, &Info::setPasswordIsCaseSensitive},
         {"SPECIAL", &Info::passwordAllowsSpecialChars, &Info::setPasswordAllowsSpecialChars},
         {"SPACES", &Info::passwordAllowsSpaces, &Info::setPasswordAllowsSpaces},
         {"PINCH", &Info::passwordChangeAllowed, &Info::setPasswordChangeAllowed},
         {"CHGPINFIRST", &Info::passwordChangeRequiredAtFirstSignon,
          &Info::setPasswordChangeRequiredAtFirstSignon}}};
    for (const Row& row : rows) {
        CAPTURE(row.element);
        const auto info = signOnInfoIn(ParseDictionary{{row.element, "Y"}});
        Info made;
        (made.*row.set)(true);
        for (const Row& other : rows) {
            CHECK(((*info).*other.get)() == (row.element == other.element));
            CHECK((made.*other.get)() == (row.element == other.element));
        }
    }
}

TEST_CASE("a realm's limits are the leading integers of their texts, whichever is larger") {
    checkInteger([](const ParseValue& value) {
        return signOnInfoIn(ParseDictionary{{"MIN", value}})->minPasswordChars();
    });
    checkInteger([](const ParseValue& value) {
        return signOnInfoIn(ParseDictionary{{"MAX", value}})->maxPasswordChars();
    });
    const auto info = signOnInfoIn(parsed("<MIN>32<MAX>4"));
    CHECK(info->minPasswordChars() == 32);
    CHECK(info->maxPasswordChars() == 4);
    CHECK(described("MAX", "9").find("\n   minPasswordChars = 0\n   maxPasswordChars = 9\n") !=
          std::string::npos);
}

TEST_CASE("a realm's texts are described as they stand") {
    struct Row {
        const char* element;
        const char* label;
    };
    for (const Row& row :
         {Row{"SIGNONREALM", "signonRealm"}, Row{"USERCRED1LABEL", "user credential text 1"},
          Row{"USERCRED2LABEL", "user credential text 2"}, Row{"AUTHTOKENLABEL", "authToken text"},
          Row{"AUTHTOKENINFOURL", "authToken url"}}) {
        CAPTURE(row.element);
        checkText([&row](const ParseValue& value) -> std::optional<std::string> {
            const std::string text = described(row.element, value);
            const std::string label = std::string("\n   ") + row.label + " = ";
            const std::size_t at = text.find(label);
            if (at == std::string::npos) return std::nullopt;
            const std::size_t begin = at + label.size();
            return text.substr(begin, text.find('\n', begin) - begin);
        });
    }
}

TEST_CASE("a realm's characters are read from exact words") {
    struct Row {
        ParseValue value;
        TvOFXCharacterSet set;
        const char* display;
    };
    const std::vector<Row> rows{
        {"ALPHAORNUMERIC", TvOFXCharacterSetAlphaOrNumeric, "alpha or numeric"},
        {"ALPHAONLY", TvOFXCharacterSetAlphaOnly, "alpha only"},
        {"NUMERICONLY", TvOFXCharacterSetNumericOnly, "numeric"},  // not "numeric only": intended
        {"ALPHAANDNUMERIC", TvOFXCharacterSetAlphaAndNumeric, "alpha and numeric"},
        {"alphaonly", TvOFXCharacterSetUnknown, "unknown"},
        {"", TvOFXCharacterSetUnknown, "unknown"},
        {ParseDictionary{}, TvOFXCharacterSetUnknown, "unknown"},
        {ParseValue::array({"ALPHAONLY", "ALPHAONLY"}), TvOFXCharacterSetUnknown, "unknown"},
    };
    for (const Row& row : rows) {
        CAPTURE(shown(row.value.text()));
        CHECK(signOnInfoIn(ParseDictionary{{"CHARTYPE", row.value}})->allowedPasswordCharacters() == row.set);
        CHECK(Info::ofxCharacterSetToString(row.set) == row.display);
        CHECK(described("CHARTYPE", row.value)
                  .find(std::string("\n   allowedPasswordChars = ") + row.display + "\n") !=
              std::string::npos);
    }
}

TEST_CASE("numbers that are no character set are unknown") {
    for (const std::int32_t number : {5, -1, 1000, std::numeric_limits<std::int32_t>::min()}) {
        CAPTURE(number);
        CHECK(Info::ofxCharacterSetToString(number) == "unknown");
    }
}

TEST_CASE("a realm describes every field, also those without a getter") {
    CHECK(signOnInfoIn(
              parsed("<SIGNONREALM>MyRealm<MIN>4<MAX>32<CHARTYPE>ALPHAONLY<CASESEN>Y<SPECIAL>N<SPACES>Y"
                     "<PINCH>N<CHGPINFIRST>Y<USERCRED1LABEL>Maiden name<USERCRED2LABEL>Town"
                     "<CLIENTUIDREQ>Y<AUTHTOKENFIRST>Y<AUTHTOKENLABEL>Token"
                     "<AUTHTOKENINFOURL>https://token.example<MFACHALLENGESUPT>Y<MFACHALLENGEFIRST>N"))
              ->description() ==
          "TvOFXSignOnInfo"
          "\n   signonRealm = MyRealm"
          "\n   minPasswordChars = 4"
          "\n   maxPasswordChars = 32"
          "\n   allowedPasswordChars = alpha only"
          "\n   password is case sensitive = YES"
          "\n   password allows special chars = NO"
          "\n   password allows spaces = YES"
          "\n   password change allowed = NO"
          "\n   password change required on first login = YES"
          "\n   user credential text 1 = Maiden name"
          "\n   user credential text 2 = Town"
          "\n   client uid required = YES"
          "\n   auth token required = YES"
          "\n   authToken text = Token"
          "\n   authToken url = https://token.example"
          "\n   mfa supported = YES"
          "\n   mfa challenge required = NO");
}

TEST_CASE("a realm's fields can be set") {
    Info info;
    info.setSignonRealm("Realm");
    info.setMinPasswordChars(6);
    info.setMaxPasswordChars(8);
    info.setAllowedPasswordCharacters(TvOFXCharacterSetNumericOnly);
    CHECK(shown(info.signonRealm()) == "Realm");
    CHECK(info.minPasswordChars() == 6);
    CHECK(info.maxPasswordChars() == 8);
    CHECK(info.allowedPasswordCharacters() == TvOFXCharacterSetNumericOnly);
}

TEST_CASE("a realm renders and archives what an aggregate does") {
    const auto info = signOnInfoIn(parsed("<SIGNONREALM>MyRealm<MIN>4"));
    CHECK(info->ofxString() == "<SIGNONREALM>MyRealm\n<MIN>4\n");
    CHECK(archivesLikeItsBase(*info));
}
