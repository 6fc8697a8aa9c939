// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/exchange/FeaturePlaces.h"
#include "host/project_io/tables/TableReader.h"

#include <cstddef>
#include <string>
#include <vector>

namespace OLMGis::ProjectIo {

/// Names features by the file, line and column of the table that they came from. Features are numbered from 1 in the
/// order of Add.
class CTablePlaces final : public CFeaturePlaces {
public:
    using CFeaturePlaces::CFeaturePlaces;

    /// The next feature came from this line; returns its number. The table is borrowed.
    std::size_t Add(const CTableReader& table, std::size_t line) {
        m_places.push_back({&table, line});
        return m_places.size();
    }

    std::string Label(std::size_t feature, std::string_view label) const override;
    std::string Fault(std::size_t feature, std::string_view label, std::string_view key,
                      std::string_view text) const override;
    std::string Listed(std::size_t feature, std::string_view key, std::string_view text) const override;
    bool ListsAll() const override { return true; }

private:
    struct CPlace {
        const CTableReader* m_table;
        std::size_t m_line;
    };

    std::vector<CPlace> m_places; ///< by number of the feature, less one
};

} // namespace OLMGis::ProjectIo
