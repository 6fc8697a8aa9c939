// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"
#include "host/gis_core/DataDefinition.h"
#include "host/gis_core/Result.h"

namespace OLMGis::ProjectIo {

/// Whether an attribute refers to an entry of a catalogue: the pipe of a section, the manhole of a node.
bool IsCatalogReference(const Data::CDataDefinition& definition);

/// The value to store where a person or a table gave an attribute a value: where the attribute refers to a catalogue
/// and the text is no GUID of its pipes or manholes but the name of one of them, the GUID of that one; any other value
/// as it is, since a reference may be there before its catalogue. BadInput for a name that several entries have. One or
/// two hash look-ups.
Utility::Result<Data::CDataBox> ResolveCatalogReference(const Data::CDataDefinition& definition, Data::CDataBox value);

/// Whether a reference leads to a pipe or manhole of the catalogues of the active project. A null does.
bool IsKnownCatalogReference(const Data::CDataDefinition& definition, const Data::CDataBox& value);

} // namespace OLMGis::ProjectIo
