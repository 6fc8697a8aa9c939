// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstddef>
#include <vector>

namespace OLMGis::Utility {

// TRANSITION: without effect, until the last callers are gone.
inline void FetchAhead(const void*) {}
template <class Object>
void FetchObjectAhead(const Object*) {}
template <class Element>
void FetchElementAhead(const std::vector<Element>&, std::size_t) {}

} // namespace OLMGis::Utility
