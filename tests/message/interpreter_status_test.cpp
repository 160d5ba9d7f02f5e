// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include "interpreted_trees.h"
#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

TEST_CASE("a status or identifier of another kind is passed over") {
    TvOFXInterpreter interpreter = over(std::nullopt);
    const auto texts = interpreter.interpretResponseDict(
        ParseDictionary{{"STATUS", "0"}, {"TRNUID", ParseDictionary{{"A", "1"}}}}, "STMTTRNRS");
    CHECK_FALSE(texts->status());
    CHECK(shown(texts->transactionUID()) == "nothing");
    const auto lists = interpreter.interpretResponseDict(
        ParseDictionary{{"STATUS", ParseValue::array({status("0"), status("1")})},
                        {"TRNUID", ParseValue::array({"a", "b"})}},
        "STMTTRNRS");
    CHECK_FALSE(lists->status());
    CHECK(shown(lists->transactionUID()) == "nothing");
    CHECK(interpreter.allStatusObjects().empty());
    CHECK(interpreter.allResponsesWithTransactionUID().empty());
}

TEST_CASE("a status that is not readable is still a status") {
    TvOFXInterpreter interpreter = over(std::nullopt);
    const auto response = interpreter.interpretResponseDict(
        ParseDictionary{{"STATUS", ParseDictionary()}, {"TRNUID", "u"}}, "STMTTRNRS");
    REQUIRE(response->status());
    CHECK(response->status()->code() == 0);
    CHECK(interpreter.allStatusObjects().size() == 1);
}

TEST_CASE("the wrapper's status replaces the one that a response read itself") {
    TvOFXInterpreter interpreter = over(std::nullopt);
    const ParseDictionary inner{{"STATUS", status("5")}};
    const auto replaced = interpreter.interpretResponseDict(
        ParseDictionary{{"STATUS", status("7")}, {"TRNUID", "a"}, {"XRS", inner}}, "XTRNRS");
    CHECK(replaced->status()->code() == 7);
    const auto own =
        interpreter.interpretResponseDict(ParseDictionary{{"TRNUID", "b"}, {"XRS", inner}}, "XTRNRS");
    REQUIRE(own->status());
    CHECK(own->status()->code() == 5);
    CHECK(interpreter.allStatusObjects().find("a")->second == replaced->status());
    CHECK(interpreter.allStatusObjects().find("b")->second == own->status());
}

TEST_CASE("an identifier that a response read itself stays when the wrapper has none") {
    // The response's own walk finds it beside a name that ends in TRNRS.
    TvOFXInterpreter interpreter = over(std::nullopt);
    const ParseDictionary inner{{"YTRNRS", ParseDictionary()}, {"TRNUID", "inner"}};
    const auto own =
        interpreter.interpretResponseDict(ParseDictionary{{"XRS", inner}, {"STATUS", status("0")}}, "XTRNRS");
    CHECK(shown(own->transactionUID()) == "inner");
    CHECK(shown(own->transactionWrapperName()) == "XRS");
    REQUIRE(interpreter.responsesForTransactionUID("inner") != nullptr);
    CHECK(interpreter.allStatusObjects().contains("inner"));
    const auto replaced =
        interpreter.interpretResponseDict(ParseDictionary{{"XRS", inner}, {"TRNUID", "outer"}}, "XTRNRS");
    CHECK(shown(replaced->transactionUID()) == "outer");
    CHECK(interpreter.responsesForTransactionUID("inner")->size() == 1);
}

TEST_CASE("an empty transaction identifier is one, and is kept") {
    TvOFXInterpreter interpreter = over(std::nullopt);
    interpreter.interpretResponseDict(ParseDictionary{{"TRNUID", ""}, {"STATUS", status("0")}}, "STMTTRNRS");
    REQUIRE(interpreter.responsesForTransactionUID("") != nullptr);
    CHECK(interpreter.allStatusObjects().contains(""));
}
