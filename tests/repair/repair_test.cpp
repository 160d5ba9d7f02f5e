// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include <algorithm>

#include "repair/tags.h"
#include "support/documents.h"
#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

struct RepairRow {
    std::string text;
    std::string repaired;
    std::vector<RepairKind> kinds;
};

using enum RepairKind;

/// Checks what becomes of texts that do not read, and why.
void checkAll(const std::vector<RepairRow>& rows) {
    for (const RepairRow& row : rows) {
        CAPTURE(row.text);
        const RepairedText repaired = repairOFXText(row.text);
        CHECK(repaired.text == row.repaired);
        std::vector<RepairKind> kinds;
        for (const RepairChange& change : repaired.changes) kinds.push_back(change.kind);
        CHECK(kinds == row.kinds);
    }
}

/// Checks what becomes of the tags of bodies, wherever their elements stand.
void checkTags(const std::vector<RepairRow>& rows) {
    for (const RepairRow& row : rows) {
        CAPTURE(row.text);
        const repair::Edits edits = repair::tagEdits(row.text);
        CHECK(repair::applied(row.text, edits) == row.repaired);
        std::vector<RepairKind> kinds;
        for (const repair::Edit& edit : edits) kinds.push_back(edit.kind);
        CHECK(kinds == row.kinds);
    }
}

/// A close tag that makes a document fail, and becomes that of the document.
const std::string kFails = "</OFXX>";

}  // namespace

TEST_CASE("a text that reads stays as it is, whatever may be said against it") {
    for (const char* text :
         {"<OFX><A>1</A></OFX>", "<OFX><A>1<B>2</OFX>", "<OFX><STMTTRN><NAME>cut o", "<OFX><!-- OK -->x",
          " \n<OFX><MEMO><NAME>x", "\xEF\xBB\xBF<OFX><A>1", "<OFX><A/>x", "<OFX><ofx>1</ofx></OFX>",
          "OFXHEADER:100\n<ofx><a>1</a></ofx><OFX></OFX>", "OFXHEADER:100\n\n<OFX><A >1</OFX>"}) {
        CAPTURE(text);
        const RepairedText repaired = repairOFXText(text);
        CHECK(repaired.text == text);
        CHECK(repaired.changes.empty());
    }
}

TEST_CASE("a text that is no document or not UTF-8 stays as it is") {
    for (const char* text : {"", "Dear customer,", "</A>", "<HTML></BODY></HTML>", "<OFXX></A>",
                             "<OFX>caf\xE9</A></OFX>", "\xFF\xFE<OFX></A>"}) {
        CAPTURE(text);
        CHECK(repairOFXText(text).text == text);
        CHECK(repairOFXText(text).changes.empty());
    }
}

TEST_CASE("every example document stays as it is") {
    for (const char* name : {"checking.ofx", "card.ofx", "household.ofx", "quirks.ofx", "every_element.ofx",
                             "profile.ofx", "extension_names.ofx"}) {
        CAPTURE(name);
        CHECK(repairOFXText(exampleData(name).bytes()).changes.empty());
    }
}

TEST_CASE("comments, instructions and declarations are dropped") {
    checkAll({
        {"<OFX><A>1<!-- OK --></A></OFX>", "<OFX><A>1</A></OFX>", {comment}},
        {"<OFX><STATUS><!-- <CODE>1</CODE> --><CODE>0</STATUS></OFX>",
         "<OFX><STATUS><CODE>0</STATUS></OFX>",
         {comment}},
        {"<OFX><A>1<!-- a > b --></A></OFX>", "<OFX><A>1</A></OFX>", {comment}},
        {"<OFX><A>a<!-- -->b</A></OFX>", "<OFX><A>ab</A></OFX>", {comment}},
        {"<OFX><STATUS><?page 1?><CODE>0</CODE></STATUS></OFX>",
         "<OFX><STATUS><CODE>0</CODE></STATUS></OFX>",
         {instruction}},
        {"<?OFX A=\"1\"?><!DOCTYPE OFX><OFX></OFX>" + kFails,
         "<?OFX A=\"1\"?><OFX></OFX>",
         {instruction, strayClose}},
    });
}

