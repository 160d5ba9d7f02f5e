// SPDX-License-Identifier: Apache-2.0
#include "memory/unpredictable_hash.h"

#include <brackwell/platform.h>

#include <bit>
#include <chrono>
#include <cstddef>
#include <cstring>

#include "system/random_bytes.h"

namespace brackwell {
namespace {

/// SipHash with one round per word and three at the end: a keyed hash for which nobody without the
/// key can find colliding texts.
struct State {
    std::uint64_t a, b, c, d;

    void round() noexcept {
        a += b;
        c += d;
        b = std::rotl(b, 13) ^ a;
        d = std::rotl(d, 16) ^ c;
        a = std::rotl(a, 32);
        c += b;
        a += d;
        b = std::rotl(b, 17) ^ c;
        d = std::rotl(d, 21) ^ a;
        c = std::rotl(c, 32);
    }
    void absorb(std::uint64_t word) noexcept {
        d ^= word;
        round();
        a ^= word;
    }
};

}  // namespace

UnpredictableHash::UnpredictableHash() {
    std::array<std::uint8_t, sizeof key_> bytes = {};
    if (system::tryFillWithRandom(bytes)) {
        std::memcpy(key_.data(), bytes.data(), bytes.size());
        return;
    }
    // Right after a machine has started there may be no random numbers yet: the clock and the address of this
    // object must suffice.
    key_ = {static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()),
            std::bit_cast<std::uintptr_t>(this)};
}

std::uint64_t UnpredictableHash::operator()(std::string_view text) const noexcept {
    // SipHash's constants, the ASCII text "somepseudorandomlygeneratedbytes".
    State state{key_[0] ^ 0x736f6d6570736575, key_[1] ^ 0x646f72616e646f6d, key_[0] ^ 0x6c7967656e657261,
                key_[1] ^ 0x7465646279746573};
    const char* p = text.data();
    std::size_t left = text.size();
    std::uint64_t word = 0;
    for (; left >= sizeof word; left -= sizeof word, p += sizeof word) {
        std::memcpy(&word, p, sizeof word);
        state.absorb(word);
    }
    word = 0;
    if (left != 0) std::memcpy(&word, p, left);
    state.absorb(word ^ std::uint64_t{text.size()} << 56);
    state.c ^= 0xff;
    for (int i = 0; i < 3; ++i) state.round();
    return state.a ^ state.b ^ state.c ^ state.d;
}

}  // namespace brackwell
