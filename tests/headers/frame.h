// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/brackwell.h>

#include <iostream>

/// What the code in the headers' comments takes for granted. None of it runs.

using namespace brackwell;

extern const std::string_view text;
extern const std::optional<Data> bytes;
extern const ParseDictionary tree;
extern TvOFXInterpreter interpreter;
extern const std::shared_ptr<TvOFXMessage> message;
extern const std::shared_ptr<TvOFXStatementResponse> statement;
extern const std::shared_ptr<TvOFXFIProfile> profile;

void connect(std::string_view url);
void send(const std::optional<std::string>& request);
void store(const std::optional<Data>& bytes);
