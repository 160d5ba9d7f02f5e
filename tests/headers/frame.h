// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// What the code in the headers' comments takes for granted. None of it runs. It includes no header of the
/// library, so that the code compiles with the header that it stands in and those that it names itself.

namespace brackwell {
class Data;
class ParseDictionary;
class TvOFXFIProfile;
class TvOFXInterpreter;
class TvOFXMessage;
class TvOFXStatementResponse;
class TvOFXUserAccountInfo;
}  // namespace brackwell

using namespace brackwell;

extern const std::string_view text;
extern const std::optional<Data> bytes;
extern const ParseDictionary tree;
extern TvOFXInterpreter interpreter;
extern const std::shared_ptr<TvOFXMessage> message;
extern const std::shared_ptr<TvOFXStatementResponse> statement;
extern const std::shared_ptr<TvOFXFIProfile> profile;
extern std::shared_ptr<TvOFXUserAccountInfo> info;

void connect(std::string_view url);
void send(const std::optional<std::string>& request);
void store(const std::optional<Data>& bytes);
