// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/RowNumbers.h"

#include "host/gis_core/ProjectContext.h"

#include <algorithm>

namespace OLMGis::ProjectIo {

CRowNumbers* CRowNumbers::Instance() {
    static const System::CContextSlot<CRowNumbers> slot;
    return slot.Get();
}

void CRowNumbers::Note(Data::enmEntityKind kind, std::uint32_t row, std::int64_t key) {
    CKeys& keys = m_keys[static_cast<std::size_t>(kind)];
    if (row >= keys.m_ofRow.size())
        keys.m_ofRow.resize(row + 1, 0);
    keys.m_ofRow[row] = key;
    keys.m_greatest = std::max(keys.m_greatest, key);
}

std::int64_t CRowNumbers::GetKey(Data::enmEntityKind kind, std::uint32_t row) {
    const CKeys& keys = m_keys[static_cast<std::size_t>(kind)];
    if (row >= keys.m_ofRow.size() || keys.m_ofRow[row] == 0)
        Note(kind, row, keys.m_greatest + 1);
    return keys.m_ofRow[row];
}

} // namespace OLMGis::ProjectIo
