// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/IFlowCalculator.h"

#include <boost/shared_ptr.hpp>

#include <string>

/// Adds flows that are neither rain nor waste water proper, each behind a switch of its own, all in m³/s: foreign water
/// (FLOW_FOREIGN, by inhabitants, by waste flows or by length), a point flow of either sign (FLOW_POINT), an additional
/// flow by inhabitants (FLOW_ADDITIONAL) and one that the user gives (FLOW_USER).
///
/// A kind that is switched off writes nothing: its key keeps what an earlier run left there.
class CFlowCalculator_Additional final : public OLMGis::Sewage::IFlowCalculator {
public:
    CFlowCalculator_Additional();

    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> CreateParameters() override;

    /// Nulls among the sections are skipped. The outcome (1 or 0) of the last write of a flow, 0 without one; writes of
    /// foreign water by inhabitants don't count.
    int Calculate(const OLMGis::Sewage::CSectionList& sections, OLMGis::Sewage::CFlowCalculatorParameters* params,
                  int write, OLMGis::Sewage::CReport* report, OLMGis::Sewage::IUserInteraction* interaction) override;

    int IsWholeNetworkCalculator() override { return 0; }
    std::string GetCalculatorName() override;
    std::string GetCalculatorGroupName() override;
    std::string GetCalculatorIconOverride() override { return {}; }
    std::string GetCalculatorIcon() override { return "IDI_CALC_ADDITIONAL"; }
    std::string GetCalculatorGroupIcon() override { return "IDI_CALC_ADDITIONAL"; }
    std::string GetParametersDataId() override;

private:
    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> m_parameters;
};
