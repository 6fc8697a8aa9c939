// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/PropertiesEx.h"
#include "host/sewage_core/FlowCalculatorParameters.h"

#include <boost/shared_ptr.hpp>

#include <initializer_list>
#include <string_view>

/// Input forms of calculators and checks are built from these. A field has four boxes: the shown value, the stored
/// (hidden) one and the defaults of both; a message of the catalogue is its name and its description.
namespace Flow {

/// A parameter set with an empty form. Never null.
boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> MakeParameters();

/// Adds a category at a place (from 0) with a name message.
boost::shared_ptr<OLMGis::Topology::CCategory> AddCategory(OLMGis::Topology::CPropertiesEx& form, int ord,
                                                           int nameMessage);

/// Adds a field whose four boxes have one value.
boost::shared_ptr<OLMGis::Topology::CPropertyEx>
AddProperty(const boost::shared_ptr<OLMGis::Topology::CCategory>& category, std::string_view tag,
            OLMGis::Topology::enmPropertyEditorType editorType, int message, const OLMGis::Data::CDataBox& value);

/// Adds a field for a number.
boost::shared_ptr<OLMGis::Topology::CPropertyEx>
AddNumber(const boost::shared_ptr<OLMGis::Topology::CCategory>& category, std::string_view tag, int message,
          const OLMGis::Data::CDataBox& value);

/// Adds a check box that starts unticked: 0 as a whole number in all boxes.
boost::shared_ptr<OLMGis::Topology::CPropertyEx>
AddCheckBox(const boost::shared_ptr<OLMGis::Topology::CCategory>& category, std::string_view tag, int message);

/// One choice of a combo box: the message that it shows and the number that it stores.
struct CChoice {
    int m_message;
    int m_hiddenValue;
};

/// The choices of a combo box, in order, with the texts of the language in force.
boost::shared_ptr<OLMGis::Topology::CConstraints> MakeConstraints(std::initializer_list<CChoice> choices);

/// Adds a combo box that starts with its first choice: the shown boxes have the text, the hidden ones the number. At
/// least one choice.
boost::shared_ptr<OLMGis::Topology::CPropertyEx>
AddChoice(const boost::shared_ptr<OLMGis::Topology::CCategory>& category, std::string_view tag, int message,
          std::initializer_list<CChoice> choices);

/// Adds a combo box of the whole numbers from 1 to count, shown as they are, that starts with 1 and has no default.
boost::shared_ptr<OLMGis::Topology::CPropertyEx>
AddNumberChoice(const boost::shared_ptr<OLMGis::Topology::CCategory>& category, std::string_view tag, int message,
                int count);

} // namespace Flow
