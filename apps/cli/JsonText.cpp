// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/JsonText.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace Cli {

using nlohmann::ordered_json;
using OLMGis::Data::CDataBox;

ordered_json ToJson(const CDataBox& value) {
    switch (value.GetKind()) {
    case CDataBox::enmKind::Int:
        return value.AsInt();
    case CDataBox::enmKind::Text:
        return value.AsText();
    case CDataBox::enmKind::Double: {
        const double number = value.AsDouble();
        if (std::isfinite(number))
            return number;
        return std::isnan(number) ? "NaN" : number > 0 ? "Infinity" : "-Infinity";
    }
    case CDataBox::enmKind::Null:
        break;
    }
    return nullptr;
}

void PrintJson(std::ostream& stream, const ordered_json& json) {
    stream << json.dump(2, ' ', false, ordered_json::error_handler_t::replace) << '\n';
}

} // namespace Cli
