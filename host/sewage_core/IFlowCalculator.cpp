// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/IFlowCalculator.h"

#include "host/network_core/FormDefinitions.h"
#include "host/network_core/FormEditor.h"

namespace OLMGis::Sewage {

int IFlowCalculator::InputParameters(const CSectionList& /*sections*/, CFlowCalculatorParameters* params, int /*mode*/,
                                     CReport* /*report*/) {
    if (params == nullptr || !params->m_properties)
        return 0;
    Topology::CFormDefinitions::Instance().Apply(m_key, *params->m_properties);
    params->m_properties->ApplyDependencies();
    return Topology::FormEditor().EditForm(GetCalculatorName(), *params->m_properties,
                                           [this, params](Topology::CPropertyEx& changed) {
                                               OnPropertiesUpdated(&changed, params);
                                               params->m_properties->ApplyDependencies();
                                           });
}

} // namespace OLMGis::Sewage