TEST_CASE("a comment that does not end hides nothing") {
    checkAll({
        {"<OFX><STATUS><!-- <CODE>1</CODE></STATUS></OFX>",
         "<OFX><STATUS><CODE>1</CODE></STATUS></OFX>",
         {comment}},
        {"<OFX><STATUS><!-- OK -><CODE>1</CODE></STATUS></OFX>",
         "<OFX><STATUS><CODE>1</CODE></STATUS></OFX>",
         {comment}},
        {"<OFX><A>1</A></B></OFX><!-- cut", "<OFX><A>1</A></OFX>", {strayClose, comment}},
    });
}

TEST_CASE("character data is unwrapped and escaped where that changes its meaning") {
    checkAll({
        {"<OFX><A><![CDATA[x > y]]></A></OFX></B>", "<OFX><A>x > y</A></OFX>", {characterData, strayClose}},
        {"<OFX><A><![CDATA[a < b & c]]></A></OFX>", "<OFX><A>a &lt; b &amp; c</A></OFX>", {characterData}},
        {"<OFX><A><![CDATA[<B>&lt;</B>]]></A></OFX>",
         "<OFX><A>&lt;B>&amp;lt;&lt;/B></A></OFX>",
         {characterData}},
        {"<OFX><A>x<![CDATA[y]]>z</A></OFX>", "<OFX><A>xyz</A></OFX>", {characterData}},
        {"<OFX><A><![CDATA[]]></A></OFX>", "<OFX><A></A></OFX>", {characterData}},
        {"<OFX><A><![CDATA[x</A></OFX>", "<OFX><A>x</A></OFX>", {characterData}},
    });
    const auto tree = parsed(repairOFXText("<OFX><A><![CDATA[<B> &amp; &]]></A></OFX></B>").text);
    CHECK(tree["OFX"]["A"].text() == "<B> &amp; &");
}

TEST_CASE("a \"<\" that begins no tag is text") {
    checkAll({
        {"<OFX><A>a < b</A></OFX>", "<OFX><A>a &lt; b</A></OFX>", {lessThan}},
        {"<OFX><A>a<b</A></OFX>", "<OFX><A>a&lt;b</A></OFX>", {lessThan}},
        {"<OFX><A>1 < 2 > 0</A></OFX>", "<OFX><A>1 &lt; 2 > 0</A></OFX>", {lessThan}},
        {"<OFX><A>a < b > c</A></OFX>", "<OFX><A>a &lt; b > c</A></OFX>", {lessThan}},
        {"<OFX><A><3</A></OFX>", "<OFX><A>&lt;3</A></OFX>", {lessThan}},
        {"<OFX><A>x <> y</A></OFX></B>", "<OFX><A>x &lt;> y</A></OFX>", {lessThan, strayClose}},
        {"<OFX><MEMO>see <b>this</b> now</MEMO></OFX>",
         "<OFX><MEMO>see &lt;b>this&lt;/b> now</MEMO></OFX>",
         {lessThan, lessThan}},
        {"<OFX><MEMO>one<br/>two</MEMO></OFX>", "<OFX><MEMO>one&lt;br/>two</MEMO></OFX>", {lessThan}},
    });
}

TEST_CASE("tags lose their blanks and attributes") {
    checkAll({
        {"<OFX ><A>1</A></OFX>", "<OFX><A>1</A></OFX>", {tagForm}},
        {"<OFX><A>1</ A ></OFX>", "<OFX><A>1</A></OFX>", {tagForm}},
        {"<OFX>< A\n>1</A>" + kFails, "<OFX><A>1</A></OFX>", {tagForm, wrongClose}},
        {"<OFX><A x=\"1\">1</A></OFX>", "<OFX><A>1</A></OFX>", {tagForm}},
    });
}

