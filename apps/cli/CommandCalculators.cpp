// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandCalculators.h"

#include "apps/cli/Calculators.h"
#include "apps/cli/JsonText.h"
#include "apps/cli/Project.h"
#include "apps/cli/ShownText.h"
#include "apps/cli/Table.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/sewage_core/FlowCalculatorManager.h"
#include "host/sewage_core/FlowCalculatorParameters.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

namespace Cli {

using nlohmann::ordered_json;
using OLMGis::Data::CDataBox;
using OLMGis::Sewage::CFlowCalculatorManager;
using OLMGis::Sewage::IFlowCalculator;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CPropertyEx;
using OLMGis::Topology::CTopologyMultiStorage;

namespace {

std::vector<std::string> GetOutputKeys(const IFlowCalculator& calculator) {
    std::vector<std::string> keys;
    for (const auto* definition : calculator.GetOutputDefinitions())
        if (definition != nullptr)
            keys.push_back(definition->m_id);
    return keys;
}

ordered_json DescribeCalculator(IFlowCalculator& calculator) {
    ordered_json object;
    object["key"] = calculator.GetKey();
    object["name"] = calculator.GetCalculatorName();
    object["group"] = calculator.GetCalculatorGroupName();
    object["whole_network"] = calculator.IsWholeNetworkCalculator() != 0;
    object["preview"] = calculator.IsPreviewAvailable() != 0;
    object["outputs"] = GetOutputKeys(calculator);
    return object;
}

ordered_json DescribeProperty(const CPropertyEx& property) {
    ordered_json object;
    object["tag"] = property.GetTag();
    object["name"] = property.GetName();
    object["description"] = property.GetDescription();
    object["editor"] = static_cast<int>(property.GetEditorType());
    object["value"] = ToJson(property.GetValue());
    object["hidden"] = ToJson(property.GetHiddenValue());
    object["default"] = ToJson(property.GetDefaultValue());
    object["choices"] = ordered_json::array();
    if (property.HasChoices())
        for (const auto& choice : property.GetConstraints()->GetConstraints())
            object["choices"].push_back(
                {{"value", ToJson(choice->GetValue())}, {"hidden", ToJson(choice->GetHiddenValue())}});
    object["in_force"] = property.IsInForce();
    return object;
}

ordered_json DescribeForm(const CPropertiesEx& form) {
    ordered_json categories = ordered_json::array();
    for (const auto& category : form.GetCategories()) {
        ordered_json properties = ordered_json::array();
        for (const auto& property : category->GetProperties())
            properties.push_back(DescribeProperty(*property));
        categories.push_back({{"name", category->GetName()}, {"properties", std::move(properties)}});
    }
    return {{"categories", std::move(categories)}};
}

/// What may be typed for a choice, and what it means: "0: One; 1: Other".
std::string ShowChoices(const CPropertyEx& property) {
    std::vector<std::string> choices;
    if (property.HasChoices())
        for (const auto& choice : property.GetConstraints()->GetConstraints())
            choices.push_back(fmt::format("{}: {}", choice->GetHiddenValue().AsText(), choice->GetValue().AsText()));
    return fmt::format("{}", fmt::join(choices, "; "));
}

/// The default of what GetEffectiveValue gives, so that the two stand comparable side by side.
const CDataBox& GetEffectiveDefault(const CPropertyEx& property) {
    const bool isHidden = &property.GetEffectiveValue() == &property.GetHiddenValue();
    return isHidden ? property.GetDefaultHiddenValue() : property.GetDefaultValue();
}

void PrintForm(std::ostream& results, const std::string& title, const CPropertiesEx& form) {
    results << OnOneLine(title) << '\n';
    for (const auto& category : form.GetCategories()) {
        results << '\n' << OnOneLine(category->GetName()) << '\n';
        CTable table;
        bool hasChoices = false;
        bool isAllInForce = true; // then nobody needs to be told
        for (const auto& property : category->GetProperties()) {
            hasChoices = hasChoices || property->HasChoices();
            isAllInForce = isAllInForce && property->IsInForce();
        }
        table.AddColumn("tag");
        table.AddColumn("value", CTable::enmAlign::Right);
        table.AddColumn("default", CTable::enmAlign::Right);
        if (!isAllInForce)
            table.AddColumn("in force");
        table.AddColumn("name");
        if (hasChoices)
            table.AddColumn("choices");
        for (const auto& property : category->GetProperties()) {
            std::vector<std::string> cells{property->GetTag(), property->GetEffectiveValue().AsText(),
                                           GetEffectiveDefault(*property).AsText()};
            if (!isAllInForce)
                cells.emplace_back(property->IsInForce() ? "yes" : "no");
            cells.push_back(property->GetName());
            if (hasChoices)
                cells.push_back(ShowChoices(*property));
            table.AddRow(std::move(cells));
        }
        table.Print(results, "  ");
    }
}

} // namespace

CVerbResult ListCalculators(bool isJson, CTerminal& terminal, std::ostream& results) {
    const auto project = CProject::MakeEmpty(terminal);
    if (!project)
        return project.GetError();
    if (const auto loaded = project.Value()->LoadModule(); !loaded)
        return loaded.GetError();
    const auto calculators = CFlowCalculatorManager::Instance()->GetCalculators();
    if (isJson) {
        ordered_json list = ordered_json::array();
        for (const auto& calculator : calculators)
            list.push_back(DescribeCalculator(*calculator));
        PrintJson(results, list);
        return enmExitCode::Done;
    }
    CTable table;
    for (const char* head : {"key", "name", "group", "network", "preview", "results"})
        table.AddColumn(head);
    for (const auto& calculator : calculators)
        table.AddRow({calculator->GetKey(), calculator->GetCalculatorName(), calculator->GetCalculatorGroupName(),
                      calculator->IsWholeNetworkCalculator() != 0 ? "whole" : "any part",
                      calculator->IsPreviewAvailable() != 0 ? "yes" : "no",
                      fmt::format("{}", fmt::join(GetOutputKeys(*calculator), " "))});
    table.Print(results);
    return enmExitCode::Done;
}

CVerbResult ShowForm(const CFormOptions& options, CTerminal& terminal, std::ostream& results) {
    auto words = ReadFormWords(options.m_words);
    if (!words)
        return words.GetError();
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (const auto loaded = project.Value()->LoadModule(); !loaded)
        return loaded.GetError();
    const auto calculator = FindCalculator(options.m_calculator);
    if (!calculator)
        return calculator.GetError();
    CWordFormEditor editor(std::move(words.Value()));
    const auto parameters = calculator.Value()->CreateParameters();
    {
        const OLMGis::Topology::CFormEditorScope scope(editor);
        calculator.Value()->InputParameters(CTopologyMultiStorage::Instance()->GetActiveTopology()->GetSections(),
                                            parameters.get(), 0, nullptr);
    }
    if (editor.GetError())
        return *editor.GetError();
    const CPropertiesEx none;
    const CPropertiesEx& form = parameters->m_properties ? *parameters->m_properties : none;
    if (options.m_isJson)
        PrintJson(results, DescribeForm(form));
    else
        PrintForm(results, fmt::format("{}  {}", calculator.Value()->GetKey(), calculator.Value()->GetCalculatorName()),
                  form);
    return enmExitCode::Done;
}

} // namespace Cli
