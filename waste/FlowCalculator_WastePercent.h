// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/IFlowCalculator.h"

#include <boost/shared_ptr.hpp>

#include <string>

/// Spreads the waste water of a settlement over sections in proportion to their length.
///
/// The population is forecast with compound growth, the water consumption turned into the flow of the greatest hour,
/// and that flow divided by the weighted length of all given sections. Each section gets the specific flow
/// (SPECIFIC_FLOW, m³/s per m) and its share (FLOW_WASTE_PER, m³/s). Has a preview: without write the report is filled
/// and no flow is stored.
class CFlowCalculator_WastePercent final : public OLMGis::Sewage::IFlowCalculator {
public:
    CFlowCalculator_WastePercent();

    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> CreateParameters() override;

    /// Nulls among the sections are skipped. 1 when write wasn't 0 and a section wasn't null, else 0.
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

private:
    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> m_parameters;
};
