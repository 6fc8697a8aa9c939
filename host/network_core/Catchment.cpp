// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/Catchment.h"

#include "host/network_core/Section.h"

namespace OLMGis::Topology {

boost::shared_ptr<CSection> CCatchment::GetSection() const {
    return m_section->IsDeleted() ? nullptr : m_section->GetShared();
}

} // namespace OLMGis::Topology
