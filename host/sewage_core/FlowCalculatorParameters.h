// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/PropertiesEx.h"

#include <boost/shared_ptr.hpp>

#include <string>

namespace OLMGis::Sewage {

/// One input set of a calculator.
class CFlowCalculatorParameters {
public:
    /// The form that the user edits; null until the calculator has made it.
    boost::shared_ptr<Topology::CPropertiesEx> m_properties;

    /// All parameters as one text (see CPropertiesEx::Serialize); "{}" without a form.
    std::string Serialize() const { return m_properties ? m_properties->Serialize() : "{}"; }
};

} // namespace OLMGis::Sewage
