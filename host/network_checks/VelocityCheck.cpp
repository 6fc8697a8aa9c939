// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_checks/VelocityCheck.h"

#include "host/network_checks/FlowingSections.h"

namespace OLMGis::NetworkChecks {

namespace {

constexpr int NameMessage = 70446;
constexpr int LeastVelocityMessage = 70447;
constexpr int GreatestVelocityMessage = 70448;
constexpr int TooSlow = 70449;
constexpr int TooFast = 70450;

/// m/s. EN 752: self-cleansing of drains and sewers below DN 300 can generally be achieved by a velocity of at least
/// 0.7 m/s once a day. Larger ones may need more.
constexpr double DefaultLeast = 0.7;

/// m/s. Recommended Standards for Wastewater Facilities (Great Lakes - Upper Mississippi River Board), high velocity
/// protection: at 15 ft/s and above, sewers are protected against displacement by erosion and impact.
constexpr double DefaultGreatest = 4.6;

} // namespace

CVelocityCheck::CVelocityCheck() : CNetworkCheck("0013_VELOCITY", NameMessage, "FAI_VELOCITY") {}

std::vector<CNetworkCheck::CField> CVelocityCheck::GetFields() const {
    return {{"VALUE_MIN", LeastVelocityMessage, DefaultLeast}, {"VALUE_MAX", GreatestVelocityMessage, DefaultGreatest}};
}

void CVelocityCheck::Run(const Topology::CPropertiesEx& form, const Topology::CAnalysedNetwork& network,
                         Topology::CFindingList& findings) {
    const double least = form.GetDblProperty("VALUE_MIN", DefaultLeast, 1);
    const double greatest = form.GetDblProperty("VALUE_MAX", DefaultGreatest, 1);
    ForEachFlowing(GetItemName(), network,
                   [&](const Topology::CSection& section, const Sewage::CSectionHydraulics& hydraulics) {
                       if (!(hydraulics.m_slope > 0.0))
                           return;
                       const double velocity = hydraulics.m_velocity;
                       if (velocity < least)
                           findings.AddWithValue(section, TooSlow, {velocity, least, "m/s"});
                       else if (velocity > greatest)
                           findings.AddWithValue(section, TooFast, {velocity, greatest, "m/s"});
                   });
}

} // namespace OLMGis::NetworkChecks
