// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/SewageResponder.h"

#include "host/gis_core/DataRW.h"
#include "host/network_core/TopologyMultiStorage.h"

namespace OLMGis::Sewage {

void CSewageResponder::OnEvent(const Notification::CEvent& event) {
    if (event.m_event != Notification::enmEvent::EntityDeleted || event.m_nodeGuid.empty())
        return;
    const auto node = Topology::CTopologyMultiStorage::Instance()->GetActiveTopology()->GetNodeByGuid(event.m_nodeGuid);
    Data::CDataBox outlet;
    if (Data::CDataRW::Read("MAIN_SECT_OUT", node, outlet, 0, nullptr) != 0 &&
        Utility::GuidEqual()(outlet.TextView(), event.m_guid))
        Data::CDataRW::Write("MAIN_SECT_OUT", node, Data::CDataBox(), nullptr);
}

} // namespace OLMGis::Sewage
