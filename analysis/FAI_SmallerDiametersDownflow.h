// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/IAttributeReader.h"
#include "host/network_core/IFunctionalAnalysisItem.h"

/// Checks that the pipe of a section does not lead into one of a smaller inner diameter, by any amount. One finding for
/// each such pair, at the upstream section. Skips pairs in which a section has no pipe.
class CFAI_SmallerDiametersDownflow final : public OLMGis::Topology::IFunctionalAnalysisItem,
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
    std::vector<std::string> GetReadKeys() const override { return {"PIPE_REF"}; }
};
