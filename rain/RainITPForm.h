// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/FlowCalculatorParameters.h"
#include "rain/IDFCurves.h"

#include <boost/shared_ptr.hpp>

/// The input form of the rain calculation by intensity curves.
namespace RainITPForm {

boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> Make();

/// Offers the frequencies of the curves, ascending; none of an invalid file. The first becomes the value where there
/// are several; else the value is emptied: a sole frequency is to be chosen too.
void OfferFrequencies(OLMGis::Topology::CPropertyEx& property, const CIDFCurves& curves);

} // namespace RainITPForm
