// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/PropertiesEx.h"
#include "reports/Listing.h"

#include <filesystem>
#include <ostream>
#include <string>

namespace Reports {

/// A form in its present state: one table for each category; for CSV all fields in one table; in JSON categories,
/// properties and choices, nested. Copies what it shows. title: first line.
CListing MakeFormListing(std::string title, const OLMGis::Topology::CPropertiesEx& form);

/// A parameter file with the present values of a form and, beside each tag, a remark with alias, label, unit, range and
/// choices. Read back it gives the same values. key: of the calculator. folder: full path of the folder of the file,
/// where its relative paths begin.
void PrintParameterTemplate(std::ostream& stream, const std::string& key, const OLMGis::Topology::CPropertiesEx& form,
                            const std::filesystem::path& folder);

} // namespace Reports
