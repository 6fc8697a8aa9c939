// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/FlowCalculatorParameters.h"

#include <boost/shared_ptr.hpp>

#include <initializer_list>
#include <string_view>

/// What the calculators do alike when they build their input forms.
namespace CalculatorForm {

using OLMGis::Data::CDataBox;
using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Topology::CCategory;
using OLMGis::Topology::CConstraints;
using OLMGis::Topology::CPropertyEx;
using OLMGis::Topology::enmPropertyEditorType;

/// A parameter set with an empty form.
boost::shared_ptr<CFlowCalculatorParameters> MakeParameters();

/// Adds a category with a name message at a place from 0.
boost::shared_ptr<CCategory> AddCategory(CFlowCalculatorParameters& parameters, int ord, int nameMessage);

/// Adds a property whose four boxes hold one value and whose name and description are one message.
boost::shared_ptr<CPropertyEx> AddProperty(const boost::shared_ptr<CCategory>& category, std::string_view tag,
                                           enmPropertyEditorType editorType, int message, const CDataBox& value);

/// Adds a switch, off to begin with: 0 as a whole number in all boxes.
boost::shared_ptr<CPropertyEx> AddCheckBox(const boost::shared_ptr<CCategory>& category, std::string_view tag,
                                           int message);

/// One choice of a combo box: the message that it shows and the number that it stores.
struct CChoice {
    int m_message;
    int m_hiddenValue;
};

/// The choices as a form keeps them, in order, with the texts of the language in force.
boost::shared_ptr<CConstraints> MakeConstraints(std::initializer_list<CChoice> choices);

/// Adds a combo box that stands on its first choice: the shown boxes hold the text, the hidden ones the number. At
/// least one choice.
boost::shared_ptr<CPropertyEx> AddChoice(const boost::shared_ptr<CCategory>& category, std::string_view tag,
                                         int message, std::initializer_list<CChoice> choices);

} // namespace CalculatorForm
