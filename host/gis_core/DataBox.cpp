// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/DataBox.h"

#include "host/gis_core/Utility.h"

namespace OLMGis::Data {

using Utility::CUtility;

double CDataBox::AsDouble() const {
    switch (m_kind) {
    case enmKind::Int:
        return m_int;
    case enmKind::Double:
        return m_double;
    case enmKind::Text:
        return CUtility::ToDouble(m_text);
    case enmKind::Null:
        break;
    }
    return 0.0;
}

int CDataBox::AsInt() const {
    switch (m_kind) {
    case enmKind::Int:
        return m_int;
    case enmKind::Double:
        return CUtility::CutToInt(m_double);
    case enmKind::Text:
        return CUtility::CutToInt(CUtility::ToDouble(m_text));
    case enmKind::Null:
        break;
    }
    return 0;
}

std::string CDataBox::AsText() const {
    switch (m_kind) {
    case enmKind::Int:
        return CUtility::ToText(m_int);
    case enmKind::Double:
        return CUtility::ToText(m_double);
    case enmKind::Text:
        return m_text;
    case enmKind::Null:
        break;
    }
    return {};
}

bool operator==(const CDataBox& a, const CDataBox& b) {
    if (a.m_kind != b.m_kind)
        return false;
    switch (a.m_kind) {
    case CDataBox::enmKind::Int:
        return a.m_int == b.m_int;
    case CDataBox::enmKind::Double:
        return a.m_double == b.m_double;
    case CDataBox::enmKind::Text:
        return a.m_text == b.m_text;
    case CDataBox::enmKind::Null:
        break;
    }
    return true;
}

} // namespace OLMGis::Data
