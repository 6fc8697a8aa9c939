// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandCurves.h"

#include "apps/cli/InputFile.h"
#include "apps/cli/Interrupt.h"
#include "apps/cli/JsonText.h"
#include "apps/cli/ShownText.h"
#include "apps/cli/Table.h"
#include "host/gis_core/Utility.h"
#include "rain/curves/IDFCurves.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <optional>
#include <utility>
#include <vector>

namespace Cli {

using nlohmann::ordered_json;
using OLMGis::Utility::BadInput;
using OLMGis::Utility::BadWords;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Done;
using OLMGis::Utility::Refused;
using OLMGis::Utility::Status;

namespace {

constexpr int Decimals = 2;

/// What is asked of the curves.
struct CQuestion {
    std::optional<double> m_frequency;
    std::optional<double> m_duration;
};

std::string PlaceOf(const std::string& file, const CIDFCurves::CProblem& problem) {
    return problem.m_line == 0 ? file : fmt::format("{}, line {}", file, problem.m_line);
}

Status ReadNumber(std::string_view option, const std::string& text, std::optional<double>& number) {
    if (text.empty())
        return Done{};
    number = CUtility::ParseDouble(text);
    if (!number)
        return BadWords(fmt::format("{}: found \"{}\", expected a number", option, OnOneLine(text)));
    return Done{};
}

/// The file as a whole is bad: its problems in one message, the first of them being the reason.
OLMGis::Utility::Error Invalid(const std::string& file, const CIDFCurves& curves) {
    std::string text;
    for (const CIDFCurves::CProblem& problem : curves.GetProblems())
        text += fmt::format("{}{}: {}", text.empty() ? "" : "; ", PlaceOf(file, problem), problem.m_text);
    return BadInput(text.empty() ? file + ": no curves" : text);
}

Status CheckFrequency(const CQuestion& question, const CIDFCurves& curves, const std::string& file) {
    if (!question.m_frequency || curves.GetCurves().count(*question.m_frequency) != 0)
        return Done{};
    constexpr std::size_t MostNamed = 20;
    std::string known;
    std::size_t count = 0;
    for (const auto& [frequency, curve] : curves.GetCurves())
        if (++count <= MostNamed)
            known += (known.empty() ? "" : ", ") + CUtility::ToText(frequency);
    if (count > MostNamed)
        known += ", ...";
    return BadWords(fmt::format("--frequency: found {}, expected one that {} has: {}",
                                CUtility::ToText(*question.m_frequency), file, known));
}

/// The curves that are asked for, by ascending frequency.
template <class Use>
void ForEach(const CIDFCurves& curves, const CQuestion& question, const Use& use) {
    for (const auto& [frequency, curve] : curves.GetCurves())
        if (!question.m_frequency || *question.m_frequency == frequency)
            use(frequency, curve);
}

void PrintAsJson(std::ostream& results, const CIDFCurves& curves, const CQuestion& question, const std::string& file) {
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
    for (const CIDFCurves::CProblem& problem : curves.GetProblems())
        answer["problems"].push_back(
            {{"line", problem.m_line == 0 ? ordered_json() : ordered_json(problem.m_line)}, {"text", problem.m_text}});
    PrintJson(results, answer);
}

std::string Show(double value) {
    return ShowValue(OLMGis::Data::CDataBox(value), Decimals);
}

/// The points of one curve.
void PrintPoints(std::ostream& results, const CIDFCurves::CCurve& curve) {
    CTable table;
    table.AddColumn("duration, min", CTable::enmAlign::Right);
    table.AddColumn("intensity, l/(s·ha)", CTable::enmAlign::Right);
    for (const auto& [duration, intensity] : curve)
        table.AddRow({CUtility::ToText(duration), Show(intensity)});
    table.Print(results);
}

/// Intensities for a duration, and between which points they lie.
void PrintLookUp(std::ostream& results, const CIDFCurves& curves, const CQuestion& question) {
    CTable table;
    for (const char* head : {"frequency", "duration, min", "intensity, l/(s·ha)"})
        table.AddColumn(head, CTable::enmAlign::Right);
    table.AddColumn("from");
    ForEach(curves, question, [&](double frequency, const CIDFCurves::CCurve&) {
        const double duration = *question.m_duration;
        const auto [below, above] = curves.FindPoints(frequency, duration);
        std::string source = fmt::format("point ({}; {})", CUtility::ToText(below->first), Show(below->second));
        if (below != above)
            source = fmt::format("points ({}; {}) and ({}; {})", CUtility::ToText(below->first), Show(below->second),
                                 CUtility::ToText(above->first), Show(above->second));
        else if (below->first != duration)
            source = "held from the " + source;
        table.AddRow({CUtility::ToText(frequency), CUtility::ToText(duration),
                      Show(curves.GetCurveIntensity(frequency, duration)), source});
    });
    table.Print(results);
}

void PrintOverview(std::ostream& results, const CIDFCurves& curves) {
    CTable table;
    for (const char* head : {"frequency", "points", "durations, min", "intensities, l/(s·ha)"})
        table.AddColumn(head, CTable::enmAlign::Right);
    for (const auto& [frequency, curve] : curves.GetCurves())
        table.AddRow(
            {CUtility::ToText(frequency), fmt::format("{}", curve.size()),
             fmt::format("{} to {}", CUtility::ToText(curve.front().first), CUtility::ToText(curve.back().first)),
             fmt::format("{} to {}", Show(curve.front().second), Show(curve.back().second))});
    table.Print(results);
}

} // namespace

CVerbResult ShowCurves(const CCurvesOptions& options, CTerminal& terminal, std::ostream& results) {
    CQuestion question;
    if (const Status read = ReadNumber("--frequency", options.m_frequency, question.m_frequency); !read)
        return read.GetError();
    if (const Status read = ReadNumber("--duration", options.m_duration, question.m_duration); !read)
        return read.GetError();
    auto file = CInputFile::Open(options.m_file);
    if (!file)
        return file.GetError();
    CIDFCurves curves;
    curves.Load(file->GetStream(), file->GetName());
    if (const Status goesOn = Interrupt::Check(); !goesOn)
        return goesOn.GetError();
    if (file->GetStream().bad())
        return Refused(fmt::format("{}: cannot be read", file->GetName()));
    if (!curves.IsValid())
        return Invalid(file->GetName(), curves);
    if (const Status known = CheckFrequency(question, curves, file->GetName()); !known)
        return known.GetError();
    for (const CIDFCurves::CProblem& problem : curves.GetProblems())
        terminal.Warn(OnOneLine(fmt::format("{}: {}", PlaceOf(file->GetName(), problem), problem.m_text)));
    if (options.m_isJson)
        PrintAsJson(results, curves, question, file->GetName());
    else if (question.m_duration)
        PrintLookUp(results, curves, question);
    else if (question.m_frequency)
        PrintPoints(results, curves.GetCurves().at(*question.m_frequency));
    else
        PrintOverview(results, curves);
    results.flush();
    return enmExitCode::Done;
}

} // namespace Cli
