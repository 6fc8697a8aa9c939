// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "bench/Subject.h"
#include "host/gis_core/ProjectContext.h"
#include "host/network_core/TopologyStorage.h"

#include <memory>
#include <vector>

namespace Bench {

using OLMGis::Utility::Result;

/// The seed of all invented networks.
inline constexpr int Seed = 1;

/// A project that is the active one while it lives, the hydraulics module's calculators registered.
class CBenchProject {
public:
    CBenchProject();

    OLMGis::Topology::CTopologyStorage& Topology() const;

private:
    OLMGis::System::CProjectContext m_context;
    OLMGis::System::CContextActivation m_activation{m_context};
};
using CBenchProjectPtr = std::shared_ptr<CBenchProject>;

/// The first 20 numbers that a section can have, its length among them.
std::vector<const OLMGis::Data::CDataDefinition*> TwentyKeys();

/// Nodes with a terrain level, sections without any attribute, no catchments.
Result<CBenchProjectPtr> MakeBareNetwork(const CSize& size);

/// The same with a value in each of TwentyKeys on every section: numbers of three decimals that differ.
Result<CBenchProjectPtr> MakeFilledNetwork(const CSize& size);

/// As "drenova generate" makes it: levels, slopes, main outlets, 1.8 catchments a section.
Result<CBenchProjectPtr> MakeGeneratedNetwork(const CSize& size);

} // namespace Bench
