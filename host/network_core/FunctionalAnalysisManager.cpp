// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/FunctionalAnalysisManager.h"

#include "host/gis_core/CoreProgressBar.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/ModuleScope.h"
#include "host/gis_core/ProjectContext.h"
#include "host/gis_core/SystemManager.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/FindingNotes.h"
#include "host/network_core/TopologyMultiStorage.h"

#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

namespace OLMGis::Topology {

using Utility::CCoreProgressBar;

namespace {

constexpr int ItemStoppedMessage = 70160;

/// Makes the findings of one item from its messages and its notes.
class CFindingCollector {
public:
    CFindingCollector(CItemFindings& item, const CTopologyStorage& topology) : m_item(item), m_topology(topology) {}

    using CMessages = std::vector<boost::shared_ptr<CFAMsg>>;

    /// Notes are in the order of the messages: each belongs to the next message of its entity.
    void Collect(CMessages messages, const std::vector<CFindingNote>& notes) {
        auto note = notes.begin();
        for (auto& message : messages) {
            if (!message)
                continue;
            CFinding& finding = m_item.m_findings.emplace_back();
            finding.m_guid = m_item.Keep(message->m_guid);
            finding.m_text = m_item.Keep(message->m_text);
            if (note != notes.end() && note->m_entity->GetGuid() == finding.m_guid)
                Take(finding, *note++);
            else
                PlaceByGuid(finding);
            message.reset(); // there may be a million: no need to have every text twice
        }
    }

private:
    void Take(CFinding& finding, const CFindingNote& note) {
        finding.m_value = note.m_value;
        finding.m_limit = note.m_limit;
        if (note.m_unit != m_unit)
            m_unit = m_item.Keep(note.m_unit);
        finding.m_unit = m_unit;
        if (note.m_entity->GetEntityKind() == Data::enmEntityKind::Section)
            PlaceAt(finding, static_cast<const CSection&>(*note.m_entity));
        else
            PlaceAt(finding, static_cast<const CNode&>(*note.m_entity));
    }

    /// For a finding of which the item noted nothing.
    void PlaceByGuid(CFinding& finding) {
        if (const auto section = m_topology.GetSectionByGuid(finding.m_guid))
            PlaceAt(finding, *section);
        else if (const auto node = m_topology.GetNodeByGuid(finding.m_guid))
            PlaceAt(finding, *node);
    }

    void PlaceAt(CFinding& finding, const CSection& section) {
        finding.m_name = m_item.Keep(section.GetName());
        finding.m_point = MiddleOfLine(section.GetGeometry());
    }

    void PlaceAt(CFinding& finding, const CNode& node) {
        finding.m_name = m_item.Keep(node.GetName());
        finding.m_point = node.GetPoint();
    }

    CItemFindings& m_item;
    const CTopologyStorage& m_topology;
    std::string_view m_unit; ///< of the last note: mostly that of all
};

/// Gives the progress display back as it was, however its scope is left.
class CProgressGuard {
public:
    CProgressGuard() = default;
    ~CProgressGuard() {
        while (m_progress->GetDepth() > m_depth)
            m_progress->RestoreState();
    }
    CProgressGuard(const CProgressGuard&) = delete;
    CProgressGuard& operator=(const CProgressGuard&) = delete;

private:
    CCoreProgressBar* m_progress = CCoreProgressBar::Instance();
    std::size_t m_depth = m_progress->GetDepth();
};

/// Runs an item; why it stopped before its end, empty when it did not. Missing memory is no fault of the item: that
/// exception goes on to the caller.
std::string RunGuarded(IFunctionalAnalysisItem& item, const boost::shared_ptr<CPropertiesEx>& properties,
                       CAnalysedNetwork& network, std::vector<boost::shared_ptr<CFAMsg>>& messages) {
    const CProgressGuard guard;
    const auto reasonText = [&item](const char* reason) {
        return Utility::CUtility::Format(Utility::Msg(ItemStoppedMessage), item.GetItemName(), reason);
    };
    try {
        item.RunAnalysis(properties, &network, messages);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& exception) {
        return reasonText(exception.what());
    } catch (...) { // modules may throw what they like
        return reasonText("?");
    }
    return {};
}

CItemFindings RunItem(const CFunctionalAnalysisManager::CRequest& request, CAnalysedNetwork& network,
                      const CTopologyStorage& topology) {
    IFunctionalAnalysisItem& item = *request.m_item;
    const auto properties = request.m_properties ? request.m_properties : item.CreateProperties();
    CItemFindings result;
    result.m_item = item.GetItemKey();
    result.m_parameters = properties->Serialize();
    std::vector<boost::shared_ptr<CFAMsg>> messages;
    CFindingNotes notes;
    result.m_error = RunGuarded(item, properties, network, messages);
    CFindingCollector(result, topology).Collect(std::move(messages), notes.Get());
    return result;
}

} // namespace

CFunctionalAnalysisManager* CFunctionalAnalysisManager::Instance() {
    static const System::CContextSlot<CFunctionalAnalysisManager> slot;
    return slot.Get();
}

void CFunctionalAnalysisManager::RegisterFunctionalAnalysisItem(
    const boost::shared_ptr<IFunctionalAnalysisItem>& item) {
    if (!item || GetItem(item->GetItemKey()))
        return;
    m_items.push_back(item);
    System::CModuleScope::Instance()->NoteRegistered(
        [this, key = item->GetItemKey()] { UnregisterFunctionalAnalysisItem(key); });
}

void CFunctionalAnalysisManager::UnregisterFunctionalAnalysisItem(std::string_view key) {
    std::erase_if(m_items, [key](const auto& entry) { return entry->GetItemKey() == key; });
}

boost::shared_ptr<IFunctionalAnalysisItem> CFunctionalAnalysisManager::GetItem(std::string_view key) const {
    const auto found =
        std::find_if(m_items.begin(), m_items.end(), [key](const auto& item) { return item->GetItemKey() == key; });
    return found == m_items.end() ? nullptr : *found;
}

bool CFunctionalAnalysisManager::IsAvailable(IFunctionalAnalysisItem& item) {
    const int function = System::CSystemManager::Instance()->GetActiveSystem()->GetSystemFunction();
    return item.IsAvailableForSystemFunction(function) != 0;
}

bool CFunctionalAnalysisManager::RunAnalysis(const std::vector<CRequest>& requests) {
    const CTopologyStorage& topology = *CTopologyMultiStorage::Instance()->GetActiveTopology();
    CAnalysedNetwork network{topology.GetNodes(), topology.GetSections()};
    std::vector<CItemFindings> findings;
    const CProgressGuard guard;
    CCoreProgressBar* const progress = CCoreProgressBar::Instance();
    progress->SaveState();
    for (const CRequest& request : requests) {
        if (!IsAvailable(*request.m_item))
            continue;
        findings.push_back(RunItem(request, network, topology));
        if (progress->IsCancelled())
            return false;
    }
    m_findings = std::move(findings);
    return true;
}

} // namespace OLMGis::Topology
