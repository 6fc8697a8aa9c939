// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/IFlowCalculator.h"

#include <boost/shared_ptr.hpp>

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Sewage {

/// The registry of flow calculators. One per project context.
class CFlowCalculatorManager {
public:
    static CFlowCalculatorManager* Instance();

    /// Registers a calculator for the life of the module that calls it. A null and a key that is already registered are
    /// ignored.
    void RegisterFlowCalculator(const boost::shared_ptr<IFlowCalculator>& calculator);

    /// Null for an unknown key (upper and lower case differ).
    boost::shared_ptr<IFlowCalculator> GetCalculator(std::string_view key) const;

    /// All calculators in ascending order of key, which is the order of the design work. No nulls.
    std::vector<boost::shared_ptr<IFlowCalculator>> GetCalculators() const;

private:
    std::map<std::string, boost::shared_ptr<IFlowCalculator>, std::less<>> m_calculators;
};

} // namespace OLMGis::Sewage
