// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/AttributeStore.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// Watches the writes of attributes while it lives: keeps their keys in order, refuses those that a test names.
class CWriteWatch final : public OLMGis::Data::IWriteGuard {
public:
    explicit CWriteWatch(OLMGis::Data::CAttributeStore& store) : m_store(store) { m_store.SetWriteGuard(this); }
    ~CWriteWatch() override { m_store.SetWriteGuard(nullptr); }
    CWriteWatch(const CWriteWatch&) = delete;
    CWriteWatch& operator=(const CWriteWatch&) = delete;

    /// Key and row of a write to refuse.
    std::vector<std::pair<std::string, std::uint32_t>> m_refused;

    bool IsWriteAllowed(const OLMGis::Data::CDataDefinition& definition, std::uint32_t row) override {
        m_keys += (m_keys.empty() ? "" : " ") + definition.m_id;
        for (const auto& [key, refusedRow] : m_refused)
            if (definition.m_id == key && row == refusedRow)
                return false;
        return true;
    }

    /// The keys written so far, refused ones too, separated by blanks.
    const std::string& GetKeys() const { return m_keys; }

private:
    OLMGis::Data::CAttributeStore& m_store;
    std::string m_keys;
};
