// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/HelpTable.h"

#include "reports/TablePrinting.h"

#include <sstream>

namespace Cli {

std::string ShowForHelp(std::string_view heading, const Reports::CTable& table) {
    std::ostringstream text;
    text << heading << ":\n";
    Reports::PrintAsText(text, table, "  ");
    std::string lines = text.str();
    lines.pop_back();
    return lines;
}

} // namespace Cli
