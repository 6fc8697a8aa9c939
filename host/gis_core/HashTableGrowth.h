// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <bit>
#include <cstddef>
#include <new>

namespace OLMGis::Utility {

/// Makes room for count entries in a flat hash table of abseil, at most three quarters full. Throws std::bad_alloc and
/// leaves the table as it is where the memory is missing.
///
/// Such a table is broken, and its destructor frees what it does not own, when memory runs out while it grows. So
/// tables that become large grow here only: the memory is asked for before the table is touched. std::unordered_map and
/// std::unordered_set survive missing memory by themselves: readers use them where speed does not count.
template <class Table>
void MakeRoom(Table& table, std::size_t count) {
    if (count <= table.capacity() / 4 * 3)
        return;
    const std::size_t slots = std::bit_ceil(count + count / 3 + 16);
    constexpr std::size_t ControlBytes = 64; // beyond one byte per slot, rounded up
    ::operator delete(::operator new(slots*(sizeof(typename Table::value_type) + 1) + ControlBytes));
    table.reserve(slots / 4 * 3);
}

/// The same for one more entry; call it before each that may be new. Constant on average.
template <class Table>
void MakeRoomForOne(Table& table) {
    if (table.size() >= table.capacity() / 4 * 3)
        MakeRoom(table, 2 * table.size() + 1);
}

} // namespace OLMGis::Utility
