// SPDX-License-Identifier: Apache-2.0
#include <brackwell/profile.h>

#include "fields/description.h"
#include "fields/ofx_text.h"
#include "tree/node_ref.h"

namespace brackwell {

using reading::element;
using reading::NodeRef;

TvOFXFinancialInstitutionIdentification::TvOFXFinancialInstitutionIdentification(
    const std::optional<ParseDictionary>& node)
    : AggregateClass(node) {
    if (!node) return;
    // Without a name (ORG) the identifier (FID) is not read either: intended.
    for (const auto& [field, name] : {std::pair(organization_, element("ORG")), {fid_, element("FID")}}) {
        const NodeRef value = NodeRef::of(*node)[name];
        if (!value.isText() || value.text().empty()) return;
        texts_.setLeaf(field, *value.owner, value.index());
    }
}

std::string TvOFXFinancialInstitutionIdentification::description() const {
    std::string text(className());
    return text.append(" = ").append(orAbsent(fid())).append("/").append(orAbsent(organization()));
}

std::string TvOFXFinancialInstitutionIdentification::ofxString() const {
    std::string text = "<FI>\n";
    if (organization() && !organization()->empty()) appendLeaf(text, "ORG", *organization(), ofxVersion());
    if (fid() && !fid()->empty()) appendLeaf(text, "FID", *fid(), ofxVersion());
    return text.append("</FI>\n");
}

std::string_view TvOFXFinancialInstitutionIdentification::className() const noexcept {
    return "TvOFXFinancialInstitutionIdentification";
}

}  // namespace brackwell
