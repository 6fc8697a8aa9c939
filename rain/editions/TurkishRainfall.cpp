// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/editions/TurkishRainfall.h"

#include "host/network_core/CustomDialogRegistry.h"
#include "rain/editions/PropIDPTurkish.h"

#include <boost/make_shared.hpp>
#include <fmt/format.h>

using OLMGis::Data::CDataBox;
using OLMGis::Sewage::CIDPTurkParams;

namespace Rain {

namespace {

/// RAINFALL_MODE as it is stored, and the message that names it. Fixed: parameter files and stored forms rely on it.
constexpr int Mode = 9455;
constexpr const char* Tag = "TURKISH";

} // namespace

int CTurkishRainfall::GetMode() const {
    return Mode;
}

std::vector<const char*> CTurkishRainfall::AddFields(const CCategoryPtr& category) const {
    AddDialogField(category, Tag, Mode, "", CPropIDPTurkish::ControlId);
    OLMGis::Topology::CCustomDialogRegistry::Instance()->RegisterDialog(boost::make_shared<CPropIDPTurkish>());
    return {Tag};
}

void CTurkishRainfall::Read(CFormReading& reading) {
    const std::string text = reading.m_form.GetStrProperty(Tag, "", 1);
    m_parameters.Load();
    if (m_parameters.setValue(text) == 0 && !text.empty())
        reading.NoteUnread(Tag);
}

std::vector<CExplained> CTurkishRainfall::ExplainParameters() const {
    const double constant = m_parameters.GetConstantTime();
    return {{"constant_time", "min", constant > 0.0 ? CDataBox(constant) : CDataBox()}};
}

std::vector<CExplained> CTurkishRainfall::ExplainIntensity(double /*time*/, double area) const {
    const auto* const row = m_parameters.FindRow(area);
    const auto number = [row](double CIDPTurkParams::CRow::*member) {
        return row == nullptr ? CDataBox() : CDataBox(row->*member);
    };
    return {{"row_limit", "ha", number(&CIDPTurkParams::CRow::m_limit)},
            {"row_a", "", number(&CIDPTurkParams::CRow::m_a)},
            {"row_b", "min", number(&CIDPTurkParams::CRow::m_b)},
            {"row_c", "-", number(&CIDPTurkParams::CRow::m_c)}};
}

std::string CTurkishRainfall::ShowSource(const CExplainedNumbers& /*basis*/, std::string_view /*curveFile*/) const {
    return "Turkish parameters: a row of A, B and C by area (TURKISH)";
}

std::string CTurkishRainfall::ShowFormula() const {
    return "= A / (t + B)^C, intensity, l/(s·ha)";
}

CSheetFormula CTurkishRainfall::ShowIntensity(const CExplainedNumbers& basis, const CExplainedNumbers& pass) const {
    const auto show = [&pass](const char* name) { return ShowNumber(pass.m_number(name)); };
    const bool isConstant = basis.m_has("constant_time");
    return {"i",
            fmt::format("{} / ({} + {})^{}", show("row_a"),
                        isConstant ? ShowNumber(basis.m_number("constant_time")) : show("concentration_time"),
                        show("row_b"), show("row_c")),
            fmt::format("l/(s·ha), row up to {} ha{}", show("row_limit"), isConstant ? ", constant time" : "")};
}

} // namespace Rain
