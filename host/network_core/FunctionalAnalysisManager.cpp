// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/FunctionalAnalysisManager.h"

#include "host/gis_core/CoreProgressBar.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/ModuleScope.h"
#include "host/gis_core/ProjectContext.h"
#include "host/gis_core/RunTrace.h"
#include "host/gis_core/SystemManager.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/TopologyMultiStorage.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <exception>
#include <new>

namespace OLMGis::Topology {

using Data::CDataBox;
using Utility::CCoreProgressBar;
using Utility::CRunTrace;
using Utility::CRunTraceScope;
using Utility::CTraceTable;

namespace {

constexpr int ItemStoppedMessage = 70160;

std::string TimeOfNow() {
    using namespace std::chrono;
    const auto now = floor<seconds>(system_clock::now());
    const auto day = floor<days>(now);
    const year_month_day date(day);
    const hh_mm_ss time(now - day);
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.000Z", static_cast<int>(date.year()),
                       static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), time.hours().count(),
                       time.minutes().count(), time.seconds().count());
}

std::optional<double> NumberOf(const CDataBox& box) {
    return box.IsNotNull() ? std::optional(box.AsDouble()) : std::nullopt;
}

/// Brings the messages of one item and the rows of the trace together.
class CFindingCollector {
public:
    CFindingCollector(std::string_view item, const CTopologyStorage& topology, const CRunTrace& trace)
        : m_item(item), m_topology(topology), m_trace(trace), m_nextRow(CountRows()) {}

    /// Once the item has run. Takes the texts out of the messages.
    std::vector<CFinding> Collect(const std::vector<boost::shared_ptr<CFAMsg>>& messages) {
        m_table = m_trace.FindTable(FindingTrace::Table);
        m_rowCount = CountRows();
        std::vector<CFinding> findings;
        findings.reserve(messages.size());
        for (const auto& message : messages)
            if (message)
                findings.push_back(ToFinding(*message));
        return findings;
    }

private:
    std::size_t CountRows() const {
        const CTraceTable* const table = m_trace.FindTable(FindingTrace::Table);
        return table == nullptr ? 0 : table->m_rows.size();
    }

    CFinding ToFinding(CFAMsg& message) {
        CFinding finding;
        finding.m_guid = std::move(message.m_guid);
        finding.m_text = std::move(message.m_text);
        const CTraceTable::CRow* const row = TakeRow(finding.m_guid);
        if (row != nullptr) {
            finding.m_value = NumberOf(row->m_values[FindingTrace::Value]);
            finding.m_limit = NumberOf(row->m_values[FindingTrace::Limit]);
            finding.m_unit = row->m_values[FindingTrace::Unit].AsText();
        }
        const bool isNode = row != nullptr && row->m_values[FindingTrace::Kind].TextView() == FindingTrace::NodeKind;
        if (isNode || !PlaceAtSection(finding))
            PlaceAtNode(finding);
        return finding;
    }

    /// The row beside a finding, null where the item noted none.
    const CTraceTable::CRow* TakeRow(std::string_view guid) {
        if (m_nextRow >= m_rowCount)
            return nullptr;
        const CTraceTable::CRow& row = m_table->m_rows[m_nextRow];
        const bool isIts = row.m_guid == guid && row.m_values.size() == FindingTrace::ColumnCount &&
                           row.m_values[FindingTrace::Item].TextView() == m_item;
        m_nextRow += isIts ? 1 : 0;
        return isIts ? &row : nullptr;
    }

    bool PlaceAtSection(CFinding& finding) const {
        const auto section = m_topology.GetSectionByGuid(finding.m_guid);
        if (!section)
            return false;
        finding.m_name = section->GetName();
        finding.m_point = MiddleOfLine(section->GetGeometry());
        return true;
    }

    void PlaceAtNode(CFinding& finding) const {
        const auto node = m_topology.GetNodeByGuid(finding.m_guid);
        if (!node)
            return;
        finding.m_name = node->GetName();
        finding.m_point = node->GetPoint();
    }

    std::string_view m_item;
    const CTopologyStorage& m_topology;
    const CRunTrace& m_trace;
    const CTraceTable* m_table = nullptr;
    std::size_t m_nextRow;
    std::size_t m_rowCount = 0;
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

/// Runs an item; why it stopped before its end, empty when it did not. Missing memory is nothing that an item could be
/// blamed for and goes on to whoever tells it.
std::string RunGuarded(IFunctionalAnalysisItem& item, const boost::shared_ptr<CPropertiesEx>& properties,
                       CAnalysedNetwork& network, std::vector<boost::shared_ptr<CFAMsg>>& messages) {
    const CProgressGuard guard;
    const auto tell = [&item](const char* reason) {
        return Utility::CUtility::Format(Utility::CModuleConfiguration::Instance()->GetMsg(ItemStoppedMessage),
                                         item.GetItemName(), reason);
    };
    try {
        item.RunAnalysis(properties, &network, messages);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& exception) {
        return tell(exception.what());
    } catch (...) { // modules may throw what they like
        return tell("?");
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
    CRunTrace own;
    CRunTrace& trace = CRunTrace::Active() == nullptr ? own : *CRunTrace::Active();
    const CRunTraceScope scope(trace);
    CFindingCollector collector(result.m_item, topology, trace);
    std::vector<boost::shared_ptr<CFAMsg>> messages;
    result.m_error = RunGuarded(item, properties, network, messages);
    result.m_findings = collector.Collect(messages);
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
    System::CModuleScope::Instance()->NoteRegistered([this, key = item->GetItemKey()] {
        std::erase_if(m_items, [&key](const auto& entry) { return entry->GetItemKey() == key; });
    });
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
    const std::string time = TimeOfNow();
    std::vector<CItemFindings> findings;
    const CProgressGuard guard;
    CCoreProgressBar* const progress = CCoreProgressBar::Instance();
    progress->SaveState();
    for (const CRequest& request : requests) {
        if (!IsAvailable(*request.m_item))
            continue;
        findings.push_back(RunItem(request, network, topology));
        findings.back().m_time = time;
        if (progress->IsCancelled())
            return false;
    }
    m_findings = std::move(findings);
    return true;
}

} // namespace OLMGis::Topology
