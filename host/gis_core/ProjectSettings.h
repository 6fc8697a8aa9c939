// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace OLMGis::System {

/// The settings of a project: short texts by name, saved with it. One per project context. Applying them to the message
/// catalogue is CModuleConfiguration's matter, and happens before a module is loaded.
class CProjectSettings {
public:
    static CProjectSettings* Instance();

    static constexpr std::string_view Edition = "edition";      ///< one of Editions::All
    static constexpr std::string_view Turkish = "turkish";      ///< 0 or 1
    static constexpr std::string_view Language = "language";    ///< en, ro, bg, hr, tr
    static constexpr std::string_view Crs = "crs";              ///< EPSG:n, empty for plain plane coordinates
    static constexpr std::string_view PipeGroup = "pipe_group"; ///< name or GUID of a group of pipes, empty for none

    /// The text of a setting, or fallback when it was never set.
    std::string Get(std::string_view name, std::string_view fallback = {}) const;
    void Set(std::string_view name, std::string_view value) { m_values.insert_or_assign(std::string(name), value); }

    /// All that was set, by name.
    const std::map<std::string, std::string, std::less<>>& GetAll() const { return m_values; }

private:
    std::map<std::string, std::string, std::less<>> m_values;
};

} // namespace OLMGis::System
