// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "analysis/SlopeCheck.h"

#include "analysis/ItemForm.h"
#include "analysis/ProgressWalk.h"
#include "host/gis_core/DataRW.h"

#include <boost/make_shared.hpp>

namespace Analysis {

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataConfiguration;
using OLMGis::Data::CDataRW;
using OLMGis::Topology::CAnalysedNetwork;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CSection;

namespace {

constexpr std::string_view Unit = "1/1000";

/// A negative slope is one whatever the limits say; of the limits the lower one goes first.
void TestSlope(const CSection& section, double slope, double least, double greatest, CFindingList& findings) {
    if (slope < 0.0)
        findings.AddWithValue(section, 10360, {slope, 0.0, Unit});
    else if (slope < least)
        findings.AddWithValue(section, 10361, {slope, least, Unit});
    else if (slope > greatest)
        findings.AddWithValue(section, 10362, {slope, greatest, Unit});
}

} // namespace

boost::shared_ptr<CPropertiesEx> CreateSlopeForm(int nameMessage) {
    auto form = boost::make_shared<CPropertiesEx>();
    const auto category = AddCategory(*form, nameMessage);
    AddLimit(*category, "VALUE_MIN", 8695, 5.0);
    AddLimit(*category, "VALUE_MAX", 10349, 30.0);
    return form;
}

void CheckSlopes(const CSlopeCheck& check, const CPropertiesEx& form, const CAnalysedNetwork& network,
                 CMessages& messages) {
    const double least = form.GetDblProperty("VALUE_MIN", check.m_leastFallback, 1);
    const double greatest = form.GetDblProperty("VALUE_MAX", check.m_greatestFallback, 1);
    const auto* const attribute = CDataConfiguration::Instance()->GetDataDefinitionByID(check.m_attribute);
    CFindingList findings(check.m_item, messages);
    CDataBox slope;
    WalkWithProgress(check.m_caption, network.m_sections, [&](const boost::shared_ptr<CSection>& section) {
        CDataRW::Read(attribute, section, slope, 0, nullptr);
        if (slope.IsNotNull())
            TestSlope(*section, slope.AsDouble(), least, greatest, findings);
    });
}

} // namespace Analysis
