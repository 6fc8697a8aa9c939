// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_calculations/InputHashes.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/InputNotes.h"
#include "host/gis_core/InstallationPaths.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/ProjectContext.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/PipeManager.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/sewage_core/SewageCalculationConfigurator.h"

#include <bit>
#include <cmath>
#include <string>

namespace OLMGis::Sewage {

using Data::CAttributeColumn;
using Data::CDataDefinition;
using Data::enmDataType;
using Data::enmEntityKind;
using Topology::CCatalog;
using Topology::CCatalogItem;
using Topology::CCatalogManager;
using Topology::CPipeManager;
using Topology::CPoint;
using Topology::CSection;
using Topology::CTopologyStorage;

namespace {

// The hashes are stored with the project: they must not change from one version of the program to the next.

/// The finalizer of SplitMix64 (Steele, Lea, Flood 2014).
std::uint64_t Mix(std::uint64_t bits) {
    bits += 0x9E3779B97F4A7C15ULL;
    bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9ULL;
    bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EBULL;
    return bits ^ (bits >> 31);
}

/// Depends on the order of the two.
std::uint64_t Mix(std::uint64_t first, std::uint64_t second) {
    return Mix(Mix(first) ^ second);
}

/// FNV-1a (Fowler, Noll, Vo).
std::uint64_t HashText(std::string_view text) {
    std::uint64_t hash = 0xCBF29CE484222325ULL;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3ULL;
    return Mix(hash);
}

std::uint64_t HashGuid(std::string_view guid) {
    std::uint64_t hash = 0xCBF29CE484222325ULL;
    for (const char c : guid)
        if (c != '{' && c != '}') {
            const bool isCapital = c >= 'A' && c <= 'Z';
            hash = (hash ^ static_cast<unsigned char>(isCapital ? c - 'A' + 'a' : c)) * 0x100000001B3ULL;
        }
    return Mix(hash);
}

/// Zero has one hash, whatever its sign.
std::uint64_t HashNumber(double number) {
    return Mix(std::bit_cast<std::uint64_t>(number == 0.0 ? 0.0 : number));
}

std::uint64_t HashPipe(const CCatalogItem* item) {
    const auto* const pipe = item == nullptr ? nullptr : item->GetPipeData();
    if (pipe == nullptr)
        return 0;
    std::uint64_t hash = Mix(HashGuid(item->GetGUID()), static_cast<std::uint64_t>(pipe->m_shape));
    for (const double number :
         {pipe->m_innerWidth, pipe->m_innerHeight, pipe->m_wall, pipe->m_roughness, pipe->m_minDiameter})
        hash = Mix(hash, HashNumber(number));
    hash = Mix(hash, HashText(pipe->m_type));
    for (const auto& point : pipe->m_table)
        hash = Mix(Mix(hash, HashNumber(point.m_height)), HashNumber(point.m_width));
    return hash;
}

std::uint64_t HashPipeGroup(const CCatalog& catalog, std::string_view name) {
    const auto group = catalog.GetGroupByName(name);
    std::uint64_t hash = 0;
    if (group)
        for (const auto& item : group->GetSubItems())
            hash = Mix(hash, HashPipe(item.get()));
    return hash;
}

const CTopologyStorage& GetTopology() {
    return *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
}

/// Sum over the pipes that sections refer to, each once.
std::uint64_t HashPipesInUse() {
    static const CDataDefinition* const reference = Data::FindDefinition("PIPE_REF");
    const auto& topology = GetTopology();
    const auto* const column = reference == nullptr ? nullptr : topology.GetStore().FindColumn(*reference);
    if (column == nullptr)
        return 0;
    std::vector<bool> isSeen(topology.GetStore().GetTexts().GetCount(), false);
    std::uint64_t hash = 0;
    for (const auto& section : topology.GetSections()) {
        if (!column->IsNotNull(section->GetRow()))
            continue;
        const std::uint64_t id = column->GetStored(section->GetRow()).m_bits;
        if (isSeen[id])
            continue;
        isSeen[id] = true;
        hash += HashPipe(CPipeManager::Instance()->GetPipe(column->ReadText(section->GetRow())).get());
    }
    return hash;
}

std::optional<std::uint64_t> HashCatalog(std::string_view detail) {
    const CCatalog& catalog = *CCatalogManager::Instance()->GetCatalog(CCatalogManager::PipeCatalog, 1);
    if (detail == CPipeManager::PipesInUseInput)
        return HashPipesInUse();
    if (detail.starts_with(CPipeManager::GroupInput))
        return HashPipeGroup(catalog, detail.substr(CPipeManager::GroupInput.size()));
    if (detail.starts_with(CPipeManager::TypeInput))
        return HashNumber(catalog.GetMinDiameterOfType(detail.substr(CPipeManager::TypeInput.size())));
    return std::nullopt;
}

/// The hash of a stored value; 0 for one that counts as null.
class CValueHash {
public:
    CValueHash(const CDataDefinition& definition, const CAttributeColumn& column, const CTopologyStorage& topology)
        : m_column(column), m_texts(topology.GetStore().GetTexts()),
          m_isReference(definition.m_id == "PIPE_REF" || definition.m_id == "MAIN_SECT_OUT") {
        if (column.GetType() == enmDataType::Text)
            m_textHashes.resize(m_texts.GetCount());
    }

