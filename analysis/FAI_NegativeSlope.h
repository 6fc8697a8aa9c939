// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/IAttributeReader.h"
#include "host/network_core/IFunctionalAnalysisItem.h"

/// Checks that the slope of every section (SECTION_SLOPE, 1/1000) is within two limits. At most one finding per
/// section: for a negative slope whatever the limits are, else for one below or above them; a slope equal to a limit is
/// accepted. Skips sections without the attribute. The form must not be null.
class CFAI_NegativeSlope final : public OLMGis::Topology::IFunctionalAnalysisItem,
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
    std::vector<std::string> GetReadKeys() const override { return {"SECTION_SLOPE"}; }
};
