// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>
#include <doctest/doctest.h>

#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

struct CloseTagRow {
    std::string body;
    std::string description;
};

void checkCloseTags(std::initializer_list<CloseTagRow> rows) {
    for (const CloseTagRow& row : rows) {
        CAPTURE(row.body);
        Error error;
        CHECK_FALSE(TvOFXParser::parseOFXDataString(row.body, &error));
        CHECK(error == Error{"Brackwell", 1, row.description, "OFX Parser Error"});
    }
}

}  // namespace

TEST_CASE("a close tag that matches nothing open fails") {
    checkCloseTags({
        {"</A>", "Found close tag </A> without opening tag."},
        {"<A>1</B>", "Found close tag </B> without opening tag."},
        {"<A>1</A></A>", "Found close tag </A> without opening tag."},
        {"<A><B>1</B></A></A>", "Found close tag </A> without opening tag."},
        {"<code>1</CODE>", "Found close tag </CODE> without opening tag."},
        {"</A", "Found close tag </A> without opening tag."},
        {"<A>1</", "Found close tag </> without opening tag."},
    });
}

TEST_CASE("the failure names the innermost aggregate that is open") {
    checkCloseTags({
        {"<STMTRS><BANKTRANLIST><DTSTART>20240101</STMTRS>",
         "Found close tag </STMTRS> without opening tag.\n"
         "Maybe there is a close tag missing for <BANKTRANLIST>"},
        {"<A><B>1</B></C>",
         "Found close tag </C> without opening tag.\nMaybe there is a close tag missing for <A>"},
        {"<A><B></C>",
         "Found close tag </C> without opening tag.\nMaybe there is a close tag missing for <B>"},
        {"<A><B><C>1</C></B><D>2</B>",
         "Found close tag </B> without opening tag.\nMaybe there is a close tag missing for <A>"},
    });
}

TEST_CASE("an aggregate further out cannot be closed before those in it") {
    checkCloseTags({
        {"<A><B><C>1</A></B>",
         "Found close tag </A> without opening tag.\nMaybe there is a close tag missing for <B>"},
        {"<STMTTRN><NAME>x<MEMO>\n</STMTTRN>",
         "Found close tag </STMTTRN> without opening tag.\nMaybe there is a close tag missing for <MEMO>"},
        {"<STMTTRN><MEMO><NAME>x</STMTTRN>",
         "Found close tag </STMTTRN> without opening tag.\nMaybe there is a close tag missing for <MEMO>"},
    });
}

TEST_CASE("a name without the extension prefix is not closed by a name with it") {
    checkCloseTags({
        {"<BID>3000</INTU.BID>", "Found close tag </INTU.BID> without opening tag."},
        {"<X><A>1</A></INTU.X>",
         "Found close tag </INTU.X> without opening tag.\nMaybe there is a close tag missing for <X>"},
        {"<intu.X>1</X>", "Found close tag </X> without opening tag."},
        {"<INTU.INTU.X>1</X>", "Found close tag </X> without opening tag."},
        {"<INTUX>1</X>", "Found close tag </X> without opening tag."},
        {"<ABCD.X>1</X>", "Found close tag </X> without opening tag."},
    });
}

TEST_CASE("the name after the slash is not trimmed again") {
    checkCloseTags({
        {"<B>1</ B>", "Found close tag </ B> without opening tag."},
        {"<B>1< / B >", "Found close tag </ B> without opening tag."},
        {"<B>1</\u00A0B>",
         "Found close tag </\u00A0"
         "B> without opening tag."},
        {"<B>1<//B>", "Found close tag <//B> without opening tag."},
    });
}

TEST_CASE("an empty close tag fails while a name is pending") {
    checkCloseTags({
        {"<A>1</>", "Found close tag </> without opening tag."},
        {"<A>1</ >", "Found close tag </> without opening tag."},
        {"<A></>", "Found close tag </> without opening tag.\nMaybe there is a close tag missing for <A>"},
    });
}

TEST_CASE("the failure tells the name with all that stands in it") {
    const std::string name(1000, 'N');
    checkCloseTags({
        {"<" + name + "><A>1</A></B " + name + ">", "Found close tag </B " + name +
                                                        "> without opening tag.\n"
                                                        "Maybe there is a close tag missing for <" +
                                                        name + ">"},
        {"</a b=\"c\">", "Found close tag </a b=\"c\"> without opening tag."},
        {"</A<B&amp;>", "Found close tag </A<B&amp;> without opening tag."},
    });
}

TEST_CASE("the place for an error is left alone on success and may be absent on failure") {
    Error error{"mine", 7, "untouched", "none"};
    CHECK(TvOFXParser::parseOFXDataString("<A>1</A>", &error));
    CHECK(error == Error{"mine", 7, "untouched", "none"});
    CHECK(TvOFXParser::parseOFXDataString("", &error));
    CHECK(error == Error{"mine", 7, "untouched", "none"});
    CHECK_FALSE(TvOFXParser::parseOFXDataString("</A>"));
}
