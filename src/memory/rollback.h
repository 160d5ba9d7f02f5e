// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tuple>
#include <utility>

namespace brackwell {

/// Puts members back as they were unless it is told to keep what has become of them: so an object that
/// there is not enough memory to read is as it was before.
template <class... Members>
class Rollback {
public:
    explicit Rollback(Members&... members) : members_(members...), before_(members...) {}
    Rollback(const Rollback&) = delete;
    Rollback& operator=(const Rollback&) = delete;
    ~Rollback() {
        if (!isKept_) members_ = std::move(before_);
    }
    void keep() noexcept { isKept_ = true; }

private:
    std::tuple<Members&...> members_;
    std::tuple<Members...> before_;
    bool isKept_ = false;
};

/// Lets a member have another value, and gives it the first one back, unless the other one is kept.
template <class Member>
class Exchange {
public:
    Exchange(Member& member, Member other) noexcept
        : member_(member), before_(std::exchange(member, std::move(other))) {}
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;
    ~Exchange() {
        if (!isKept_) member_ = std::move(before_);
    }
    void keep() noexcept { isKept_ = true; }

private:
    Member& member_;
    Member before_;
    bool isKept_ = false;
};

}  // namespace brackwell
