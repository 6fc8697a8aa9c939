// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/PlaceIndex.h"

#include "host/gis_core/Utility.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

using namespace OLMGis::Utility;

namespace {

struct CTextAt {
    const std::vector<std::string>* m_texts;
    std::string_view operator()(std::uint32_t place) const { return (*m_texts)[place]; }
};
using CGuidIndex = CPlaceIndex<CTextAt, GuidHash, GuidEqual>;

/// One of few GUIDs of any length up to four words, in capital or small letters, with or without braces; the second is
/// how all its spellings are known.
std::pair<std::string, std::string> MakeSpelling(std::mt19937& random) {
    const auto number = random() % 300;
    std::string plain = CUtility::MakeGuid("layer", "name", number).substr(0, 4 + number % 33);
    std::string spelling = random() % 2 == 0 ? plain : CUtility::ToUpper(plain);
    return {random() % 2 == 0 ? spelling : "{" + spelling + "}", plain};
}

} // namespace

TEST(PlaceIndex, FindsWhatAMapFindsWhileTextsComeAndGo) {
    std::mt19937 random(5);
    std::vector<std::string> texts;
    CGuidIndex index({&texts});
    std::map<std::string, std::uint32_t> expected; // by the plain spelling
    std::vector<std::string> plain;
    for (std::uint32_t place = 0; place < 3000; ++place) {
        const auto [spelling, known] = MakeSpelling(random);
        texts.push_back(spelling);
        plain.push_back(known);
        EXPECT_EQ(index.Insert(place), expected.try_emplace(known, place).second) << spelling;
        if (const auto gone = static_cast<std::uint32_t>(random() % texts.size()); random() % 3 == 0) {
            index.Erase(gone); // an entry of the same text from another place stays
            if (const auto found = expected.find(plain[gone]); found != expected.end() && found->second == gone)
                expected.erase(found);
        }
        const auto [asked, meant] = MakeSpelling(random);
        const auto found = expected.find(meant);
        ASSERT_EQ(index.Find(asked), found == expected.end() ? NoPlace : found->second) << asked;
    }
}

/// Asset numbers are GUIDs, too: no part of a text may be lost on the way to its hash.
TEST(PlaceIndex, SequentialTextsOfAnyLengthHaveHashesOfTheirOwn) {
    constexpr std::size_t count = 20000;
    for (const std::size_t width : {5U, 8U, 13U, 16U, 24U, 32U, 36U}) {
        std::set<std::uint32_t> hashes;
        std::set<std::uint32_t> starts; // of a table's rows
        for (std::size_t i = 0; i < count; ++i) {
            const std::string number = std::to_string(i);
            const std::uint32_t hash = CGuidIndex::HashOf(std::string(width - number.size(), '0') + number);
            hashes.insert(hash);
            starts.insert(hash % 4096);
        }
        EXPECT_GT(hashes.size(), count - 20) << width;
        EXPECT_GT(starts.size(), 3900U) << width;
    }
}
