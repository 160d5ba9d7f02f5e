// SPDX-License-Identifier: Apache-2.0
#include "json/responses.h"

#include <string_view>

#include "filter/filter.h"
#include "json/accounts.h"
#include "json/fields.h"
#include "json/profile.h"
#include "json/statements.h"

namespace tool {
namespace {

/// What the responses of a class have besides what all responses have.
struct ResponseClass {
    std::string_view name;
    void (*writeFields)(JsonWriter&, const brackwell::TvOFXResponse&, const Choice&);
};

constexpr ResponseClass kResponseClasses[] = {
    {"TvOFXStatementResponse", writeStatementFields},
    {"TvOFXCCStatementResponse", writeCCStatementFields},
    {"TvOFXAccountInfoResponse", writeAccountInfoFields},
    {"TvOFXSignOnResponse", writeSignOnFields},
    {"TvOFXFIProfileResponse", writeProfileFields},
};

}  // namespace

void writeMessage(JsonWriter& json, const brackwell::TvOFXMessage& message) {
    json.beginObject();
    writeField(json, "headerVersion", message.headerVersion());
    writeField(json, "ofxVersion", message.ofxVersion());
    writeField(json, "ofxSecurity", message.ofxSecurity());
    writeField(json, "headerData", message.headerData());
    writeField(json, "encoding", message.encoding());
    writeField(json, "charset", message.charset());
    writeField(json, "oldFileUID", message.oldFileUID());
    writeField(json, "nuFileUID", message.nuFileUID());
    writeField(json, "compression", message.compression());
    json.endObject();
}

void writeStatus(JsonWriter& json, const brackwell::TvOFXStatus& status) {
    json.beginObject();
    writeField(json, "code", status.code());
    writeField(json, "severity", status.severity());
    writeField(json, "message", status.message());
    json.endObject();
}

void writeResponse(JsonWriter& json, const brackwell::TvOFXResponse& response, const Choice& choice) {
    const auto* statement = dynamic_cast<const brackwell::TvOFXAccountStatement*>(&response);
    if (statement != nullptr && !choice.filter.takes(*statement)) return;
    json.beginObject();
    writeField(json, "class", response.className());
    writeField(json, "transactionWrapperName", response.transactionWrapperName());
    writeField(json, "transactionUID", response.transactionUID());
    writeField(json, "status", response.status(), writeStatus);
    for (const ResponseClass& known : kResponseClasses)
        if (known.name == response.className()) known.writeFields(json, response, choice);
    json.endObject();
}

}  // namespace tool
