// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <functional>
#include <vector>

namespace OLMGis::System {

/// Remembers how to take out of the registries what a loaded module put into them. A module unregisters nothing itself,
/// and its objects must not outlive its code: each registry notes here how to take the new item out, and the loader
/// runs the notes, last first, before it unloads the file. One per project context.
class CModuleScope {
public:
    static CModuleScope* Instance();

    /// Between Open and Close a module is registering.
    void Open() { m_isOpen = true; }
    void Close() { m_isOpen = false; }

    /// Whether a module is loaded: what its objects make later is noted too.
    void SetLoaded(bool isLoaded) { m_isLoaded = isLoaded; }

    /// For items that modules and hosts register: kept only while a module registers.
    void NoteRegistered(std::function<void()> takeOut) {
        if (m_isOpen)
            m_notes.push_back(std::move(takeOut));
    }

    /// For items that only a module's objects make, at any time: kept while a module is loaded.
    void NoteMade(std::function<void()> takeOut) {
        if (m_isOpen || m_isLoaded)
            m_notes.push_back(std::move(takeOut));
    }

    /// Takes out everything noted, last first.
    void TakeOutAll();

private:
    std::vector<std::function<void()>> m_notes;
    bool m_isOpen = false;
    bool m_isLoaded = false;
};

} // namespace OLMGis::System
