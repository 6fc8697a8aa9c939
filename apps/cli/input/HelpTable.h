// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "reports/Table.h"

#include <string>
#include <string_view>

namespace Cli {

/// A text for help: the heading and a colon, then the rows of the table below it, without a line end after the last.
std::string ShowForHelp(std::string_view heading, const Reports::CTable& table);

} // namespace Cli
