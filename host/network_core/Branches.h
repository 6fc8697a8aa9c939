// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstdint>
#include <vector>

namespace OLMGis::Topology {

class CTopologyStorage;

/// Rows of the sections of one branch, from its head down.
using CBranch = std::vector<std::uint32_t>;

/// The network as branches, each section in one. A branch follows the main outlets from its head, a section that takes
/// the flow of no other, to the end of the network or to where it joins another branch. Where branches meet, the
/// longest from its head (plan length, of equal ones the first in the network) goes on and the others end. A branch
/// comes after those that join it, in the order in which they do; so every section comes after those whose flow it
/// takes. Branches that join none come in the order of the network. A ring is opened at its first section. Linear.
std::vector<CBranch> ListBranches(const CTopologyStorage& topology);

} // namespace OLMGis::Topology
