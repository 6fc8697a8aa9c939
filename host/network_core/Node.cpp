// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/Node.h"

#include "host/network_core/Section.h"

#include <algorithm>

namespace OLMGis::Topology {

int CNode::GetConnectedSections(std::vector<boost::shared_ptr<CSection>>& list) const {
    list.clear();
    auto in = m_in.begin();
    auto out = m_out.begin();
    while (in != m_in.end() || out != m_out.end()) {
        const bool takeIn = out == m_out.end() || (in != m_in.end() && (*in)->GetOrder() <= (*out)->GetOrder());
        const CSection* const section = takeIn ? *in : *out;
        // A section that returns to its own start stands in both lists.
        if (!takeIn || out == m_out.end() || *out != section)
            list.push_back(section->GetShared());
        ++(takeIn ? in : out);
    }
    return static_cast<int>(list.size());
}

int CNode::GetSectionsOut(std::vector<boost::shared_ptr<CSection>>& list) const {
    list.clear();
    for (const CSection* section : m_out)
        list.push_back(section->GetShared());
    return static_cast<int>(list.size());
}

int CNode::GetSectionsIn(std::vector<boost::shared_ptr<CSection>>& list) const {
    list.clear();
    for (const CSection* section : m_in)
        list.push_back(section->GetShared());
    return static_cast<int>(list.size());
}

} // namespace OLMGis::Topology
