// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstdint>
#include <string>

namespace OLMGis::Workspace {

/// One line of the workspace log and what it is about.
struct CLogLine {
    static constexpr int Stored = 1;        ///< type after a run that stored results
    static constexpr int NothingStored = 4; ///< type after a run that stored nothing, and of warnings

    int m_type = Stored;
    std::string m_text;
    int m_entityType = 0;
    std::string m_entityName;     ///< empty when the line is about no entity
    std::uint64_t m_objectId = 0; ///< of a drawing entity, 0 for none
    int m_selectionType = 0;
};

} // namespace OLMGis::Workspace
