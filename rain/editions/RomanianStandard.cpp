// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/editions/RomanianStandard.h"

#include "host/network_core/CustomDialogRegistry.h"
#include "rain/editions/PropIDPRO.h"

#include <boost/make_shared.hpp>

namespace Rain {

namespace {

constexpr int CoefficientsLabel = 6130;
constexpr const char* Tag = "RO";

} // namespace

std::vector<const char*> CRomanianStandard::AddFields(const CCategoryPtr& category) const {
    AddDialogField(category, Tag, CoefficientsLabel, 0.0, CPropIDPRO::ControlId);
    OLMGis::Topology::CCustomDialogRegistry::Instance()->RegisterDialog(boost::make_shared<CPropIDPRO>());
    return {Tag};
}

void CRomanianStandard::Read(CFormReading& reading) {
    // An invalid text means the default coefficients, not those of an earlier run.
    m_coefficients = {};
    const std::string text = reading.m_form.GetStrProperty(Tag, "", 1);
    const bool isUntouched = text.empty() || text == "0"; // the field begins with the number 0
    if (m_coefficients.ParseValue(text) == 0 && !isUntouched)
        reading.NoteUnread(Tag);
}

std::optional<double> CRomanianStandard::GetFlowFactor(double inletTime) const {
    return m_coefficients.GetCoefficient(inletTime);
}

} // namespace Rain
