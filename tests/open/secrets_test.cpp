// SPDX-License-Identifier: Apache-2.0
#include <brackwell/open.h>
#include <doctest/doctest.h>

#include <string>
#include <vector>

using namespace brackwell;

namespace {

/// The text with a "*" for each byte of a secret.
std::string veiled(std::string text) {
    for (const TextRange& secret : secretsInOFXText(text))
        for (std::size_t at = secret.begin; at != secret.end; ++at) text[at] = '*';
    return text;
}

}  // namespace

TEST_CASE("the value of each secret is found, in whatever case and with whatever stands around its name") {
    for (const std::string name :
         {"USERKEY", "SESSCOOKIE", "ACCESSKEY", "USERPASS", "NEWUSERPASS", "AUTHTOKEN", "USERCRED1",
          "USERCRED2", "MFAPHRASEA", "userpass", "UserPass", "ofx:USERPASS", "X.Y.ACCESSKEY"}) {
        CAPTURE(name);
        CHECK(veiled("<A>1</A><" + name + ">abc</" + name + ">") ==
              "<A>1</A><" + name + ">***</" + name + ">");
    }
}

TEST_CASE("values of other names are no secrets") {
    for (const std::string name : {"STMTTRN", "USERKE", "SERKEY", "USERID", "NAME", "ACCTID", "USER.PASS",
                                   "UUUUUUUUUUUUUUU", "SESSCOOKI", "AUTHTOKE.N", "MFAPHRASEB"}) {
        CAPTURE(name);
        CHECK(veiled("<" + name + ">abc</" + name + ">") == "<" + name + ">abc</" + name + ">");
    }
}

TEST_CASE("a secret runs to the next tag, whatever its own tag has in it") {
    struct Row {
        std::string text, veiled;
    };
    for (const Row& row : std::vector<Row>{
             {"<USERPASS>a<b<NAME>x", "<USERPASS>***<NAME>x"},
             {"< USERPASS >abc", "< USERPASS >***"},
             {"<\u00A0USERPASS\u3000>abc", "<\u00A0USERPASS\u3000>***"},
             {"<\tUSERPASS x=\"1\">abc<A>", "<\tUSERPASS**********<A>"},
             {"<USERPASSabc", "<USERPASS***"},
             {"<USERPASS_2>abc</A>", "<USERPASS******</A>"},
             {"<USERPASS", "<USERPASS"},
         }) {
        CAPTURE(row.text);
        CHECK(veiled(row.text) == row.veiled);
    }
}
