// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/IFunctionalAnalysisItem.h"

/// Whether the pipe of a section leads into one of a smaller inner diameter, by whatever amount. One finding for each
/// such pair, naming the upper section. Sections without a pipe are passed over on either side.
class CFAI_SmallerDiametersDownflow final : public OLMGis::Topology::IFunctionalAnalysisItem {
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
};
