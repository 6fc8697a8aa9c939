// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// The calculation sheet of one section: every formula as letters, as numbers, and where each number comes from.
#include "rain/curves/RainChoices.h"
#include "rain/editions/Editions.h"
#include "rain/explain/RainTraceNames.h"
#include "reports/RainExplanation.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace Reports {

namespace {

std::string N(double number) {
    return Rain::ShowNumber(number);
}

class CSheet {
public:
    explicit CSheet(const CRainExplanation& explanation)
        : m_explanation(explanation), m_basis(explanation.m_basis.front()),
          m_rainfall(Rain::MakeRainfall(m_basis.Code("rainfall_mode"))),
          m_standard(Rain::MakeStandard(m_basis.Code("calc_standard"))) {}

    std::string Print() {
        const std::string head =
            fmt::format("Rain calculation of section {}", OnOneLine(m_explanation.m_section->GetName()));
        Line(head);
        Line(std::string(DisplayWidth(head), '='));
        PrintBasis();
        PrintFormulas();
        PrintAreas();
        if (m_explanation.m_chain.size() == RainTrace::MostChained)
            Line(fmt::format("\nOf the chain the {} nearest sections; the sections above them enter as T above.",
                             RainTrace::MostChained));
        for (const auto& step : m_explanation.m_chain)
            PrintStep(step);
        PrintResult();
        m_text.pop_back(); // the last line end
        return std::move(m_text);
    }

private:
    bool HasRunningInletTime() const { return m_rainfall && m_rainfall->HasRunningInletTime(); }

    static Rain::CExplainedNumbers NumbersOf(const CTraceValues& values) {
        return {[&values](std::string_view name) { return values.Number(name); },
                [&values](std::string_view name) { return values.Has(name); }};
    }

    void Line(std::string_view text) {
        m_text += text;
        m_text += '\n';
    }
    void Field(std::string_view name, std::string_view text) { Line(fmt::format("  {:<10}{}", name, text)); }

    /// "    tf = L / v / 60 = 80 / 1.4 / 60 = 0.95 min": letters, numbers, result.
    void Formula(std::string_view letters, std::string_view numbers, double result, std::string_view unit) {
        Line(fmt::format("    {} = {} = {}{}{}", letters, numbers, N(result), unit.empty() ? "" : " ", unit));
    }

    void PrintBasis() {
        if (m_rainfall)
            Field("rain", m_rainfall->ShowSource(NumbersOf(m_basis), OnOneLine(m_basis.Text("curve_file"))));
        const double least = m_basis.Number("minimal_diameter");
        Field("pipes", fmt::format("of \"{}\" (PIPE_GROUP), filled to {} % at most (PIPE_FILL){}",
                                   OnOneLine(m_basis.Text("pipe_group")), N(m_basis.Number("pipe_fill")),
                                   least > 0.0 ? fmt::format(", not below {} mm (MINIMAL_DIAMETAR)", N(least)) : ""));
        Field("water",
              fmt::format("viscosity nu = {} m²/s (WATER_VISCOSITY), g = 9.81 m/s²", N(m_basis.Number("viscosity"))));
        const int rule = m_basis.Code("time_rule");
        if (!HasRunningInletTime())
            Field("times", fmt::format("along the path {} (STORM_CAD)",
                                       rule == RainChoices::TimeToLowerEnd   ? "down to the lower end of a section"
                                       : rule == RainChoices::TimeToUpperEnd ? "down to the upper end of a section"
                                                                             : "by no rule"));
        Field("branches",
              fmt::format("the {} flow time continues (BRANCHING_FLOW_TIME)",
                          m_basis.Code("branching") == RainChoices::LongestBranch ? "longest" : "shortest"));
        if (const int effect = m_basis.Code("partial_area"); effect != 0)
            Field("areas", effect == RainChoices::PartialAreaChains
                               ? "of the chain alone (PARTIAL_AREA_EFFECT by chains)"
                               : "of the combination with the greatest flow (PARTIAL_AREA_EFFECT by search)");
        Field("passes", fmt::format("until the intensity is within {} % of the one for the new times (PRECISION)",
                                    N(m_basis.Number("precision"))));
    }

    void PrintFormulas() {
        Line("\nFormulas");
        Field("t",
              HasRunningInletTime() ? "= tin + tf, concentration time, min" : "= tin + T, concentration time, min");
        if (m_rainfall)
            Field("i", m_rainfall->ShowFormula());
        Field("Q", "= F · i / 1000, flow, m³/s, of the effective area F, ha");
        Field("v(h)",
              "= -2 · r · log10(2.51 · nu / (4 · R · r) + k / (14.84 · R)), r = sqrt(8 · g · R · I), all in m and s");
        Field("Q(h)", "= A(h) · v(h); A and R: wetted area and hydraulic radius at the depth h");
        Field("d", "diameter whose full circle carries Q; the catalogue gives the next pipe; filling 100 · h / H");
        Field("tf", "= L / v / 60, flow time, min");
        if (!HasRunningInletTime())
            Field("T", "time along the path, min");
    }

