// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Data {

/// One input of a run with the hash of its content when the run had stored its results.
struct CResultInput {
    std::string m_name;   ///< attribute key, or a name of Inputs
    std::string m_detail; ///< which part of it; empty for an attribute
    std::uint64_t m_hash = 0;
    friend bool operator==(const CResultInput&, const CResultInput&) = default;
};

/// What the stored results of one calculator were made of.
struct CResultOrigin {
    std::string m_calculator;           ///< key of the calculator, or "hydraulics"
    std::vector<std::string> m_results; ///< attribute keys that the run stored, in the order of the definitions
    std::vector<CResultInput> m_inputs; ///< attributes in the order of the definitions, then the others by name
    friend bool operator==(const CResultOrigin&, const CResultOrigin&) = default;
};

/// The origins of the results of a project, saved with it. One per project context. Plain data: who runs calculators
/// fills it, see host/sewage_calculations/OutdatedResults.h.
class CResultOrigins {
public:
    static CResultOrigins* Instance();

    /// In ascending order of calculators, each once.
    const std::vector<CResultOrigin>& GetAll() const { return m_origins; }

    /// Null without one.
    const CResultOrigin* Find(std::string_view calculator) const;

    /// Puts an origin in place of the calculator's former one; one without results takes that away.
    void Put(CResultOrigin origin);

    /// For undo and for opening a project.
    void SetAll(std::vector<CResultOrigin> origins);

private:
    std::vector<CResultOrigin> m_origins;
};

} // namespace OLMGis::Data
