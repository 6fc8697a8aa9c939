// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/curves/CurveRainfall.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "rain/curves/RainChoices.h"

#include <fmt/format.h>

using OLMGis::Data::CDataBox;
using OLMGis::Topology::enmPropertyEditorType;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Msg;

namespace Rain {

namespace {

constexpr int FileLabel = 2285;
constexpr int FrequencyLabel = 2290;
constexpr int ProblemOfLine = 70120;
constexpr int ProblemOfFile = 70132;

} // namespace

int CCurveRainfall::GetMode() const {
    return RainChoices::CurveFile;
}

std::vector<const char*> CCurveRainfall::AddFields(const CCategoryPtr& category) const {
    AddField(category, "FILE_PATH", enmPropertyEditorType::FilePath, FileLabel, "", "", "", "");
    AddField(category, "FREQUENCY", enmPropertyEditorType::ComboBox, FrequencyLabel, "", 0.0, "", 0.0);
    return {"FILE_PATH", "FREQUENCY"};
}

void CCurveRainfall::Read(CFormReading& reading) {
    if (m_curves.LoadFromFile(reading.m_form.GetStrProperty("FILE_PATH", "", 1)) == 0)
        reading.NoteError("FILE_PATH");
    m_frequency = reading.m_form.GetDblProperty("FREQUENCY", 0.0, 1);
    if (m_frequency == 0.0)
        reading.NoteError("FREQUENCY");
}

double CCurveRainfall::GetIntensity(double time, double /*area*/) const {
    return m_curves.GetCurveIntensity(m_frequency, time);
}

std::vector<std::string> CCurveRainfall::ListProblems() const {
    std::vector<std::string> lines;
    if (m_curves.GetPath().empty())
        return lines;
    std::vector<CIDFCurves::CProblem> problems = m_curves.GetProblems();
    problems.insert(problems.end(), m_curves.GetDoubts().begin(), m_curves.GetDoubts().end());
    for (const CIDFCurves::CProblem& problem : problems) {
        const bool isOfFile = problem.m_line == 0;
        const auto& format = Msg(isOfFile ? ProblemOfFile : ProblemOfLine);
        lines.push_back(isOfFile ? CUtility::Format(format, m_curves.GetPath(), problem.m_text)
                                 : CUtility::Format(format, m_curves.GetPath(), problem.m_line, problem.m_text));
    }
    return lines;
}

std::vector<CExplained> CCurveRainfall::ExplainParameters() const {
    return {{"curve_file", "", m_curves.GetPath()}, {"frequency", "", m_frequency}};
}

std::vector<CExplained> CCurveRainfall::ExplainIntensity(double time, double /*area*/) const {
    const auto [below, above] = m_curves.FindPoints(m_frequency, time);
    const auto number = [](const auto* point, double CIDFCurves::CCurve::value_type::*member) {
        return point == nullptr ? CDataBox() : CDataBox(point->*member);
    };
    using CPoint = CIDFCurves::CCurve::value_type;
    return {{"duration_below", "min", number(below, &CPoint::first)},
            {"intensity_below", "l/(s·ha)", number(below, &CPoint::second)},
            {"duration_above", "min", number(above, &CPoint::first)},
            {"intensity_above", "l/(s·ha)", number(above, &CPoint::second)}};
}

std::string CCurveRainfall::ShowSource(const CExplainedNumbers& basis, std::string_view curveFile) const {
    return fmt::format("curve {} of {}, linear between its points, constant outside (FREQUENCY, FILE_PATH)",
                       ShowNumber(basis.m_number("frequency")), curveFile);
}

std::string CCurveRainfall::ShowFormula() const {
    return "= i1 + (i2 - i1) · (t - t1) / (t2 - t1) between two points of the curve, intensity, l/(s·ha)";
}

CSheetFormula CCurveRainfall::ShowIntensity(const CExplainedNumbers& /*basis*/, const CExplainedNumbers& pass) const {
    const auto show = [&pass](const char* name) { return ShowNumber(pass.m_number(name)); };
    const std::string t = show("concentration_time");
    const std::string t1 = show("duration_below");
    const std::string t2 = show("duration_above");
    const std::string i1 = show("intensity_below");
    const std::string i2 = show("intensity_above");
    if (pass.m_number("duration_below") == pass.m_number("duration_above"))
        return {"", "",
                fmt::format(
                    "i = {} l/(s·ha), {}point ({}; {}) of the curve", show("intensity"),
                    pass.m_number("concentration_time") == pass.m_number("duration_below") ? "" : "constant from the ",
                    t1, i1)};
    return {"i", fmt::format("{} + ({} - {}) · ({} - {}) / ({} - {})", i1, i2, i1, t, t1, t2, t1),
            fmt::format("l/(s·ha), points ({}; {}) and ({}; {})", t1, i1, t2, i2)};
}

} // namespace Rain
