// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace Cli {

/// One setting of a project.
struct CKnownSetting {
    std::string_view m_name;
    std::string_view m_default; ///< in force while nothing is set
    std::string m_values;       ///< for the help: what it takes

    /// The value to store for a text entered for the project of that path; BadArguments for an invalid text, BadInput
    /// or Refused for a file that cannot be used.
    OLMGis::Utility::Result<std::string> (*m_read)(std::string_view text, const std::string& project);

    bool m_isShownEmpty = true;
};

/// All settings in the order in which they are shown. A new setting is one more line there.
const std::vector<CKnownSetting>& GetKnownSettings();

/// The national editions, the usual one first.
const std::vector<std::string>& GetEditions();

/// Changes a setting of the active project, which has or gets that path. BadArguments for an unknown name and for a
/// value that it does not take; BadInput and Refused for a file that can't be used.
OLMGis::Utility::Status ChangeSetting(std::string_view name, std::string_view text, const std::string& project);

/// A warning about the coordinate system of the active project; empty when there is none.
std::string GetCrsWarning();

} // namespace Cli
