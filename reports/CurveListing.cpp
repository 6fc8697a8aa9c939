// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/CurveListing.h"

#include "host/gis_core/Utility.h"
#include "reports/JsonDocument.h"
#include "reports/ShownText.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <utility>

namespace Reports {

using nlohmann::ordered_json;
using OLMGis::Utility::CUtility;

namespace {

constexpr int Decimals = 2;
constexpr const char* IntensityUnit = "l/(s·ha)";

/// The curves that are asked for, by ascending frequency.
template <class Use>
void ForEach(const CIDFCurves& curves, const CCurveQuestion& question, const Use& use) {
    for (const auto& [frequency, curve] : curves.GetCurves())
        if (!question.m_frequency || *question.m_frequency == frequency)
            use(frequency, curve);
}

ordered_json Describe(const CIDFCurves& curves, const CCurveQuestion& question, const std::string& file) {
    ordered_json answer{{"file", file}, {"curves", ordered_json::array()}, {"problems", ordered_json::array()}};
    ForEach(curves, question, [&](double frequency, const CIDFCurves::CCurve& curve) {
        ordered_json each{{"frequency", frequency},
                          {"points", ordered_json::array()},
                          {"duration_min", {{"from", curve.front().first}, {"to", curve.back().first}}}};
        for (const auto& [duration, intensity] : curve)
            each["points"].push_back({{"duration_min", duration}, {"intensity_lsha", intensity}});
        if (question.m_duration) {
            each["duration"] = *question.m_duration;
            each["intensity_lsha"] = curves.GetCurveIntensity(frequency, *question.m_duration);
        }
        answer["curves"].push_back(std::move(each));
    });
    for (const auto* const list : {&curves.GetProblems(), &curves.GetDoubts()})
        for (const CIDFCurves::CProblem& problem : *list)
            answer["problems"].push_back({{"line", problem.m_line == 0 ? ordered_json() : ordered_json(problem.m_line)},
                                          {"text", problem.m_text}});
    return answer;
}

CTable MakePointTable(const CIDFCurves::CCurve& curve) {
    CTable table({NumberColumn("duration_min", "duration", "min"),
                  NumberColumn("intensity_lsha", "intensity", IntensityUnit, Decimals)});
    for (const auto& [duration, intensity] : curve)
        table.AddRow({duration, intensity});
    return table;
}

/// The points between which an intensity was interpolated.
std::string ShowSource(const CIDFCurves& curves, double frequency, double duration) {
    const auto show = [](const auto& point) {
        return fmt::format("({}; {})", CUtility::ToText(point.first), ShowValue(point.second, Decimals));
    };
    const auto [below, above] = curves.FindPoints(frequency, duration);
    if (below != above)
        return fmt::format("points {} and {}", show(*below), show(*above));
    return fmt::format("{}point {}", below->first == duration ? "" : "constant from the ", show(*below));
}

CTable MakeLookUpTable(const CIDFCurves& curves, const CCurveQuestion& question) {
    CTable table({NumberColumn("frequency", "frequency"), NumberColumn("duration_min", "duration", "min"),
                  NumberColumn("intensity_lsha", "intensity", IntensityUnit, Decimals), TextColumn("from", "from")});
    const double duration = *question.m_duration;
    ForEach(curves, question, [&](double frequency, const CIDFCurves::CCurve&) {
        table.AddRow({frequency, duration, curves.GetCurveIntensity(frequency, duration),
                      ShowSource(curves, frequency, duration)});
    });
    return table;
}

CTable MakeOverview(const CIDFCurves& curves) {
    CTable table({NumberColumn("frequency", "frequency"), NumberColumn("points", "points"),
                  NumberColumn("durations_min", "durations", "min"),
                  NumberColumn("intensities_lsha", "intensities", IntensityUnit)});
    for (const auto& [frequency, curve] : curves.GetCurves())
        table.AddRow(
            {frequency, static_cast<int>(curve.size()),
             fmt::format("{} to {}", CUtility::ToText(curve.front().first), CUtility::ToText(curve.back().first)),
             fmt::format("{} to {}", ShowValue(curve.front().second, Decimals),
                         ShowValue(curve.back().second, Decimals))});
    return table;
}

} // namespace

CListing MakeCurveListing(const CIDFCurves& curves, const CCurveQuestion& question, const std::string& file) {
    CListing listing(question.m_duration    ? MakeLookUpTable(curves, question)
                     : question.m_frequency ? MakePointTable(curves.GetCurves().at(*question.m_frequency))
                                            : MakeOverview(curves));
    listing.m_printDocument = [&curves, question, file](std::ostream& stream) {
        PrintDocument(stream, Describe(curves, question, file));
    };
    return listing;
}

} // namespace Reports
