// SPDX-License-Identifier: Apache-2.0
#include "tool/tool.h"

#include <utility>

namespace brackwell::tests {

// A reader of JSON takes the compiler longer than most tests, so that it is made once.

Command toolCommand(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), BRACKWELL_TOOL);
    return {std::move(arguments)};
}

Finished tool(std::vector<std::string> arguments, const std::string& input,
              std::map<std::string, std::string> environment) {
    Command command = toolCommand(std::move(arguments));
    command.input = input;
    command.environment = std::move(environment);
    return run(command);
}

Finished toolIn(const std::string& folder, std::vector<std::string> arguments, const std::string& input) {
    Command command = toolCommand(std::move(arguments));
    command.directory = folder;
    command.input = input;
    return run(command);
}

Finished shell(const TemporaryFolder& folder, const std::string& line) {
    return run({{"/bin/sh", "-c", line}, "", {{"TOOL", BRACKWELL_TOOL}}, folder.path()});
}

std::string outputOf(std::vector<std::string> arguments, const std::string& document) {
    arguments.insert(arguments.end(), {"--quiet", "-"});
    const Finished finished = tool(std::move(arguments), document);
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    return finished.output;
}

Json jsonOf(const std::string& command, const std::string& document) {
    return Json::parse(outputOf({command}, document));
}

Json jsonAsIs(const std::string& command, const std::string& document) {
    return Json::parse(outputOf({command, "--as-is"}, document));
}

}  // namespace brackwell::tests
