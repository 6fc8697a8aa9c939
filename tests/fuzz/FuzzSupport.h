// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/gis_core/Utility.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

/// Ends the fuzzer, which then keeps the input, when a condition is false.
inline void Require(bool holds, std::string_view what) {
    if (holds)
        return;
    std::fwrite(what.data(), 1, what.size(), stderr);
    std::fputc('\n', stderr);
    std::abort();
}

/// The message for a bad file names it, is short and contains no control characters.
inline void RequireTelling(const OLMGis::Utility::Error& error, std::string_view fileName) {
    constexpr std::size_t Longest = 4096;
    const std::string& message = error.message;
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
    Require(message.find(fileName) != std::string::npos, "the message does not name the file: " + message);
    Require(message.size() <= Longest, "the message is too long: " + message);
    Require(OLMGis::Utility::CUtility::IsUtf8(message), "the message is not UTF-8: " + message);
    Require(std::none_of(message.begin(), message.end(), isControl), "the message has control characters: " + message);
}

inline std::string_view AsText(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}
