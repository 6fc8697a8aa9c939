// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"
#include "host/network_core/Entity.h"
#include "host/sewage_core/FlowCalculatorParameters.h"
#include "host/sewage_core/IFlowCalculator.h"

#include <string>
#include <vector>

namespace OLMGis::Sewage {

/// One value that a run lacks, or that would stop it.
struct CLack {
    std::string m_key;                           ///< attribute; of a value of the form its tag
    const Topology::CEntity* m_entity = nullptr; ///< null for a value of the form and for a result of all sections
    Data::CDataBox m_found{};                    ///< null: nothing
    std::string m_expected{};                    ///< for the user, with unit
    std::string m_example{}; ///< an ordinary value, for advice how to set it; empty where none is better than another
    bool m_isOfForm = false;
};

/// What a calculator reads and writes, so that whoever runs it knows beforehand what is missing. Implemented beside
/// IFlowCalculator and found by dynamic_cast. The rules are those of the calculation itself: a run whose form and
/// network lack nothing does not stop for a missing value.
class ICalculatorInputs {
public:
    /// Keys of attributes that a run may read, whatever its form.
    virtual std::vector<std::string> GetReadKeys() const = 0;

    /// Keys of attributes that a run may write, whatever its form: in the edition in force, or in any.
    virtual std::vector<std::string> GetWrittenKeys(bool inAnyEdition) const = 0;

    /// Keys that other calculators write and that a run with this form adds up.
    virtual std::vector<std::string> GetNeededResults(const Topology::CPropertiesEx& /*form*/) const { return {}; }

    /// What a run over the sections with these parameters (with a form) would lack, without results of others: values
    /// of the form first, then in the order of the network. Asks no question. Cost: linear, and reading the files that
    /// the form names.
    virtual std::vector<CLack> FindLacks(const CSectionList& /*sections*/,
                                         CFlowCalculatorParameters& /*params*/) const {
        return {};
    }

protected:
    ~ICalculatorInputs() = default;
};

} // namespace OLMGis::Sewage
