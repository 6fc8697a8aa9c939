// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/ICalculatorInputs.h"
#include "host/sewage_core/IFlowCalculator.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

/// Distributes the dry-weather flow of a settlement over sections in proportion to their length.
///
/// Forecasts the population with compound growth, calculates the flow of the peak hour from the per-capita consumption,
/// and divides it by the weighted length of all given sections. Each section gets the specific flow (SPECIFIC_FLOW,
/// m³/s per m) and its share (FLOW_WASTE_PER, m³/s). Has a preview: with write 0 it fills the report and stores no
/// flow.
class CFlowCalculator_WastePercent final : public OLMGis::Sewage::IFlowCalculator,
                                           public OLMGis::Sewage::ICalculatorInputs {
public:
    CFlowCalculator_WastePercent();

    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> CreateParameters() override;

    /// Skips nulls among the sections. Result: 1 when write was not 0 and a section was not null, else 0.
    int Calculate(const OLMGis::Sewage::CSectionList& sections, OLMGis::Sewage::CFlowCalculatorParameters* params,
                  int write, OLMGis::Sewage::CReport* report, OLMGis::Sewage::IUserInteraction* interaction) override;

    int IsWholeNetworkCalculator() override { return 0; }
    int IsPreviewAvailable() const override { return 1; }
    std::string GetCalculatorName() override;
    std::string GetCalculatorGroupName() override;
    std::string GetCalculatorIconOverride() override { return {}; }
    std::string GetCalculatorIcon() override { return "IDI_CALC_PERCENT"; }
    std::string GetCalculatorGroupIcon() override { return "IDI_CALC_PERCENT"; }
    std::string GetParametersDataId() override;

    std::vector<std::string> GetReadKeys() const override;
    std::vector<std::string> GetWrittenKeys(bool inAnyEdition) const override;

private:
    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> m_parameters;
};
