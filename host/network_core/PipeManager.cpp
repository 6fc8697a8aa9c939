// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/PipeManager.h"

#include "host/gis_core/InputNotes.h"
#include "host/gis_core/ProjectContext.h"
#include "host/network_core/CatalogManager.h"

#include <algorithm>

namespace OLMGis::Topology {

namespace {

const CPipeData* DataOf(const boost::shared_ptr<CCatalogItem>& pipe) {
    return pipe ? pipe->GetPipeData() : nullptr;
}

const CCatalog& Pipes() {
    return *CCatalogManager::Instance()->GetCatalog(CCatalogManager::PipeCatalog, 1);
}

/// Notes a question to the catalogue, with the name that it is about.
void NoteCatalog(std::string_view input, std::string_view name = {}) {
    Data::CInputNotes* const notes = System::CProjectContext::Active().GetAttributes().GetInputNotes();
    if (notes != nullptr)
        notes->Note(Data::Inputs::Catalog, std::string(input).append(name));
}

} // namespace

CPipeManager* CPipeManager::Instance() {
    static const System::CContextSlot<CPipeManager> slot;
    return slot.Get();
}

boost::shared_ptr<CCatalogItem> CPipeManager::GetPipe(std::string_view reference) {
    NoteCatalog(PipesInUseInput);
    auto found = Pipes().GetItembyGuid(reference);
    return DataOf(found) == nullptr ? nullptr : found;
}

double CPipeManager::GetInnerDiameter(const boost::shared_ptr<CCatalogItem>& pipe) {
    const CPipeData* data = DataOf(pipe);
    return data == nullptr ? 0.0 : data->m_innerWidth;
}

double CPipeManager::GetPipeRoughness(const boost::shared_ptr<CCatalogItem>& pipe) {
    const CPipeData* data = DataOf(pipe);
    return data == nullptr ? 0.0 : data->m_roughness;
}

std::string CPipeManager::GetPipeTypeID(const boost::shared_ptr<CCatalogItem>& pipe) {
    const CPipeData* data = DataOf(pipe);
    return data == nullptr ? std::string() : data->m_type;
}

double CPipeManager::GetPipeWidth(const boost::shared_ptr<CCatalogItem>& pipe) {
    const CPipeData* data = DataOf(pipe);
    return data == nullptr ? 0.0 : data->m_innerWidth + 2.0 * data->m_wall;
}

int CPipeManager::GetPipeHeight(const boost::shared_ptr<CCatalogItem>& pipe, int levelLinePosition, double& above,
                                double& below) {
    const CPipeData* data = DataOf(pipe);
    if (data == nullptr)
        return 0;
    const double height = data->m_innerHeight;
    const double wall = data->m_wall;
    switch (levelLinePosition) {
    case LevelLineInsideBottom:
        above = height + wall;
        below = wall;
        return 1;
    case LevelLineAxis:
        above = height / 2.0 + wall;
        below = height / 2.0 + wall;
        return 1;
    case LevelLineInsideTop:
        above = wall;
        below = height + wall;
        return 1;
    case LevelLineOutsideBottom:
        above = height + 2.0 * wall;
        below = 0.0;
        return 1;
    case LevelLineOutsideTop:
        above = 0.0;
        below = height + 2.0 * wall;
        return 1;
    default:
        return 0;
    }
}

boost::shared_ptr<CCatalogItem> CPipeManager::GetPipeByInnerDiameter(std::string_view group, double diameter,
                                                                     int /*mode*/) {
    NoteCatalog(GroupInput, group);
    const auto found = Pipes().GetGroupByName(group);
    return found ? found->FindPipeByInnerWidth(diameter) : nullptr;
}

double CPipeManager::CalculateMinDiameter(std::string_view pipeType, double diameter) {
    NoteCatalog(TypeInput, pipeType);
    return std::max(diameter, Pipes().GetMinDiameterOfType(pipeType));
}

} // namespace OLMGis::Topology