    static std::string Catchments(const CRainExplanation::CArea& area) {
        std::string text;
        for (const auto& each : area.m_catchments)
            text += fmt::format("{}{} · {}", text.empty() ? "" : " + ", N(each.m_area), N(each.m_coefficient));
        return text.empty() ? "no rain catchment" : text;
    }

    void PrintAreas() {
        if (m_explanation.m_areas.empty())
            return;
        Line("\nEffective area: rain catchments (area · runoff coefficient), ha");
        std::size_t width = 0;
        for (const auto& area : m_explanation.m_areas)
            width = std::max(width, DisplayWidth(OnOneLine(area.m_name)));
        for (const auto& area : m_explanation.m_areas) {
            const std::string name = OnOneLine(area.m_name);
            Line(fmt::format("  {}{}  {} = {}", name, std::string(width - DisplayWidth(name), ' '), Catchments(area),
                             N(area.m_area)));
        }
        Line(fmt::format("  sum = {} ha", N(m_explanation.m_chain.back().m_passes.back().Number("effective_area"))));
    }

    void PrintStep(const CRainExplanation::CStep& step) {
        const CTraceValues& first = step.m_passes.front();
        const std::string name = OnOneLine(step.m_section->GetName());
        std::string above = "a head of the network";
        if (const CTraceValues* const taken = step.FindTaken()) {
            above = fmt::format("below {}", OnOneLine(taken->GetRow().m_name));
            if (step.m_branches.size() > 1) {
                above += ", chosen among";
                for (const CTraceValues& branch : step.m_branches)
                    above += fmt::format("{} {}: {} min", &branch == &step.m_branches.front() ? "" : ",",
                                         OnOneLine(branch.GetRow().m_name), N(branch.Number("time")));
            }
        } else if (!step.m_branches.empty()) {
            above = "calculated as a head, without the sections above";
        }
        Line(fmt::format("\nSection {}, {}", name, above));
        Line(fmt::format("    tin = {} min ({})", N(first.Number("inlet_time")),
                         HasRunningInletTime() && step.FindTaken() != nullptr ? "tin + tf of the section above"
                                                                              : "FLOW_INTIME"));
        Line(fmt::format("    L = {} m (plan length), I = {} / 1000 (SECTION_SLOPE)", N(first.Number("length")),
                         N(first.Number("slope"))));
        const double area = first.Number("effective_area");
        Line(fmt::format("    F = {} ha, of it {} its own ({})", N(area), N(first.Number("own_area")),
                         Catchments(step.m_own)));
        for (const CTraceValues& pass : step.m_passes)
            PrintPass(step, pass);
    }

    void PrintPass(const CRainExplanation::CStep& step, const CTraceValues& pass) {
        Line(fmt::format("  pass {}", pass.Code("pass")));
        const double t = pass.Number("concentration_time");
        Formula(HasRunningInletTime() ? "t = tin + tf" : "t = tin + T",
                fmt::format("{} + {}", N(pass.Number("inlet_time")), N(pass.Number("time_before"))), t, "min");
        PrintIntensity(pass);
        const double i = pass.Number("intensity");
        const double q = pass.Number("flow");
        const std::string area = N(pass.Number("effective_area"));
        if (pass.Has("coefficient") && m_standard) {
            const Rain::CShownFactor factor = m_standard->ShowFlowFactor();
            Formula(fmt::format("Q = {} · F · i / 1000", factor.m_letter),
                    fmt::format("{} · {} · {} / 1000", N(pass.Number("coefficient")), area, N(i)), q,
                    fmt::format("m³/s, {}", factor.m_source));
        } else {
            Formula("Q = F · i / 1000", fmt::format("{} · {} / 1000", area, N(i)), q, "m³/s");
        }
        if (pass.Has("pipe"))
            PrintPipe(pass, q);
        else
            Line("    no flow: no pipe is chosen, v = 0, tf = 0");
        PrintTimes(pass);
        const double next = pass.Number("next_intensity");
        const double apart = std::abs(i - next);
        const double allowed = i * m_basis.Number("precision") / 100.0;
        Line(fmt::format("    for the new times i = {}: {} apart, allowed {}: {}", N(next), N(apart), N(allowed),
                         apart <= allowed                 ? "done"
                         : &pass == &step.m_passes.back() ? "not met"
                                                          : "another pass"));
    }

