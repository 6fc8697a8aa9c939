// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/ICalculatorInputs.h"
#include "host/sewage_core/IDensityUser.h"
#include "host/sewage_core/IFlowCalculator.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

/// Calculates domestic and industrial flow from the catchments of sections, each with a switch of its own.
///
/// Domestic: inhabitants of the section's own catchments times a specific flow (FLOW_WASTE_HOME, m³/s). In the
/// Bulgarian edition: the flow of everything upstream with a peak factor that falls as the flow grows
/// (FLOW_WASTE_HOME_BG, m³/s, and FLOW_BLG_WASTE_HOME_KOMAX, -). Industrial: the section's own industrial area times a
/// specific flow (FLOW_WASTE_IND, m³/s), in the Bulgarian edition with a peak factor as well.
class CFlowCalculator_WasteAreas final : public OLMGis::Sewage::IFlowCalculator,
                                         public OLMGis::Sewage::IDensityUser,
                                         public OLMGis::Sewage::ICalculatorInputs {
public:
    /// The edition in force decides which results the calculator lists.
    CFlowCalculator_WasteAreas();

    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> CreateParameters() override;

    /// The result (1 or 0) of the last write of a flow, 0 without one; the log says which. A null section counts as one
    /// whose writes fail. The sums of the Bulgarian edition show progress and let the user stop (0, nothing stored);
    /// their cost is that of Waste::SumUpstream, that of all else linear.
    int Calculate(const OLMGis::Sewage::CSectionList& sections, OLMGis::Sewage::CFlowCalculatorParameters* params,
                  int write, OLMGis::Sewage::CReport* report, OLMGis::Sewage::IUserInteraction* interaction) override;

    int IsWholeNetworkCalculator() override { return 0; }
    int IsPreviewAvailable() const override { return 0; }
    std::string GetCalculatorName() override;
    std::string GetCalculatorGroupName() override;
    std::string GetCalculatorIconOverride() override { return {}; }
    std::string GetCalculatorIcon() override { return "IDI_CALC_AREA"; }
    std::string GetCalculatorGroupIcon() override { return "IDI_CALC_PERCENT"; }
    std::string GetParametersDataId() override;

    bool UsesDensities() const override { return true; }

    std::vector<std::string> GetReadKeys() const override;
    std::vector<std::string> GetWrittenKeys(bool inAnyEdition) const override;
    std::vector<OLMGis::Sewage::CLack> FindLacks(const OLMGis::Sewage::CSectionList& sections,
                                                 OLMGis::Sewage::CFlowCalculatorParameters& params) const override;

private:
    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> m_parameters;
};
