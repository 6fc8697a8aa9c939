// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/ICalculatorInputs.h"
#include "host/sewage_core/IFlowCalculator.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

/// Adds up the flows of a section that are switched on and stores them as its total (FLOW_TOTAL, m³/s): the last step
/// of a design, on what the other calculators left. Each section by itself.
class CFlowCalculator_Total final : public OLMGis::Sewage::IFlowCalculator, public OLMGis::Sewage::ICalculatorInputs {
public:
    using CFlowCalculatorParameters = OLMGis::Sewage::CFlowCalculatorParameters;

    CFlowCalculator_Total();

    boost::shared_ptr<CFlowCalculatorParameters> CreateParameters() override;

    /// Nulls among the sections are skipped. The outcome of writing the total of the last section, 0 without any
    /// section; on 1 a closing line goes to the log. Write, report and interaction have no effect.
    int Calculate(const OLMGis::Sewage::CSectionList& sections, CFlowCalculatorParameters* params, int write,
                  OLMGis::Sewage::CReport* report, OLMGis::Sewage::IUserInteraction* interaction) override;

    /// The sum (m³/s) of the stored flows of a section that the parameters switch on; null ones add nothing. 0 for a
    /// null. The mark of an absent number means nothing here: a stored -1000000.0 is added.
    static double GetSectionTotal(const CFlowCalculatorParameters* params,
                                  const boost::shared_ptr<OLMGis::Topology::CSection>& section);

    int IsWholeNetworkCalculator() override { return 0; }
    std::string GetCalculatorName() override;
    std::string GetCalculatorGroupName() override;
    std::string GetCalculatorIconOverride() override { return {}; }
    std::string GetCalculatorIcon() override { return "IDI_CALC_SUM"; }
    std::string GetCalculatorGroupIcon() override { return "IDI_CALC_SUM"; }
    std::string GetParametersDataId() override;

    std::vector<std::string> GetReadKeys() const override;
    std::vector<std::string> GetWrittenKeys(bool inAnyEdition) const override;
    std::vector<std::string> GetNeededResults(const OLMGis::Topology::CPropertiesEx& form) const override;
    std::vector<OLMGis::Sewage::CLack> FindLacks(const OLMGis::Sewage::CSectionList& sections,
                                                 CFlowCalculatorParameters& params) const override;

private:
    boost::shared_ptr<CFlowCalculatorParameters> m_parameters;
};
