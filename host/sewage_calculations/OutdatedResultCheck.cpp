// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_calculations/OutdatedResultCheck.h"

#include "host/gis_core/CoreProgressBar.h"
#include "host/gis_core/InputNotes.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/ProjectContext.h"
#include "host/gis_core/Utility.h"
#include "host/sewage_calculations/OutdatedResults.h"

#include <fmt/ranges.h>

namespace OLMGis::Sewage {

using Topology::CSection;

namespace {

constexpr int NameMessage = 70462;
constexpr int OutdatedMessage = 70463;

/// The sections that have a value of an attribute.
struct CSectionsWithValue {
    const CSection* m_first = nullptr;
    std::size_t m_count = 0;
};

CSectionsWithValue FindSections(const Data::CDataDefinition& key, const Topology::CAnalysedNetwork& network) {
    CSectionsWithValue found;
    if (network.m_sections.empty())
        return found;
    const auto* const column = network.m_sections.front()->GetStore().FindColumn(key);
    if (column == nullptr)
        return found;
    for (const auto& section : network.m_sections) {
        if (!column->IsNotNull(section->GetRow()))
            continue;
        if (found.m_count++ == 0)
            found.m_first = section.get();
    }
    return found;
}

} // namespace

COutdatedResultCheck::COutdatedResultCheck()
    : CNetworkCheck("0016_OUTDATED_RESULT", NameMessage, "FAI_OUTDATED_RESULT") {}

void COutdatedResultCheck::Run(const Topology::CPropertiesEx& /*form*/, const Topology::CAnalysedNetwork& network,
                               Topology::CFindingList& findings) {
    // Who watches what a run reads must not see this: to list outdated results is not to use them.
    Data::CInputNotes unseen;
    const Data::CInputNotesScope scope(System::CProjectContext::Active().GetAttributes(), unseen);
    const auto results = FindOutdatedResults();
    Utility::CProgress progress(GetItemName(), results.size());
    for (std::size_t i = 0; i < results.size() && progress.GoOn(i); ++i) {
        const COutdatedResult& result = results[i];
        const CSectionsWithValue sections = FindSections(*result.m_result, network);
        if (sections.m_first == nullptr)
            continue;
        const std::string changed = fmt::format("{}", fmt::join(result.m_changed, ", "));
        findings.AddText(*sections.m_first,
                         Utility::CUtility::Format(Utility::Msg(OutdatedMessage), result.m_result->m_id,
                                                   std::to_string(sections.m_count), changed, result.m_calculator),
                         {static_cast<double>(sections.m_count), 0.0, {}});
    }
}

} // namespace OLMGis::Sewage
