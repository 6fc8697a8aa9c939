// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"

#include <nlohmann/json_fwd.hpp>

#include <ostream>

namespace Reports {

/// JSON of data that is nested; tables print their rows themselves. For the sources of this folder alone.

/// Null as null, numbers such that they read back as themselves, what is not finite as "NaN", "Infinity", "-Infinity".
nlohmann::ordered_json ToJson(const OLMGis::Data::CDataBox& value);

/// Indented by two blanks, with a line end after it. Bytes that are no UTF-8 are replaced.
void PrintDocument(std::ostream& stream, const nlohmann::ordered_json& document);

} // namespace Reports
