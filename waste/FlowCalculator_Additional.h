// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/ICalculatorInputs.h"
#include "host/sewage_core/IDensityUser.h"
#include "host/sewage_core/IFlowCalculator.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

/// Calculates flows besides rain and dry-weather flow, each with a switch of its own, all in m³/s: infiltration water
/// (FLOW_FOREIGN, by inhabitants, by dry-weather flow or by length), a point flow of either sign (FLOW_POINT), an
/// additional flow by inhabitants (FLOW_ADDITIONAL) and one given by the user (FLOW_USER).
///
/// A flow that is switched off is not written: its key keeps the value of an earlier run.
class CFlowCalculator_Additional final : public OLMGis::Sewage::IFlowCalculator,
                                         public OLMGis::Sewage::IDensityUser,
                                         public OLMGis::Sewage::ICalculatorInputs {
public:
    CFlowCalculator_Additional();

    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> CreateParameters() override;

    /// Skips nulls among the sections. Result: whether the last write of a flow succeeded (1 or 0), 0 without one;
    /// writes of infiltration water by inhabitants do not count.
    int Calculate(const OLMGis::Sewage::CSectionList& sections, OLMGis::Sewage::CFlowCalculatorParameters* params,
                  int write, OLMGis::Sewage::CReport* report, OLMGis::Sewage::IUserInteraction* interaction) override;

    int IsWholeNetworkCalculator() override { return 0; }
    std::string GetCalculatorName() override;
    std::string GetCalculatorGroupName() override;
    std::string GetCalculatorIconOverride() override { return {}; }
    std::string GetCalculatorIcon() override { return "IDI_CALC_ADDITIONAL"; }
    std::string GetCalculatorGroupIcon() override { return "IDI_CALC_ADDITIONAL"; }
    std::string GetParametersDataId() override;

    bool UsesDensities() const override { return true; }

    std::vector<std::string> GetReadKeys() const override;
    std::vector<std::string> GetWrittenKeys(bool inAnyEdition) const override;
    std::vector<std::string> GetNeededResults(const OLMGis::Topology::CPropertiesEx& form) const override;
    std::vector<OLMGis::Sewage::CLack> FindLacks(const OLMGis::Sewage::CSectionList& sections,
                                                 OLMGis::Sewage::CFlowCalculatorParameters& params) const override;

private:
    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> m_parameters;
};
