// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/curves/FormFields.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"

#include <boost/make_shared.hpp>

#include <algorithm>

using OLMGis::Data::CDataBox;
using OLMGis::Topology::CConstraint;
using OLMGis::Topology::CConstraints;
using OLMGis::Topology::CPropertyEx;
using OLMGis::Topology::enmPropertyEditorType;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Msg;

namespace Rain {

namespace {

constexpr int EditParameters = 7221; ///< message: what a field with a dialog of its own shows

} // namespace

CPropertyPtr AddField(const CCategoryPtr& category, const char* tag, enmPropertyEditorType editor, int message,
                      const CDataBox& value, const CDataBox& hidden, const CDataBox& defaultValue,
                      const CDataBox& defaultHidden) {
    return CPropertyEx::CreateProperty(category, tag, editor, message, message, value, hidden, defaultValue,
                                       defaultHidden, 0, nullptr, "", "");
}

CPropertyPtr AddDialogField(const CCategoryPtr& category, const char* tag, int message, const CDataBox& hidden,
                            const char* controlId) {
    const CDataBox shown(Msg(EditParameters));
    auto property = AddField(category, tag, enmPropertyEditorType::CustomDialog, message, shown, hidden, shown, hidden);
    property->SetCustomCtrlId(controlId);
    return property;
}

CPropertyPtr AddChoices(const CCategoryPtr& category, const char* tag, int message,
                        const boost::shared_ptr<CConstraints>& choices) {
    const auto first = choices->GetConstraintByOrd(1);
    auto property = AddField(category, tag, enmPropertyEditorType::ComboBox, message, first->GetValue(),
                             first->GetHiddenValue(), "", 0);
    property->SetConstraints(choices);
    return property;
}

void AddConstraint(CConstraints& constraints, const CDataBox& value, const CDataBox& hidden) {
    const auto constraint = boost::make_shared<CConstraint>();
    constraint->SetValue(value);
    constraint->SetHiddenValue(hidden);
    constraints.AddConstraint(constraint);
}

std::string MakeDependency(const std::vector<int>& choices, const std::vector<CShownField>& fields) {
    std::string text;
    for (const CShownField& field : fields) {
        for (std::size_t i = 0; i < choices.size(); ++i) {
            const bool isShown =
                std::find(field.m_choices.begin(), field.m_choices.end(), choices[i]) != field.m_choices.end();
            text += text.empty() ? "" : "$";
            text += CUtility::Format("%d:%d:%s", static_cast<int>(i), isShown ? 1 : 0, field.m_tag);
        }
    }
    return text;
}

std::string CFormReading::NameOf(const char* tag) const {
    const auto property = m_form.GetPropertyExByTag(tag);
    return property ? property->GetName() : tag;
}

} // namespace Rain
