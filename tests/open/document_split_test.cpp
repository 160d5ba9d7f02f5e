// SPDX-License-Identifier: Apache-2.0
#include "open/document_split.h"

#include <doctest/doctest.h>

using namespace brackwell;

TEST_CASE("a file is split where a document ends and another one begins") {
    struct Row {
        std::string why;
        std::vector<std::string> parts;
    };
    for (const Row& row : std::vector<Row>{
             {"nothing", {""}},
             {"no document", {"Dear customer"}},
             {"one", {"OFXHEADER:100\n<OFX></OFX>\n"}},
             {"text around it", {"a<OFX></OFX>b"}},
             {"two with headers", {"OFXHEADER:100\n<OFX></OFX>", "\nOFXHEADER:100\n<OFX></OFX>\n"}},
             {"two without", {"<OFX></OFX>", "<OFX></OFX>"}},
             {"three of all kinds",
              {"<?xml version=\"1.0\"?><?OFX A=\"1\"?><OFX></OFX>", " <?OFX?><OFX></OFX>", "x<ofx></ofx>"}},
             {"the first is cut off", {"OFXHEADER:100\n<OFX><A>1\n", "OFXHEADER:100\n<OFX></OFX>"}},
             {"cut off in a value", {"<OFX><A>-20.00", "OFXHEADER:100\n<OFX></OFX>"}},
             {"cut off before instructions",
              {"<OFX><A>1", "<?xml version=\"1.0\"?>\n<?OFX A=\"1\"?><OFX></OFX>"}},
             {"cut off before a root", {"<OFX><A>1\n", "<OFX><SIGNONMSGSRSV1></OFX>"}},
             {"a root twice at the beginning", {"<OFX>\n<OFX></OFX>"}},
             {"an instruction in a body", {"<OFX><A><?xml version=\"1.0\"?><B>1</A></OFX>"}},
             {"a header's name inside of a text", {"<OFX><A>see OFXHEADER:100</A></OFX>"}},
             {"cut off in a value",
              {"OFXHEADER:100\n<OFX><A>-20.00", "OFXHEADER:100 DATA:OFXSGML\n<OFX></OFX>"}},
             {"cut off before one without a header", {"<OFX><A>1\n", "<OFX>\n<BANKMSGSRSV1></OFX>"}},
             {"the same in small letters", {"<ofx><a>1", "<ofx><bankmsgsrsv1></ofx>"}},
             {"cut off before XML",
              {"<?xml?><?OFX A=\"1\"?><OFX><A>1</A>", "<?xml?>\n<?OFX?>\n<OFX></OFX>", "<?xml?><OFX></OFX>"}},
             {"cut off twice", {"<OFX><A>1", "<?OFX?><OFX><A>2", "<?OFX?><OFX><A></OFX>"}},
             {"a root in a text", {"<OFX><A>see <OFX><B>the end</OFX>"}},
             {"a root in a text before nothing", {"<OFX><A>see <OFX>"}},
             {"a root that stands twice", {"<OFX><OFX><BANKMSGSRSV1></OFX>"}},
             {"an instruction in a body", {"<OFX><A>1<?xml?><B>2</OFX>"}},
             {"no root in the first", {"OFXHEADER:100\n\nOFXHEADER:100\n<OFX></OFX>"}},
         }) {
        CAPTURE(row.why);
        std::string text;
        for (const std::string& part : row.parts) text += part;
        std::vector<std::string> parts;
        for (const TextRange& range : opening::splitIntoDocuments(text))
            parts.push_back(text.substr(range.begin, range.end - range.begin));
        CHECK(parts == row.parts);
    }
}
