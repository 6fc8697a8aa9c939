// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/TextPool.h"
#include "host/network_core/Geometry.h"

#include <boost/container/deque.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Topology {

/// One finding as the project keeps it. Its texts live as long as the findings of its item.
struct CFinding {
    std::string_view m_guid; ///< of the node or section
    std::string_view m_name; ///< its name at the time of the run
    std::string_view m_text;
    std::optional<double> m_value{}; ///< what was found; none where the item gave no number
    std::optional<double> m_limit{}; ///< the limit that it broke
    std::string_view m_unit{};       ///< of both; empty for a count
    CPoint m_point{}; ///< of the node, or the middle of the section's line; unknown where nothing is drawn
};

/// In blocks that stay where they are: there may be a million.
using CFindings =
    boost::container::deque<CFinding, void, boost::container::deque_options_t<boost::container::block_bytes<16384U>>>;

/// What one item found in one run, in the item's own order. Moved, never copied.
struct CItemFindings {
    std::string m_item{};       ///< key
    std::string m_parameters{}; ///< serialised form; empty for findings of an opened file
    std::string m_error{};      ///< why the item stopped before its end, for the user; empty for one that did not
    CFindings m_findings{};
    Data::CTextArena m_texts{}; ///< those of the findings, end to end: there may be a million

    /// A text for a finding of this item.
    std::string_view Keep(std::string_view text) { return m_texts.Keep(text).View(); }
};

} // namespace OLMGis::Topology
