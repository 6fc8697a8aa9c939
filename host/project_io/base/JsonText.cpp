// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/JsonText.h"

#include "host/project_io/base/AttributeText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace OLMGis::ProjectIo {

void AppendJson(fmt::memory_buffer& buffer, std::string_view text) {
    const bool isPlain =
        std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F && c != '"' && c != '\\'; });
    if (!isPlain) {
        const nlohmann::json json(text);
        AppendRaw(buffer, json.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
        return;
    }
    buffer.push_back('"');
    AppendRaw(buffer, text);
    buffer.push_back('"');
}

void AppendJson(fmt::memory_buffer& buffer, double number) {
    if (const std::string_view text = TextOfNonFinite(number); !text.empty())
        AppendJson(buffer, text);
    else if (number == 0.0 && std::signbit(number))
        AppendRaw(buffer, "-0.0"); // "-0" would be read as a whole number, which has no negative zero
    else
        fmt::format_to(std::back_inserter(buffer), "{}", number);
}

void AppendJson(fmt::memory_buffer& buffer, int number) {
    fmt::format_to(std::back_inserter(buffer), "{}", number);
}

} // namespace OLMGis::ProjectIo
