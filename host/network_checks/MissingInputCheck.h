// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_checks/NetworkCheck.h"

namespace OLMGis::NetworkChecks {

/// Lists what calculations, checks and drawings lack: of sections a plan length, a design slope, a pipe of the
/// catalogue and levels at both ends, of nodes with sections a ground level. One finding per entity, which names the
/// keys. Each of the five can be left out. Sections come first.
class CMissingInputCheck final : public CNetworkCheck {
public:
    CMissingInputCheck();

    std::vector<std::string> GetReadKeys() const override {
        return {"length",    "SECTION_SLOPE", "PIPE_REF",  "LEVEL_LINE_0", "LEVEL_LINE_1", "MANHOLE_RT",
                "TERRAIN_1", "TERRAIN_2",     "TERRAIN_3", "TERRAIN_4",    "TERRAIN_5",    "TERRAIN_6",
                "TERRAIN_7", "TERRAIN_8",     "TERRAIN_9", "TERRAIN_10"};
    }

private:
    std::vector<CField> GetFields() const override;
    void Run(const Topology::CPropertiesEx& form, const Topology::CAnalysedNetwork& network,
             Topology::CFindingList& findings) override;
};

} // namespace OLMGis::NetworkChecks
