// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/RunWarnings.h"

#include "flow/FlowKeys.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "rain/curves/IDFCurves.h"
#include "rain/curves/RainChoices.h"
#include "reports/Balance.h"
#include "reports/BalanceListing.h"
#include "reports/RainListing.h"
#include "reports/ShownText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <string_view>
#include <utility>

namespace Reports {

using nlohmann::json;
using OLMGis::Sewage::CCalculationOutcome;
using OLMGis::Sewage::CStoredResult;

namespace {

CRemark Warning(std::string text) {
    return {CRemark::enmKind::Warning, OnOneLine(text)};
}

/// The values of the form of a run.
class CFormValues {
public:
    explicit CFormValues(const std::string& parameters) : m_values(json::parse(parameters, nullptr, false)) {}

    double Get(const char* tag) const {
        const bool hasNumber = m_values.is_object() && m_values.contains(tag) && m_values[tag].is_number();
        return hasNumber ? m_values[tag].get<double>() : 0.0;
    }
    std::string GetText(const char* tag) const {
        const bool hasText = m_values.is_object() && m_values.contains(tag) && m_values[tag].is_string();
        return hasText ? m_values[tag].get<std::string>() : std::string();
    }
    bool IsOn(const char* tag) const { return Get(tag) != 0.0; }

