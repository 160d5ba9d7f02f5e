// SPDX-License-Identifier: Apache-2.0
#include <doctest/doctest.h>

#include <string_view>

#include "repair/repair.h"

using namespace brackwell;

TEST_CASE("the changes of a repair are the same with and without what remains") {
    for (const std::string_view text : {
             "",
             "\xEF\xBB\xBF",
             "no document",
             "\xFF\xFE",
             "<OFC></OFC>",
             "<OFX><A>1</A></OFX>",
             "<OFX><A>1</A></B></OFX>",
             "<OFX><STMTTRN><NAME>x</STMTRN></OFX>",
             "Dear customer,\n\n <OFX><A>1</A></OFX>",
             "OFXHEADER:100 DATA:OFXSGML\n<ofx><a x=\"1\"><b>1</b></a></ofx>",
             "<OFX>\n<STMTTRN>\n<MEMO>\n<FITID>1\n</STMTTRN></OFX>",
             "<OFX><BANKTRANLIST><STMTTRN><LEDGERBAL><BALAMT>1</LEDGERBAL></X></OFX>",
         }) {
        CAPTURE(text);
        CHECK(repair::changesOfRepair(text) == repairOFXText(text).changes);
    }
}
