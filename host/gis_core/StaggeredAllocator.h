// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <atomic>
#include <cstddef>
#include <cstring>
#include <new>

namespace OLMGis::Data {

/// Counts the large blocks of all types, so that no two in a row begin alike.
inline std::atomic<std::size_t> staggeredBlocks{0};

/// Memory for long columns that are read side by side, row by row. Large blocks all begin at the same place of a memory
/// page; the values of one row then compete for the few places that the processor's cache keeps for it. These begin a
/// cache line further each time.
template <class T>
class CStaggeredAllocator {
public:
    using value_type = T;

    CStaggeredAllocator() = default;
    template <class Other>
    explicit CStaggeredAllocator(const CStaggeredAllocator<Other>& /*other*/) {}

    T* allocate(std::size_t count) {
        const std::size_t offset = Line * (1 + (count * sizeof(T) < Large ? 0 : staggeredBlocks++ % LinesOfPage));
        auto* const block = static_cast<std::byte*>(::operator new(offset + count * sizeof(T)));
        std::byte* const begin = block + offset;
        std::memcpy(begin - sizeof block, &block, sizeof block); // for the release
        return reinterpret_cast<T*>(begin);
    }
    void deallocate(T* begin, std::size_t /*count*/) {
        std::byte* block = nullptr;
        std::memcpy(&block, reinterpret_cast<std::byte*>(begin) - sizeof block, sizeof block);
        ::operator delete(block);
    }

    friend bool operator==(const CStaggeredAllocator&, const CStaggeredAllocator&) { return true; }

private:
    static_assert(alignof(T) <= alignof(std::max_align_t));
    static constexpr std::size_t Line = 64;
    static constexpr std::size_t LinesOfPage = 4096 / Line;
    static constexpr std::size_t Large = 65536; ///< bytes; smaller blocks lie anywhere
};

} // namespace OLMGis::Data