TEST_CASE("tags in lower case are put into capitals, with or without a header") {
    checkAll({
        {"<ofx><memo>a b</memo></ofx>",
         "<OFX><MEMO>a b</MEMO></OFX>",
         {lowerCaseTag, lowerCaseTag, lowerCaseTag, lowerCaseTag}},
        {"OFXHEADER:100\n\n<ofx><memo>a</ofx>",
         "OFXHEADER:100\n\n<OFX><MEMO>a</OFX>",
         {lowerCaseTag, lowerCaseTag, lowerCaseTag}},
        {"<?xml?><?OFX A=\"1\"?><ofx></ofx>",
         "<?xml?><?OFX A=\"1\"?><OFX></OFX>",
         {lowerCaseTag, lowerCaseTag}},
        {"ofxheader:100\n<ofx><a>1</ofx>",
         "OFXHEADER:100\n<OFX><A>1</OFX>",
         {header, lowerCaseTag, lowerCaseTag, lowerCaseTag}},
        {"<Ofx><A>1</a><bÄ>2</ofx >",
         "<OFX><A>1</A><BÄ>2</OFX>",
         {lowerCaseTag, lowerCaseTag, lowerCaseTag, lowerCaseTag}},
        {"<OFX><note>x</note></OFX></B>", "<OFX><note>x</note></OFX>", {strayClose}},
    });
}

TEST_CASE("tags in lower case are mended like others") {
    checkTags({
        {"<ofx x='1'><stmttrn><memo><name>a</stmttrn><checknum/><status><code>0",
         "<OFX><STMTTRN><MEMO></MEMO><NAME>a</STMTTRN><CHECKNUM></CHECKNUM><STATUS><CODE>0</STATUS></OFX>",
         {lowerCaseTag, lowerCaseTag, lowerCaseTag, emptyLeaf, lowerCaseTag, lowerCaseTag, selfClosedTag,
          lowerCaseTag, lowerCaseTag, missingClose, missingClose}},
        {"<ofx><memo>a<name\n<trnamt>1</trnamnt></ofx><stm",
         "<OFX><MEMO>a<NAME></NAME>\n<TRNAMT>1</TRNAMT></OFX>",
         {lowerCaseTag, lowerCaseTag, lowerCaseTag, emptyLeaf, lowerCaseTag, wrongClose, lowerCaseTag,
          unfinishedTag}},
        {"<ofx><memo>a < b</memo></ofx>",
         "<OFX><MEMO>a &lt; b</MEMO></OFX>",
         {lowerCaseTag, lowerCaseTag, lessThan, lowerCaseTag, lowerCaseTag}},
        {"<ofx><memo><![CDATA[<ofx>]]></memo></ofx>",
         "<OFX><MEMO>&lt;ofx></MEMO></OFX>",
         {lowerCaseTag, lowerCaseTag, characterData, lowerCaseTag, lowerCaseTag}},
    });
}

TEST_CASE("tags without end are completed, and dropped at the end of a document") {
    checkAll({
        {"<OFX><NAME>x<MEMO\n<MEMO>y</MEMO></OFX>",
         "<OFX><NAME>x<MEMO></MEMO>\n<MEMO>y</MEMO></OFX>",
         {unfinishedTag, emptyLeaf}},
        {"<OFX><STATUS><CODE>1</STATUS\n</OFX>", "<OFX><STATUS><CODE>1</STATUS>\n</OFX>", {unfinishedTag}},
        {"<OFX><A>1</B><MEM", "<OFX><A>1</A></OFX>", {wrongClose, unfinishedTag, missingClose}},
        {"<OFX><A>1</B></OF", "<OFX><A>1</A></OFX>", {wrongClose, unfinishedTag, missingClose}},
    });
}

