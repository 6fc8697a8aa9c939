// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/FlowCalculatorParameters.h"

#include <boost/shared_ptr.hpp>

#include <string_view>

/// What the calculators do alike when they build their input forms.
namespace CalculatorForm {

using OLMGis::Data::CDataBox;
using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Topology::CCategory;
using OLMGis::Topology::CPropertyEx;
using OLMGis::Topology::enmPropertyEditorType;

/// A parameter set with an empty form.
boost::shared_ptr<CFlowCalculatorParameters> MakeParameters();

/// Adds a category with a name message at a place from 0.
boost::shared_ptr<CCategory> AddCategory(CFlowCalculatorParameters& parameters, int ord, int nameMessage);

/// Adds a property whose four boxes hold one value and whose name and description are one message.
boost::shared_ptr<CPropertyEx> AddProperty(const boost::shared_ptr<CCategory>& category, std::string_view tag,
                                           enmPropertyEditorType editorType, int message, const CDataBox& value);

} // namespace CalculatorForm