    void PrintIntensity(const CTraceValues& pass) {
        if (!m_rainfall)
            return;
        const Rain::CSheetFormula shown = m_rainfall->ShowIntensity(NumbersOf(m_basis), NumbersOf(pass));
        if (shown.m_letters.empty())
            Line("    " + shown.m_unit);
        else
            Formula(shown.m_letters, shown.m_numbers, pass.Number("intensity"), shown.m_unit);
    }

    void PrintPipe(const CTraceValues& pass, double q) {
        const std::string_view source = pass.Text("roughness_source");
        Line(fmt::format("    k = {} mm ({})", N(pass.Number("roughness")),
                         source == "section"         ? "PIPE_ROUGHNESS of the section"
                         : source == "existing_pipe" ? "of the present pipe of the section"
                         : source == "pass_before"   ? "of the pipe of the previous pass"
                                                     : "of the smallest pipe of the group"));
        const double asked = pass.Number("min_diameter");
        Line(fmt::format("    d = {} mm carries Q full{}", N(pass.Number("full_diameter")),
                         asked > 0.0 ? fmt::format("; required of the catalogue: {} mm", N(asked))
                                     : "; the pipe of the section is kept"));
        const double width = pass.Number("inner_diameter");
        const double height = pass.Number("inner_height");
        Line(fmt::format("    pipe {} of \"{}\": {} {} mm", OnOneLine(pass.Text("pipe")),
                         OnOneLine(pass.Text("pipe_group")), pass.Text("shape"),
                         width == height ? N(width) : N(width) + " x " + N(height)));
        Line(fmt::format("    filling = {} % (h = {} m), v = {} m/s, where Q(h) = {} m³/s", N(pass.Number("filling")),
                         N(pass.Number("filling") * height / 100.0 / 1000.0), N(pass.Number("velocity")), N(q)));
        const double length = pass.Number("length");
        const double v = pass.Number("velocity");
        const std::string time = fmt::format("{} / {} / 60", N(length), N(v));
        if (m_standard && m_standard->FindTimeFactor() != nullptr) {
            const Rain::CShownFactor factor = m_standard->ShowTimeFactor();
            Formula(fmt::format("tf = {} · L / v / 60", factor.m_letter),
                    fmt::format("{} · {}", N(pass.Number("retention")), time), pass.Number("flow_time"),
                    fmt::format("min, {}", factor.m_source));
        } else {
            Formula("tf = L / v / 60", time, pass.Number("flow_time"), "min");
        }
    }

    void PrintTimes(const CTraceValues& pass) {
        if (HasRunningInletTime())
            return;
        const double above = pass.Number("upstream_time_above");
        const double result = pass.Number("upstream_time");
        const bool isCarrier = m_basis.Code("ignore_carriers") != 0 && pass.Number("own_area") == 0.0;
        const double carried = pass.Number("carrier_time_above");
        if (m_basis.Code("time_rule") == RainChoices::TimeToUpperEnd)
            Formula("T = T above + the part of the section above",
                    fmt::format("{} + {}", N(above), N(pass.Number("contribution_above"))), result, "min");
        else if (isCarrier)
            Line(fmt::format("    T = T above = {} min; a section without an area of its own adds its {} min below "
                             "(IGNORE_CARRIER_PIPES)",
                             N(result), N(pass.Number("carrier_time"))));
        else if (carried > 0.0)
            Formula("T = T above + tf + times of carriers above",
                    fmt::format("{} + {} + {}", N(above), N(pass.Number("flow_time")), N(carried)), result, "min");
        else
            Formula("T = T above + tf", fmt::format("{} + {}", N(above), N(pass.Number("flow_time"))), result, "min");
    }

    void PrintResult() {
        Line(fmt::format("\nStored on section {}", OnOneLine(m_explanation.m_section->GetName())));
        for (const auto& [key, box] : m_explanation.m_stored)
            Line(fmt::format("  {:<30}{}", key, box.IsNotNull() ? N(box.AsDouble()) : std::string()));
    }

    std::string m_text;
    const CRainExplanation& m_explanation;
    const CTraceValues& m_basis;
    const std::unique_ptr<const Rain::CRainfall> m_rainfall;       ///< null for an unknown mode
    const std::unique_ptr<const Rain::CDesignStandard> m_standard; ///< null for an unknown one
};

} // namespace

std::string MakeRainSheet(const CRainExplanation& explanation) {
    return CSheet(explanation).Print();
}

} // namespace Reports
