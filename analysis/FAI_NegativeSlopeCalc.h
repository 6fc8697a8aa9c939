// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/IAttributeReader.h"
#include "host/network_core/IFunctionalAnalysisItem.h"

/// The same as CFAI_NegativeSlope for the slope calculated from the level line (SECTION_SLOPE_CAL, 1/1000). The form
/// must not be null.
class CFAI_NegativeSlopeCalc final : public OLMGis::Topology::IFunctionalAnalysisItem,
                                     public OLMGis::Topology::IAttributeReader {
public:
    std::string GetItemKey() override;
    std::string GetItemName() override;
    int IsAvailableForSystemFunction(int systemFunction) override;
    int GetItemFlagA() override;
    boost::shared_ptr<OLMGis::Topology::CPropertiesEx> CreateProperties() override;
    void RunAnalysis(boost::shared_ptr<OLMGis::Topology::CPropertiesEx> properties,
                     OLMGis::Topology::CAnalysedNetwork* network,
                     std::vector<boost::shared_ptr<OLMGis::Topology::CFAMsg>>& findings) override;
    std::string GetAnalysisTag() override;
    std::vector<std::string> GetReadKeys() const override { return {"SECTION_SLOPE_CAL"}; }
};
