// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Quantity.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/formulas/SectionGeometry.h"
#include "host/formulas/Units.h"
#include "host/gis_core/Utility.h"
#include "host/gis_core/ValueRange.h"
#include "reports/PipeCalculation.h"
#include "reports/ShownText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Cli {

using OLMGis::Data::enmJudgement;
using OLMGis::Data::Judge;
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

CQuantity Size() {
    CQuantity size{"DIMENSIONS", "mm", Range(0.01, 1e6, 20.0, 20000.0)};
    size.m_range.m_isMinExcluded = true;
    return size;
}

/// A slope of 0 or below has an answer too, and a note of its own.
CQuantity Slope() {
    CQuantity slope{"--slope", "1/1000", {}};
    slope.m_range.m_usualMax = 1000.0;
    return slope;
}

CQuantity Roughness() {
    CQuantity roughness{"--roughness", "mm", Range(0.0, 1e6, 0.01, 10.0)};
    roughness.m_range.m_marks = {0.0}; // smooth walls
    return roughness;
}

CQuantity Flow() {
    return {"--flow", "m³/s", Range(0.0, 1e6, 0.0, 20.0)};
}

CQuantity Filling() {
    return {"--fill", "%", Range(0.0, 100.0, 0.0, 100.0)};
}

std::vector<std::string> Shapes() {
    const auto keys = KeysOfSizedShapes();
    return {keys.begin(), keys.end()};
}

Status ReadShape(const COptions& options, CPipeQuestion& question, std::vector<std::string>& warnings) {
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
    const CQuantity size = Size();
    const bool isSize = width && height && Judge(size.m_range, *width) != enmJudgement::Impossible &&
                        Judge(size.m_range, *height) != enmJudgement::Impossible;
    const bool fits = isCircle ? width == height : hasRatio ? width <= height : cross != std::string_view::npos;
    if (!isSize || !fits)
        return BadArguments(
            fmt::format("DIMENSIONS: found \"{}\" for the shape {}, expected {}", OnOneLine(text), options.m_shape,
                        isCircle   ? "the inside diameter in mm, as 300"
                        : hasRatio ? "inside width and height in mm, as 800x1200, the height not below the width"
                                   : "inside width and height in mm, as 1500x900"));
    WarnOfUnusual(size, *width, warnings);
    if (*height != *width)
        WarnOfUnusual(size, *height, warnings);
    question.m_shapeName = options.m_shape;
    question.m_width = *width;
    question.m_height = *height;
    question.m_shape.m_kind = kind.m_shape;
    question.m_shape.m_width = *width / MillimetresPerMetre;
    question.m_shape.m_height = *height / MillimetresPerMetre;
    return Done{};
}

Result<CPipeQuestion> ReadQuestion(const COptions& options, std::vector<std::string>& warnings) {
    CPipeQuestion question;
    if (const Status read = ReadShape(options, question, warnings); !read)
        return read.GetError();
    double flow = 0.0;
    double fill = 0.0;
    auto& conditions = question.m_conditions;
    const struct {
        CQuantity m_quantity;
        const std::string& m_text;
        double& m_value;
        bool m_isGiven;
    } numbers[] = {{Slope(), options.m_slope, question.m_slope, true},
                   {Roughness(), options.m_roughness, question.m_roughness, true},
                   {Viscosity(), options.m_viscosity, conditions.m_viscosity, true},
                   {Flow(), options.m_flow, flow, !options.m_flow.empty()},
                   {Filling(), options.m_fill, fill, !options.m_fill.empty()}};
    for (const auto& number : numbers)
        if (number.m_isGiven)
            if (const Status read = ReadNumber(number.m_quantity, number.m_text, number.m_value, warnings); !read)
                return read.GetError();
    conditions.m_slope = question.m_slope / PerMille;
    conditions.m_roughness = question.m_roughness / MillimetresPerMetre;
    if (!(conditions.m_roughness > 0.0 || conditions.m_viscosity > 0.0))
        return BadArguments("--viscosity: found 0 with a roughness of 0, expected one of them above 0");
    if (!options.m_flow.empty())
        question.m_flow = flow;
    if (!options.m_fill.empty())
        question.m_fill = fill;
    return question;
}

CVerbResult CalculatePipe(const COptions& options, CTerminal& terminal, std::ostream& results) {
    std::vector<std::string> warnings;
    const auto question = ReadQuestion(options, warnings);
    if (!question)
        return question.GetError();
    Print(results, Reports::MakePipeListing(question.Value()), options.m_format.Get());
    results.flush();
    for (const std::string& warning : warnings)
        terminal.Warn(warning);
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
