// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/IFunctionalAnalysisItem.h"

/// Checks that the pipes at a manhole fit it. A pipe with an outer width above the manhole's inner diameter gives a
/// finding at the node, at most one per node. A pipe that fits but whose top is above the level that is H2 of the
/// manhole below the terrain gives a finding at the section, at most one per section. Skips nodes without a manhole of
/// the catalogue, and sections without a pipe, a level there or a position of the level line.
class CFAI_ManholePipe final : public OLMGis::Topology::IFunctionalAnalysisItem {
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
