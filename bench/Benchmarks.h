// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

/// The benchmarks by what they look at; each operation registers its own.
namespace Bench {

/// Reading and writing attributes through CDataRW: a pass is 20 keys on every section.
void RegisterAttributes();

/// Every calculator that the module registers, with all its switches on, on a generated network on which the
/// calculators of lower keys ran before; and one whole run by the driver of calculators.
void RegisterCalculators();

/// All checks of the module in one run, their findings kept; the dearest of them alone; and all other checks.
void RegisterChecks();

/// Least diameters and fillings of circular pipes: a pass is one solve for each section.
void RegisterHydraulics();

/// The variation search on a comb, against the plain one, and on a line.
void RegisterRain();

/// Opening and saving a project of sections with 20 attributes.
void RegisterProjectFile();

/// Reading exchange and storm-water files, making a network.
void RegisterSources();

/// Heights of a raster in memory: at nodes and along sections.
void RegisterTerrain();

} // namespace Bench
