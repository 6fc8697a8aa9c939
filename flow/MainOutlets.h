// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/FlowDirection.h"
#include "host/sewage_core/IFlowCalculator.h"

/// Main outlets before a walk down the network: the walk must know which way to go on where the flow divides.
namespace Flow::MainOutlets {

using CNodeList = OLMGis::Sewage::CFlowDirection::CNodeList;

/// The nodes at which the sections (nulls are skipped) start and which need a main outlet, each once, in the order of
/// the last section that uses it. Linear.
CNodeList CollectStartingNodes(const OLMGis::Sewage::CSectionList& sections);

/// Has the main outlets that are missing among the nodes chosen in the direction editor. 0 when the user left the
/// editor, else non-zero. interaction may be null.
int ChooseMissing(const CNodeList& nodes, OLMGis::Sewage::IUserInteraction* interaction);

inline constexpr int MissingMessage = 11049; ///< message of a run that stops because main outlets are missing

} // namespace Flow::MainOutlets
