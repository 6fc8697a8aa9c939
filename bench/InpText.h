// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "bench/Subject.h"

#include <ostream>

namespace Bench {

/// Writes a network as a file of the open storm-water format (.inp): junctions, outfalls, a circular conduit for every
/// section and a subcatchment for every junction, in metres. Numbers are invented, the shape is that of the other
/// benchmarks.
void WriteInp(std::ostream& stream, const CSize& size);

} // namespace Bench
