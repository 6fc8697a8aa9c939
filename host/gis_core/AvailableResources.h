// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <optional>

namespace OLMGis::System {

/// What the machine has left, for those who must know before they begin. The default asks the system; tests give their
/// own figures.
class IAvailableResources {
public:
    virtual ~IAvailableResources() = default;

    /// Memory (bytes) that can be taken without pushing other programs out, and within the limit of the process where
    /// it has one ("ulimit -v"); nothing where the system does not say.
    virtual std::optional<double> GetFreeMemory() const;
};

/// The one in force.
const IAvailableResources& AvailableResources();

/// Puts resources in force for its own lifetime. Not owned.
class CAvailableResourcesScope {
public:
    explicit CAvailableResourcesScope(const IAvailableResources& resources);
    ~CAvailableResourcesScope();
    CAvailableResourcesScope(const CAvailableResourcesScope&) = delete;
    CAvailableResourcesScope& operator=(const CAvailableResourcesScope&) = delete;

private:
    const IAvailableResources* m_former;
};

} // namespace OLMGis::System
