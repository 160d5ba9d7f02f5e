// SPDX-License-Identifier: Apache-2.0
// Stores an institution's profile as bytes, restores it, and shows what the institution offers.
#include <brackwell/brackwell.h>

#include <iostream>

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    brackwell::TvOFXParser parser(brackwell::Data::fromFile(argv[1]));
    brackwell::Error error;
    const auto result = parser.parseWithError(&error);
    if (!result) return std::cerr << error.description << '\n', 1;
    brackwell::TvOFXInterpreter interpreter(*result);
    interpreter.interpret();

    const auto profile = brackwell::TvOFXFIProfile::initWithProfileResponse(interpreter.fiProfileResponse());
    const auto stored = profile->data();  // what an application would keep
    const auto restored = brackwell::TvOFXFIProfile::initWithData(stored);

    std::cout << restored->fiName().value_or("unknown institution") << '\n';
    std::cout << "banking: " << (restored->supportsBanking() ? "yes" : "no") << '\n';
    if (const auto banking = restored->messageSetProfileBanking(); banking && banking->messageSetCore())
        std::cout << "server: " << banking->messageSetCore()->url().value_or("") << '\n';
    if (const auto& realms = restored->fiProfileResponse()->signonInfoList())
        for (const auto& realm : *realms)
            std::cout << "realm: " << realm->signonRealm().value_or("") << ", passwords of "
                      << realm->minPasswordChars() << " to " << realm->maxPasswordChars() << " characters\n";
}
