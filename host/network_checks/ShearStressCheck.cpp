// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_checks/ShearStressCheck.h"

#include "host/network_checks/FlowingSections.h"

namespace OLMGis::NetworkChecks {

namespace {

constexpr int NameMessage = 70451;
constexpr int LeastStressMessage = 70452;
constexpr int TooLow = 70453;

constexpr const char* LeastStress = "VALUE_MIN";

/// N/m². The tractive force method of "Gravity Sanitary Sewer Design and Construction" (ASCE Manual 60, WEF Manual
/// FD-5, 2007) needs 0.87 N/m² to move a grain of sand of 1 mm; rounded up.
constexpr double DefaultLeast = 1.0;

} // namespace

CShearStressCheck::CShearStressCheck() : CNetworkCheck("0014_SHEAR_STRESS", NameMessage, "FAI_SHEAR_STRESS") {}

std::vector<CNetworkCheck::CField> CShearStressCheck::GetFields() const {
    return {{LeastStress, LeastStressMessage, DefaultLeast}};
}

void CShearStressCheck::Run(const Topology::CPropertiesEx& form, const Topology::CAnalysedNetwork& network,
                            Topology::CFindingList& findings) {
    const double least = form.GetDblProperty(LeastStress, DefaultLeast, 1);
    ForEachFlowing(GetItemName(), network,
                   [&](const Topology::CSection& section, const Sewage::CSectionHydraulics& hydraulics) {
                       if (!(hydraulics.m_slope > 0.0))
                           return;
                       if (hydraulics.m_shearStress < least)
                           findings.AddWithValue(section, TooLow, {hydraulics.m_shearStress, least, "N/m²"});
                   });
}

} // namespace OLMGis::NetworkChecks
