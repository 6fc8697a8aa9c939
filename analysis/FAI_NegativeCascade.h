// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/IAttributeReader.h"
#include "host/network_core/IFunctionalAnalysisItem.h"

/// Checks that the level line does not step up by more than 0.5 m from the end of a section to the start of one that
/// leads on from there. One finding for each such pair, at the upstream section. Skips pairs that lack one of the
/// levels.
class CFAI_NegativeCascade final : public OLMGis::Topology::IFunctionalAnalysisItem,
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
    std::vector<std::string> GetReadKeys() const override { return {"LEVEL_LINE_0", "LEVEL_LINE_1"}; }
};
