// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "console/messages.h"
#include "input/run.h"

namespace tool {
namespace {

std::shared_ptr<brackwell::TvOFXRequest> makeRequest(const RequestOptions& options) {
    if (!options.isProfile) return brackwell::TvOFXAccountInfoRequest::initWithUpdateDateTime(options.since);
    auto request = brackwell::TvOFXFIProfileRequest::initWithUpdateDateTime(options.since);
    request->setClientRouting(options.routing);
    return request;
}

bool runRequest(Run& run) {
    if (!run.options.request.isProfile && run.options.request.routing != 0)
        say("--routing", "is for profile requests only and has no effect here");
    const auto request = makeRequest(run.options.request);
    request->setOfxVersion(run.options.request.version);
    run.output.write(request->ofxString());
    run.output.keep();
    return true;
}

/// What is wrong with a text, "" for nothing.
std::string checkVersion(const std::string& text) {
    const bool isNumber = std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
    return isNumber ? std::string() : "not a version: \"" + text + "\"";
}

/// What a client can be routed by, each at the place of its number.
const std::vector<std::string>& routings() {
    static const std::vector<std::string> names{"none", "service", "msgset"};
    return names;
}

std::int32_t routingNamed(const std::string& name) {
    return static_cast<std::int32_t>(std::ranges::find(routings(), name) - routings().begin());
}

void declareRequestOptions(CLI::App& command, Options& options) {
    RequestOptions& request = options.request;
    command
        .add_option_function<std::string>(
            "KIND", [&request](const std::string& kind) { request.isProfile = kind == "profile"; },
            "accounts or profile")
        ->required()
        ->type_name("")
        ->check(CLI::Validator(CLI::IsMember({"accounts", "profile"})).description(""));
    command.add_option("--version", request.version, "The OFX version, such as 102 (the default) or 211")
        ->type_name("N")
        ->check(CLI::Validator(checkVersion, ""));
    command.add_option("--since", request.since, "Only what changed since; an OFX date, 19900101 by default")
        ->type_name("DATE");
    command
        .add_option_function<std::string>(
            "--routing", [&request](const std::string& name) { request.routing = routingNamed(name); },
            "For a profile: what the client can be routed by: none, service or msgset")
        ->type_name("HOW")
        ->check(CLI::Validator(CLI::IsMember(routings())).description(""));
}

constexpr const char* kRequestHelp =
    "The sign-on, the message set around it and the header are not part of the request.\n\n"
    "Examples:\n"
    "  brackwell request accounts\n"
    "  brackwell request profile --version 211 --since 20240101 --routing msgset\n";

}  // namespace

constexpr Command commands::kRequest({
    .name = "request",
    .summary = "A request as OFX text",
    .traits = kOutput,
    .help = kRequestHelp,
    .run = runRequest,
    .declareOptions = declareRequestOptions,
});

}  // namespace tool
