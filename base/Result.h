/// A value, or where and why a text could not be read.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <variant>

namespace dinmala {

/// What is wrong with a text, and where.
struct TextError {
    std::size_t line = 0;    ///< 1 the first; 0 when the text as a whole is wrong
    std::size_t column = 0;  ///< in bytes, 1 the first; 0 when the line as a whole is wrong
    std::string what;        ///< a phrase in English without a full stop: "30 is past the end of month 9"

    /// "line 41: 30 is past the end of month 9", without the line where it is 0.
    [[nodiscard]] std::string text() const { return line == 0 ? what : "line " + std::to_string(line) + ": " + what; }
    friend bool operator==(const TextError&, const TextError&) = default;
};

/// Holds a T or a TextError; converts from both.
template <typename T>
class [[nodiscard]] Result {
public:
    Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}
    Result(TextError error) : state_(std::in_place_index<1>, std::move(error)) {}

    [[nodiscard]] explicit operator bool() const { return state_.index() == 0; }

    /// REQUIRES: holds a value.
    [[nodiscard]] const T& operator*() const& { return std::get<0>(state_); }
    [[nodiscard]] T& operator*() & { return std::get<0>(state_); }
    [[nodiscard]] T&& operator*() && { return std::get<0>(std::move(state_)); }
    [[nodiscard]] const T* operator->() const { return &std::get<0>(state_); }
    [[nodiscard]] T* operator->() { return &std::get<0>(state_); }

    /// REQUIRES: holds no value.
    [[nodiscard]] const TextError& error() const { return std::get<1>(state_); }

private:
    std::variant<T, TextError> state_;
};

}  // namespace dinmala
