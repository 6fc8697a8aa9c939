// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/IAttributeReader.h"
#include "host/network_core/IFunctionalAnalysisItem.h"

/// Checks that the level line of every section is within two depths (m) below a terrain, along its whole length. At
/// most one finding per section, for the first sample outside the limits; a depth equal to a limit is accepted. Skips
/// sections without levels or without terrain. The only check for every system function, and the only one that runs
/// without a form: then between 1.0 and 3.0 m below terrain 1.
class CFAI_MinimalPipeDepth final : public OLMGis::Topology::IFunctionalAnalysisItem,
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
        return {"LEVEL_LINE_0", "LEVEL_LINE_1", "LEVEL_LINE_POSITION", "PIPE_REF",  "length",
                "TERRAIN_1",    "TERRAIN_2",    "TERRAIN_3",           "TERRAIN_4", "TERRAIN_5",
                "TERRAIN_6",    "TERRAIN_7",    "TERRAIN_8",           "TERRAIN_9", "TERRAIN_10"};
    }
};