TEST_CASE("self-closed tags become an empty element") {
    checkTags({
        {"<OFX><STMTTRN><CHECKNUM/><NAME>x</STMTTRN></OFX>",
         "<OFX><STMTTRN><CHECKNUM></CHECKNUM><NAME>x</STMTTRN></OFX>",
         {selfClosedTag}},
        {"<OFX><A />x<B>1</C></OFX>", "<OFX><A>x<B>1</B></OFX>", {tagForm, wrongClose}},
    });
}

TEST_CASE("empty leaves are closed") {
    checkTags({
        {"<OFX><STMTTRN><MEMO>\n</STMTTRN></OFX>",
         "<OFX><STMTTRN><MEMO></MEMO>\n</STMTTRN></OFX>",
         {emptyLeaf}},
        {"<OFX><LEDGERBAL><BALAMT><DTASOF>2024</LEDGERBAL></OFX>",
         "<OFX><LEDGERBAL><BALAMT></BALAMT><DTASOF>2024</LEDGERBAL></OFX>",
         {emptyLeaf}},
        {"<OFX><STMTTRN><X.NOTE><NAME>n</STMTTRN></OFX>",
         "<OFX><STMTTRN><X.NOTE></X.NOTE><NAME>n</STMTTRN></OFX>",
         {emptyLeaf}},
    });
}

TEST_CASE("an element without text and close tag is an aggregate when the document has one of its name") {
    checkTags({
        {"<OFX><X><B>1<C>2</X><X><B>3</OFX>", "<OFX><X><B>1<C>2</X><X><B>3</X></OFX>", {missingClose}},
        {"<OFX><X><B>1<C>2</X><X>y<X><B>3</OFX>", "<OFX><X><B>1<C>2</X><X>y<X></X><B>3</OFX>", {emptyLeaf}},
        {"<OFX><LEDGERBAL><DTASOF>1</OFX>", "<OFX><LEDGERBAL><DTASOF>1</LEDGERBAL></OFX>", {missingClose}},
        {"<OFX><stmttrn><name>1</OFX>",
         "<OFX><STMTTRN><NAME>1</STMTTRN></OFX>",
         {lowerCaseTag, lowerCaseTag, missingClose}},
    });
}

TEST_CASE("missing close tags of aggregates are put in") {
    checkTags({
        {"<OFX><STATUS><CODE>0</OFX>", "<OFX><STATUS><CODE>0</STATUS></OFX>", {missingClose}},
        {"<OFX><BANKTRANLIST><STMTTRN><NAME>a<STMTTRN><NAME>b</STMTTRN></BANKTRANLIST></OFX>",
         "<OFX><BANKTRANLIST><STMTTRN><NAME>a</STMTTRN><STMTTRN><NAME>b</STMTTRN></BANKTRANLIST></OFX>",
         {missingClose}},
        {"<OFX><A>1</B><BANKTRANLIST><STMTTRN><NAME>a<MEMO>cut of",
         "<OFX><A>1</A><BANKTRANLIST><STMTTRN><NAME>a<MEMO>cut of</STMTTRN></BANKTRANLIST></OFX>",
         {wrongClose, missingClose, missingClose, missingClose}},
    });
}

TEST_CASE("crossed close tags are put right") {
    checkTags({
        {"<OFX><BANKTRANLIST><STMTTRN><NAME>a</BANKTRANLIST></STMTTRN></OFX>",
         "<OFX><BANKTRANLIST><STMTTRN><NAME>a</STMTTRN></BANKTRANLIST></OFX>",
         {missingClose, strayClose}},
    });
}

