// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/FlowDirection.h"
#include "host/sewage_core/IFlowCalculator.h"

/// Main outlets before a walk down the network: it must know which way to go on where flow divides.
namespace MainOutlets {

using CNodeList = OLMGis::Sewage::CFlowDirection::CNodeList;

/// The nodes at which the sections (nulls are skipped) start, each once, in the order of the last section that uses it.
/// Only those that need a main outlet: the others are settled whatever is asked about them. Linear.
CNodeList CollectStartingNodes(const OLMGis::Sewage::CSectionList& sections);

/// Lets the direction editor settle what is unsettled among the nodes. 0 when the user left it, else non-zero.
/// interaction may be null.
int Settle(const CNodeList& nodes, OLMGis::Sewage::IUserInteraction* interaction);

inline constexpr int NotSettled = 11049; ///< message for a run that can't go on

} // namespace MainOutlets
