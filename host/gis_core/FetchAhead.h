// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstddef>
#include <vector>

namespace OLMGis::Utility {

/// Has the line of memory at address fetched into the processor's cache, for loops that know some steps ahead what
/// they will need and jump about in more memory than the caches hold. Any address will do, null too.
///
/// GCC takes a function that does nothing but prefetch for one without effect and drops its calls; the empty assembly
/// keeps it from that.
inline void FetchAhead(const void* address) {
    __builtin_prefetch(address);
    asm volatile("");
}

/// The same for a whole object, which may lie across lines; null fetches nothing.
template <class Object>
void FetchObjectAhead(const Object* object) {
    constexpr std::size_t line = 64;
    if (object == nullptr)
        return;
    const auto* const end = reinterpret_cast<const char*>(object + 1);
    for (const auto* at = reinterpret_cast<const char*>(object); at < end; at += line)
        FetchAhead(at);
    FetchAhead(end - 1);
}

/// The same for an element of a list; a place behind its end fetches nothing.
template <class Element>
void FetchElementAhead(const std::vector<Element>& list, std::size_t place) {
    if (place < list.size())
        FetchObjectAhead(&list[place]);
}

} // namespace OLMGis::Utility
