// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>

namespace OLMGis::System {

/// One network system of a project and what it serves.
class CGisSystem {
public:
    static constexpr int SewageFunction = 0;

    /// The system function: 0 for sewage.
    int GetSystemFunction() const { return m_function; }
    void SetSystemFunction(int function) { m_function = function; }

private:
    int m_function = SewageFunction;
};

/// Knows the systems of the active project. A project has one, which is always active.
class CSystemManager {
public:
    static CSystemManager* Instance();
    CGisSystem* GetActiveSystem() { return &m_system; }

private:
    CGisSystem m_system;
};

} // namespace OLMGis::System
