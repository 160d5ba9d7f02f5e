// SPDX-License-Identifier: Apache-2.0
#include <brackwell/model.h>

#include "elements/roles.h"
#include "fields/wrapper_name.h"
#include "tree/node_ref.h"

namespace brackwell {

using reading::element;
using reading::NodeRef;

TvOFXResponse::TvOFXResponse(const std::optional<ParseDictionary>& node) : AggregateClass(node) {
    if (!node) return;
    const NodeRef response = NodeRef::of(*node);
    std::string_view wrapper;
    for (const NodeRef& child : response.children()) {
        if (elements::isWrapper(child.name()))
            wrapper = child.name();  // the last one decides, also when what it should hold is absent
        else if (child.nameID() == element("STATUS") && child.isDictionary())
            status_ = TvOFXStatus::initWithParseDict(child.dictionary());
    }
    if (wrapper.empty()) return;
    setTransactionWrapperName(wrapper);
    const NodeRef uid = response[element("TRNUID")];
    if (uid.isText()) texts_.setLeaf(transactionUID_, *uid.owner, uid.index());
    if (status_) return;  // the wrapper's own one counts
    if (const auto status = (*node)[innerResponseName(wrapper)]["STATUS"].dictionary())
        status_ = TvOFXStatus::initWithParseDict(status);
}

std::string TvOFXResponse::description() const { return "Generic TvOFXResponse."; }

std::string_view TvOFXResponse::className() const noexcept { return "TvOFXResponse"; }

}  // namespace brackwell
