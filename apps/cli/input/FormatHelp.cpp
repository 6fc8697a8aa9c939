// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/FormatHelp.h"

#include <fmt/format.h>

namespace Cli {

using OLMGis::ProjectIo::CFormat;

std::vector<std::string> GetFormatKeys(const std::vector<const CFormat*>& formats) {
    std::vector<std::string> keys;
    for (const CFormat* format : formats)
        keys.emplace_back(format->m_key);
    return keys;
}

std::string ListFormats(const std::vector<const CFormat*>& formats, std::string_view CFormat::*contents) {
    std::string text = "Formats:";
    for (const CFormat* format : formats) {
        text += fmt::format("\n  {:<10}{} ({})\n            {}", format->m_key, format->m_title,
                            OLMGis::ProjectIo::TextOfSuffixes(*format), format->*contents);
        if (!format->m_loses.empty())
            text += fmt::format("\n            without: {}", format->m_loses);
    }
    return text;
}

} // namespace Cli
