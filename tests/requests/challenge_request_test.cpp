// SPDX-License-Identifier: Apache-2.0
#include <brackwell/requests.h>
#include <doctest/doctest.h>

using namespace brackwell;

TEST_CASE("a challenge request has no text of its own") {
    TvOFXChallengeRequest request;
    CHECK(request.ofxString() == "");
    request.setOfxVersion(211);
    CHECK(request.ofxString() == "");
}

TEST_CASE("a challenge request renders parse data that it is given") {
    TvOFXChallengeRequest request;
    request.setOriginalParseData(ParseDictionary{{"USERID", "mreyes"}});
    CHECK(request.ofxString() == "<USERID>mreyes\n");
}
