// SPDX-License-Identifier: Apache-2.0
#include "report/fact_list.h"

#include "report/amounts.h"
#include "report/html_writer.h"
#include "text/value_text.h"

namespace tool {

using brackwell::OptionalText;

void writeFact(HtmlWriter& html, std::string_view label, OptionalText text) {
    if (!text || text->empty()) return;
    html.write("<div><dt>{}</dt><dd><bdi>{}</bdi></dd></div>\n", label, *text);
}

void writeFact(HtmlWriter& html, std::string_view label, const Period& period) {
    if (!period.first) return;
    html.write("<div><dt>{}</dt><dd><time>{}</time>", label, dayText(period.first));
    if (dayText(period.first) != dayText(period.last))
        html.write(" to <time>{}</time>", dayText(period.last));
    html.write("</dd></div>\n");
}

void writeFlowFacts(HtmlWriter& html, const Flow& flow, OptionalText currency) {
    html.write(
        "<div><dt>In</dt><dd class=\"in\">{}</dd></div>\n"
        "<div><dt>Out</dt><dd class=\"out\">{}</dd></div>\n"
        "<div><dt>Net</dt><dd>{}</dd></div>\n",
        signedAmountText(flow.in, currency), amountText(flow.out, currency),
        signedAmountText(flow.net(), currency));
}

}  // namespace tool
