// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Finding.h"
#include "host/network_core/IFunctionalAnalysisItem.h"

#include <boost/shared_ptr.hpp>

#include <optional>
#include <string_view>
#include <vector>

namespace OLMGis::Topology {

/// The registry of the checks, and the findings of their last run. One per project context.
class CFunctionalAnalysisManager {
public:
    static CFunctionalAnalysisManager* Instance();

    /// Enters an item for the life of the module that registers it. A null and a key that is taken are kept out.
    void RegisterFunctionalAnalysisItem(const boost::shared_ptr<IFunctionalAnalysisItem>& item);

    /// Takes an item out again; nothing for an unknown key.
    void UnregisterFunctionalAnalysisItem(std::string_view key);

    /// In the order of registration; no nulls.
    const std::vector<boost::shared_ptr<IFunctionalAnalysisItem>>& GetItems() const { return m_items; }

    /// Null for an unknown key (plain characters).
    boost::shared_ptr<IFunctionalAnalysisItem> GetItem(std::string_view key) const;

    /// Whether the item makes sense for the system function of the active system.
    static bool IsAvailable(IFunctionalAnalysisItem& item);

    /// An item to run, not null, and its form; a null form means a fresh one.
    struct CRequest {
        boost::shared_ptr<IFunctionalAnalysisItem> m_item;
        boost::shared_ptr<CPropertiesEx> m_properties;
    };

    /// Runs items on the active project's whole network, in the order given, and keeps what they find in place of all
    /// that was kept. Items that are not for the system function are passed over. One that ends with an exception is
    /// reported in its findings (m_error) and what it had found until then stays; the others still run, and the
    /// progress display is given back as it was. False when the user cancelled: what was kept before stays.
    /// Cost beside the items: linear in the network and the findings.
    bool RunAnalysis(const std::vector<CRequest>& requests);

    /// The findings of the last run that came to its end, by item in the order of that run; nothing when there was none
    /// in this project's life.
    const std::optional<std::vector<CItemFindings>>& GetFindings() const { return m_findings; }

    /// Puts findings in place of all that was kept: those of a project file.
    void SetFindings(std::optional<std::vector<CItemFindings>> findings) { m_findings = std::move(findings); }

private:
    std::vector<boost::shared_ptr<IFunctionalAnalysisItem>> m_items;
    std::optional<std::vector<CItemFindings>> m_findings;
};

} // namespace OLMGis::Topology
