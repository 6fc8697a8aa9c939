// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "flow/FormFields.h"

#include "host/gis_core/ModuleConfiguration.h"

#include <boost/make_shared.hpp>

#include <cassert>

namespace Flow {

using OLMGis::Data::CDataBox;
using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Topology::CCategory;
using OLMGis::Topology::CConstraint;
using OLMGis::Topology::CConstraints;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CPropertyEx;
using OLMGis::Topology::enmPropertyEditorType;
using OLMGis::Utility::Msg;

namespace {

void AddConstraint(CConstraints& constraints, const CDataBox& shown, int hidden) {
    auto constraint = boost::make_shared<CConstraint>();
    constraint->SetValue(shown);
    constraint->SetHiddenValue(hidden);
    constraints.AddConstraint(constraint);
}

} // namespace

boost::shared_ptr<CFlowCalculatorParameters> MakeParameters() {
    auto parameters = boost::make_shared<CFlowCalculatorParameters>();
    parameters->m_properties = boost::make_shared<CPropertiesEx>();
    return parameters;
}

boost::shared_ptr<CCategory> AddCategory(CPropertiesEx& form, int ord, int nameMessage) {
    auto category = boost::make_shared<CCategory>();
    category->SetOrd(ord);
    category->SetMsgName(nameMessage);
    form.AddCategory(category);
    return category;
}

boost::shared_ptr<CPropertyEx> AddProperty(const boost::shared_ptr<CCategory>& category, std::string_view tag,
                                           enmPropertyEditorType editorType, int message, const CDataBox& value) {
    return CPropertyEx::CreateProperty(category, tag, editorType, message, message, value, value, value, value, 0,
                                       nullptr, "", "");
}

boost::shared_ptr<CPropertyEx> AddNumber(const boost::shared_ptr<CCategory>& category, std::string_view tag,
                                         int message, const CDataBox& value) {
    return AddProperty(category, tag, enmPropertyEditorType::Edit, message, value);
}

boost::shared_ptr<CPropertyEx> AddCheckBox(const boost::shared_ptr<CCategory>& category, std::string_view tag,
                                           int message) {
    return AddProperty(category, tag, enmPropertyEditorType::CheckBox, message, 0);
}

boost::shared_ptr<CConstraints> MakeConstraints(std::initializer_list<CChoice> choices) {
    auto constraints = boost::make_shared<CConstraints>();
    for (const CChoice& choice : choices)
        AddConstraint(*constraints, Msg(choice.m_message), choice.m_hiddenValue);
    return constraints;
}

boost::shared_ptr<CPropertyEx> AddChoice(const boost::shared_ptr<CCategory>& category, std::string_view tag,
                                         int message, std::initializer_list<CChoice> choices) {
    assert(choices.size() > 0);
    const auto constraints = MakeConstraints(choices);
    const auto first = constraints->GetConstraintByOrd(1);
    return CPropertyEx::CreateProperty(category, tag, enmPropertyEditorType::ComboBox, message, message,
                                       first->GetValue(), first->GetHiddenValue(), first->GetValue(),
                                       first->GetHiddenValue(), 0, constraints, "", "");
}

boost::shared_ptr<CPropertyEx> AddNumberChoice(const boost::shared_ptr<CCategory>& category, std::string_view tag,
                                               int message, int count) {
    auto constraints = boost::make_shared<CConstraints>();
    for (int number = 1; number <= count; ++number)
        AddConstraint(*constraints, number, number);
    return CPropertyEx::CreateProperty(category, tag, enmPropertyEditorType::ComboBox, message, message, 1, 1,
                                       CDataBox(), CDataBox(), 0, constraints, "", "");
}

} // namespace Flow
