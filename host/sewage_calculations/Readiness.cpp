// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_calculations/Readiness.h"

#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/ProjectContext.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/sewage_calculations/OutdatedResults.h"
#include "host/sewage_core/FlowCalculatorManager.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <optional>
#include <set>

namespace OLMGis::Sewage {

using Data::CDataDefinition;
using Topology::CTopologyMultiStorage;
using Utility::CUtility;
using Utility::Msg;

namespace {

constexpr int ExpectedResult = 70380;
constexpr int ExpectedEntry = 70381;
constexpr int ExpectedRenewal = 70382;

const CSectionList& GetAllSections() {
    return CTopologyMultiStorage::Instance()->GetActiveTopology()->GetSections();
}

bool IsIn(const std::vector<std::string>& keys, const std::string& key) {
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

/// The calculator that writes a key in the edition in force; empty for a key that is entered.
std::string FindMaker(const std::string& key) {
    for (const auto& calculator : CFlowCalculatorManager::Instance()->GetCalculators())
        if (const auto* const inputs = dynamic_cast<const ICalculatorInputs*>(calculator.get());
            inputs != nullptr && IsIn(inputs->GetWrittenKeys(false), key))
            return calculator->GetKey();
    return {};
}

/// Whether no section has a value.
bool IsMissing(const std::string& key) {
    const CDataDefinition* const definition = Data::FindDefinition(key);
    return definition == nullptr || !System::CProjectContext::Active().GetAttributes().HasValues(*definition);
}

/// What is wrong with a result that another run adds up; nothing for one that is there and fits its inputs.
std::optional<CLack> JudgeResult(const std::string& key, const std::string& maker,
                                 const std::vector<COutdatedResult>& outdated) {
    CLack lack{key};
    if (IsMissing(key)) {
        lack.m_expected = maker.empty() ? Msg(ExpectedEntry) : CUtility::Format(Msg(ExpectedResult), maker);
        return lack;
    }
    for (const COutdatedResult& result : outdated)
        if (result.m_result->m_id == key) {
            lack.m_found = Data::CDataBox("outdated");
            lack.m_expected = CUtility::Format(Msg(ExpectedRenewal), result.m_calculator,
                                               fmt::format("{}", fmt::join(result.m_changed, ", ")));
            return lack;
        }
    return std::nullopt;
}

} // namespace

std::vector<CLack> FindLacks(const IFlowCalculator& calculator, CFlowCalculatorParameters& parameters,
                             const CSectionList& sections) {
    const auto* const inputs = dynamic_cast<const ICalculatorInputs*>(&calculator);
    return inputs == nullptr || !parameters.m_properties ? std::vector<CLack>()
                                                         : inputs->FindLacks(sections, parameters);
}

std::vector<CMissingInput> FindMissingInputs(const std::vector<CPlannedRun>& plan) {
    std::vector<CMissingInput> missing;
    std::set<std::string> made;
    const std::vector<COutdatedResult> outdated = FindOutdatedResults();
    for (const CPlannedRun& run : plan) {
        const std::string& calculator = run.m_calculator->GetKey();
        for (CLack& lack : FindLacks(*run.m_calculator, *run.m_parameters, GetAllSections()))
            missing.push_back({calculator, std::move(lack), {}});
        if (const auto* const inputs = dynamic_cast<const ICalculatorInputs*>(run.m_calculator.get());
            inputs != nullptr && run.m_parameters->m_properties)
            for (const std::string& key : inputs->GetNeededResults(*run.m_parameters->m_properties)) {
                std::string maker = FindMaker(key);
                if (made.count(maker) != 0)
                    continue;
                if (auto lack = JudgeResult(key, maker, outdated))
                    missing.push_back({calculator, std::move(*lack), std::move(maker)});
            }
        made.insert(calculator);
    }
    return missing;
}

} // namespace OLMGis::Sewage
