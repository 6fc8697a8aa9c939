// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "analysis/SlopeCheck.h"

#include "flow/FormFields.h"
#include "host/gis_core/DataRW.h"
#include "host/network_core/FindingList.h"
#include "host/network_core/ProgressWalk.h"

#include <boost/make_shared.hpp>

namespace Analysis {

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataRW;
using OLMGis::Data::FindDefinition;
using OLMGis::Topology::CAnalysedNetwork;
using OLMGis::Topology::CFindingList;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CSection;
using OLMGis::Topology::WalkWithProgress;

namespace {

constexpr std::string_view Unit = "1/1000";

constexpr int LeastSlopeMessage = 8695;
constexpr int GreatestSlopeMessage = 10349;
constexpr int NegativeSlope = 10360;
constexpr int TooFlat = 10361;
constexpr int TooSteep = 10362;

/// A negative slope is a finding whatever the limits are; of the limits the lower one is tested first.
void TestSlope(const CSection& section, double slope, double least, double greatest, CFindingList& findings) {
    if (slope < 0.0)
        findings.AddWithValue(section, NegativeSlope, {slope, 0.0, Unit});
    else if (slope < least)
        findings.AddWithValue(section, TooFlat, {slope, least, Unit});
    else if (slope > greatest)
        findings.AddWithValue(section, TooSteep, {slope, greatest, Unit});
}

} // namespace

boost::shared_ptr<CPropertiesEx> CreateSlopeForm(int nameMessage) {
    auto form = boost::make_shared<CPropertiesEx>();
    const auto category = Flow::AddCategory(*form, 0, nameMessage);
    Flow::AddNumber(category, "VALUE_MIN", LeastSlopeMessage, 5.0)->SetIsRequired(1);
    Flow::AddNumber(category, "VALUE_MAX", GreatestSlopeMessage, 30.0)->SetIsRequired(1);
    return form;
}

void CheckSlopes(const CSlopeCheck& check, const CPropertiesEx& form, const CAnalysedNetwork& network,
                 std::vector<boost::shared_ptr<OLMGis::Topology::CFAMsg>>& messages) {
    const double least = form.GetDblProperty("VALUE_MIN", check.m_leastFallback, 1);
    const double greatest = form.GetDblProperty("VALUE_MAX", check.m_greatestFallback, 1);
    const auto* const attribute = FindDefinition(check.m_attribute);
    CFindingList findings(messages);
    CDataBox slope;
    WalkWithProgress(check.m_caption, network.m_sections, [&](const boost::shared_ptr<CSection>& section) {
        CDataRW::Read(attribute, section, slope, 0, nullptr);
        if (slope.IsNotNull())
            TestSlope(*section, slope.AsDouble(), least, greatest, findings);
    });
}

} // namespace Analysis
