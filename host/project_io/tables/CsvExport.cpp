// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/CsvExport.h"

#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/base/AttributeText.h"
#include "host/project_io/base/SectionReferences.h"
#include "host/project_io/tables/CsvWriter.h"

#include <vector>

namespace OLMGis::ProjectIo {

using Data::CDataDefinition;
using Data::enmEntityKind;
using Topology::CTopologyStorage;

namespace {

void WriteHead(CCsvWriter& writer, enmEntityKind kind, const std::vector<const CDataDefinition*>& keys) {
    writer.Write("name");
    writer.Write("guid");
    if (kind == enmEntityKind::Section) {
        writer.Write("from");
        writer.Write("to");
    }
    if (kind == enmEntityKind::Catchment)
        writer.Write("section");
    for (const CDataDefinition* key : keys)
        writer.Write(key->m_id);
    writer.EndRow();
}

void WriteAttributes(CCsvWriter& writer, const Data::CAttributeOwner& entity,
                     const std::vector<const CDataDefinition*>& keys) {
    Data::CDataBox box;
    for (const CDataDefinition* key : keys) {
        box.Clear();
        entity.GetStore().Read(*key, entity.GetRow(), box);
        const bool isKinds = box.IsNotNull() && key->m_id == "kinds" && box.AsInt() != 0;
        writer.Write(isKinds ? TextOfKinds(box.AsInt(), "+") : TextOfAttribute(box));
    }
    writer.EndRow();
}

/// writeOwn writes the columns between the GUID and the attributes.
template <class List, class WriteOwn>
void WriteRows(CCsvWriter& writer, const List& entities, const std::vector<const CDataDefinition*>& keys,
               const WriteOwn& writeOwn) {
    for (const auto& entity : entities) {
        writer.Write(entity->GetName());
        writer.Write(entity->GetGuid());
        writeOwn(*entity);
        WriteAttributes(writer, *entity, keys);
    }
}

} // namespace

Utility::Status ExportCsv(std::ostream& stream, enmEntityKind kind) {
    const CTopologyStorage& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    const std::vector<const CDataDefinition*> keys = topology.GetStore().GetUsedDefinitions(kind);
    CCsvWriter writer(stream);
    WriteHead(writer, kind, keys);
    const auto nameOf = [](const auto& node) { return node ? node->GetName() : std::string_view(); };
    switch (kind) {
    case enmEntityKind::Node:
        WriteRows(writer, topology.GetNodes(), keys, [](const Topology::CNode&) {});
        break;
    case enmEntityKind::Section:
        WriteRows(writer, topology.GetSections(), keys, [&](const Topology::CSection& section) {
            writer.Write(nameOf(section.GetStartingNode()));
            writer.Write(nameOf(section.GetEndingNode()));
        });
        break;
    case enmEntityKind::Catchment: {
        const CSectionReferences references(topology);
        WriteRows(writer, topology.GetCatchments(), keys, [&](const Topology::CCatchment& catchment) {
            writer.Write(references.ReferenceTo(*catchment.GetSection()));
        });
        break;
    }
    }
    return writer.Finish();
}

} // namespace OLMGis::ProjectIo
