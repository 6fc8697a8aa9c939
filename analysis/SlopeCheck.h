// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/AnalysedNetwork.h"
#include "host/network_core/FAMsg.h"
#include "host/network_core/PropertiesEx.h"

#include <boost/shared_ptr.hpp>

#include <string_view>
#include <vector>

/// The common part of the two slope checks.
namespace Analysis {

/// What differs between them.
struct CSlopeCheck {
    std::string_view m_caption;   ///< of the progress
    std::string_view m_attribute; ///< slope of a section, 1/1000
    double m_leastFallback;       ///< limits when the form lacks the field, 1/1000
    double m_greatestFallback;
};

/// The form: one category with the two limits.
boost::shared_ptr<OLMGis::Topology::CPropertiesEx> CreateSlopeForm(int nameMessage);

/// Checks all sections of a network and appends the findings to messages.
void CheckSlopes(const CSlopeCheck& check, const OLMGis::Topology::CPropertiesEx& form,
                 const OLMGis::Topology::CAnalysedNetwork& network,
                 std::vector<boost::shared_ptr<OLMGis::Topology::CFAMsg>>& messages);

} // namespace Analysis
