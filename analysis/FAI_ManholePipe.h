// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/IAttributeReader.h"
#include "host/network_core/IFunctionalAnalysisItem.h"

/// Checks that the pipes at a manhole fit it. A pipe with an outer width above the manhole's inner diameter gives a
/// finding at the node, at most one per node. A pipe that fits but whose top is above the level that is H2 of the
/// manhole below the terrain gives a finding at the section, at most one per section. Skips nodes without a manhole of
/// the catalogue, and sections without a pipe, a level there or a position of the level line.
class CFAI_ManholePipe final : public OLMGis::Topology::IFunctionalAnalysisItem,
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
    std::vector<std::string> GetReadKeys() const override {
        return {"MANHOLE_ID",          "MANHOLE_RT", "MANHOLE_H1", "MANHOLE_H2", "LEVEL_LINE_0", "LEVEL_LINE_1",
                "LEVEL_LINE_POSITION", "PIPE_REF",   "TERRAIN_1",  "TERRAIN_2",  "TERRAIN_3",    "TERRAIN_4",
                "TERRAIN_5",           "TERRAIN_6",  "TERRAIN_7",  "TERRAIN_8",  "TERRAIN_9",    "TERRAIN_10"};
    }
};
