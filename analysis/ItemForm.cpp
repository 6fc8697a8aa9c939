// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "analysis/ItemForm.h"

#include <boost/make_shared.hpp>

namespace Analysis {

using OLMGis::Data::CDataBox;
using OLMGis::Topology::CCategory;
using OLMGis::Topology::CConstraint;
using OLMGis::Topology::CConstraints;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CPropertyEx;
using OLMGis::Topology::enmPropertyEditorType;

namespace {

boost::shared_ptr<CPropertyEx> MakeProperty(const CCategory& category, std::string_view tag, const CDataBox& value,
                                            enmPropertyEditorType editorType, int message) {
    auto property = boost::make_shared<CPropertyEx>();
    property->SetOrd(category.GetMaxPropertyOrd() + 1);
    property->SetTag(tag);
    property->SetValue(value);
    property->SetHiddenValue(value);
    property->SetEditorType(editorType);
    property->SetMsgName(message);
    property->SetMsgDescription(message);
    property->SetIsRequired(1);
    property->SetReadOnly(0);
    return property;
}

} // namespace

boost::shared_ptr<CCategory> AddCategory(CPropertiesEx& form, int nameMessage) {
    auto category = boost::make_shared<CCategory>();
    category->SetMsgName(nameMessage);
    category->SetOrd(0);
    form.AddCategory(category);
    return category;
}

void AddLimit(CCategory& category, std::string_view tag, int message, double value) {
    const auto property = MakeProperty(category, tag, value, enmPropertyEditorType::Edit, message);
    property->SetDefaultValue(value);
    property->SetDefaultHiddenValue(value);
    category.AddPropertyEx(property);
}

void AddNumberChoice(CCategory& category, std::string_view tag, int message, int count) {
    const auto property = MakeProperty(category, tag, 1, enmPropertyEditorType::ComboBox, message);
    category.AddPropertyEx(property);
    const auto constraints = boost::make_shared<CConstraints>();
    for (int number = 1; number <= count; ++number) {
        const auto constraint = boost::make_shared<CConstraint>();
        constraint->SetValue(number);
        constraint->SetHiddenValue(number);
        constraints->AddConstraint(constraint);
    }
    property->SetConstraints(constraints);
}

} // namespace Analysis
