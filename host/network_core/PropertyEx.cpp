// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/PropertyEx.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "host/network_core/FormDefinitions.h"
#include "host/network_core/PropertiesEx.h"

#include <boost/make_shared.hpp>

namespace OLMGis::Topology {

using Data::CDataBox;

boost::shared_ptr<CPropertyEx> CPropertyEx::CreateProperty(
    const boost::shared_ptr<CCategory>& category, std::string_view tag, enmPropertyEditorType editorType,
    int nameMessage, int descriptionMessage, const CDataBox& value, const CDataBox& hiddenValue,
    const CDataBox& defaultValue, const CDataBox& defaultHiddenValue, int readOnly,
    const boost::shared_ptr<CConstraints>& constraints, std::string_view dependency, std::string_view customCtrlId) {
    auto property = boost::make_shared<CPropertyEx>();
    property->SetTag(tag);
    property->SetEditorType(editorType);
    property->SetMsgName(nameMessage);
    property->SetMsgDescription(descriptionMessage);
    property->SetValue(value);
    property->SetHiddenValue(hiddenValue);
    property->SetDefaultValue(defaultValue);
    property->SetDefaultHiddenValue(defaultHiddenValue);
    property->SetReadOnly(readOnly);
    property->SetConstraints(constraints);
    property->SetDependency(dependency);
    property->SetCustomCtrlId(customCtrlId);
    if (category) {
        property->SetOrd(category->GetMaxPropertyOrd() + 1);
        category->AddPropertyEx(property);
    }
    return property;
}

std::string CPropertyEx::GetName() const {
    return Utility::Msg(m_labelMessage != 0 ? m_labelMessage : m_nameMessage);
}

std::string CPropertyEx::GetDescription() const {
    return Utility::Msg(m_labelMessage != 0 ? m_labelMessage : m_descriptionMessage);
}

std::string_view CPropertyEx::GetAlias() const {
    return m_definition == nullptr ? std::string_view() : m_definition->m_alias;
}

std::string_view CPropertyEx::GetUnit() const {
    return m_definition == nullptr ? std::string_view() : m_definition->m_unit;
}

const CDataBox& CPropertyEx::GetEffectiveValue() const {
    switch (m_editorType) {
    case enmPropertyEditorType::ComboBox:
    case enmPropertyEditorType::CustomDialog:
    case enmPropertyEditorType::CatalogPicker:
        return m_hiddenValue;
    case enmPropertyEditorType::Edit:
    case enmPropertyEditorType::FilePath:
    case enmPropertyEditorType::CheckBox:
        break;
    }
    return m_value;
}

} // namespace OLMGis::Topology
