// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/JsonDocument.h"

#include "host/project_io/base/AttributeText.h"

#include <nlohmann/json.hpp>

namespace Reports {

using nlohmann::ordered_json;
using OLMGis::Data::CDataBox;

ordered_json ToJson(const CDataBox& value) {
    switch (value.GetKind()) {
    case CDataBox::enmKind::Int:
        return value.AsInt();
    case CDataBox::enmKind::Text:
        return value.AsText();
    case CDataBox::enmKind::Double:
        if (const std::string_view text = OLMGis::ProjectIo::TextOfNonFinite(value.AsDouble()); !text.empty())
            return text;
        return value.AsDouble();
    case CDataBox::enmKind::Null:
        break;
    }
    return nullptr;
}

void PrintDocument(std::ostream& stream, const ordered_json& document) {
    stream << document.dump(2, ' ', false, ordered_json::error_handler_t::replace) << '\n';
}

} // namespace Reports
