// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/CustomDialogRegistry.h"

#include "host/gis_core/ModuleScope.h"
#include "host/gis_core/ProjectContext.h"

namespace OLMGis::Topology {

CCustomDialogRegistry* CCustomDialogRegistry::Instance() {
    static const System::CContextSlot<CCustomDialogRegistry> slot;
    return slot.Get();
}

void CCustomDialogRegistry::RegisterDialog(const boost::shared_ptr<ICustomDialog>& dialog) {
    if (!dialog)
        return;
    const auto [entry, isNew] = m_dialogs.insert_or_assign(dialog->GetId(), dialog);
    if (isNew)
        System::CModuleScope::Instance()->NoteMade([this, id = entry->first] { m_dialogs.erase(id); });
}

boost::shared_ptr<ICustomDialog> CCustomDialogRegistry::GetDialog(std::string_view id) const {
    const auto found = m_dialogs.find(id);
    return found == m_dialogs.end() ? nullptr : found->second;
}

} // namespace OLMGis::Topology