    bool IsAllOff() const {
        return m_values.is_object() && std::all_of(m_values.begin(), m_values.end(), [](const json& value) {
                   return value.is_number() && value.get<double>() == 0.0;
               });
    }

private:
    json m_values;
};

/// What a run stored under a key; null without anything.
const CStoredResult* Find(const CCalculationOutcome& outcome, std::string_view key) {
    const auto found = std::find_if(outcome.m_results.begin(), outcome.m_results.end(),
                                    [key](const auto& result) { return result.m_definition->m_id == key; });
    return found == outcome.m_results.end() ? nullptr : &*found;
}

void WarnOfSums(const std::string& calculator, const CFormValues& form, const std::string& projectPath,
                CRemarks& remarks) {
    if (form.IsAllOff())
        remarks.push_back(Warning(fmt::format("all flows of the form are switched off, so every sum is 0. Switch on "
                                              "what counts (drenova form {} {}), for example {}=1",
                                              projectPath, calculator,
                                              calculator == "03_FC_TRANSIT" ? "FC_WASTE_PER" : "FLOW_TRANSIT")));
    if (calculator != "03_FC_TRANSIT" || !form.IsOn("FC_WASTE_PER") || !form.IsOn("FC_HOUSEWASTE_AREA"))
        return;
    const double byPopulation = SumOverSections(Flow::Keys::WastePercent);
    const double byArea = SumOverSections(Flow::Keys::WasteHome);
    if (byPopulation > 0.0 && byArea > 0.0)
        remarks.push_back(Warning(fmt::format("domestic wastewater is summed twice: {:.4f} m³/s by population "
                                              "(FC_WASTE_PER) and {:.4f} m³/s by catchment area (FC_HOUSEWASTE_AREA)",
                                              byPopulation, byArea)));
}

/// The defaults of this form are fixed and far from usual amounts.
void WarnOfDefaults(const CCalculationOutcome& outcome, const CFormValues& form, CRemarks& remarks) {
    const struct {
        const char* m_switch;
        const char* m_value;
        double m_default;
        const char* m_unit;
        const char* m_result;
    } amounts[] = {
        {"FC_ADD_FW", "FC_ADD_FW_COEFF", 1.0, "l/(s·inh)", Flow::Keys::Foreign},
        {"FC_ADD_POINT", "FC_ADD_POINT_VAL", 10.0, "l/s on each section", Flow::Keys::Point},
        {"FC_ADD_ADDITIONAL", "FC_ADD_ADDITIONAL_VAL", 0.2, "l/(s·inh)", Flow::Keys::Additional},
    };
    for (const auto& amount : amounts) {
        const CStoredResult* const stored = Find(outcome, amount.m_result);
        // The coefficient per inhabitant counts in the first of the methods for infiltration water alone.
        const bool isInForce = form.IsOn(amount.m_switch) &&
                               (std::string_view(amount.m_switch) != "FC_ADD_FW" || !form.IsOn("FC_ADD_FW_OPTION"));
        if (stored != nullptr && isInForce && form.Get(amount.m_value) == amount.m_default)
            remarks.push_back(Warning(fmt::format("{}={} {} is the default of the form, not a design value: it gives "
                                                  "{:.4f} m³/s on {}",
                                                  amount.m_value, amount.m_default, amount.m_unit, stored->m_sum,
                                                  Count(static_cast<std::size_t>(stored->m_count), "section"))));
    }
}

/// Times of concentration outside the curve of the run.
void WarnOfDurations(const CFormValues& form, CRemarks& remarks) {
    constexpr int TimesOutside = 70504;
    constexpr std::size_t MostNames = 5;
    CIDFCurves curves;
    if (form.Get("RAINFALL_MODE") != RainChoices::CurveFile || curves.LoadFromFile(form.GetText("FILE_PATH")) == 0)
        return;
    const auto curve = curves.GetCurves().find(form.Get("FREQUENCY"));
    if (curve == curves.GetCurves().end())
        return;
    const double shortest = curve->second.front().first;
    const double longest = curve->second.back().first;
    std::vector<std::string_view> names;
    for (const auto& section :
         OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology()->GetSections()) {
        const auto time = ReadNumber(*section, Flow::Keys::ConcentrationTime);
        if (time && (*time < shortest || *time > longest))
            names.push_back(section->GetName());
    }
    using OLMGis::Utility::CUtility;
    if (!names.empty())
        remarks.push_back(Warning(CUtility::Format(OLMGis::Utility::Msg(TimesOutside), static_cast<int>(names.size()),
                                                   CUtility::ToText(shortest), CUtility::ToText(longest),
                                                   FirstNames(names, MostNames))));
}

/// Partial areas load a chain, and less than what drains to the end on purpose: their difference is no loss.
void WarnOfChains(CRemarks& remarks) {
    constexpr std::size_t MostEnds = 5;
    const auto rows = MakeBalance();
    std::vector<std::string> ends;
    std::size_t count = 0;
    for (const CBalanceRow& row : rows)
        if (row.m_areaArriving < row.m_areaAbove * (1.0 - 1e-9) && ++count <= MostEnds)
            ends.push_back(
                fmt::format("{} ({:.2f} of {:.2f} ha)", row.m_section->GetName(), row.m_areaArriving, row.m_areaAbove));
    if (count > 0)
        remarks.push_back(Warning(fmt::format("partial areas follow chains of sections and leave side branches out: "
                                              "loaded at the ends: {}{}. Compare with PARTIAL_AREA_EFFECT=0",
                                              fmt::join(ends, ", "), count > ends.size() ? ", ..." : "")));
}

/// A whole-network run writes each section that it reaches: what it leaves behind no longer belongs to the network.
void WarnOfFormer(const std::string& calculator, const CCalculationOutcome& outcome, const std::string& projectPath,
                  CRemarks& remarks) {
    constexpr std::size_t MostNames = 20;
    const auto& former = outcome.m_former;
    const auto& topology = *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    if (former.m_sections.empty())
        return;
    if (outcome.m_sectionCount < static_cast<int>(topology.GetSections().size())) {
        if (calculator == "01_WASTE_PERCENT")
            remarks.push_back(Warning(fmt::format(
                "the whole population was spread over {}; {} keep the flows of an earlier run, which count it again",
                Count(static_cast<std::size_t>(outcome.m_sectionCount), "section"),
                Count(former.m_sections.size(), "other section"))));
        return;
    }
    std::vector<std::string_view> names;
    for (const auto* section : former.m_sections)
        names.push_back(section->GetName());
    std::string keys;
    for (const auto* key : former.m_keys)
        keys += fmt::format(" {}=", key->m_id);
    const std::size_t shown = std::min(names.size(), MostNames);
    remarks.push_back(Warning(fmt::format(
        "{} without results of this run keep those of an earlier run of {}, which later runs would sum: {}. Remove "
        "them: drenova set {}{} --names {}",
        Count(names.size(), "section"), calculator, FirstNames(names, MostNames), projectPath, keys,
        fmt::join(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(shown), ","))));
}

} // namespace

CRemarks MakeRunWarnings(const std::string& calculator, const CCalculationOutcome& outcome,
                         const std::string& projectPath) {
    CRemarks remarks;
    if (!outcome.HasStored())
        return remarks;
    const CFormValues form(outcome.m_parameters);
    WarnOfFormer(calculator, outcome, projectPath, remarks);
    if (calculator == "03_FC_TRANSIT" || calculator == "04_FC_TOTAL")
        WarnOfSums(calculator, form, projectPath, remarks);
    if (calculator == "01_WASTE_PERCENT" && form.Get("BROJ_STANOVNIKA") > 0.0)
        if (const CStoredResult* const flow = Find(outcome, Flow::Keys::WastePercent);
            flow != nullptr && flow->m_sum == 0.0)
            remarks.push_back(Warning(fmt::format("the flow of {} inhabitants is 0 on every section: the population is "
                                                  "spread by length times FLOW_COEFDEN, whose sum is 0",
                                                  form.Get("BROJ_STANOVNIKA"))));
    if (calculator == "02_ADDITIONAL")
        WarnOfDefaults(outcome, form, remarks);
    if (calculator == RainCalculator)
        WarnOfDurations(form, remarks);
    if (calculator == RainCalculator && form.IsOn("PARTIAL_AREA_EFFECT")) {
        WarnOfChains(remarks);
        return remarks;
    }
    for (CRemark& loss : MakeLossRemarks(calculator, projectPath))
        remarks.push_back(std::move(loss));
    return remarks;
}

} // namespace Reports