TEST_CASE("misspelt close tags are corrected") {
    checkTags({
        {"<OFX><CCSTMTRS><CURDEF>USD</CURDEF></STMTRS></OFX>",
         "<OFX><CCSTMTRS><CURDEF>USD</CURDEF></CCSTMTRS></OFX>",
         {wrongClose}},
        {"<OFX><CCSTMTRS><CURDEF>USD</STMTRS></OFX>",
         "<OFX><CCSTMTRS><CURDEF>USD</CCSTMTRS></OFX>",
         {wrongClose}},
        {"<OFX><STMTTRN><NAME>x</NMAE></STMTTRN></OFX>",
         "<OFX><STMTTRN><NAME>x</NAME></STMTTRN></OFX>",
         {wrongClose}},
        {"<OFX><STMTTRN><NAME>x</MEMO><MEMO>y</MEMO></STMTTRN></OFX>",
         "<OFX><STMTTRN><NAME>x</NAME><MEMO>y</MEMO></STMTTRN></OFX>",
         {wrongClose}},
        {"<OFX><NAME>x</name></OFX>", "<OFX><NAME>x</NAME></OFX>", {wrongClose}},
        {"<OFX><A>1</></OFX></B>", "<OFX><A>1</A></OFX>", {wrongClose, strayClose}},
    });
}

TEST_CASE("close tags without open tag are dropped, unless a text waits for one") {
    checkTags({
        {"<OFX><A>1</A></A></OFX>", "<OFX><A>1</A></OFX>", {strayClose}},
        {"<OFX><STMTRS><A>1</A></BANKTRANLIST></STMTRS></OFX>",
         "<OFX><STMTRS><A>1</A></STMTRS></OFX>",
         {strayClose}},
        {"<OFX><A>1</A>2</B></OFX>", "<OFX><A>1</A><B>2</B></OFX>", {missingOpen}},
        {"<OFX><STMTTRN>\n DEBIT</TRNTYPE><NAME>x</NAME></STMTTRN></OFX>",
         "<OFX><STMTTRN>\n <TRNTYPE>DEBIT</TRNTYPE><NAME>x</NAME></STMTTRN></OFX>",
         {missingOpen}},
        {"<OFX><NAME>x</MEMO></NAME></OFX>", "<OFX><NAME>x</NAME></OFX>", {wrongClose, strayClose}},
    });
}

TEST_CASE("an aggregate without open tag is opened before the first element that belongs in it") {
    const std::string first = "<STMTTRN><TRNAMT>1<NAME>a</STMTTRN>\n";
    const std::string last = "</BANKTRANLIST></OFX>";
    checkTags({
        {"<OFX><BANKTRANLIST>" + first + "<TRNAMT>2<NAME>b</STMTTRN><TRNAMT>3<MEMO></STMTTRN>" + last,
         "<OFX><BANKTRANLIST><STMTTRN><TRNAMT>1<NAME>a</STMTTRN>\n<STMTTRN><TRNAMT>2<NAME>b</STMTTRN>"
         "<STMTTRN><TRNAMT>3<MEMO></MEMO></STMTTRN>" +
             last,
         {missingOpen, missingOpen, emptyLeaf}},
        {"<OFX><INVBUY><TOTAL>1<CURRATE>2<CURSYM>EUR</CURRENCY></INVBUY></OFX>",
         "<OFX><INVBUY><TOTAL>1<CURRENCY><CURRATE>2<CURSYM>EUR</CURRENCY></INVBUY></OFX>",
         {missingOpen}},
        {"<OFX><STATUS><CODE>0</STATUS><CURDEF>EUR</CURDEF></STATUS></OFX>",
         "<OFX><STATUS><CODE>0</STATUS><CURDEF>EUR</CURDEF></OFX>",
         {strayClose}},
        {"<OFX><STATUS><CODE>0</STATUS></STATUS></OFX>", "<OFX><STATUS><CODE>0</STATUS></OFX>", {strayClose}},
    });
}

