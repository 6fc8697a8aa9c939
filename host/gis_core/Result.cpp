// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/Result.h"

#include "host/gis_core/Utility.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace OLMGis::Utility {

namespace {

constexpr std::size_t LongestMessage = 2000; ///< bytes

bool IsControl(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

/// Bytes of the character that a text begins with, 0 when it begins with none that can be shown.
std::size_t ShownLength(std::string_view text) {
    constexpr std::size_t LongestCharacter = 4;
    if (IsControl(text[0]))
        return 0;
    // U+0080 to U+009F are control characters, too, and some terminals obey them.
    if (text.size() > 1 && text[0] == '\xC2' && static_cast<unsigned char>(text[1]) < 0xA0)
        return 0;
    for (std::size_t length = 1; length <= std::min(LongestCharacter, text.size()); ++length)
        if (CUtility::IsUtf8(text.substr(0, length)))
            return length;
    return 0;
}

} // namespace

std::string ToShown(std::string message) {
    const auto isPlain = [](char c) { return !IsControl(c) && static_cast<unsigned char>(c) < 0x80; };
    if (message.size() <= LongestMessage && std::all_of(message.begin(), message.end(), isPlain))
        return message;
    std::string shown;
    std::string_view rest = message;
    while (!rest.empty() && shown.size() < LongestMessage) {
        const std::size_t length = ShownLength(rest);
        shown += length == 0 ? std::string_view("?") : rest.substr(0, length);
        rest.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return rest.empty() ? shown : shown + "...";
}

Error BadInput(std::string message) {
    return {enmErrorKind::BadInput, ToShown(std::move(message))};
}

Error Refused(std::string message) {
    return {enmErrorKind::Refused, ToShown(std::move(message))};
}

} // namespace OLMGis::Utility
