// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <fmt/format.h>

#include <string_view>

namespace OLMGis::ProjectIo {

/// Appends a text as a JSON string; bytes that are not UTF-8 become replacement characters.
void AppendJson(fmt::memory_buffer& buffer, std::string_view text);

/// Appends a number: the shortest text that reads back as the same number, sign of zero included; a number that is
/// not finite as one of the texts "NaN", "Infinity", "-Infinity".
void AppendJson(fmt::memory_buffer& buffer, double number);
void AppendJson(fmt::memory_buffer& buffer, int number);

/// Appends text as it is.
inline void AppendRaw(fmt::memory_buffer& buffer, std::string_view text) {
    buffer.append(text.data(), text.data() + text.size());
}

} // namespace OLMGis::ProjectIo
