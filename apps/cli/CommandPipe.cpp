// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandPipe.h"

#include "apps/cli/JsonText.h"
#include "apps/cli/ShownText.h"
#include "apps/cli/Table.h"
#include "host/formulas/Filling.h"
#include "host/gis_core/Utility.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <optional>
#include <string_view>
#include <vector>

namespace Cli {

using nlohmann::ordered_json;
using OLMGis::Data::CDataBox;
using OLMGis::Utility::BadWords;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Done;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;
using namespace OLMGis::Formulas;

namespace {

constexpr double MillimetresPerMetre = 1000.0;
constexpr double Thousandths = 1000.0;
constexpr double EggHeight = 1.5; // of its width, the normal egg
constexpr double LargestSize = 1e6;

/// What the words ask for; lengths and slope in m and s, and as they were typed.
struct CPipeQuestion {
    CSectionShape m_shape;
    CFlowConditions m_conditions;
    double m_width = 0.0;     ///< mm
    double m_height = 0.0;    ///< mm
    double m_slope = 0.0;     ///< 1/1000
    double m_roughness = 0.0; ///< mm
    std::optional<double> m_flow;
    std::optional<double> m_fill; ///< %
};

/// One line of the answer: a number or nothing, under a key for programs and a name for people.
struct CFigure {
    const char* m_key;
    const char* m_name;
    std::optional<double> m_value;
    const char* m_unit;
    int m_decimals;
};

Status ReadNumber(std::string_view option, std::string_view text, double least, double& value) {
    const auto number = CUtility::ParseDouble(text);
    if (!number || *number < least)
        return BadWords(fmt::format("{}: found \"{}\", expected a number{}", option, OnOneLine(text),
                                    least == 0.0 ? " not below 0" : ""));
    value = *number;
    return Done{};
}

Status ReadShape(const CPipeOptions& options, CPipeQuestion& question) {
    const std::string_view text = options.m_dimensions;
    const std::size_t cross = text.find('x');
    const auto width = CUtility::ParseDouble(text.substr(0, cross));
    const bool isCircle = options.m_shape == "circle";
    const bool isEgg = options.m_shape == "egg";
    auto height = width;
    if (cross != std::string_view::npos)
        height = CUtility::ParseDouble(text.substr(cross + 1));
    else if (isEgg && width)
        height = EggHeight * *width;
    const bool isSize =
        width && height && *width > 0.0 && *height > 0.0 && *width <= LargestSize && *height <= LargestSize;
    const bool fits = isCircle ? width == height : isEgg ? width <= height : cross != std::string_view::npos;
    if (!isSize || !fits)
        return BadWords(
            fmt::format("DIMENSIONS: found \"{}\" for the shape {}, expected {}", OnOneLine(text), options.m_shape,
                        isCircle ? "the inside diameter in mm, as 300"
                        : isEgg  ? "inside width and height in mm, as 800x1200, the height not below the width"
                                 : "inside width and height in mm, as 1500x900"));
    question.m_width = *width;
    question.m_height = *height;
    question.m_shape.m_kind = isCircle ? enmSectionShape::Circle : isEgg ? enmSectionShape::Egg : enmSectionShape::Box;
    question.m_shape.m_width = *width / MillimetresPerMetre;
    question.m_shape.m_height = *height / MillimetresPerMetre;
    return Done{};
}

Result<CPipeQuestion> ReadQuestion(const CPipeOptions& options) {
    CPipeQuestion question;
    if (const Status read = ReadShape(options, question); !read)
        return read.GetError();
    constexpr double AnyNumber = -1e300; // a pipe without a fall has its answer too
    double flow = 0.0;
    double fill = 0.0;
    CFlowConditions& conditions = question.m_conditions;
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
    conditions.m_slope = question.m_slope / Thousandths;
    conditions.m_roughness = question.m_roughness / MillimetresPerMetre;
    if (!(conditions.m_roughness > 0.0 || conditions.m_viscosity > 0.0))
        return BadWords("--viscosity: found 0 with a roughness of 0, expected that one of them is above 0");
    if (fill > 100.0)
        return BadWords(fmt::format("--fill: found {}, expected 0 to 100, % of the inside height", options.m_fill));
    if (!options.m_flow.empty())
        question.m_flow = flow;
    if (!options.m_fill.empty())
        question.m_fill = fill;
    return question;
}

/// The flow that stands at a filling: at 100 % the full-bore one.
CFilling FillTo(const CPipeQuestion& question, double percent) {
    CFilling filling;
    filling.m_percent = percent;
    filling.m_depth =
        percent < 100.0 ? 0.01 * percent * HeightOfShape(question.m_shape) : HeightOfShape(question.m_shape);
    filling.m_wet = WetShape(question.m_shape, filling.m_depth);
    filling.m_velocity = UniformVelocity(filling.m_wet.GetHydraulicRadius(), question.m_conditions);
    return filling;
}

std::vector<CFigure> Answer(const CPipeQuestion& question, bool& isOverfull) {
    const CWetSection full = FullShape(question.m_shape);
    const double fullFlow = FullBoreFlow(question.m_shape, question.m_conditions);
    std::vector<CFigure> figures{
        {"full_flow_m3s", "full-bore flow", fullFlow, "m³/s", 6},
        {"full_velocity_ms", "full-bore velocity", fullFlow / full.m_area, "m/s", 3},
        {"full_area_m2", "full area", full.m_area, "m²", 4},
        {"full_hydraulic_radius_m", "full hydraulic radius", full.GetHydraulicRadius(), "m", 4}};
    if (question.m_flow || question.m_fill) {
        const CFilling filling = question.m_flow ? FillShape(question.m_shape, *question.m_flow, question.m_conditions)
                                                 : FillTo(question, *question.m_fill);
        isOverfull = filling.m_isOverfull;
        const double flow = question.m_flow.value_or(filling.m_velocity * filling.m_wet.m_area);
        for (const CFigure& figure :
             {CFigure{"flow_m3s", "flow", flow, "m³/s", 6},
              CFigure{"filling_percent", isOverfull ? "filling (overfull)" : "filling", filling.m_percent, "%", 2},
              CFigure{"depth_m", "depth", filling.m_depth, "m", 4},
              CFigure{"velocity_ms", "velocity", filling.m_velocity, "m/s", 3},
              CFigure{"area_m2", "wetted area", filling.m_wet.m_area, "m²", 4},
              CFigure{"hydraulic_radius_m", "hydraulic radius", filling.m_wet.GetHydraulicRadius(), "m", 4}})
            figures.push_back(figure);
        return figures;
    }
    const CMaximum flow = GreatestFlow(question.m_shape, question.m_conditions);
    const CMaximum velocity = GreatestVelocity(question.m_shape, question.m_conditions);
    const double height = HeightOfShape(question.m_shape);
    const auto percent = [height](const CMaximum& maximum) {
        return maximum.m_value > 0.0 ? std::optional<double>(100.0 * maximum.m_depth / height) : std::nullopt;
    };
    for (const CFigure& figure :
         {CFigure{"greatest_flow_m3s", "greatest flow", flow.m_value, "m³/s", 6},
          CFigure{"greatest_flow_filling_percent", "  at a filling of", percent(flow), "%", 2},
          CFigure{"greatest_velocity_ms", "greatest velocity", velocity.m_value, "m/s", 3},
          CFigure{"greatest_velocity_filling_percent", "  at a filling of", percent(velocity), "%", 2}})
        figures.push_back(figure);
    return figures;
}

CDataBox BoxOf(const std::optional<double>& value) {
    CDataBox box;
    if (value)
        box.SetDouble(*value);
    return box;
}

} // namespace

CVerbResult CalculatePipe(const CPipeOptions& options, CTerminal& terminal, std::ostream& results) {
    const auto question = ReadQuestion(options);
    if (!question)
        return question.GetError();
    bool isOverfull = false;
    const std::vector<CFigure> figures = Answer(question.Value(), isOverfull);
    if (options.m_isJson) {
        ordered_json object;
        object["shape"] = options.m_shape;
        object["width_mm"] = question->m_width;
        object["height_mm"] = question->m_height;
        object["slope_permille"] = question->m_slope;
        object["roughness_mm"] = question->m_roughness;
        object["viscosity_m2s"] = question->m_conditions.m_viscosity;
        for (const CFigure& figure : figures)
            object[figure.m_key] = ToJson(BoxOf(figure.m_value));
        if (question->m_flow || question->m_fill)
            object["overfull"] = isOverfull;
        PrintJson(results, object);
    } else {
        CTable table;
        table.AddColumn("");
        table.AddColumn("", CTable::enmAlign::Right);
        table.AddColumn("");
        for (const CFigure& figure : figures)
            table.AddRow({figure.m_name, ShowValue(BoxOf(figure.m_value), figure.m_decimals), figure.m_unit});
        table.Print(results);
    }
    results.flush();
    if (!(question->m_conditions.m_slope > 0.0))
        terminal.Note("a slope of 0 or below carries nothing");
    return enmExitCode::Done;
}

} // namespace Cli
