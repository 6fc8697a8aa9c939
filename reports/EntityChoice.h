// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "host/gis_core/Result.h"
#include "host/network_core/Entity.h"
#include "host/network_core/Section.h"

#include <boost/shared_ptr.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Reports {

/// Entities of the active project, borrowed from its topology. No nulls.
using CEntityList = std::vector<const OLMGis::Topology::CEntity*>;

/// The kind of "sections", "nodes" or "catchments"; nothing for another text.
std::optional<OLMGis::Data::enmEntityKind> FindKind(std::string_view plural);

/// "section", "node", "catchment".
std::string_view GetKindName(OLMGis::Data::enmEntityKind kind);

/// The name of an entity for people; of a catchment that of its section.
std::string_view GetShownName(const OLMGis::Topology::CEntity& entity);

/// All entities of a kind in the order of the network.
CEntityList GetAllEntities(OLMGis::Data::enmEntityKind kind);

/// The entities of the active project that texts name, each once, in the order of the texts. A text is a name, a GUID
/// or a comma-separated list of both; a whole text that is a name wins, because names may contain commas. A catchment
/// is named by its own GUID or by its section, which names all catchments of it. BadArguments for an unknown name and
/// for one that several sections have; the message says what was found and expected, the caller where.
OLMGis::Utility::Result<CEntityList> ChooseEntities(OLMGis::Data::enmEntityKind kind,
                                                    const std::vector<std::string>& texts);

/// The same for sections alone, in the order of the network.
OLMGis::Utility::Result<std::vector<boost::shared_ptr<OLMGis::Topology::CSection>>>
ChooseSections(const std::vector<std::string>& texts);

} // namespace Reports
