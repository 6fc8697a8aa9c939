// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_checks/OverfullCheck.h"

#include "host/formulas/Units.h"
#include "host/network_checks/FlowingSections.h"

namespace OLMGis::NetworkChecks {

namespace {

constexpr int NameMessage = 70442;
constexpr int GreatestRatioMessage = 70443;
constexpr int Overfull = 70444;
constexpr int NoCapacity = 70445;

constexpr const char* GreatestRatio = "VALUE_MAX";

/// %. Above it the pipe is surcharged, by definition.
constexpr double DefaultRatio = 100.0;

} // namespace

COverfullCheck::COverfullCheck() : CNetworkCheck("0012_OVERFULL", NameMessage, "FAI_OVERFULL") {}

std::vector<CNetworkCheck::CField> COverfullCheck::GetFields() const {
    return {{GreatestRatio, GreatestRatioMessage, DefaultRatio}};
}

void COverfullCheck::Run(const Topology::CPropertiesEx& form, const Topology::CAnalysedNetwork& network,
                         Topology::CFindingList& findings) {
    const double greatest = form.GetDblProperty(GreatestRatio, DefaultRatio, 1);
    ForEachFlowing(GetItemName(), network,
                   [&](const Topology::CSection& section, const Sewage::CSectionHydraulics& hydraulics) {
                       if (!(hydraulics.m_slope > 0.0))
                           return findings.AddWithValue(section, NoCapacity, {hydraulics.m_slope, 0.0, "1/1000"});
                       const double ratio = hydraulics.m_flow / hydraulics.m_capacity * Formulas::Percent;
                       if (ratio > greatest)
                           findings.AddWithValue(section, Overfull, {ratio, greatest, "%"});
                   });
}

} // namespace OLMGis::NetworkChecks
