// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>
#include <vector>

namespace OLMGis::Topology {

/// A check that says which attributes it reads implements this beside IFunctionalAnalysisItem. Found by dynamic_cast.
class IAttributeReader {
public:
    /// Keys of attributes of sections, nodes and catchments.
    virtual std::vector<std::string> GetReadKeys() const = 0;

protected:
    ~IAttributeReader() = default;
};

} // namespace OLMGis::Topology
