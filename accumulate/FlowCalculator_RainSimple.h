// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/ICalculatorInputs.h"
#include "host/sewage_core/IFlowCalculator.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

/// Derives the rain flow of each section (FLOW_RAIN, m³/s) from one design intensity (l/(s·ha)) and the section's own
/// corrected catchment area (ha); nothing is accumulated.
///
/// The intensity is reduced in one of two ways: by the coefficients FLOW_COEFRET and FLOW_COEFRED of the section, or by
/// Reinhold's time coefficient of its rain frequency FLOW_ATV_N (1/year) and rain duration FLOW_ATV_T (min). Each of
/// the four that is absent counts as 1.
class CFlowCalculator_RainSimple final : public OLMGis::Sewage::IFlowCalculator,
                                         public OLMGis::Sewage::ICalculatorInputs {
public:
    CFlowCalculator_RainSimple();

    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> CreateParameters() override;

    /// Always 0, also after a full run: it says nothing about what was stored. Sections without an area get 0 m³/s; a
    /// write that fails is passed over, a null section left out.
    int Calculate(const OLMGis::Sewage::CSectionList& sections, OLMGis::Sewage::CFlowCalculatorParameters* params,
                  int write, OLMGis::Sewage::CReport* report, OLMGis::Sewage::IUserInteraction* interaction) override;

    int IsWholeNetworkCalculator() override { return 0; }
    std::string GetCalculatorName() override;
    std::string GetCalculatorGroupName() override;
    std::string GetCalculatorIconOverride() override { return {}; }
    std::string GetCalculatorIcon() override { return "IDI_CALC_RAIN"; }
    std::string GetCalculatorGroupIcon() override { return "IDI_CALC_RAIN"; }
    std::string GetParametersDataId() override;

    std::vector<std::string> GetReadKeys() const override;
    std::vector<std::string> GetWrittenKeys(bool inAnyEdition) const override;

private:
    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> m_parameters;
};
