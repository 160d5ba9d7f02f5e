// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// How the objects of the library are left by a move. It is installed because their members are of this
/// class, but it is no part of the interface: what namespace internal has may change with any version.

#include <type_traits>
#include <utility>

namespace brackwell::internal {

/// A member that a move leaves as a new object has it. Numbers, views and optional values do not do that by
/// themselves; with it a class needs no move operations of its own to be empty after a move.
template <class Value>
class EmptiedByMove {
public:
    static_assert(std::is_nothrow_move_assignable_v<Value> && std::is_nothrow_default_constructible_v<Value>);

    /// A new value.
    EmptiedByMove() noexcept = default;
    /// Takes the value over.
    EmptiedByMove(Value value) noexcept : value_(std::move(value)) {}  // NOLINT(google-explicit-constructor)
    /// @{
    /// A copy is equal; a move leaves a new value behind.
    EmptiedByMove(const EmptiedByMove&) = default;
    EmptiedByMove& operator=(const EmptiedByMove&) = default;
    EmptiedByMove(EmptiedByMove&& other) noexcept : value_(std::exchange(other.value_, Value())) {}
    EmptiedByMove& operator=(EmptiedByMove&& other) noexcept {
        value_ = std::exchange(other.value_, Value());
        return *this;
    }
    ~EmptiedByMove() = default;
    /// @}

    /// @{
    /// The value.
    operator const Value&() const noexcept { return value_; }  // NOLINT(google-explicit-constructor)
    const Value& get() const noexcept { return value_; }
    Value& get() noexcept { return value_; }
    /// @}

private:
    Value value_{};
};

}  // namespace brackwell::internal
