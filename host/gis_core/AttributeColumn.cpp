// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/AttributeColumn.h"

#include <bit>

namespace OLMGis::Data {

CStoredValue CAttributeColumn::GetStored(std::uint32_t row) const {
    if (!IsNotNull(row))
        return {};
    switch (m_type) {
    case enmDataType::Double:
        return {std::bit_cast<std::uint64_t>(m_doubles[row]), true};
    case enmDataType::Int:
        return {static_cast<std::uint32_t>(m_ints[row]), true};
    case enmDataType::Text:
        return {m_ids[row], true};
    }
    return {};
}

CStoredValue CAttributeColumn::ToStored(const CDataBox& box) const {
    if (!box.IsNotNull())
        return {};
    switch (m_type) {
    case enmDataType::Double:
        return {std::bit_cast<std::uint64_t>(box.AsDouble()), true};
    case enmDataType::Int:
        return {static_cast<std::uint32_t>(box.AsInt()), true};
    case enmDataType::Text:
        return {box.GetKind() == CDataBox::enmKind::Text ? m_texts->Intern(box.TextView())
                                                         : m_texts->Intern(box.AsText()),
                true};
    }
    return {};
}

void CAttributeColumn::SetStored(std::uint32_t row, const CStoredValue& value) {
    ++m_changeCount;
    if (row >= m_rows) {
        if (!value.m_isNotNull)
            return;
        Grow(row + 1);
    }
    const std::uint64_t bit = std::uint64_t{1} << (row % 64);
    if (!value.m_isNotNull) {
        m_filled[row / 64] &= ~bit;
        return;
    }
    m_filled[row / 64] |= bit;
    switch (m_type) {
    case enmDataType::Double:
        m_doubles[row] = std::bit_cast<double>(value.m_bits);
        break;
    case enmDataType::Int:
        m_ints[row] = static_cast<int>(static_cast<std::uint32_t>(value.m_bits));
        break;
    case enmDataType::Text:
        m_ids[row] = static_cast<std::uint32_t>(value.m_bits);
        break;
    }
}

std::uint32_t CAttributeColumn::CountNotNull() const {
    int count = 0;
    for (const std::uint64_t word : m_filled)
        count += std::popcount(word);
    return static_cast<std::uint32_t>(count);
}

void CAttributeColumn::Reserve(std::uint32_t rows) {
    m_filled.reserve((rows + 63) / 64);
    switch (m_type) {
    case enmDataType::Double:
        m_doubles.reserve(rows);
        break;
    case enmDataType::Int:
        m_ints.reserve(rows);
        break;
    case enmDataType::Text:
        m_ids.reserve(rows);
        break;
    }
}

void CAttributeColumn::Grow(std::uint32_t rows) {
    m_rows = rows;
    m_filled.resize((rows + 63) / 64, 0);
    switch (m_type) {
    case enmDataType::Double:
        m_doubles.resize(rows, 0.0);
        break;
    case enmDataType::Int:
        m_ints.resize(rows, 0);
        break;
    case enmDataType::Text:
        m_ids.resize(rows, 0);
        break;
    }
}

} // namespace OLMGis::Data
