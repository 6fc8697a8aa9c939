// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

namespace OLMGis::Sewage {

/// A calculator that multiplies areas by population densities implements this beside IFlowCalculator, so that code that
/// runs it can warn of missing densities. Found by dynamic_cast; a calculator without it uses no densities.
class IDensityUser {
public:
    virtual bool UsesDensities() const = 0;

protected:
    ~IDensityUser() = default;
};

} // namespace OLMGis::Sewage
