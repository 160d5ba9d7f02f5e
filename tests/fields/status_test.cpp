// SPDX-License-Identifier: Apache-2.0
#include <brackwell/model.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/shown.h"
#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::shared_ptr<TvOFXStatus> statusOf(std::string_view body) {
    return TvOFXStatus::initWithParseDict(parsed(body));
}

}  // namespace

TEST_CASE("a status reads its code, severity and message") {
    const auto status = statusOf("<CODE>2000<SEVERITY>ERROR<MESSAGE>General error");
    CHECK(status->code() == 2000);
    CHECK(status->severity() == "ERROR");
    CHECK(status->message() == "General error");
    CHECK(status->className() == "TvOFXStatus");
    CHECK(status->originalParseData() ==
          ParseDictionary{{"CODE", "2000"}, {"SEVERITY", "ERROR"}, {"MESSAGE", "General error"}});
}

TEST_CASE("a status is read only with both code and severity, each a text that is not empty") {
    struct Row {
        ParseDictionary node;
        std::uint64_t code;
        std::string_view severity;
        std::string_view message;
    };
    const ParseDictionary leafInside{{"X", "1"}};
    for (const Row& row : std::initializer_list<Row>{
             {{{"CODE", "15"}, {"SEVERITY", "INFO"}}, 15, "INFO", "nothing"},
             {{{"CODE", "15"}, {"SEVERITY", "INFO"}, {"MESSAGE", "m"}}, 15, "INFO", "m"},
             {{{"MESSAGE", "m"}, {"SEVERITY", "INFO"}, {"CODE", "15"}}, 15, "INFO", "m"},
             {{{"CODE", "15"}, {"SEVERITY", "INFO"}, {"MESSAGE", ""}}, 15, "INFO", "nothing"},
             {{{"CODE", "15"}, {"SEVERITY", "INFO"}, {"MESSAGE", leafInside}}, 15, "INFO", "nothing"},
             {{{"CODE", "15"}, {"SEVERITY", "INFO"}, {"MESSAGE", ParseValue::array({"a", "b"})}},
              15,
              "INFO",
              "nothing"},
             {{{"MESSAGE", "m"}}, 0, "nothing", "nothing"},
             {{{"CODE", "15"}, {"MESSAGE", "m"}}, 0, "nothing", "nothing"},
             {{{"SEVERITY", "INFO"}, {"MESSAGE", "m"}}, 0, "nothing", "nothing"},
             {{{"CODE", ""}, {"SEVERITY", "INFO"}, {"MESSAGE", "m"}}, 0, "nothing", "nothing"},
             {{{"CODE", "15"}, {"SEVERITY", ""}, {"MESSAGE", "m"}}, 0, "nothing", "nothing"},
             {{{"CODE", leafInside}, {"SEVERITY", "INFO"}}, 0, "nothing", "nothing"},
             {{{"CODE", ParseDictionary()}, {"SEVERITY", "INFO"}}, 0, "nothing", "nothing"},
             {{{"CODE", "15"}, {"SEVERITY", ParseDictionary()}}, 0, "nothing", "nothing"},
             {{{"CODE", ParseValue::array({"1", "2"})}, {"SEVERITY", "INFO"}}, 0, "nothing", "nothing"},
             {{{"CODE", "15"}, {"SEVERITY", ParseValue::array({"a", "b"})}}, 0, "nothing", "nothing"},
             {{{"code", "15"}, {"severity", "INFO"}}, 0, "nothing", "nothing"},
             {{}, 0, "nothing", "nothing"},
         }) {
        CAPTURE(row.node);
        const auto status = TvOFXStatus::initWithParseDict(row.node);
        CHECK(status->code() == row.code);
        CHECK(shown(status->severity()) == row.severity);
        CHECK(shown(status->message()) == row.message);
        CHECK(status->originalParseData() == row.node);
    }
}

TEST_CASE("a status from no node is empty") {
    const auto status = TvOFXStatus::initWithParseDict(std::nullopt);
    CHECK(status->code() == 0);
    CHECK_FALSE(status->severity());
    CHECK_FALSE(status->message());
    CHECK_FALSE(status->originalParseData());
    CHECK(status->description() == "Status: 0");
    CHECK(TvOFXStatus().description() == "Status: 0");
    CHECK(TvOFXStatus().ofxString() == "<STATUS>\n<CODE>0\n</STATUS>\n");
}

