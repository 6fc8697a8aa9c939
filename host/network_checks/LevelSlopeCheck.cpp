// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_checks/LevelSlopeCheck.h"

#include "host/formulas/Rounding.h"
#include "host/formulas/Units.h"
#include "host/gis_core/DataRW.h"
#include "host/network_core/ProgressWalk.h"
#include "host/network_core/SectionSlopes.h"

#include <cmath>

namespace OLMGis::NetworkChecks {

using Topology::CSection;

namespace {

constexpr int NameMessage = 70430;
constexpr int ToleranceMessage = 70431;
constexpr int DoNotFit = 70432;

constexpr const char* Tolerance = "TOLERANCE";

/// Two levels rounded to the centimetre are off by 1 cm at most; twice that is no rounding.
constexpr double DefaultTolerance = 0.02;

} // namespace

CLevelSlopeCheck::CLevelSlopeCheck() : CNetworkCheck("0008_LEVEL_SLOPE", NameMessage, "FAI_LEVEL_SLOPE") {}

std::vector<CNetworkCheck::CField> CLevelSlopeCheck::GetFields() const {
    return {{Tolerance, ToleranceMessage, DefaultTolerance}};
}

void CLevelSlopeCheck::Run(const Topology::CPropertiesEx& form, const Topology::CAnalysedNetwork& network,
                           Topology::CFindingList& findings) {
    const double tolerance = form.GetDblProperty(Tolerance, DefaultTolerance, 1);
    const auto* const design = Data::FindDefinition("SECTION_SLOPE");
    Data::CDataBox slope;
    WalkWithProgress(GetItemName(), network.m_sections, [&](const boost::shared_ptr<CSection>& section) {
        if (Data::CDataRW::Read(design, section, slope, 0, nullptr) == 0)
            return;
        const auto fromLevels = Topology::SlopeOfLevels(*section);
        if (!fromLevels)
            return;
        const double difference =
            std::abs(*fromLevels - slope.AsDouble()) / Formulas::PerMille * section->GetLength2D();
        if (Formulas::RoundDerived(difference) > tolerance)
            findings.AddWithValue(*section, DoNotFit, {difference, tolerance, "m"});
    });
}

} // namespace OLMGis::NetworkChecks
