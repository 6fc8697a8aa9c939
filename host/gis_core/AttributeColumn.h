// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"
#include "host/gis_core/DataDefinition.h"
#include "host/gis_core/TextPool.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace OLMGis::Data {

/// The stored form of one value: 64 bits and whether there is a value at all. What the journal keeps.
struct CStoredValue {
    std::uint64_t m_bits = 0;
    bool m_isNotNull = false;
};

/// The values of one attribute, dense by row. Null is a bit beside the values. The column ends at the last row written;
/// what is reserved after it is room in the address space, not in memory.
class CAttributeColumn {
public:
    CAttributeColumn(enmDataType type, CTextPool& texts) : m_texts(&texts), m_type(type) {}

    std::uint32_t GetRowCount() const { return m_rows; }
    enmDataType GetType() const { return m_type; }

    bool IsNotNull(std::uint32_t row) const { return row < m_rows && ((m_filled[row / 64] >> (row % 64)) & 1U) != 0; }

    /// Fills the box and answers true, or leaves the box as it is and answers false for a null.
    bool Read(std::uint32_t row, CDataBox& box) const {
        if (!IsNotNull(row))
            return false;
        switch (m_type) {
        case enmDataType::Double:
            box.SetDouble(m_doubles[row]);
            return true;
        case enmDataType::Int:
            box.SetInt(m_ints[row]);
            return true;
        case enmDataType::Text:
            box.SetText(m_texts->Get(m_ids[row]));
            return true;
        }
        return false;
    }

    /// The text of a text column without a copy; empty for a null.
    std::string_view ReadText(std::uint32_t row) const {
        return m_type == enmDataType::Text && IsNotNull(row) ? m_texts->Get(m_ids[row]) : std::string_view();
    }

    CStoredValue GetStored(std::uint32_t row) const;
    void SetStored(std::uint32_t row, const CStoredValue& value);

    /// Grows with every SetStored, undo included: who keeps something made of this column sees that it is outdated.
    std::uint64_t GetChangeCount() const { return m_changeCount; }

    /// The stored form of a box in this column; converts to the column's type.
    CStoredValue ToStored(const CDataBox& box) const;

    /// Number of rows with a value. Cost: rows / 64.
    std::uint32_t CountNotNull() const;

    /// Calls found(row, value as double) in ascending order for each number outside a band, not-a-number included.
    /// Nothing for a column of texts. Linear: 64 rows inside the band cost one vectorised comparison.
    template <class Found>
    void VisitOutside(const CFineBand& band, Found found) const {
        if (m_type == enmDataType::Double)
            VisitOutside(m_doubles, band, found);
        else if (m_type == enmDataType::Int)
            VisitOutside(m_ints, band, found);
    }

    /// Makes room for this many rows in one step.
    void Reserve(std::uint32_t rows);

private:
    static bool IsOutside(double value, const CFineBand& band) {
        return !((value >= band.m_least) & (value <= band.m_greatest)); // without a branch, for the vector unit
    }

    template <class Number, class Found>
    void VisitOutside(const std::vector<Number>& numbers, const CFineBand& band, Found& found) const {
        constexpr std::uint32_t block = 64;
        for (std::uint32_t begin = 0; begin < m_rows; begin += block) {
            const std::uint32_t end = std::min(begin + block, m_rows);
            if (m_filled[begin / block] == 0)
                continue;
            unsigned isAnyOutside = 0;
            for (std::uint32_t row = begin; row < end; ++row)
                isAnyOutside |= static_cast<unsigned>(IsOutside(static_cast<double>(numbers[row]), band));
            if (isAnyOutside == 0)
                continue;
            for (std::uint32_t row = begin; row < end; ++row)
                if (IsNotNull(row) && IsOutside(static_cast<double>(numbers[row]), band))
                    found(row, static_cast<double>(numbers[row]));
        }
    }

    void Grow(std::uint32_t rows);

    // One of the three is in use, by the column's type.
    std::vector<double> m_doubles;
    std::vector<int> m_ints;
    std::vector<std::uint32_t> m_ids; ///< of texts in the pool
    std::vector<std::uint64_t> m_filled;
    CTextPool* m_texts;
    std::uint64_t m_changeCount = 0;
    std::uint32_t m_rows = 0;
    enmDataType m_type;
};

} // namespace OLMGis::Data