TEST_CASE("an aggregate whose open tag is misspelt, and holds nothing, gets its name") {
    checkTags({
        {"<OFX><BANKTRANLIST><STMTRN><TRNAMT>2</STMTTRN></BANKTRANLIST></OFX>",
         "<OFX><BANKTRANLIST><STMTTRN><TRNAMT>2</STMTTRN></BANKTRANLIST></OFX>",
         {wrongName}},
        {"<OFX><BANKTRANLIST><STMTRN ><TRNAMT>2</STMTTRN></BANKTRANLIST></OFX>",
         "<OFX><BANKTRANLIST><STMTTRN><TRNAMT>2</STMTTRN></BANKTRANLIST></OFX>",
         {wrongName}},
        {"<OFX><BANKTRANLIST><X.FLAG><TRNAMT>2</STMTTRN></BANKTRANLIST></OFX>",
         "<OFX><BANKTRANLIST><X.FLAG></X.FLAG><STMTTRN><TRNAMT>2</STMTTRN></BANKTRANLIST></OFX>",
         {emptyLeaf, missingOpen}},
        {"<OFX><BANKTRANLIST><STMTRN>x<TRNAMT>2</STMTTRN></BANKTRANLIST></OFX>",
         "<OFX><BANKTRANLIST><STMTRN>x<STMTTRN><TRNAMT>2</STMTTRN></BANKTRANLIST></OFX>",
         {missingOpen}},
        {"<OFX><BANKTRANLIST><STMTRN></STMTRN><TRNAMT>2</STMTTRN></BANKTRANLIST></OFX>",
         "<OFX><BANKTRANLIST><STMTRN></STMTRN><STMTTRN><TRNAMT>2</STMTTRN></BANKTRANLIST></OFX>",
         {missingOpen}},
    });
}

TEST_CASE("a close tag that has lost its slash gets it back") {
    const std::string first = "<STMTTRN><TRNAMT>1<NAME>a";
    checkTags({
        {"<OFX><BANKTRANLIST>" + first + "<STMTTRN></BANKTRANLIST></OFX>",
         "<OFX><BANKTRANLIST>" + first + "</STMTTRN></BANKTRANLIST></OFX>",
         {wrongClose}},
        {"<OFX><BANKTRANLIST>" + first + "<STMTTRN><STMTTRN><TRNAMT>2</STMTTRN></BANKTRANLIST></OFX>",
         "<OFX><BANKTRANLIST>" + first + "</STMTTRN><STMTTRN><TRNAMT>2</STMTTRN></BANKTRANLIST></OFX>",
         {wrongClose}},
        {"<OFX><SONRS><STATUS><CODE>0<STATUS><DTSERVER>1</SONRS></OFX>",
         "<OFX><SONRS><STATUS><CODE>0</STATUS><DTSERVER>1</SONRS></OFX>",
         {wrongClose}},
        {"<OFX><STMTTRN><CURRENCY><CURRATE>1<CURRENCY><MEMO>x</STMTTRN></OFX>",
         "<OFX><STMTTRN><CURRENCY><CURRATE>1</CURRENCY><MEMO>x</STMTTRN></OFX>",
         {wrongClose}},
        // What follows belongs in it, or may.
        {"<OFX><BANKTRANLIST>" + first + "<STMTTRN><TRNAMT>2</BANKTRANLIST></OFX>",
         "<OFX><BANKTRANLIST>" + first + "</STMTTRN><STMTTRN><TRNAMT>2</STMTTRN></BANKTRANLIST></OFX>",
         {missingClose, missingClose}},
        {"<OFX><BANKTRANLIST>" + first + "<STMTTRN><X.A>2</BANKTRANLIST></OFX>",
         "<OFX><BANKTRANLIST>" + first + "</STMTTRN><STMTTRN><X.A>2</STMTTRN></BANKTRANLIST></OFX>",
         {missingClose, missingClose}},
        {"<OFX><BANKTRANLIST>" + first + "<STMTTRN>",
         "<OFX><BANKTRANLIST>" + first + "</STMTTRN><STMTTRN></STMTTRN></BANKTRANLIST></OFX>",
         {missingClose, missingClose, missingClose, missingClose}},
        // It has a close tag of its own.
        {"<OFX><SONRS><STATUS><CODE>0<STATUS><DTSERVER>1</STATUS></SONRS></OFX>",
         "<OFX><SONRS><STATUS><CODE>0</STATUS><STATUS><DTSERVER>1</STATUS></SONRS></OFX>",
         {missingClose}},
    });
}

