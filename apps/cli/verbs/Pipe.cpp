// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/verbs/Verbs.h"
#include "host/formulas/SectionGeometry.h"
#include "host/formulas/Units.h"
#include "host/gis_core/Utility.h"
#include "reports/PipeCalculation.h"
#include "reports/ShownText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Cli {

using OLMGis::Formulas::CShapeKind;
using OLMGis::Formulas::enmShapeDimensions;
using OLMGis::Formulas::FindShapeKind;
using OLMGis::Formulas::KeysOfSizedShapes;
using OLMGis::Formulas::MillimetresPerMetre;
using OLMGis::Formulas::PerMille;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Done;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;
using Reports::CPipeQuestion;
using Reports::OnOneLine;

namespace {

/// As entered.
struct COptions {
    std::string m_shape;             ///< circle, egg or box
    std::string m_dimensions;        ///< inside width, or width and height joined by "x" (mm)
    std::string m_slope;             ///< 1/1000
    std::string m_roughness;         ///< mm
    std::string m_viscosity{"1e-6"}; ///< m²/s
    std::string m_flow;              ///< m³/s; empty for none
    std::string m_fill;              ///< % of the inside height; empty for none
    CFormatOption m_format;
};

constexpr double LargestSize = 1e6;

std::vector<std::string> Shapes() {
    const auto keys = KeysOfSizedShapes();
    return {keys.begin(), keys.end()};
}

Status ReadNumber(std::string_view option, std::string_view text, double least, double& value) {
    const auto number = CUtility::ParseDouble(text);
    if (!number || *number < least)
        return BadArguments(fmt::format("{}: found \"{}\", expected a number{}", option, OnOneLine(text),
                                        least == 0.0 ? ", 0 or more" : ""));
    value = *number;
    return Done{};
}

Status ReadShape(const COptions& options, CPipeQuestion& question) {
    const std::string_view text = options.m_dimensions;
    const std::size_t cross = text.find('x');
    const auto width = CUtility::ParseDouble(text.substr(0, cross));
    const CShapeKind& kind = *FindShapeKind(options.m_shape); // the option takes the keys of the list only
    const bool isCircle = kind.m_dimensions == enmShapeDimensions::Diameter;
    const bool hasRatio = !isCircle && kind.m_heightRatio > 0.0;
    auto height = width;
    if (cross != std::string_view::npos)
        height = CUtility::ParseDouble(text.substr(cross + 1));
    else if (hasRatio && width)
        height = kind.m_heightRatio * *width;
    const bool isSize =
        width && height && *width > 0.0 && *height > 0.0 && *width <= LargestSize && *height <= LargestSize;
    const bool fits = isCircle ? width == height : hasRatio ? width <= height : cross != std::string_view::npos;
    if (!isSize || !fits)
        return BadArguments(
            fmt::format("DIMENSIONS: found \"{}\" for the shape {}, expected {}", OnOneLine(text), options.m_shape,
                        isCircle   ? "the inside diameter in mm, as 300"
                        : hasRatio ? "inside width and height in mm, as 800x1200, the height not below the width"
                                   : "inside width and height in mm, as 1500x900"));
    question.m_shapeName = options.m_shape;
    question.m_width = *width;
    question.m_height = *height;
    question.m_shape.m_kind = kind.m_shape;
    question.m_shape.m_width = *width / MillimetresPerMetre;
    question.m_shape.m_height = *height / MillimetresPerMetre;
    return Done{};
}

Result<CPipeQuestion> ReadQuestion(const COptions& options) {
    CPipeQuestion question;
    if (const Status read = ReadShape(options, question); !read)
        return read.GetError();
    constexpr double AnyNumber = -1e300; // a slope of 0 or below has an answer too
    double flow = 0.0;
    double fill = 0.0;
    auto& conditions = question.m_conditions;
    const struct {
        const char* m_option;
        const std::string& m_text;
        double m_least;
        double& m_value;
        bool m_isGiven;
    } numbers[] = {{"--slope", options.m_slope, AnyNumber, question.m_slope, true},
                   {"--roughness", options.m_roughness, 0.0, question.m_roughness, true},
                   {"--viscosity", options.m_viscosity, 0.0, conditions.m_viscosity, true},
                   {"--flow", options.m_flow, 0.0, flow, !options.m_flow.empty()},
                   {"--fill", options.m_fill, 0.0, fill, !options.m_fill.empty()}};
    for (const auto& number : numbers)
        if (number.m_isGiven)
            if (const Status read = ReadNumber(number.m_option, number.m_text, number.m_least, number.m_value); !read)
                return read.GetError();
    conditions.m_slope = question.m_slope / PerMille;
    conditions.m_roughness = question.m_roughness / MillimetresPerMetre;
    if (!(conditions.m_roughness > 0.0 || conditions.m_viscosity > 0.0))
        return BadArguments("--viscosity: found 0 with a roughness of 0, expected one of them above 0");
    if (fill > 100.0)
        return BadArguments(fmt::format("--fill: found {}, expected 0 to 100, % of the inside height", options.m_fill));
    if (!options.m_flow.empty())
        question.m_flow = flow;
    if (!options.m_fill.empty())
        question.m_fill = fill;
    return question;
}

CVerbResult CalculatePipe(const COptions& options, CTerminal& terminal, std::ostream& results) {
    const auto question = ReadQuestion(options);
    if (!question)
        return question.GetError();
    Print(results, Reports::MakePipeListing(question.Value()), options.m_format.Get());
    results.flush();
    if (!(question->m_conditions.m_slope > 0.0))
        terminal.Note("with a slope of 0 or below nothing flows");
    return enmExitCode::Done;
}

} // namespace

CVerb MakePipe() {
    const auto options = std::make_shared<COptions>();
    return CVerb("pipe", "SHAPE DIMENSIONS --slope I --roughness K [--flow Q|--fill P] [options]",
                 "Calculate uniform flow in one pipe, without a project")
        .ArgumentChoice("SHAPE", options->m_shape, Shapes(), fmt::format("{}", fmt::join(Shapes(), ", ")))
        .Argument("DIMENSIONS", options->m_dimensions,
                  "Inside, mm: 300 for a circle, 800x1200 (width, height) for\nan egg or a box; an egg 800 is 800x1200")
        .RequiredOption("--slope", options->m_slope, "I", "Slope, 1/1000")
        .RequiredOption("--roughness", options->m_roughness, "K", "Equivalent sand roughness, mm")
        .Option("--viscosity", options->m_viscosity, "NU", "Viscosity of the water, m²/s; default: 1e-6")
        .Option("--flow", options->m_flow, "Q", "Flow, m³/s: calculates the filling")
        .Option("--fill", options->m_fill, "P", "Filling, % of the height: calculates the flow")
        .Exclude("--flow", "--fill")
        .Formats(options->m_format, {"table", "csv", "json"}, "Default: table, with rounded numbers")
        .Examples({"drenova pipe circle 300 --slope 5 --roughness 0.4 --flow 0.05"})
        .Notes("Without --flow and --fill: the full pipe, and the greatest flow and velocity of all depths.\n"
               "Prandtl-Colebrook with the hydraulic radius, g = 9.81 m/s².")
        .Runs([options](CTerminal& terminal, std::ostream& results) {
            return CalculatePipe(*options, terminal, results);
        });
}

} // namespace Cli
