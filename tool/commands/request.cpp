// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "command_line/day.h"
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

/// The version that a document names when none was given; its requests are written alike.
constexpr std::uint64_t kUsualVersion = 102;

constexpr std::string_view messageSetOf(const RequestOptions& options) noexcept {
    return options.isProfile ? "PROFMSGSRQV1" : "SIGNUPMSGSRQV1";
}

/// The header and the open tags around the request.
std::string documentBegin(const RequestOptions& options) {
    const std::string version = std::to_string(options.version == 0 ? kUsualVersion : options.version);
    std::string text;
    if (options.version < 200)
        text = "OFXHEADER:100\nDATA:OFXSGML\nVERSION:" + version +
               "\nSECURITY:NONE\nENCODING:USASCII\nCHARSET:1252\nCOMPRESSION:NONE\nOLDFILEUID:NONE\n"
               "NEWFILEUID:NONE\n\n";
    else
        text =
            "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>\n<?OFX OFXHEADER=\"200\" "
            "VERSION=\"" +
            version + "\" SECURITY=\"NONE\" OLDFILEUID=\"NONE\" NEWFILEUID=\"NONE\"?>\n";
    return text.append("<OFX>\n<").append(messageSetOf(options)).append(">\n");
}

/// The close tags for these, with the end of the request's last line.
std::string documentEnd(const RequestOptions& options) {
    return std::string("</").append(messageSetOf(options)).append(">\n</OFX>\n");
}

bool runRequest(Run& run) {
    if (!run.options.request.isProfile && run.options.request.routing != 0)
        say("--routing", "is for profile requests only and has no effect here");
    const auto request = makeRequest(run.options.request);
    request->setOfxVersion(run.options.request.version);
    if (run.options.request.isDocument) run.output.write(documentBegin(run.options.request));
    run.output.write(request->ofxString());
    if (run.options.request.isDocument) run.output.write(documentEnd(run.options.request));
    run.output.keep();
    return true;
}

// ---------------------------------------------------------------------------------------------
// Checks; each returns what is wrong with a text, "" for nothing

/// OFX 1 has versions such as 102, OFX 2 such as 211, and no other version has been written.
std::string checkVersion(const std::string& text) {
    const bool isVersion = text.size() == 3 && (text[0] == '1' || text[0] == '2') &&
                           std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
    return isVersion ? std::string() : "not a version like 102 or 211: \"" + text + "\"";
}

/// The OFX date of a day in one of the forms of all commands, or of a moment as a server gives it
/// ("20240131120000.000[-5:EST]"); nothing for other texts.
std::optional<std::string> ofxDateOf(const std::string& text) {
    constexpr std::size_t dayLength = 8;
    constexpr std::string_view moments[] = {"dddddd", "dddddd.ddd"};
    if (const auto day = dayOf(text)) return brackwell::PatternDateFormatter("yyyyMMdd").stringFromDate(*day);
    if (text.size() < dayLength || !dayOf(text.substr(0, dayLength))) return std::nullopt;
    const std::string time = text.substr(dayLength, text.find('[') - dayLength);
    const std::string zone = text.substr(std::min(text.find('['), text.size()));
    const bool isTime = std::ranges::any_of(moments, [&time](std::string_view form) {
        return std::ranges::equal(time, form, [](char c, char wanted) {
            return wanted == 'd' ? c >= '0' && c <= '9' : c == wanted;
        });
    });
    // A minute may have a leap second.
    const auto isBelow = [&time](std::size_t place, unsigned end) {
        return static_cast<unsigned>((time[place] - '0') * 10 + time[place + 1] - '0') < end;
    };
    const bool isTimeOfDay = isTime && isBelow(0, 24) && isBelow(2, 60) && isBelow(4, 61);
    const bool isZone = zone.empty() || (zone.ends_with(']') && zone.find_first_of("<>&") == zone.npos);
    return isTimeOfDay && isZone ? std::optional(text) : std::nullopt;
}

std::string checkDate(const std::string& text) { return ofxDateOf(text) ? std::string() : checkDay(text); }

/// What a client can be routed by, each at the place of its number.
const std::vector<std::string>& routings() {
    static const std::vector<std::string> kNames{"none", "service", "msgset"};
    return kNames;
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
    command
        .add_option_function<std::string>(
            "--since", [&request](const std::string& date) { request.since = ofxDateOf(date); },
            "Only what changed since this day (YYYY-MM-DD), 1990-01-01 by default")
        ->type_name("DATE")
        ->check(CLI::Validator(checkDate, ""));
    command.add_flag("--document", request.isDocument, "Write a document around it, which the tool reads");
    command
        .add_option_function<std::string>(
            "--routing", [&request](const std::string& name) { request.routing = routingNamed(name); },
            "For a profile: what the client can be routed by: none, service or msgset")
        ->type_name("HOW")
        ->check(CLI::Validator(CLI::IsMember(routings())).description(""));
}

constexpr const char* kRequestHelp =
    "The sign-on, the message set around it and the header are not part of the request. --document adds the\n"
    "header and the message set, so that \"brackwell tree\" and \"brackwell pretty\" read it; a server wants "
    "a\n"
    "sign-on in it as well. --since also takes the time that a server gave, such as 20240131120000.\n\n"
    "Examples:\n"
    "  brackwell request accounts\n"
    "  brackwell request profile --version 211 --since 2024-01-01 --routing msgset\n"
    "  brackwell request accounts --document | brackwell tree -\n";

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
