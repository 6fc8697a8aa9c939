// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"

namespace OLMGis::Data {

/// Definitions that loops ask for again and again, looked up once. The same for every project.
class CDDCache {
public:
    static CDDCache* Instance();

    /// Of a node: number of the terrain type that applies to its manhole. Null only in an installation whose
    /// definitions could not be read.
    const CDataDefinition* GetMANHOLE_RT() const { return m_manholeTerrainType; }

private:
    CDDCache();

    const CDataDefinition* m_manholeTerrainType;
};

} // namespace OLMGis::Data
