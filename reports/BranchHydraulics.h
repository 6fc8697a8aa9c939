// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "reports/Table.h"

namespace Reports {

/// The hydraulic table of the active project: one row per section, branch by branch (Topology::ListBranches, counted
/// from 1) and down each, with ground and invert levels, slope, pipe, flows, and the uniform flow of the design flow
/// (CSectionHydraulicsReader) at a viscosity of 1e-6 m²/s. It is calculated when the rows are read; nothing is stored,
/// and the stored HYD_ results are not read. Values that a section lacks are null, as are those that need them.
/// Surcharged: filling 100 %, depth the inside height, the ratio Q/Qfull above 100 % (null without a capacity).
/// Linear. The network must not change in the life of the table.
CTable MakeBranchHydraulicsTable();

} // namespace Reports
