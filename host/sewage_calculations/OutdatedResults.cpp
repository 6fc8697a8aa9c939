// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_calculations/OutdatedResults.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/Journal.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/sewage_calculations/InputHashes.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <set>
#include <utility>

namespace OLMGis::Sewage {

using Data::CDataDefinition;
using Data::CResultInput;
using Data::CResultOrigin;
using Data::CResultOrigins;
using Data::enmEntityKind;

namespace {

Data::CAttributeStore& GetStore() {
    return System::CProjectContext::Active().GetAttributes();
}

std::optional<std::uint64_t> HashNow(const CResultInput& input) {
    CInputHashes& hashes = *CInputHashes::Instance();
    if (!input.m_detail.empty())
        return hashes.HashOther(input.m_name, input.m_detail);
    const CDataDefinition* const definition = Data::FindDefinition(input.m_name);
    return definition == nullptr ? std::nullopt : std::optional(hashes.HashAttribute(*definition));
}

bool HasChanged(const CResultInput& input) {
    const auto now = HashNow(input);
    return now && *now != input.m_hash;
}

/// How many sections have a value of each key that a run stored.
class CStoredCounts {
public:
    explicit CStoredCounts(const Data::CJournal& journal) {
        for (const auto& change : journal.GetAttributeChanges())
            if (IsResult(*change.m_definition))
                Note(*change.m_definition, change.m_row);
    }

    std::vector<std::string> GetKeys() const {
        std::vector<std::string> keys;
        for (const auto& definition : Data::CDataConfiguration::Instance()->GetDataDefinitions())
            if (GetCount(*definition) > 0)
                keys.push_back(definition->m_id);
        return keys;
    }

    /// Whether the run gave the section in a row a value.
    bool Has(const CDataDefinition& definition, std::uint32_t row) const {
        return definition.m_index < m_rows.size() && row < m_rows[definition.m_index].size() &&
               m_rows[definition.m_index][row];
    }

    /// Whether the run wrote every value that the attribute has now.
    bool IsWhole(const CDataDefinition& definition) const {
        const auto* const column = GetStore().FindColumn(definition);
        return column == nullptr || column->CountNotNull() <= GetCount(definition);
    }

private:
    static bool IsResult(const CDataDefinition& definition) {
        // The texts that runs store are serialised parameters and PIPE_REF, which is an input from then on.
        return definition.m_entityKind == enmEntityKind::Section && definition.m_type != Data::enmDataType::Text;
    }

    void Note(const CDataDefinition& definition, std::uint32_t row) {
        const auto* const column = GetStore().FindColumn(definition);
        if (column == nullptr || !column->IsNotNull(row))
            return;
        if (definition.m_index >= m_rows.size()) {
            m_rows.resize(definition.m_index + 1);
            m_counts.resize(definition.m_index + 1, 0);
        }
        std::vector<bool>& rows = m_rows[definition.m_index];
        rows.resize(GetStore().GetRowCount(definition.m_entityKind), false);
        m_counts[definition.m_index] += rows[row] ? 0U : 1U;
        rows[row] = true;
    }

    std::uint32_t GetCount(const CDataDefinition& definition) const {
        return definition.m_index < m_counts.size() ? m_counts[definition.m_index] : 0;
    }

