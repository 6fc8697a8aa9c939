// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/PipeCalculation.h"

#include "reports/JsonDocument.h"
#include "reports/ShownText.h"

#include <nlohmann/json.hpp>

#include <utility>
#include <vector>

namespace Reports {

using nlohmann::ordered_json;
using OLMGis::Data::CDataBox;
using namespace OLMGis::Formulas;

namespace {

/// A number or nothing, under a key for programs and a name for people.
struct CFigure {
    const char* m_key;
    const char* m_name;
    std::optional<double> m_value;
    const char* m_unit;
    int m_decimals;
};

struct CAnswer {
    std::vector<CFigure> m_figures;
    bool m_isOverfull = false;
};

/// The flow at a filling; at 100 % the full-pipe one.
CFilling FillTo(const CPipeQuestion& question, double percent) {
    CFilling filling;
    filling.m_percent = percent;
    filling.m_depth =
        percent < 100.0 ? 0.01 * percent * HeightOfShape(question.m_shape) : HeightOfShape(question.m_shape);
    filling.m_wet = WetShape(question.m_shape, filling.m_depth);
    filling.m_velocity = UniformVelocity(filling.m_wet.GetHydraulicRadius(), question.m_conditions);
    return filling;
}

void AddFilling(const CPipeQuestion& question, CAnswer& answer) {
    const CFilling filling = question.m_flow ? FillShape(question.m_shape, *question.m_flow, question.m_conditions)
                                             : FillTo(question, *question.m_fill);
    answer.m_isOverfull = filling.m_isOverfull;
    const double flow = question.m_flow.value_or(filling.m_velocity * filling.m_wet.m_area);
    const char* const name = filling.m_isOverfull ? "surcharged, flow ratio Q/Qfull" : "filling";
    for (const CFigure& figure :
         {CFigure{"flow_m3s", "flow", flow, "m³/s", 6}, CFigure{"filling_percent", name, filling.m_percent, "%", 2},
          CFigure{"depth_m", "depth", filling.m_depth, "m", 4},
          CFigure{"velocity_ms", "velocity", filling.m_velocity, "m/s", 3},
          CFigure{"area_m2", "wetted area", filling.m_wet.m_area, "m²", 4},
          CFigure{"hydraulic_radius_m", "hydraulic radius", filling.m_wet.GetHydraulicRadius(), "m", 4}})
        answer.m_figures.push_back(figure);
}

void AddMaxima(const CPipeQuestion& question, CAnswer& answer) {
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
        answer.m_figures.push_back(figure);
}

CAnswer Answer(const CPipeQuestion& question) {
    const CWetSection full = FullShape(question.m_shape);
    const double fullFlow = FullBoreFlow(question.m_shape, question.m_conditions);
    CAnswer answer;
    answer.m_figures = {{"full_flow_m3s", "full-pipe capacity Qfull", fullFlow, "m³/s", 6},
                        {"full_velocity_ms", "full-pipe velocity", fullFlow / full.m_area, "m/s", 3},
                        {"full_area_m2", "full area", full.m_area, "m²", 4},
                        {"full_hydraulic_radius_m", "full hydraulic radius", full.GetHydraulicRadius(), "m", 4}};
    if (question.m_flow || question.m_fill)
        AddFilling(question, answer);
    else
        AddMaxima(question, answer);
    return answer;
}

CDataBox BoxOf(const std::optional<double>& value) {
    return value ? CDataBox(*value) : CDataBox();
}

ordered_json Describe(const CPipeQuestion& question, const CAnswer& answer) {
    ordered_json object;
    object["shape"] = question.m_shapeName;
    object["width_mm"] = question.m_width;
    object["height_mm"] = question.m_height;
    object["slope_permille"] = question.m_slope;
    object["roughness_mm"] = question.m_roughness;
    object["viscosity_m2s"] = question.m_conditions.m_viscosity;
    for (const CFigure& figure : answer.m_figures)
        object[figure.m_key] = ToJson(BoxOf(figure.m_value));
    if (question.m_flow || question.m_fill)
        object["overfull"] = answer.m_isOverfull;
    return object;
}

} // namespace

CListing MakePipeListing(const CPipeQuestion& question) {
    const CAnswer answer = Answer(question);
    CTable table({TextColumn("key", "", enmReader::Programs), TextColumn("", "", enmReader::People),
                  NumberColumn("value", "", {}, CColumn::InFull, enmReader::Programs),
                  NumberColumn("", "", {}, CColumn::InFull, enmReader::People), TextColumn("unit", "")});
    for (const CFigure& figure : answer.m_figures)
        table.AddRow({figure.m_key, figure.m_name, BoxOf(figure.m_value),
                      ShowValue(BoxOf(figure.m_value), figure.m_decimals), figure.m_unit});
    CListing listing(std::move(table));
    listing.m_printDocument = [document = Describe(question, answer)](std::ostream& stream) {
        PrintDocument(stream, document);
    };
    return listing;
}

} // namespace Reports
