// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/FormatHelp.h"

#include "apps/cli/input/HelpTable.h"

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
    Reports::CTable table({Reports::TextColumn("key", ""), Reports::TextColumn("text", "")});
    for (const CFormat* format : formats) {
        table.AddRow(
            {format->m_key, fmt::format("{} ({})", format->m_title, OLMGis::ProjectIo::TextOfSuffixes(*format))});
        table.AddRow({"", format->*contents});
        if (!format->m_loses.empty())
            table.AddRow({"", fmt::format("without: {}", format->m_loses)});
    }
    return ShowForHelp("Formats", table);
}

std::string ListInputFormat(std::string_view key) {
    std::vector<const CFormat*> found;
    for (const CFormat& format : OLMGis::ProjectIo::GetFormats())
        if (format.m_key == key)
            found.push_back(&format);
    return ListFormats(found, &CFormat::m_reads);
}

} // namespace Cli
