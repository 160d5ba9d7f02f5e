// SPDX-License-Identifier: Apache-2.0
#include <brackwell/model.h>

#include "fields/ofx_text.h"
#include "tree/node_ref.h"

namespace brackwell {

using reading::element;
using reading::NodeRef;

TvOFXStatus::TvOFXStatus(const std::optional<ParseDictionary>& node) : AggregateClass(node) {
    if (!node) return;
    const NodeRef status = NodeRef::of(*node);
    const auto isPresent = [](const NodeRef& value) { return value.isText() && !value.text().empty(); };
    const NodeRef code = status[element("CODE")];
    const NodeRef severity = status[element("SEVERITY")];
    // A status without code or severity says nothing reliable: its message is not kept either.
    if (!isPresent(code) || !isPresent(severity)) return;
    code_ = static_cast<std::uint64_t>(leadingInteger(code.text()));
    texts_.setLeaf(severity_, *severity.owner, severity.index());
    const NodeRef message = status[element("MESSAGE")];
    if (isPresent(message)) texts_.setLeaf(message_, *message.owner, message.index());
}

std::string TvOFXStatus::description() const {
    std::string text = "Status: " + std::to_string(code_);
    if (severity() && !severity()->empty()) text.append(" [").append(*severity()).append("]");
    if (message() && !message()->empty()) text.append(" - ").append(*message());
    return text;
}

std::string TvOFXStatus::ofxString() const {
    std::string text = "<STATUS>\n";
    // The code's line never has a close tag, whatever the version: intended.
    appendLeaf(text, "CODE", std::to_string(code_), 0);
    if (severity() && !severity()->empty()) appendLeaf(text, "SEVERITY", *severity(), ofxVersion());
    if (message() && !message()->empty()) appendLeaf(text, "MESSAGE", *message(), ofxVersion());
    return text.append("</STATUS>\n");
}

std::string_view TvOFXStatus::className() const noexcept { return "TvOFXStatus"; }

}  // namespace brackwell
