// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataRW.h"
#include "host/network_core/Catalog.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/inp/InpImport.h"
#include "tests/support/TestProject.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>

/// A project of its own, filled from the text of a storm-water file.
class CInpTestProject {
public:
    explicit CInpTestProject(const std::string& text) : CInpTestProject(std::istringstream(text)) {}
    explicit CInpTestProject(std::istream&& stream) : m_answer(OLMGis::ProjectIo::ImportInp(stream, "net.inp")) {}

    bool IsImported() const { return static_cast<bool>(m_answer); }

    /// The message of the error, empty when there is none.
    std::string Message() const { return m_answer ? std::string() : m_answer.GetError().message; }
    const OLMGis::ProjectIo::CImportSummary& Summary() const { return m_answer.Value(); }

    /// The count of the note whose text begins so; 0 without one.
    std::size_t Noted(std::string_view beginning) const {
        for (const auto& note : Summary().m_notes)
            if (note.m_what.starts_with(beginning))
                return note.m_count;
        return 0;
    }

    OLMGis::Topology::CTopologyStorage& Topology() const {
        return *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    }
    boost::shared_ptr<OLMGis::Topology::CSection> Section(std::string_view name) const {
        const auto found = Topology().GetSectionsByName(name);
        return found.size() == 1 ? found.front() : nullptr;
    }
    boost::shared_ptr<OLMGis::Topology::CCatchment> Catchment(std::string_view name) const {
        const auto& all = Topology().GetCatchments();
        const auto found = std::find_if(all.begin(), all.end(), [&](const auto& c) { return c->GetName() == name; });
        return found == all.end() ? nullptr : *found;
    }

    /// Name of the section of a catchment, "-" for none.
    std::string HangsOn(std::string_view catchment) const {
        const auto found = Catchment(catchment);
        return found ? std::string(found->GetSection()->GetName()) : "-";
    }

    /// Values; null boxes for absent ones and for absent objects.
    OLMGis::Data::CDataBox OfSection(std::string_view name, std::string_view key) const {
        return Read(key, Section(name));
    }
    OLMGis::Data::CDataBox OfNode(std::string_view name, std::string_view key) const {
        return Read(key, Topology().GetNodeByName(name));
    }
    OLMGis::Data::CDataBox OfCatchment(std::string_view name, std::string_view key) const {
        return Read(key, Catchment(name));
    }

    /// Name of a section's pipe, empty without one.
    std::string PipeName(std::string_view section) const {
        const auto found = Section(section);
        const auto pipe = found ? found->GetPipe() : nullptr;
        return pipe ? pipe->GetName() : std::string();
    }

private:
    static OLMGis::Data::CDataBox Read(std::string_view key, const auto& entity) {
        OLMGis::Data::CDataBox box;
        OLMGis::Data::CDataRW::Read(key, entity, box, 0, nullptr);
        return box;
    }

    CTestProject m_project;
    OLMGis::Utility::Result<OLMGis::ProjectIo::CImportSummary> m_answer;
};
