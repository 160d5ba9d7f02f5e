// SPDX-License-Identifier: Apache-2.0
#include <brackwell/profile.h>

#include "fields/description.h"
#include "fields/element_table.h"
#include "fields/ofx_text.h"

namespace brackwell {
namespace {

/// Leaves are never closed, whatever the version: intended.
constexpr std::uint64_t kVersionOfLeaves = 0;

void appendLine(std::string& text, std::string_view name, OptionalText value) {
    appendLeaf(text, name, orAbsent(value), kVersionOfLeaves);
}
/// In the default text form of dates, which OFX cannot read: intended, the text is for inspection.
void appendLine(std::string& text, std::string_view name, std::optional<Date> value) {
    appendLeaf(text, name, orAbsent(value), kVersionOfLeaves);
}
template <class Value>
void appendLineIfPresent(std::string& text, std::string_view name, const Value& value) {
    if (value) appendLine(text, name, value);
}

}  // namespace

struct BRACKWELL_INTERNAL TvOFXSignOnResponse::Elements {
    using Self = TvOFXSignOnResponse;
    static constexpr auto kTable = elementTable<Self>({
        {element("DTSERVER"), date<&Self::dateOfServer_>},
        {element("USERKEY"), text<&Self::texts_, userKey_>},
        {element("TSKEYEXPIRE"), date<&Self::tskeyExpire_>},
        {element("LANGUAGE"), text<&Self::texts_, language_>},
        {element("DTPROFUP"), date<&Self::dateOflastProfileInfoUpdate_>},
        {element("DTACCTUP"), date<&Self::dateOflastAccountInfoUpdate_>},
        {element("FI"), object<&Self::financialInstitutionID_>},
        {element("SESSCOOKIE"), text<&Self::texts_, sessionCookie_>},
        {element("ACCESSKEY"), text<&Self::texts_, accessKey_>},
    });
};

TvOFXSignOnResponse::TvOFXSignOnResponse(const std::optional<ParseDictionary>& node) : AggregateClass(node) {
    if (node) Elements::kTable.read(*this, NodeRef::of(*originalParseData()));
}

std::string TvOFXSignOnResponse::description() const {
    // Keys and cookie stay out, since descriptions end up in logs.
    std::string text = "Sign On Response:";
    if (status()) text.append(" [").append(status()->description()).append("]");
    appendFilled(text, " Language:", language());
    appendPresent(text, " ServerTime:", dateOfServer_);
    if (financialInstitutionID_) text.append(" ").append(financialInstitutionID_->description());
    appendPresent(text, " lastProfileInfoUpdate:", dateOflastProfileInfoUpdate_);
    appendPresent(text, " lastAccountInfoUpdate:", dateOflastAccountInfoUpdate_);
    return text;
}

std::string TvOFXSignOnResponse::ofxString() const {
    std::string text = "<SONRS>\n";
    text.append(status() ? status()->ofxString() : std::string(kAbsent));
    appendLine(text, "DTSERVER", dateOfServer_);
    appendLineIfPresent(text, "USERKEY", userKey());
    appendLineIfPresent(text, "TSKEYEXPIRE", tskeyExpire_);
    appendLine(text, "LANGUAGE", language());
    appendLineIfPresent(text, "DTPROFUP", dateOflastProfileInfoUpdate_);
    appendLineIfPresent(text, "DTACCTUP", dateOflastAccountInfoUpdate_);
    if (financialInstitutionID_) text.append(financialInstitutionID_->ofxString());
    appendLineIfPresent(text, "SESSCOOKIE", sessionCookie());
    appendLineIfPresent(text, "ACCESSKEY", accessKey());
    return text.append("</SONRS>\n");
}

std::string_view TvOFXSignOnResponse::className() const noexcept { return "TvOFXSignOnResponse"; }

}  // namespace brackwell
