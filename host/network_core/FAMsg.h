// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>

namespace OLMGis::Topology {

/// What an item of the functional analysis found. All findings weigh the same.
struct CFAMsg {
    std::string m_text; ///< complete and formatted, for the user
    std::string m_guid; ///< of the node or section that the finding is about
};

} // namespace OLMGis::Topology
