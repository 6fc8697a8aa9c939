// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"
#include "host/gis_core/DataDefinition.h"
#include "host/gis_core/Result.h"

namespace OLMGis::ProjectIo {

/// Whether an attribute refers to an entry of a catalogue: the pipe of a section, the manhole of a node.
bool IsCatalogReference(const Data::CDataDefinition& definition);

/// The value to store for what a person or a table gave: for an attribute that refers to a catalogue, the name of a
/// pipe or manhole is replaced by its GUID. Any other value stays as it is, because a reference may be entered before
/// its catalogue. BadInput for a name that several entries have. One or two hash look-ups.
Utility::Result<Data::CDataBox> ResolveCatalogReference(const Data::CDataDefinition& definition, Data::CDataBox value);

/// Whether a reference leads to a pipe or manhole of the catalogues of the active project. True for a null.
bool IsKnownCatalogReference(const Data::CDataDefinition& definition, const Data::CDataBox& value);

} // namespace OLMGis::ProjectIo
