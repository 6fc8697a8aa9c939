// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/LastFormsTable.h"

#include "host/gis_core/Utility.h"
#include "host/project_io/base/Failure.h"
#include "host/project_io/base/StoredPath.h"
#include "host/project_io/store/ProjectTables.h"
#include "host/sewage_core/LastForms.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <limits>

namespace OLMGis::ProjectIo {

using Data::CDataBox;
using nlohmann::ordered_json;
using Sewage::CLastForm;
using Sewage::CLastForms;
using Sewage::CLastValue;

namespace {

ordered_json ToJson(const CDataBox& value) {
    switch (value.GetKind()) {
    case CDataBox::enmKind::Int:
        return value.AsInt();
    case CDataBox::enmKind::Double:
        return value.AsDouble();
    case CDataBox::enmKind::Text:
        return value.AsText();
    case CDataBox::enmKind::Null:
        break;
    }
    return nullptr;
}

CDataBox ToBox(const ordered_json& value) {
    const double number = value.is_number_integer() ? value.get<double>() : 0.0;
    if (value.is_number_integer() && std::abs(number) <= std::numeric_limits<int>::max())
        return CDataBox(value.get<int>());
    if (value.is_number())
        return CDataBox(value.get<double>());
    return value.is_string() ? CDataBox(value.get<std::string>()) : CDataBox();
}

CLastForm ToForm(std::string_view text, const std::vector<std::string>& files, const std::filesystem::path& folder) {
    CLastForm form;
    const auto values = ordered_json::parse(text);
    for (const auto& [tag, value] : values.get_ref<const ordered_json::object_t&>()) {
        CLastValue entry{tag, ToBox(value), std::find(files.begin(), files.end(), tag) != files.end()};
        if (entry.m_isFile && !entry.m_value.AsText().empty())
            entry.m_value = CDataBox((folder / entry.m_value.AsText()).lexically_normal().string());
        form.push_back(std::move(entry));
    }
    return form;
}

void ReadForms(const CSqliteDatabase& database) {
    const Layout::CTable& table = Layout::GetLastFormsTable();
    const std::filesystem::path folder = FolderOf(database);
    const std::vector<std::string> columns = NamesOf(table.m_columns);
    CSqlReader reader(database, table.m_table, columns, columns[Layout::LastFormId]);
    while (reader.Next()) {
        std::vector<std::string> files;
        Utility::CUtility::SplitString(reader.GetText(Layout::LastFormFiles), files, ' ');
        try {
            CLastForms::Instance()->Set(reader.GetText(Layout::LastFormCalculator),
                                        ToForm(reader.GetText(Layout::LastFormValues), files, folder));
        } catch (const nlohmann::json::exception&) {
            reader.Fail("found a form that is not JSON, expected tags and values");
        }
    }
}

} // namespace

bool HasLastForms() {
    return !CLastForms::Instance()->GetAll().empty();
}

void WriteLastForms(CSqliteDatabase& database) {
    const std::filesystem::path folder = FolderOf(database);
    CSqliteStatement insert(database, Layout::InsertStatement(Layout::LastFormsTable, Layout::LastFormColumnCount));
    std::int64_t row = 0;
    for (const auto& [calculator, form] : CLastForms::Instance()->GetAll()) {
        ordered_json values = ordered_json::object();
        std::string files;
        for (const CLastValue& value : form) {
            values[value.m_tag] =
                value.m_isFile ? ordered_json(StoredPath(value.m_value.AsText(), folder)) : ToJson(value.m_value);
            if (value.m_isFile)
                files += (files.empty() ? "" : " ") + value.m_tag;
        }
        const std::string text = values.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
        insert.Bind(Layout::LastFormId + 1, ++row).Bind(Layout::LastFormCalculator + 1, std::string_view(calculator));
        insert.Bind(Layout::LastFormValues + 1, std::string_view(text));
        insert.Bind(Layout::LastFormFiles + 1, std::string_view(files)).Run();
    }
}

void ReadLastForms(const CSqliteDatabase& database, const CFileTables& tables, CWarnings& warnings) {
    if (!tables.Has(Layout::LastFormsTable))
        return;
    try {
        tables.GetColumns(Layout::LastFormsTable, Layout::GetLastFormsTable().m_columns);
        ReadForms(database);
    } catch (const CFailure& failure) {
        if (failure.GetError().kind != Utility::enmErrorKind::BadInput)
            throw;
        warnings.Add(fmt::format("the table {} is not what runs write, and was left out from there on; saving will "
                                 "drop it: {}",
                                 Layout::LastFormsTable, failure.GetError().message));
    }
}

} // namespace OLMGis::ProjectIo