TEST_CASE("a close tag with a value after it is an open tag") {
    checkTags({
        {"<OFX><STMTTRN></NAME>x\n<MEMO>y</STMTTRN></OFX>",
         "<OFX><STMTTRN><NAME>x\n<MEMO>y</STMTTRN></OFX>",
         {wrongClose}},
        {"<OFX><STMTTRN><NAME>x</MEMO>y</MEMO></STMTTRN></OFX>",
         "<OFX><STMTTRN><NAME>x<MEMO>y</MEMO></STMTTRN></OFX>",
         {wrongClose}},
        {"<OFX></X.NOTE>x<X.NOTE></OFX>", "<OFX><X.NOTE>x<X.NOTE></X.NOTE></OFX>", {wrongClose, emptyLeaf}},
        {"<OFX><NAME>x</NMAE>y<MEMO>z</OFX>", "<OFX><NAME>x</NAME>y<MEMO>z</OFX>", {wrongClose}},
        {"<OFX><A>1</A></OFX></B>x", "<OFX><A>1</A></OFX>x", {strayClose}},
    });
}

TEST_CASE("a close tag without open tag closes nothing that the end of the document cuts off") {
    checkTags({
        {"<OFX><STATUS><CODE>0</STATUS></CCSTMTRS><STATUS><CODE>1</STATUS>",
         "<OFX><STATUS><CODE>0</STATUS><STATUS><CODE>1</STATUS></OFX>",
         {strayClose, missingClose}},
        {"<OFX><BANKTRANLIST><STMTTRN><NAME>a</STMTTRN></STMTRS><STMTTRN><NAME>b",
         "<OFX><BANKTRANLIST><STMTTRN><NAME>a</STMTTRN><STMTTRN><NAME>b</STMTTRN></BANKTRANLIST></OFX>",
         {strayClose, missingClose, missingClose, missingClose}},
        {"<OFX><CCACCTFROM><ACCTID>1</ACCTID></BANKACCTFROM></OFX>",
         "<OFX><CCACCTFROM><ACCTID>1</ACCTID></CCACCTFROM></OFX>",
         {wrongClose}},
    });
}

TEST_CASE("a leaf that is called like its aggregate does without a close tag") {
    checkAll({
        {"<OFX><A><A>1</A></A></OFX>", "<OFX><A><A>1</A></OFX>", {strayClose}},
        {"<OFX><INTU.A><A>1</A></INTU.A></OFX>", "<OFX><INTU.A><A>1</INTU.A></OFX>", {strayClose}},
    });
}

TEST_CASE("extension names are closed without their prefix") {
    checkAll({
        {"<OFX><INTU.A><B>1</A></B></OFX>", "<OFX><INTU.A><B>1</A></OFX>", {strayClose}},
        {"<OFX><INTU.X><MEMO></X></OFX>", "<OFX><INTU.X><MEMO></MEMO></X></OFX>", {emptyLeaf}},
    });
}

TEST_CASE("what stands before a document is dropped when it hides it") {
    checkAll({
        {"Content-Type: x\n\n<OFX><A>1</OFX>", "<OFX><A>1</OFX>", {textBeforeDocument}},
        {"x OFXHEADER:100\n<OFX><MEMO></OFX>",
         "OFXHEADER:100\n<OFX><MEMO></MEMO></OFX>",
         {textBeforeDocument, emptyLeaf}},
        {"x<OFX ><A>1</OFX>", "<OFX><A>1</OFX>", {textBeforeDocument, tagForm}},
        {"your <OFX> file:\nOFXHEADER:100\n\n<OFX>\n<A>1</OFX>",
         "OFXHEADER:100\n\n<OFX>\n<A>1</OFX>",
         {textBeforeDocument}},
        {"your <ofx> file:\n<ofx>\n<A>1</ofx>",
         "<OFX>\n<A>1</OFX>",
         {textBeforeDocument, lowerCaseTag, lowerCaseTag}},
        {"x<OFX >1</OFX>", "<OFX>1</OFX>", {textBeforeDocument, tagForm}},
        {"x<OFX\n\ta='1'><A>1</OFX>", "<OFX><A>1</OFX>", {textBeforeDocument, tagForm}},
        {"x<ofx\ta='1'><A>1</ofx>", "<OFX><A>1</OFX>", {textBeforeDocument, lowerCaseTag, lowerCaseTag}},
        {"x<ofx><A>see OFXHEADER: < <?xml</ofx>",
         "<OFX><A>see OFXHEADER: &lt; &lt;?xml</OFX>",
         {textBeforeDocument, lowerCaseTag, lessThan, lessThan, lowerCaseTag}},
    });
}

