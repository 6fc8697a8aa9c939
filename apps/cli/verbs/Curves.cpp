// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/FormatHelp.h"
#include "apps/cli/input/InputFile.h"
#include "apps/cli/shell/Interrupt.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/gis_core/Utility.h"
#include "reports/CurveListing.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <memory>
#include <optional>
#include <string_view>

namespace Cli {

using OLMGis::Utility::BadArguments;
using OLMGis::Utility::BadInput;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Done;
using OLMGis::Utility::Refused;
using OLMGis::Utility::Status;
using Reports::OnOneLine;

namespace {

struct COptions {
    std::string m_file;      ///< "-" for standard input
    std::string m_frequency; ///< of one curve; empty for all
    std::string m_duration;  ///< min; empty for no look-up
    CFormatOption m_format;
};

std::string PlaceOf(const std::string& file, const CIDFCurves::CProblem& problem) {
    return problem.m_line == 0 ? file : fmt::format("{}, line {}", file, problem.m_line);
}

Status ReadNumber(std::string_view option, const std::string& text, std::optional<double>& number) {
    if (text.empty())
        return Done{};
    number = CUtility::ParseDouble(text);
    if (!number)
        return BadArguments(fmt::format("{}: found \"{}\", expected a number", option, OnOneLine(text)));
    return Done{};
}

/// A file without a usable curve: its problems in one message.
OLMGis::Utility::Error Invalid(const std::string& file, const CIDFCurves& curves) {
    std::string text;
    for (const CIDFCurves::CProblem& problem : curves.GetProblems())
        text += fmt::format("{}{}: {}", text.empty() ? "" : "; ", PlaceOf(file, problem), problem.m_text);
    return BadInput(text.empty() ? file + ": no curves" : text);
}

Status CheckFrequency(std::optional<double> frequency, const CIDFCurves& curves, const std::string& file) {
    if (!frequency || curves.GetCurves().count(*frequency) != 0)
        return Done{};
    constexpr std::size_t MostNamed = 20;
    std::vector<std::string> known;
    for (const auto& [each, curve] : curves.GetCurves())
        known.push_back(CUtility::ToText(each));
    return BadArguments(fmt::format("--frequency: found {}, expected one that {} has: {}", CUtility::ToText(*frequency),
                                    file, Reports::FirstNames({known.begin(), known.end()}, MostNamed)));
}

void WarnOfDuration(const CIDFCurves& curves, const Reports::CCurveQuestion& question, CTerminal& terminal) {
    for (const auto& [frequency, curve] : curves.GetCurves())
        if (question.m_duration && question.m_frequency.value_or(frequency) == frequency &&
            (*question.m_duration < curve.front().first || *question.m_duration > curve.back().first))
            terminal.Warn(fmt::format("--duration: {} min is outside the curve {} ({} to {} min), where the intensity "
                                      "is constant",
                                      CUtility::ToText(*question.m_duration), CUtility::ToText(frequency),
                                      CUtility::ToText(curve.front().first), CUtility::ToText(curve.back().first)));
}

CVerbResult ShowCurves(const COptions& options, CTerminal& terminal, std::ostream& results) {
    Reports::CCurveQuestion question;
    if (const Status read = ReadNumber("--frequency", options.m_frequency, question.m_frequency); !read)
        return read.GetError();
    if (const Status read = ReadNumber("--duration", options.m_duration, question.m_duration); !read)
        return read.GetError();
    if (question.m_duration && !(*question.m_duration >= 0.0))
        return BadArguments(fmt::format("--duration: found {}, expected 0 min or more", OnOneLine(options.m_duration)));
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
    if (const Status known = CheckFrequency(question.m_frequency, curves, file->GetName()); !known)
        return known.GetError();
    for (const auto* const list : {&curves.GetProblems(), &curves.GetDoubts()})
        for (const CIDFCurves::CProblem& problem : *list)
            terminal.Warn(OnOneLine(fmt::format("{}: {}", PlaceOf(file->GetName(), problem), problem.m_text)));
    WarnOfDuration(curves, question, terminal);
    Print(results, Reports::MakeCurveListing(curves, question, file->GetName()), options.m_format.Get());
    return enmExitCode::Done;
}

} // namespace

CVerb MakeCurves() {
    const auto options = std::make_shared<COptions>();
    return CVerb("curves", "FILE [--frequency F] [--duration T] [options]", "Show the rain intensity curves of a file")
        .Argument("FILE", options->m_file, "Curve file; \"-\" for standard input")
        .Option("--frequency", options->m_frequency, "F", "One curve: its points, or one look-up")
        .Option("--duration", options->m_duration, "T", "Intensity for a duration in min, on one curve or on each")
        .Formats(options->m_format, {"table", "csv", "json"}, "Default: table")
        .Examples({"drenova curves curves.txt", "drenova curves curves.txt --frequency 2 --duration 12.5"})
        .Notes(
            ListInputFormat("curves") +
            "\n\nLines that are ignored are listed on standard error with the reason. Exit code: 3 for a file without\n"
            "a curve, 2 for a frequency that it does not have.")
        .Runs(
            [options](CTerminal& terminal, std::ostream& results) { return ShowCurves(*options, terminal, results); });
}

} // namespace Cli
