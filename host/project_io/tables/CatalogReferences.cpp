// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/CatalogReferences.h"

#include "host/network_core/CatalogManager.h"
#include "host/network_core/ManholeManager.h"
#include "host/network_core/PipeManager.h"
#include "host/project_io/base/AttributeText.h"

#include <fmt/format.h>

#include <string_view>

namespace OLMGis::ProjectIo {

using Data::CDataBox;
using Data::CDataDefinition;
using Topology::CCatalogManager;
using Utility::BadInput;
using Utility::Result;

namespace {

constexpr std::string_view PipeKey = "PIPE_REF";
constexpr std::string_view ManholeKey = "MANHOLE_ID";

} // namespace

bool IsCatalogReference(const CDataDefinition& definition) {
    return definition.m_id == PipeKey || definition.m_id == ManholeKey;
}

bool IsKnownCatalogReference(const CDataDefinition& definition, const CDataBox& value) {
    if (!value.IsNotNull())
        return true;
    const std::string text = value.AsText();
    return definition.m_id == PipeKey ? Topology::CPipeManager::Instance()->GetPipe(text) != nullptr
                                      : Topology::CManholeManager::Instance()->GetManhole(text) != nullptr;
}

Result<CDataBox> ResolveCatalogReference(const CDataDefinition& definition, CDataBox value) {
    if (!IsCatalogReference(definition) || IsKnownCatalogReference(definition, value))
        return value;
    const bool isPipe = definition.m_id == PipeKey;
    const auto& catalog = *CCatalogManager::Instance()->GetCatalog(
        isPipe ? CCatalogManager::PipeCatalog : CCatalogManager::ManholeCatalog, 1);
    const std::string text = value.AsText();
    const auto named = catalog.GetItemsByName(text);
    if (named.size() > 1)
        return BadInput(fmt::format("{}: found {}, a name that {} {}s of the catalogue have, expected the GUID of one "
                                    "of them",
                                    definition.m_id, Quote(text), named.size(), isPipe ? "pipe" : "manhole"));
    if (named.size() == 1)
        value.SetText(named.front()->GetGUID());
    return value;
}

} // namespace OLMGis::ProjectIo
