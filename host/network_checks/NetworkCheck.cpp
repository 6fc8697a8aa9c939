// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_checks/NetworkCheck.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/SystemManager.h"

#include <boost/make_shared.hpp>

namespace OLMGis::NetworkChecks {

using Topology::CCategory;
using Topology::CPropertiesEx;
using Topology::CPropertyEx;
using Topology::enmPropertyEditorType;

std::string CNetworkCheck::GetItemName() {
    return Utility::Msg(m_nameMessage);
}

int CNetworkCheck::IsAvailableForSystemFunction(int systemFunction) {
    return systemFunction == System::CGisSystem::SewageFunction ? 1 : 0;
}

boost::shared_ptr<CPropertiesEx> CNetworkCheck::CreateProperties() {
    auto form = boost::make_shared<CPropertiesEx>();
    const std::vector<CField> fields = GetFields();
    if (fields.empty())
        return form;
    const auto category = boost::make_shared<CCategory>();
    category->SetMsgName(m_nameMessage);
    form->AddCategory(category);
    for (const CField& field : fields) {
        const auto editor = field.m_value.GetKind() == Data::CDataBox::enmKind::Int ? enmPropertyEditorType::CheckBox
                                                                                    : enmPropertyEditorType::Edit;
        CPropertyEx::CreateProperty(category, field.m_tag, editor, field.m_message, field.m_message, field.m_value,
                                    field.m_value, field.m_value, field.m_value, 0, nullptr, "", "")
            ->SetIsRequired(1);
    }
    return form;
}

void CNetworkCheck::RunAnalysis(boost::shared_ptr<CPropertiesEx> properties, Topology::CAnalysedNetwork* network,
                                std::vector<boost::shared_ptr<Topology::CFAMsg>>& findings) {
    if (network == nullptr)
        return;
    Topology::CFindingList list(findings);
    Run(properties ? *properties : *CreateProperties(), *network, list);
}

} // namespace OLMGis::NetworkChecks
