// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "flow/CalculatorForm.h"

#include <boost/make_shared.hpp>

namespace CalculatorForm {

using OLMGis::Topology::CPropertiesEx;

boost::shared_ptr<CFlowCalculatorParameters> MakeParameters() {
    auto parameters = boost::make_shared<CFlowCalculatorParameters>();
    parameters->m_properties = boost::make_shared<CPropertiesEx>();
    return parameters;
}

boost::shared_ptr<CCategory> AddCategory(CFlowCalculatorParameters& parameters, int ord, int nameMessage) {
    auto category = boost::make_shared<CCategory>();
    category->SetOrd(ord);
    category->SetMsgName(nameMessage);
    parameters.m_properties->AddCategory(category);
    return category;
}

boost::shared_ptr<CPropertyEx> AddProperty(const boost::shared_ptr<CCategory>& category, std::string_view tag,
                                           enmPropertyEditorType editorType, int message, const CDataBox& value) {
    return CPropertyEx::CreateProperty(category, tag, editorType, message, message, value, value, value, value, 0,
                                       nullptr, "", "");
}

} // namespace CalculatorForm
