// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/Formats.h"

#include <string>
#include <string_view>
#include <vector>

namespace Cli {

/// The keys of formats, as arguments name them.
std::vector<std::string> GetFormatKeys(const std::vector<const OLMGis::ProjectIo::CFormat*>& formats);

/// For help: a heading, then each format with its suffixes and title, what it reads or writes (the member), and what it
/// loses.
std::string ListFormats(const std::vector<const OLMGis::ProjectIo::CFormat*>& formats,
                        std::string_view OLMGis::ProjectIo::CFormat::*contents);

/// The same for one format of GetFormats that a verb always reads.
std::string ListInputFormat(std::string_view key);

} // namespace Cli
