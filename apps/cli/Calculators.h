// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/WordFormEditor.h"
#include "host/gis_core/Result.h"
#include "host/sewage_core/IFlowCalculator.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace Cli {

/// Keys of all calculators of the loaded module in ascending order.
std::vector<std::string> GetCalculatorKeys();

/// The calculator of a key; BadWords for an unknown one.
OLMGis::Utility::Result<boost::shared_ptr<OLMGis::Sewage::IFlowCalculator>> FindCalculator(std::string_view key);

/// Words of the command line for a form. BadWords for one that is not TAG=VALUE.
OLMGis::Utility::Result<std::vector<CFormWord>> ReadFormWords(const std::vector<std::string>& words);

} // namespace Cli
