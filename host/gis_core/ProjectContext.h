// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/AttributeStore.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace OLMGis::System {

/// Everything that belongs to one open project: the attribute store here, and in numbered places what the higher floors
/// keep per project (topology, catalogues, registries, messages). Instance() of the singletons delegates to the active
/// context, so that a test or a second project gets its own. One context always is active. Main thread only.
class CProjectContext {
public:
    CProjectContext() = default;
    ~CProjectContext();
    CProjectContext(const CProjectContext&) = delete;
    CProjectContext& operator=(const CProjectContext&) = delete;

    static CProjectContext& Active();

    Data::CAttributeStore& GetAttributes() { return m_attributes; }

    /// A place for one kind of object, the same in every context. Called once per kind, at start.
    static std::size_t AllocatePlace();
    std::shared_ptr<void>& AtPlace(std::size_t place);
    void NotePlaceFilled(std::size_t place) { m_filled.push_back(place); }

private:
    friend class CContextActivation;

    Data::CAttributeStore m_attributes;
    std::vector<std::shared_ptr<void>> m_places;
    std::vector<std::size_t> m_filled; ///< in the order of making: the last made goes first
};

/// Makes a context the active one for its own lifetime.
class CContextActivation {
public:
    explicit CContextActivation(CProjectContext& context);
    ~CContextActivation();
    CContextActivation(const CContextActivation&) = delete;
    CContextActivation& operator=(const CContextActivation&) = delete;

private:
    CProjectContext* m_former;
};

/// Gives each context its own T, made when it is first asked for. A static object in T's own source file.
template <class T>
class CContextSlot {
public:
    T* Get() const {
        CProjectContext& context = CProjectContext::Active();
        std::shared_ptr<void>& place = context.AtPlace(m_place);
        if (!place) {
            std::shared_ptr<void> made(new T(), [](void* object) { delete static_cast<T*>(object); });
            context.AtPlace(m_place) = made;
            context.NotePlaceFilled(m_place);
            return static_cast<T*>(made.get());
        }
        return static_cast<T*>(place.get());
    }

private:
    std::size_t m_place = CProjectContext::AllocatePlace();
};

} // namespace OLMGis::System
