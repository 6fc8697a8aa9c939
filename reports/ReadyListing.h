// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "host/sewage_calculations/Readiness.h"
#include "reports/Table.h"

#include <optional>
#include <string>
#include <vector>

namespace Reports {

/// What planned runs lack, one row each: calculator, key, on (sections, nodes, catchments, form), name, guid, found,
/// expected. A value of the form has its tag as key and name; a result of all sections has neither name nor GUID.
CTable MakeReadyTable(const std::vector<OLMGis::Sewage::CMissingInput>& missing);

/// A table to fill in and load: the entities of a kind that lack attributes, each once, and an empty column for each
/// key that one of them lacks. Catchments, and all where a name repeats, are named by GUID besides. Nothing where no
/// entity of the kind lacks anything.
std::optional<CTable> MakeFillInTable(const std::vector<OLMGis::Sewage::CMissingInput>& missing,
                                      OLMGis::Data::enmEntityKind kind);

/// After an alert: for each attribute that entities lack one line with their number, the first 20 names and how to set
/// it. project: path for the advice.
std::vector<std::string> SummariseLacks(const std::vector<OLMGis::Sewage::CLack>& lacks, const std::string& project,
                                        const std::string& calculator);

} // namespace Reports