    std::uint64_t operator()(std::uint32_t row) {
        if (!m_column.IsNotNull(row))
            return 0;
        const std::uint64_t bits = m_column.GetStored(row).m_bits;
        if (m_column.GetType() == enmDataType::Text) {
            std::uint64_t& hash = m_textHashes[bits];
            if (hash == 0)
                hash = Hash(m_texts.Get(static_cast<std::uint32_t>(bits)));
            return hash;
        }
        if (m_column.GetType() == enmDataType::Int)
            return Mix(bits);
        const double number = std::bit_cast<double>(bits);
        return std::isnan(number) ? 0 : HashNumber(number);
    }

private:
    std::uint64_t Hash(std::string_view text) const { return m_isReference ? HashGuid(text) : HashText(text); }

    const CAttributeColumn& m_column;
    const Data::CTextPool& m_texts;
    bool m_isReference;                      ///< the texts are GUIDs
    std::vector<std::uint64_t> m_textHashes; ///< by id in the pool, 0 for one not made
};

} // namespace

CInputHashes* CInputHashes::Instance() {
    static const System::CContextSlot<CInputHashes> slot;
    return slot.Get();
}

template <class Make>
std::uint64_t CInputHashes::Keep(CKept& kept, const CChangeCounts& counts, Make make) {
    if (!kept.m_isMade || kept.m_counts != counts)
        kept = {counts, make(), true};
    return kept.m_hash;
}

const std::vector<std::uint64_t>& CInputHashes::GetGuidHashes(enmEntityKind kind) {
    std::vector<std::uint64_t>& hashes = m_guidHashes[static_cast<std::size_t>(kind)];
    const CTopologyStorage& topology = GetTopology();
    hashes.resize(topology.GetStore().GetRowCount(kind), 0);
    const auto hash = [&hashes](const auto& entities) {
        for (const auto& entity : entities)
            if (hashes[entity->GetRow()] == 0)
                hashes[entity->GetRow()] = HashGuid(entity->GetGuid());
    };
    switch (kind) {
    case enmEntityKind::Node:
        hash(topology.GetNodes());
        break;
    case enmEntityKind::Section:
        hash(topology.GetSections());
        break;
    case enmEntityKind::Catchment:
        hash(topology.GetCatchments());
        break;
    }
    return hashes;
}

std::uint64_t CInputHashes::HashAttribute(const CDataDefinition& definition) {
    if (definition.m_index >= m_attributes.size())
        m_attributes.resize(definition.m_index + 1);
    const CTopologyStorage& topology = GetTopology();
    const CAttributeColumn* const column = topology.GetStore().FindColumn(definition);
    if (column == nullptr)
        return 0;
    return Keep(m_attributes[definition.m_index], {column->GetChangeCount(), topology.GetChangeCount()}, [&] {
        const std::vector<std::uint64_t>& guids = GetGuidHashes(definition.m_entityKind);
        CValueHash valueOf(definition, *column, topology);
        std::uint64_t sum = 0;
        const auto add = [&](const auto& entities) {
            for (const auto& entity : entities)
                if (const std::uint64_t value = valueOf(entity->GetRow()); value != 0)
                    sum += Mix(guids[entity->GetRow()], value);
        };
        switch (definition.m_entityKind) {
        case enmEntityKind::Node:
            add(topology.GetNodes());
            break;
        case enmEntityKind::Section:
            add(topology.GetSections());
            break;
        case enmEntityKind::Catchment:
            add(topology.GetCatchments());
            break;
        }
        return sum;
    });
}

/// The sections in the order of the network, with their nodes.
std::uint64_t CInputHashes::HashConnections() {
    const CTopologyStorage& topology = GetTopology();
    return Keep(m_connections, {topology.GetChangeCount(), 0}, [&] {
        const std::vector<std::uint64_t>& nodes = GetGuidHashes(enmEntityKind::Node);
        const std::vector<std::uint64_t>& sections = GetGuidHashes(enmEntityKind::Section);
        const auto hashOf = [&nodes](std::uint32_t row) { return row == CSection::NoRow ? 0 : nodes[row]; };
        std::uint64_t hash = 0;
        for (const auto& section : topology.GetSections())
            hash = Mix(Mix(Mix(hash, sections[section->GetRow()]), hashOf(section->GetStartingNodeRow())),
                       hashOf(section->GetEndingNodeRow()));
        return hash;
    });
}

std::uint64_t CInputHashes::HashGeometry() {
    const CTopologyStorage& topology = GetTopology();
    return Keep(m_geometry, {topology.GetChangeCount(), 0}, [&] {
        const std::vector<std::uint64_t>& sections = GetGuidHashes(enmEntityKind::Section);
        std::uint64_t sum = 0;
        for (const auto& section : topology.GetSections()) {
            std::uint64_t line = sections[section->GetRow()];
            for (const CPoint& point : section->GetGeometry())
                line = Mix(Mix(line, HashNumber(point.m_x)), HashNumber(point.m_y));
            sum += line;
        }
        return sum;
    });
}

/// The catchments in the order of the network, with their sections: sums of areas run in that order.
std::uint64_t CInputHashes::HashAttachment() {
    const CTopologyStorage& topology = GetTopology();
    return Keep(m_attachment, {topology.GetChangeCount(), 0}, [&] {
        const std::vector<std::uint64_t>& catchments = GetGuidHashes(enmEntityKind::Catchment);
        const std::vector<std::uint64_t>& sections = GetGuidHashes(enmEntityKind::Section);
        std::uint64_t hash = 0;
        for (const auto& catchment : topology.GetCatchments()) {
            const auto section = catchment->GetSection();
            hash = Mix(Mix(hash, catchments[catchment->GetRow()]), section ? sections[section->GetRow()] : 0);
        }
        return hash;
    });
}

std::optional<std::uint64_t> CInputHashes::HashOther(std::string_view name, std::string_view detail) {
    if (name == Data::Inputs::Topology)
        return detail == CSection::GeometryInput ? HashGeometry() : HashConnections();
    if (name == Data::Inputs::Catalog)
        return HashCatalog(detail);
    // As they are in force: a setting that was never made equals its default.
    if (name == Data::Inputs::Settings && detail == System::CProjectSettings::Edition)
        return HashText(Utility::CModuleConfiguration::Instance()->GetEdition());
    if (name == Data::Inputs::Settings && detail == System::CProjectSettings::Turkish)
        return HashNumber(CSewageCalculationConfigurator::IsTurkishExtensionAllowed());
    if (name == Data::Inputs::Settings)
        return HashText(System::CProjectSettings::Instance()->Get(detail));
    if (name == Data::Inputs::File) {
        const auto content = Utility::InstallationPaths::ReadWholeFile(std::string(detail));
        if (!content)
            return std::nullopt;
        return HashText(content.Value());
    }
    if (name == Data::Inputs::Catchments) {
        if (detail == CTopologyStorage::AttachmentInput)
            return HashAttachment();
        if (const auto* const definition = Data::FindDefinition(detail))
            return HashAttribute(*definition);
    }
    return std::nullopt;
}

} // namespace OLMGis::Sewage
