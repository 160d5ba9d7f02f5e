// SPDX-License-Identifier: Apache-2.0
#include "support/documents.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <filesystem>

namespace brackwell::tests {

std::string withTagsInLowerCase(std::string_view document) {
    std::string text(document);
    bool isInTag = false;
    for (char& c : text) {
        if (c == '<' || c == '>') isInTag = c == '<';
        if (isInTag && c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

ParseDictionary parsed(std::string_view body) {
    INFO(std::string(body.substr(0, 500)));
    Error error;
    const std::optional<ParseDictionary> tree = TvOFXParser::parseOFXDataString(body, &error);
    REQUIRE_MESSAGE(tree, error.description);
    return *tree;
}

ParseDictionary at(const ParseDictionary& tree, std::initializer_list<std::string_view> path) {
    ParseValue value(tree);
    for (const std::string_view name : path) value = value[name];
    const std::optional<ParseDictionary> dictionary = value.dictionary();
    REQUIRE(dictionary);
    return *dictionary;
}

namespace {

std::shared_ptr<TvOFXMessage> importedData(const Data& data, TextEncoding encoding) {
    Error error;
    auto message = TovanaOFXController::importOFXFileFromData(data, encoding, nullptr, nullptr, &error);
    REQUIRE_MESSAGE(message, error.description);
    return message;
}

}  // namespace

std::shared_ptr<TvOFXMessage> imported(std::string_view document, TextEncoding encoding) {
    return importedData(Data::copy(document), encoding);
}

std::vector<Example> examples() {
    std::vector<Example> all;
    for (const auto& entry : std::filesystem::directory_iterator(BRACKWELL_EXAMPLES_DIR)) {
        const std::string name = entry.path().filename().string();
        if (!name.ends_with(".ofx")) continue;
        // Without being told, an import tries the Unicode encodings only, whatever CHARSET says.
        all.push_back({name, name == "windows_1252.ofx" ? TextEncodingWindows1252 : TextEncodingNone});
    }
    std::ranges::sort(all, {}, &Example::name);
    return all;
}

Data exampleData(const std::string& name) {
    std::optional<Data> data = Data::fromFile(BRACKWELL_EXAMPLES_DIR "/" + name);
    REQUIRE_MESSAGE(data, name);
    return *data;
}

std::shared_ptr<TvOFXMessage> importedExample(const std::string& name, TextEncoding encoding) {
    return importedData(exampleData(name), encoding);
}

std::shared_ptr<TvOFXInterpreter> interpreted(std::string_view document, TextEncoding encoding) {
    TvOFXParser parser(Data::copy(document));
    parser.setStringEncoding(encoding);
    Error error;
    const std::shared_ptr<TvOFXParserResult> result = parser.parseWithError(&error);
    REQUIRE_MESSAGE(result, error.description);
    auto interpreter = TvOFXInterpreter::initWithParseResult(*result);
    interpreter->interpret();
    return interpreter;
}

}  // namespace brackwell::tests
