// SPDX-License-Identifier: Apache-2.0
#include <map>
#include <set>

#include "run.h"
#include "view/page.h"
#include "view/sections.h"

namespace tool {
namespace {

using namespace brackwell;

/// What the institution says besides errors, each message once.
void showMessages(Page& page, const TvOFXResponseList& responses) {
    std::set<std::string> shown;
    const TvOFXResult result(responses);
    for (const auto& message : result.allFIMessages())
        if (shown.insert(message->message()).second) page.fact("Message", message->message());
}

/// The kinds of responses that the library does not take apart, with their number and their errors.
void showOthers(Page& page, const TvOFXResponseList& responses) {
    std::vector<std::pair<std::string_view, std::size_t>> kinds;
    std::map<std::string_view, std::size_t> places;
    for (const auto& response : responses) {
        if (response->className() != "TvOFXResponse") continue;
        const std::string_view name = response->transactionWrapperName().value_or("");
        const auto [place, isNew] = places.try_emplace(name, kinds.size());
        if (isNew) kinds.emplace_back(name, 0);
        ++kinds[place->second].second;
    }
    if (kinds.empty()) return;
    page.heading("Other responses, which are not shown");
    for (const auto& [name, count] : kinds) page.fact(name, std::to_string(count));
    for (const auto& response : responses)
        if (response->className() == "TvOFXResponse" && isTrouble(response->status().get()))
            page.fact(response->transactionWrapperName().value_or(""), shownStatus(*response->status()));
}

void showResponse(Page& page, const TvOFXResponse& response, const Options& options) {
    if (const auto* statement = dynamic_cast<const TvOFXAccountStatement*>(&response))
        showStatement(page, *statement, options);
    else if (const auto* accounts = dynamic_cast<const TvOFXAccountInfoResponse*>(&response))
        showAccountInfo(page, *accounts, options);
    else if (const auto* profile = dynamic_cast<const TvOFXFIProfileResponse*>(&response))
        showProfile(page, *profile);
}

/// True for an XML document of which the library reads nothing, since it has no instruction.
bool lacksInstruction(const Document& document) {
    const std::string_view bytes = document.bytes.bytes();
    return document.content.ofxData->isEmpty() && bytes.find("<?OFX") == bytes.npos &&
           (bytes.find("<?xml") != bytes.npos || bytes.find("<?XML") != bytes.npos);
}

void showNothing(Page& page, const Document& document) {
    page.paragraph("The document has no responses.");
    if (lacksInstruction(document))
        page.paragraph("It is XML without an instruction <?OFX ...?>, so its body counts as empty.");
    if ((*document.content.ofxData)["OFX"].elements().size() > 1)
        page.paragraph("It has several documents in it. Each needs a file of its own.");
}

/// True when there are statements, and none of an account that was asked for.
bool hidesAllStatements(const TvOFXResponseList& responses, const Filter& filter) {
    bool isAny = false;
    for (const auto& response : responses) {
        const auto* statement = dynamic_cast<const TvOFXAccountStatement*>(response.get());
        if (statement == nullptr) continue;
        if (filter.takes(*statement)) return false;
        isAny = true;
    }
    return isAny;
}

/// What is shown of the whole document, then the lists of accounts and the profile, then the statements.
void showDocument(Page& page, const TvOFXInterpreter& interpreter, const Options& options) {
    const TvOFXResponseList& responses = interpreter.allResponses();
    if (interpreter.signOnResponse()) showSignOn(page, *interpreter.signOnResponse());
    showMessages(page, responses);
    for (const bool isStatement : {false, true})
        for (const auto& response : responses)
            if ((dynamic_cast<const TvOFXAccountStatement*>(response.get()) != nullptr) == isStatement)
                showResponse(page, *response, options);
    if (hidesAllStatements(responses, options.filter)) {
        page.emptyLine();
        page.paragraph("No statement is of an account that was asked for.");
    }
    showOthers(page, responses);
}

}  // namespace

bool runShow(Run& run) {
    Page page(run.output);
    return forEachDocument(run, [&](const Document& document) {
        if (run.options.files.size() > 1) page.heading("== " + document.name);
        const auto interpreter = interpretedForPerson(run, document);
        if (interpreter->allResponses().empty()) return showNothing(page, document);
        showDocument(page, *interpreter, run.options);
    });
}

}  // namespace tool
