// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "bench/InpText.h"

#include "bench/Network.h"
#include "host/project_io/synthetic/SyntheticLayout.h"

#include <fmt/format.h>

#include <iterator>
#include <string>

namespace Bench {

using OLMGis::ProjectIo::CSplitMix;
using OLMGis::ProjectIo::CSyntheticLayout;
using OLMGis::ProjectIo::MakeLayout;

namespace {

constexpr std::uint32_t Nowhere = CSyntheticLayout::Nowhere;

class CInpWriter {
public:
    CInpWriter(std::ostream& stream, const CSyntheticLayout& layout) : m_stream(stream), m_nodes(layout.m_nodes) {}

    void Write() {
        Put("[TITLE]\ninvented\n\n[OPTIONS]\nFLOW_UNITS LPS\nLINK_OFFSETS DEPTH\n");
        WriteNodes();
        WriteConduits();
        WriteSubcatchments();
        Put("\n[COORDINATES]\n");
        for (std::size_t i = 0; i < m_nodes.size(); ++i)
            Put("{} {:.2f} {:.2f}\n", NameOf(i), m_nodes[i].m_point.m_x, m_nodes[i].m_point.m_y);
        Flush();
    }

private:
    bool IsOutfall(std::size_t node) const { return m_nodes[node].m_down == Nowhere; }
    std::string NameOf(std::size_t node) const { return fmt::format("{}{}", IsOutfall(node) ? "OUT" : "J", node); }

    /// The file's levels come from the place in the layout: what a node drains to comes before it and is lower.
    static double LevelOf(std::size_t node) { return 90.0 + 1e-4 * static_cast<double>(node); }

    void WriteNodes() {
        Put("\n[JUNCTIONS]\n;;name invert depth\n");
        for (std::size_t i = 0; i < m_nodes.size(); ++i)
            if (!IsOutfall(i))
                Put("{} {:.4f} {:.2f} 0 0 0\n", NameOf(i), LevelOf(i), m_random.Between(2.0, 4.0, 2));
        Put("\n[OUTFALLS]\n");
        for (std::size_t i = 0; i < m_nodes.size(); ++i)
            if (IsOutfall(i))
                Put("{} {:.4f} FREE NO\n", NameOf(i), LevelOf(i));
    }

    /// Calls action with number, start and end of every conduit.
    template <class Action>
    void ForEachConduit(Action action) const {
        std::size_t number = 0;
        for (std::size_t i = m_nodes.size(); i-- > 0;)
            for (const std::uint32_t to : {m_nodes[i].m_down, m_nodes[i].m_relief})
                if (to != Nowhere)
                    action(++number, i, to);
    }

    void WriteConduits() {
        Put("\n[CONDUITS]\n;;name from to length roughness\n");
        ForEachConduit([this](std::size_t number, std::size_t from, std::size_t to) {
            Put("C{} {} {} {:.2f} 0.013 0 0 0 0\n", number, NameOf(from), NameOf(to), m_random.Between(20.0, 60.0, 2));
        });
        Put("\n[XSECTIONS]\n");
        ForEachConduit([this](std::size_t number, std::size_t, std::size_t) {
            constexpr double step = 0.1; // m, of diameters
            Put("C{} CIRCULAR {:.1f} 0 0 0 1\n", number, 0.3 + step * static_cast<double>(number % 8));
        });
    }

    void WriteSubcatchments() {
        Put("\n[SUBCATCHMENTS]\n;;name gage outlet area imperviousness width slope curb\n");
        for (std::size_t i = 0; i < m_nodes.size(); ++i)
            if (!IsOutfall(i))
                Put("A{} RG1 {} {:.4f} {:.0f} 50 0.5 0\n", i, NameOf(i), m_random.Between(0.1, 0.6, 4),
                    m_random.Between(20.0, 90.0, 0));
    }

    template <class... Args>
    void Put(fmt::format_string<Args...> format, Args&&... args) {
        constexpr std::size_t blockSize = std::size_t{1} << 20;
        fmt::format_to(std::back_inserter(m_block), format, std::forward<Args>(args)...);
        if (m_block.size() > blockSize)
            Flush();
    }

    void Flush() {
        m_stream.write(m_block.data(), static_cast<std::streamsize>(m_block.size()));
        m_block.clear();
    }

    std::ostream& m_stream;
    const std::vector<CSyntheticLayout::CNode>& m_nodes;
    CSplitMix m_random{Seed};
    std::string m_block;
};

} // namespace

void WriteInp(std::ostream& stream, const CSize& size) {
    CSplitMix random(Seed);
    const CSyntheticLayout layout = MakeLayout(size.m_shape, size.m_sections, random);
    CInpWriter(stream, layout).Write();
}

} // namespace Bench
