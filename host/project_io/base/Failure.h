// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <exception>
#include <new>
#include <string>
#include <utility>

namespace OLMGis::ProjectIo {

/// An error that is thrown and caught inside this library only; its public operations answer with a Result. An
/// exception here because a row of a project file can be bad in fifty places, four calls below the operation that
/// answers.
class CFailure final : public std::exception {
public:
    explicit CFailure(Utility::Error error) : m_error(std::move(error)) {}

    const Utility::Error& GetError() const { return m_error; }
    const char* what() const noexcept override { return m_error.message.c_str(); }

private:
    Utility::Error m_error;
};

[[noreturn]] inline void FailBadInput(std::string message) {
    throw CFailure(Utility::BadInput(std::move(message)));
}
[[noreturn]] inline void FailRefused(std::string message) {
    throw CFailure(Utility::Refused(std::move(message)));
}

/// The error for an exception that the stream or a library threw while a file was read.
inline Utility::Error ReadError(const std::string& name, const std::exception& error) {
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr)
        return Utility::Refused(name + ": not enough memory");
    return Utility::Refused(name + ": cannot be read: " + error.what());
}

/// Runs a step and turns what it throws, our own failures and exceptions of libraries, into an error. name: name of the
/// file in messages.
template <class Value, class Step>
Utility::Result<Value> CatchFailures(const std::string& name, Step step) {
    try {
        return step();
    } catch (const CFailure& failure) {
        return failure.GetError();
    } catch (const std::bad_alloc&) {
        return Utility::Refused(name + ": not enough memory");
    } catch (const std::exception& error) {
        return Utility::Refused(name + ": " + error.what());
    }
}

} // namespace OLMGis::ProjectIo
