// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/NodeDataIDF.h"

#include <boost/shared_ptr.hpp>

#include <utility>
#include <vector>

/// Lets go of records and nodes without recursion: they hold each other along the network, which may be a line of a
/// million sections. Whoever else holds one of them keeps it.
class CRecordRelease {
public:
    CRecordRelease() = default;
    CRecordRelease(const CRecordRelease&) = delete;
    CRecordRelease& operator=(const CRecordRelease&) = delete;

    void Take(boost::shared_ptr<CSectionDataIDF>&& record) { Keep(m_records, std::move(record)); }
    void Take(boost::shared_ptr<CNodeDataIDF>&& node) { Keep(m_nodes, std::move(node)); }

    /// Ends those that nobody else holds, and in turn what only they held.
    void Finish() {
        while (!m_records.empty() || !m_nodes.empty()) {
            if (m_records.empty()) {
                const auto node = Next(m_nodes);
                for (auto& [name, list] : node->m_results)
                    for (auto& record : list)
                        Take(std::move(record));
                node->m_results.clear();
            } else {
                const auto record = Next(m_records);
                Take(std::move(record->m_previous));
                Take(std::move(record->m_startNode));
            }
        }
    }

private:
    template <class T>
    static void Keep(std::vector<boost::shared_ptr<T>>& list, boost::shared_ptr<T>&& held) {
        boost::shared_ptr<T> own = std::move(held);
        if (own && own.use_count() == 1)
            list.push_back(std::move(own));
    }

    template <class T>
    static boost::shared_ptr<T> Next(std::vector<boost::shared_ptr<T>>& list) {
        boost::shared_ptr<T> next = std::move(list.back());
        list.pop_back();
        return next;
    }

    std::vector<boost::shared_ptr<CSectionDataIDF>> m_records;
    std::vector<boost::shared_ptr<CNodeDataIDF>> m_nodes;
};
