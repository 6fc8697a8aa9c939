// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/TableReader.h"

#include "host/gis_core/Utility.h"
#include "host/project_io/base/AttributeText.h"
#include "host/project_io/tables/TableText.h"

#include <fmt/format.h>

#include <algorithm>

namespace OLMGis::ProjectIo {

using Data::CDataBox;
using Data::enmDataType;
using Utility::BadInput;
using Utility::CUtility;
using Utility::Done;
using Utility::Result;
using Utility::Status;

namespace {

std::string_view NameOfSeparator(char separator) {
    switch (separator) {
    case ',':
        return "comma";
    case ';':
        return "semicolon";
    case '\t':
        return "tab";
    default:
        return "as in its first line";
    }
}

} // namespace

Status CTableFaults::ToStatus(const std::string& fileName, std::string_view advice) const {
    if (m_list.GetCount() == 1 && m_hasOthers)
        return BadInput(fmt::format("{}. {}", m_list.GetPlaces().front(), advice));
    return m_list.ToStatus(fileName, advice, m_hasOthers ? "fault" : "impossible value");
}

Status CTableReader::Open(std::istream& stream, Data::enmEntityKind kind, enmTableUse use, const CColumnMap* map) {
    auto text = ReadTableText(stream, m_name);
    if (!text)
        return text.GetError();
    m_isWindows1250 = text->m_isWindows1250;
    m_text.str(std::move(text->m_text));
    m_rows = std::make_unique<CCsvReader>(m_text, m_name);
    if (Status head = m_rows->ReadHead(); !head)
        return head;
    std::vector<std::string> found;
    m_columns = FindColumns(m_rows->GetColumns(), kind, use, map, found);
    CTableFaults faults;
    for (const std::string& fault : found)
        faults.Add(fmt::format("{}: line {}, {}", m_name, m_rows->GetLine(), fault));
    std::vector<std::string> keys;
    for (const CTableColumn& column : m_columns)
        keys.push_back(column.m_key);
    m_rows->RenameColumns(std::move(keys));
    return faults.ToStatus(m_name, "Correct the head line, or give the meaning of its columns in a mapping file");
}

Result<bool> CTableReader::Next() {
    for (;;) {
        Result<bool> next = m_rows->Next();
        if (!next || !next.Value() || !m_rows->IsRowEmpty())
            return next;
    }
}

std::string_view CTableReader::GetText(std::string_view key) const {
    return CUtility::Trim(m_rows->GetField(m_rows->FindColumn(key)));
}

Result<std::optional<double>> CTableReader::GetNumber(std::string_view key) {
    const std::string_view text = GetText(key);
    if (text.empty())
        return std::optional<double>();
    const auto pointed = m_decimalSign.WithPoint(text, m_rows->GetLine());
    if (!pointed)
        return m_rows->Fault(key, pointed.GetError().message);
    if (const auto number = CUtility::ParseDouble(pointed.Value()))
        return number;
    return m_rows->Fault(key, fmt::format("found {}, expected a number", Quote(text)));
}

int CTableReader::KindsOf(std::string_view text) {
    if (!m_kindLabels)
        m_kindLabels = GetKindLabels();
    return KindsOfLabels(text, *m_kindLabels);
}

Result<CDataBox> CTableReader::GetValue(std::size_t place) {
    const CTableColumn& column = m_columns[place];
    const Data::CDataDefinition& definition = *column.m_definition;
    const std::string_view text = m_rows->GetField(place);
    std::string_view number = text;
    if (definition.m_type == enmDataType::Double) {
        const auto pointed = m_decimalSign.WithPoint(text, m_rows->GetLine());
        if (!pointed)
            return m_rows->Fault(definition.m_id, pointed.GetError().message);
        number = pointed.Value();
    }
    auto value = ParseAttribute(definition, number);
    if (!value && definition.m_id == "kinds")
        if (const int kinds = KindsOf(text); kinds != 0)
            return CDataBox(kinds);
    if (!value)
        return ColumnFault(place, value.GetError().message);
    if (value->IsNotNull() && !column.m_conversion.IsOne()) {
        if (definition.m_type == enmDataType::Double)
            return CDataBox(column.m_conversion.Apply(value->AsDouble()));
    }
    return value;
}

Utility::Error CTableReader::ColumnFault(std::size_t column, std::string_view message) const {
    const std::string& key = m_columns[column].m_definition->m_id;
    if (message.starts_with(key + ": "))
        message.remove_prefix(key.size() + 2);
    return m_rows->Fault(key, message);
}

std::string CTableReader::Describe() const {
    std::string text = fmt::format("{}: separator {}, ", m_name, NameOfSeparator(m_rows->GetSeparator()));
    const std::string sign = m_decimalSign.Describe();
    text += (sign.empty() ? "no number with decimals" : sign) +
            (m_isWindows1250 ? ", Windows-1250, because it is not UTF-8" : ", UTF-8");
    std::string meanings;
    for (const CTableColumn& column : m_columns) {
        const bool isConverted = !column.m_conversion.IsOne();
        if (!isConverted && column.m_head == column.m_key)
            continue;
        meanings += fmt::format("{}{} {}", meanings.empty() ? "; columns: " : ", ", Quote(column.m_head),
                                column.m_key.empty() ? "left out" : "is " + column.m_key);
        if (isConverted)
            meanings += fmt::format(", converted from {} to {}", column.m_unit, column.m_definition->m_unit);
    }
    return text + meanings;
}

} // namespace OLMGis::ProjectIo
