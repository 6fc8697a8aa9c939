// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/FlowCalculatorParameters.h"

#include <boost/shared_ptr.hpp>

class CIDFCurves;

/// The input form of the rain calculation by intensity curves.
namespace RainITPForm {

boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> Make();

/// Offers the frequencies of the curves, ascending; none of an invalid file and of null. The first becomes the value
/// where there are several; else the value is emptied: a single frequency must be chosen too. Fixed: others rely on it.
void OfferFrequencies(OLMGis::Topology::CPropertyEx& property, const CIDFCurves* curves);

} // namespace RainITPForm
