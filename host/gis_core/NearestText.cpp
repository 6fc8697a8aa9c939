// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/NearestText.h"

#include "host/gis_core/Utility.h"

#include <algorithm>
#include <numeric>

namespace OLMGis::Utility {

namespace {

/// Number of single changes (a letter more, less, other, or two swapped) from one word to another; ASCII case aside.
std::size_t EditDistance(std::string_view a, std::string_view b) {
    const std::string from = CUtility::ToLower(a);
    const std::string to = CUtility::ToLower(b);
    std::vector<std::size_t> beforeLast(to.size() + 1);
    std::vector<std::size_t> last(to.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    std::vector<std::size_t> row(to.size() + 1);
    for (std::size_t i = 1; i <= from.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t other = from[i - 1] == to[j - 1] ? 0 : 1;
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + other});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1])
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        beforeLast.swap(last);
        last.swap(row);
    }
    return last[to.size()];
}

} // namespace

const std::string* FindNearest(std::string_view word, const std::vector<std::string>& candidates) {
    constexpr std::size_t LongestWord = 64; // what is longer is no slip of the keyboard
    constexpr std::size_t ShortestBeginning = 3;
    const std::string* nearest = nullptr;
    std::size_t least = std::max<std::size_t>(1, word.size() / 3) + 1;
    for (const std::string& candidate : candidates) {
        const bool isBeginning = word.size() >= ShortestBeginning && candidate.compare(0, word.size(), word) == 0;
        const std::size_t distance = word.size() > LongestWord ? word.size()
                                     : isBeginning             ? 1
                                                               : EditDistance(word, candidate);
        if (distance < least) {
            least = distance;
            nearest = &candidate;
        }
    }
    return nearest;
}

} // namespace OLMGis::Utility
