// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/FlowCalculatorManager.h"

#include "host/gis_core/ModuleScope.h"
#include "host/gis_core/ProjectContext.h"

namespace OLMGis::Sewage {

CFlowCalculatorManager* CFlowCalculatorManager::Instance() {
    static const System::CContextSlot<CFlowCalculatorManager> slot;
    return slot.Get();
}

void CFlowCalculatorManager::RegisterFlowCalculator(const boost::shared_ptr<IFlowCalculator>& calculator) {
    if (!calculator || !m_calculators.emplace(calculator->GetKey(), calculator).second)
        return;
    System::CModuleScope::Instance()->NoteRegistered([this, key = calculator->GetKey()] { m_calculators.erase(key); });
}

boost::shared_ptr<IFlowCalculator> CFlowCalculatorManager::GetCalculator(std::string_view key) const {
    const auto found = m_calculators.find(key);
    return found == m_calculators.end() ? nullptr : found->second;
}

std::vector<boost::shared_ptr<IFlowCalculator>> CFlowCalculatorManager::GetCalculators() const {
    std::vector<boost::shared_ptr<IFlowCalculator>> calculators;
    for (const auto& [key, calculator] : m_calculators)
        calculators.push_back(calculator);
    return calculators;
}

} // namespace OLMGis::Sewage
