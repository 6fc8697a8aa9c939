// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace OLMGis::Utility {

/// Who is to blame for an error; each program turns it into an exit code or a window in one place.
enum class enmErrorKind {
    BadInput,     ///< an input file or value is bad
    Refused,      ///< the system said no: no such file, no permission, disk full
    BadArguments, ///< invalid arguments of the user; nothing was changed
    Stopped,      ///< a calculation stopped with an alert
    Cancelled,    ///< the user interrupted
};

/// One error, complete for a reader: object, file, line or record, what was found, what was expected.
struct Error {
    enmErrorKind kind = enmErrorKind::BadInput;
    std::string message;
};

/// A text of unknown origin as messages may show it: bytes that are no characters, and control characters, become "?";
/// at most 2000 bytes, then "...".
std::string ToShown(std::string message);

/// Most messages of these two kinds quote the file or names, and the file may contain anything: control
/// characters and what is no UTF-8 come out as "?", and what is longer than a screen is cut.
Error BadInput(std::string message);
Error Refused(std::string message);

inline Error BadArguments(std::string message) {
    return {enmErrorKind::BadArguments, std::move(message)};
}

/// A value or an error. Ask before taking: taking the side that is not there is a contradiction and throws.
template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : m_state(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : m_state(std::in_place_index<1>, std::move(error)) {}

    explicit operator bool() const { return m_state.index() == 0; }
    T& Value() { return std::get<0>(m_state); }
    const T& Value() const { return std::get<0>(m_state); }
    T* operator->() { return &std::get<0>(m_state); }
    const T* operator->() const { return &std::get<0>(m_state); }
    const Error& GetError() const { return std::get<1>(m_state); }

private:
    std::variant<T, Error> m_state;
};

/// Success or an error, for operations without a value of their own.
struct Done {};
using Status = Result<Done>;

} // namespace OLMGis::Utility
