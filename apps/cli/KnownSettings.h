// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace Cli {

/// One setting of a project that people may change.
struct CKnownSetting {
    std::string_view m_name;
    std::string_view m_default; ///< in force while nothing is set

    /// The value to keep for a text that was typed for the project of that path; BadWords for a text that is none, and
    /// what the system says of a file that can't be had.
    OLMGis::Utility::Result<std::string> (*m_read)(std::string_view text, const std::string& project);

    bool m_isShownEmpty = true;
};

/// All of them, in the order in which they are shown. A new setting is one more line there.
const std::vector<CKnownSetting>& GetKnownSettings();

/// Changes a setting of the active project, which has or gets that path. BadWords for an unknown name and for a value
/// that it does not take; BadInput and Refused for a file that can't be used.
OLMGis::Utility::Status ChangeSetting(std::string_view name, std::string_view text, const std::string& project);

/// What people should know of the project's coordinate system; empty when there is nothing to say.
std::string GetCrsWarning();

} // namespace Cli