    std::vector<std::vector<bool>> m_rows; ///< by definition and row
    std::vector<std::uint32_t> m_counts;   ///< by definition
};

/// The inputs that notes list, with their hashes of now; without the results of the run itself.
std::vector<CResultInput> HashInputs(const Data::CInputNotes& notes, const std::vector<std::string>& results) {
    std::vector<CResultInput> inputs;
    std::vector<CResultInput> others;
    for (const auto& definition : Data::CDataConfiguration::Instance()->GetDataDefinitions()) {
        // Parameters of earlier runs are not editable; a form may show them, no result depends on them.
        if (!notes.HasRead(*definition) || !definition->m_isEditable ||
            std::find(results.begin(), results.end(), definition->m_id) != results.end())
            continue;
        if (definition->m_entityKind == enmEntityKind::Catchment)
            others.push_back({std::string(Data::Inputs::Catchments), definition->m_id});
        else
            inputs.push_back({definition->m_id, {}});
    }
    // Every run goes through the sections in their order.
    others.push_back({std::string(Data::Inputs::Topology), "connections"});
    for (const auto& [name, detail] : notes.GetOthers())
        others.push_back({name, name == Data::Inputs::File ? std::filesystem::absolute(detail).string() : detail});
    std::sort(others.begin(), others.end(), [](const CResultInput& a, const CResultInput& b) {
        return std::pair(a.m_name, a.m_detail) < std::pair(b.m_name, b.m_detail);
    });
    inputs.insert(inputs.end(), others.begin(), others.end());
    for (CResultInput& input : inputs)
        input.m_hash = HashNow(input).value_or(0);
    return inputs;
}

/// Adds the results of a former origin of which values remain, and its inputs; those keep their former hashes.
void Merge(CResultOrigin& origin, const CResultOrigin& former) {
    for (const std::string& key : former.m_results)
        if (std::find(origin.m_results.begin(), origin.m_results.end(), key) == origin.m_results.end())
            origin.m_results.push_back(key);
    for (const CResultInput& input : former.m_inputs) {
        const auto found = std::find_if(origin.m_inputs.begin(), origin.m_inputs.end(), [&](const CResultInput& entry) {
            return entry.m_name == input.m_name && entry.m_detail == input.m_detail;
        });
        if (found == origin.m_inputs.end())
            origin.m_inputs.push_back(input);
        else
            found->m_hash = input.m_hash;
    }
}

/// Sections with values of keys that a run stored, but not on them.
CFormerResults FindFormer(const CResultOrigin& origin, const CStoredCounts& counts) {
    CFormerResults former;
    const auto& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    std::vector<bool> isListed(topology.GetSectionRowCount(), false);
    for (const std::string& key : origin.m_results) {
        const CDataDefinition* const definition = Data::FindDefinition(key);
        if (definition == nullptr || counts.IsWhole(*definition))
            continue;
        former.m_keys.push_back(definition);
        const auto* const column = GetStore().FindColumn(*definition);
        for (const auto& section : topology.GetSections()) {
            if (!column->IsNotNull(section->GetRow()) || counts.Has(*definition, section->GetRow()))
                continue;
            if (!isListed[section->GetRow()])
                former.m_sections.push_back(section.get());
            isListed[section->GetRow()] = true;
        }
    }
    return former;
}

/// Takes results that a run wrote whole away from the calculators that stored them before.
void ReplaceOthers(const CResultOrigin& origin, const CStoredCounts& counts) {
    CResultOrigins& origins = *CResultOrigins::Instance();
    const std::vector<CResultOrigin> all = origins.GetAll();
    for (CResultOrigin other : all) {
        if (other.m_calculator == origin.m_calculator)
            continue;
        const auto isTaken = [&](const std::string& key) {
            const CDataDefinition* const definition = Data::FindDefinition(key);
            return definition != nullptr && counts.IsWhole(*definition) &&
                   std::find(origin.m_results.begin(), origin.m_results.end(), key) != origin.m_results.end();
        };
        if (std::erase_if(other.m_results, isTaken) > 0)
            origins.Put(std::move(other));
    }
}

/// The calculators with outdated results from which those of the i-th come, and the i-th, in the order of runs.
/// changed: of each origin, what changed.
std::vector<std::string> FindRenewal(const std::vector<CResultOrigin>& origins,
                                     const std::vector<std::vector<std::string>>& changed, std::size_t i) {
    std::vector<bool> isNeeded(origins.size(), false);
    isNeeded[i] = true;
    for (bool hasGrown = true; hasGrown;) {
        hasGrown = false;
        for (std::size_t maker = 0; maker < origins.size(); ++maker) {
            if (isNeeded[maker] || changed[maker].empty())
                continue;
            const auto isRead = [&](const std::string& key) {
                for (std::size_t reader = 0; reader < origins.size(); ++reader)
                    if (isNeeded[reader] &&
                        std::find(changed[reader].begin(), changed[reader].end(), key) != changed[reader].end())
                        return true;
                return false;
            };
            isNeeded[maker] = std::any_of(origins[maker].m_results.begin(), origins[maker].m_results.end(), isRead);
            hasGrown = hasGrown || isNeeded[maker];
        }
    }
    std::vector<std::string> runs;
    for (std::size_t maker = 0; maker < origins.size(); ++maker)
        if (isNeeded[maker])
            runs.push_back(origins[maker].m_calculator);
    return runs;
}

} // namespace

COriginRecorder::COriginRecorder() {
    m_scope.emplace(GetStore(), m_notes);
}

CFormerResults COriginRecorder::Keep(std::string_view calculator, const Data::CJournal& journal) {
    Stop();
    const CStoredCounts counts(journal);
    CResultOrigin origin{std::string(calculator), counts.GetKeys(), {}};
    if (origin.m_results.empty())
        return {};
    CFormerResults kept = FindFormer(origin, counts);
    origin.m_inputs = HashInputs(m_notes, origin.m_results);
    CResultOrigins& origins = *CResultOrigins::Instance();
    if (const CResultOrigin* const former = origins.Find(calculator)) {
        const auto remains = [&counts](const std::string& key) {
            const CDataDefinition* const definition = Data::FindDefinition(key);
            return definition != nullptr && !counts.IsWhole(*definition);
        };
        if (std::any_of(former->m_results.begin(), former->m_results.end(), remains))
            Merge(origin, CResultOrigin(*former));
    }
    ReplaceOthers(origin, counts);
    origins.Put(std::move(origin));
    return kept;
}

std::vector<COutdatedResult> FindOutdatedResults() {
    const auto& origins = CResultOrigins::Instance()->GetAll();
    std::vector<std::vector<std::string>> changed(origins.size());
    std::set<std::string, std::less<>> outdatedKeys;
    const auto enter = [](std::vector<std::string>& names, const std::string& name) {
        if (std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
    };
    for (std::size_t i = 0; i < origins.size(); ++i)
        for (const CResultInput& input : origins[i].m_inputs)
            if (HasChanged(input))
                enter(changed[i], input.m_name);
    // What depends on an outdated result is outdated as well; a chain of calculators is short.
    std::size_t knownCount = 0;
    do {
        knownCount = outdatedKeys.size();
        for (std::size_t i = 0; i < origins.size(); ++i)
            if (!changed[i].empty())
                outdatedKeys.insert(origins[i].m_results.begin(), origins[i].m_results.end());
        for (std::size_t i = 0; i < origins.size(); ++i)
            for (const CResultInput& input : origins[i].m_inputs)
                if (input.m_detail.empty() && outdatedKeys.contains(input.m_name))
                    enter(changed[i], input.m_name);
    } while (outdatedKeys.size() != knownCount);
    std::vector<COutdatedResult> outdated;
    for (std::size_t i = 0; i < origins.size(); ++i) {
        if (changed[i].empty())
            continue;
        std::vector<std::string> names; // in the order of the inputs
        for (const CResultInput& input : origins[i].m_inputs)
            if (std::find(changed[i].begin(), changed[i].end(), input.m_name) != changed[i].end())
                enter(names, input.m_name);
        const std::vector<std::string> runs = FindRenewal(origins, changed, i);
        for (const std::string& key : origins[i].m_results)
            if (const auto* const definition = Data::FindDefinition(key);
                definition != nullptr && GetStore().HasValues(*definition))
                outdated.push_back({definition, origins[i].m_calculator, names, runs});
    }
    return outdated;
}

std::vector<COutdatedResult> SelectRead(const std::vector<COutdatedResult>& outdated, const Data::CInputNotes& notes,
                                        std::string_view calculator) {
    std::vector<COutdatedResult> read;
    for (const COutdatedResult& result : outdated)
        if (result.m_calculator != calculator && notes.HasRead(*result.m_result))
            read.push_back(result);
    return read;
}

} // namespace OLMGis::Sewage
