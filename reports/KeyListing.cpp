// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/KeyListing.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/network_core/FunctionalAnalysisManager.h"
#include "host/network_core/IAttributeReader.h"
#include "host/sewage_core/FlowCalculatorManager.h"
#include "host/sewage_core/ICalculatorInputs.h"
#include "host/sewage_core/SectionHydraulics.h"
#include "reports/EntityChoice.h"
#include "reports/JsonDocument.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <map>
#include <string>
#include <vector>

namespace Reports {

using nlohmann::ordered_json;
using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::enmDataType;
using OLMGis::Data::enmEntityKind;

namespace {

/// By key of the attribute: who writes and who reads it, in the order of the design work.
struct CUsers {
    using CNamesByKey = std::map<std::string, std::vector<std::string>, std::less<>>;
    CNamesByKey m_writers;
    CNamesByKey m_readers;

    CUsers() {
        const auto add = [](CNamesByKey& users, const std::vector<std::string>& keys, const std::string& name) {
            for (const std::string& key : keys)
                users[key].push_back(name);
        };
        for (const auto& calculator : OLMGis::Sewage::CFlowCalculatorManager::Instance()->GetCalculators())
            if (const auto* const inputs = dynamic_cast<const OLMGis::Sewage::ICalculatorInputs*>(calculator.get())) {
                add(m_writers, inputs->GetWrittenKeys(true), calculator->GetKey());
                add(m_readers, inputs->GetReadKeys(), calculator->GetKey());
            }
        add(m_writers, OLMGis::Sewage::GetHydraulicsWrittenKeys(), "hydraulics");
        add(m_readers, OLMGis::Sewage::GetHydraulicsReadKeys(), "hydraulics");
        for (const auto& item : OLMGis::Topology::CFunctionalAnalysisManager::Instance()->GetItems())
            if (const auto* const reader = dynamic_cast<const OLMGis::Topology::IAttributeReader*>(item.get()))
                add(m_readers, reader->GetReadKeys(), item->GetItemKey());
    }

    static const std::vector<std::string>& Find(const CNamesByKey& users, const std::string& key) {
        static const std::vector<std::string> none;
        const auto found = users.find(key);
        return found == users.end() ? none : found->second;
    }
};

std::string LabelOf(const CDataDefinition& definition) {
    auto& texts = *OLMGis::Utility::CModuleConfiguration::Instance();
    return texts.HasMsg(definition.m_labelMessage) ? texts.GetMsg(definition.m_labelMessage) : definition.m_id;
}

CDataBox ToBox(const std::optional<double>& number) {
    return number ? CDataBox(*number) : CDataBox();
}

} // namespace

CListing MakeKeyListing(std::optional<enmEntityKind> kind) {
    const CUsers users;
    CTable table({TextColumn("key", "key"), TextColumn("on", "on"), TextColumn("label", "label"),
                  TextColumn("unit", "unit"), NumberColumn("decimals", "decimals"), NumberColumn("min", "min"),
                  NumberColumn("max", "max"), NumberColumn("usual_min", "usual min"),
                  NumberColumn("usual_max", "usual max"), TextColumn("written_by", "written by"),
                  TextColumn("read_by", "read by")});
    ordered_json document = ordered_json::array();
    for (const auto& definition : OLMGis::Data::CDataConfiguration::Instance()->GetDataDefinitions()) {
        if (kind && definition->m_entityKind != *kind)
            continue;
        const auto& writers = CUsers::Find(users.m_writers, definition->m_id);
        const auto& readers = CUsers::Find(users.m_readers, definition->m_id);
        const auto& range = definition->m_range;
        const bool isNumber = definition->m_type != enmDataType::Text;
        const CTable::CRow row{definition->m_id,
                               fmt::format("{}s", GetKindName(definition->m_entityKind)),
                               LabelOf(*definition),
                               definition->m_unit.empty() ? CDataBox() : CDataBox(definition->m_unit),
                               isNumber ? CDataBox(definition->m_decimals) : CDataBox(),
                               ToBox(range.m_min),
                               ToBox(range.m_max),
                               ToBox(range.m_usualMin),
                               ToBox(range.m_usualMax),
                               fmt::format("{}", fmt::join(writers, " ")),
                               fmt::format("{}", fmt::join(readers, " "))};
        ordered_json object;
        for (std::size_t i = 0; i < row.size(); ++i)
            object[table.GetColumns()[i].m_key] = ToJson(row[i]);
        object["written_by"] = writers;
        object["read_by"] = readers;
        document.push_back(std::move(object));
        table.AddRow(row);
    }
    CListing listing(std::move(table));
    listing.m_printDocument = [document = std::move(document)](std::ostream& stream) {
        PrintDocument(stream, document);
    };
    return listing;
}

} // namespace Reports
