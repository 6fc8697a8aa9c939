// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/IFunctionalAnalysisItem.h"

/// Whether the pipes that meet in a manhole of the catalogue fit: a pipe whose outer width is more than the inner
/// diameter gives a finding that names the node, once a node; one that fits, but whose top lies above the level that is
/// H2 of the manhole below the terrain, gives a finding that names the section, once a section. Nodes without a
/// manhole, and sections without a pipe, a level there or a position of the level line, are passed over.
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
