// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/ShortName.h"

namespace OLMGis::Utility {

std::string ShortName(std::string_view name) {
    constexpr std::size_t Longest = 80;
    constexpr std::string_view Ellipsis = "…";
    std::size_t characters = 0;
    std::size_t cut = 0; ///< bytes of one character less than the longest
    for (std::size_t i = 0; i < name.size(); ++i) {
        const bool isContinued = (static_cast<unsigned char>(name[i]) & 0xC0U) == 0x80U;
        if (isContinued)
            continue;
        if (++characters == Longest)
            cut = i;
    }
    if (characters <= Longest)
        return std::string(name);
    return std::string(name.substr(0, cut)).append(Ellipsis);
}

} // namespace OLMGis::Utility