TEST_CASE("a code is the integer that its text begins with") {
    struct Row {
        const char* text;
        std::uint64_t code;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"0", 0},
             {"15500", 15500},
             {"15500x", 15500},
             {"abc", 0},
             {" 12", 12},
             {"+12", 12},
             {"0012", 12},
             {"12 34", 12},
             {"12.9", 12},
             {"x12", 0},
             {"-1", ~std::uint64_t{0}},
             {"9223372036854775807", 9223372036854775807U},
             {"99999999999999999999", 9223372036854775807U},
         }) {
        CAPTURE(row.text);
        const auto status =
            TvOFXStatus::initWithParseDict(ParseDictionary{{"CODE", row.text}, {"SEVERITY", "INFO"}});
        CHECK(status->code() == row.code);
        CHECK(status->severity() == "INFO");
    }
}

TEST_CASE("a severity is kept exactly as received") {
    for (const char* word : {"INFO", "WARN", "ERROR", "info", "anything else", "\u00C4"})
        CHECK(TvOFXStatus(ParseDictionary{{"CODE", "0"}, {"SEVERITY", word}}).severity() == word);
}

TEST_CASE("a status describes itself with the parts that it has") {
    CHECK(statusOf("<CODE>2000<SEVERITY>ERROR<MESSAGE>General error")->description() ==
          "Status: 2000 [ERROR] - General error");
    CHECK(statusOf("<CODE>0<SEVERITY>INFO")->description() == "Status: 0 [INFO]");
    CHECK(statusOf("<MESSAGE>m")->description() == "Status: 0");
    CHECK(statusOf("<CODE>-1<SEVERITY>INFO")->description() == "Status: 18446744073709551615 [INFO]");
}

TEST_CASE("a status is written with close tags from version 200 on, but for the code's line") {
    const auto status = statusOf("<CODE>2000<SEVERITY>ERROR<MESSAGE>General error");
    const std::string open = "<STATUS>\n<CODE>2000\n<SEVERITY>ERROR\n<MESSAGE>General error\n</STATUS>\n";
    const std::string closed =
        "<STATUS>\n<CODE>2000\n<SEVERITY>ERROR</SEVERITY>\n<MESSAGE>General error</MESSAGE>\n</STATUS>\n";
    for (const std::uint64_t version : {0U, 102U, 199U}) {
        status->setOfxVersion(version);
        CHECK(status->ofxString() == open);
    }
    for (const std::uint64_t version : {200U, 211U, 999U}) {
        status->setOfxVersion(version);
        CHECK(status->ofxString() == closed);
    }
}

TEST_CASE("a status without a message is written without its line") {
    const auto status = statusOf("<CODE>0<SEVERITY>INFO");
    CHECK(status->ofxString() == "<STATUS>\n<CODE>0\n<SEVERITY>INFO\n</STATUS>\n");
    status->setOfxVersion(211);
    CHECK(status->ofxString() == "<STATUS>\n<CODE>0\n<SEVERITY>INFO</SEVERITY>\n</STATUS>\n");
}

TEST_CASE("a status's texts are written as they are, without escaping") {
    const auto status = statusOf("<CODE>0<SEVERITY>&lt;I&gt;<MESSAGE>a &lt; b &amp; c");
    CHECK(status->message() == "a < b & c");
    CHECK(status->ofxString() == "<STATUS>\n<CODE>0\n<SEVERITY><I>\n<MESSAGE>a < b & c\n</STATUS>\n");
}

TEST_CASE("a status writes its fields and not its node") {
    const auto status = statusOf("<X>1<CODE>15x<SEVERITY>INFO");
    CHECK(status->ofxString() == "<STATUS>\n<CODE>15\n<SEVERITY>INFO\n</STATUS>\n");
}

TEST_CASE("a status is archived as its node alone") {
    const auto status = statusOf("<CODE>15<SEVERITY>INFO<MESSAGE>m");
    KeyedArchiver coder;
    status->encodeWithCoder(coder);
    KeyedArchiver base;
    TvOFXAggregate(status->originalParseData()).encodeWithCoder(base);
    CHECK(coder.archivedData() == base.archivedData());
}

TEST_CASE("a status keeps its texts when its document is gone") {
    const auto status = [] {
        const std::string body = "<CODE>15<SEVERITY>INFO<MESSAGE>m &amp; n";
        return statusOf(body);
    }();
    CHECK(status->severity() == "INFO");
    CHECK(status->message() == "m & n");
}