TEST_CASE("a change says where it is, what was there and what is there now") {
    const RepairedText repaired =
        repairOFXText("OFXHEADER:100\r\n\r\n<OFX>\n  <NAME>\u00C4\u20AC <!-- c --> x</NAM>\r<MEMO>\n</OFX>");
    CHECK(repaired.changes ==
          std::vector<RepairChange>{
              {comment, 37, 4, 12, "<!-- c -->", ""},
              {wrongClose, 49, 4, 24, "</NAM>", "</NAME>", "<NAME> is the element that ends here"},
              {emptyLeaf, 62, 5, 7, "", "</MEMO>", "<MEMO> has neither a text nor a close tag"}});
    CHECK(repaired.text ==
          "OFXHEADER:100\r\n\r\n<OFX>\n  <NAME>\u00C4\u20AC  x</NAME>\r<MEMO></MEMO>\n</OFX>");
}

TEST_CASE("every kind of change has words of its own") {
    std::vector<std::string_view> words;
    for (int kind = 0; kind <= static_cast<int>(wrongName); ++kind)
        words.push_back(describe(static_cast<RepairKind>(kind)));
    std::sort(words.begin(), words.end());
    CHECK_FALSE(words.front().empty());
    CHECK(std::adjacent_find(words.begin(), words.end()) == words.end());
}

TEST_CASE("a statement in lower case imports like the same one in capitals") {
    const std::string capitals(exampleData("checking.ofx").bytes());
    const std::string text = withTagsInLowerCase(capitals);
    CHECK(imported(text)->bankAccountsFound().empty());
    CHECK(repairOFXText(text).text == capitals);
}

TEST_CASE("a repaired statement imports with all of its transactions") {
    const std::string text =
        "OFXHEADER:100\nDATA:OFXSGML\nVERSION:102\n\n<OFX ><BANKMSGSRSV1><STMTTRNRS><TRNUID>1<STMTRS>"
        "<CURDEF>USD<BANKACCTFROM><BANKID>1<ACCTID>2<ACCTTYPE>CHECKING</BANKACCTFROM><BANKTRANLIST>"
        "<!-- two --><STMTTRN><TRNTYPE>DEBIT<TRNAMT>-1.50<FITID>a<CHECKNUM/><NAME><![CDATA[A & B]]><MEMO>"
        "</STMTTRN>\n<STMTTRN><TRNTYPE>DEBIT<TRNAMT>-2.50<FITID>b<MEMO>c < d</STMTRN></BANKTRANLIST>"
        "</STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>";
    CHECK_FALSE(TovanaOFXController::importOFXFileFromData(Data::view(text)));
    const auto message = imported(repairOFXText(text).text);
    REQUIRE(message->bankAccountsFound().size() == 1);
    const auto statement = message->statementsForBankAccount(message->bankAccountsFound().front());
    REQUIRE(statement);
    const auto& transactions = statement->statementTransactions();
    REQUIRE(transactions.size() == 2);
    CHECK(transactions[0]->amount() == Decimal::fromString("-1.50"));
    CHECK(transactions[0]->payeeName() == "A & B");
    CHECK(transactions[1]->memo() == "c < d");
}
