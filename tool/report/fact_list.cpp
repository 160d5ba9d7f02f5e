// SPDX-License-Identifier: Apache-2.0
#include "report/fact_list.h"

#include "report/amounts.h"
#include "report/html_writer.h"

namespace tool {

using brackwell::OptionalText;

void writeFact(HtmlWriter& html, std::string_view label, OptionalText text) {
    if (!text || text->empty()) return;
    html.write("<div><dt>{}</dt><dd><bdi>{}</bdi></dd></div>\n", label, *text);
}

void writeFlowFacts(HtmlWriter& html, const Flow& flow) {
    html.write(
        "<div><dt>In</dt><dd class=\"in\">{}</dd></div>\n"
        "<div><dt>Out</dt><dd class=\"out\">{}</dd></div>\n"
        "<div><dt>Net</dt><dd>{}</dd></div>\n",
        signedAmountText(flow.in), amountText(flow.out), signedAmountText(flow.net()));
}

}  // namespace tool
