// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "accumulate/FlowCalculator_Transit.h"
#include "flow/FlowValue.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/network_core/PropertyEditing.h"
#include "host/sewage_core/DirectionEditor.h"
#include "host/sewage_core/FlowDirection.h"
#include "tests/support/ScriptedHost.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>

/// A direction editor that follows a script, and the interaction around it: both keep what happens in one line.
class CScriptedEditor final : public OLMGis::Sewage::IDirectionEditor, public OLMGis::Sewage::IUserInteraction {
public:
    explicit CScriptedEditor(const CTextNetwork& net) : m_net(net) {}

    std::map<char, std::string> m_choices; ///< node to section
    int m_answer = 0;
    std::string m_events;

    int EditDirections(const std::vector<boost::shared_ptr<OLMGis::Topology::CNode>>& nodes) override {
        Note("edit(" + NamesOf(nodes) + ")");
        for (const auto& [node, section] : m_choices)
            EXPECT_NE(OLMGis::Sewage::CFlowDirection::SetMainOutlet(m_net.Node(node), m_net.Section(section)), 0);
        return m_answer;
    }
    void BeginUserInteraction() override { Note("begin"); }
    void EndUserInteraction() override { Note("end"); }

private:
    void Note(const std::string& event) { m_events += (m_events.empty() ? "" : " ") + event; }

    const CTextNetwork& m_net;
    OLMGis::Sewage::CDirectionEditorScope m_scope{*this};
};

/// The transit calculator on a drawn network, all switches off, in a project of its own.
struct CTransitRun {
    explicit CTransitRun(std::string_view drawing, bool isTurkish = false) : net(drawing) {
        using OLMGis::System::CProjectSettings;
        CProjectSettings::Instance()->Set(CProjectSettings::Turkish, isTurkish ? "1" : "0");
        parameters = calculator.CreateParameters();
    }

    CTestProject project;
    CTextNetwork net;
    CScriptedHost host;
    CScriptedEditor editor{net};
    CFlowCalculator_Transit calculator;
    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> parameters;
    OLMGis::Sewage::CSectionList list = net.Sections(); ///< what the run is given

    CTransitRun& Switch(const char* tag, const char* state) {
        EXPECT_TRUE(OLMGis::Topology::SetPropertyText(*parameters->m_properties->GetPropertyExByTag(tag), state))
            << tag;
        return *this;
    }
    CTransitRun& SwitchOn(const char* tag) { return Switch(tag, "1"); }
    CTransitRun& SwitchOff(const char* tag) { return Switch(tag, "0"); }

    /// Pairs of node and lower node, separated by blanks.
    CTransitRun& ChooseOutlets(const std::string& outlets) {
        for (std::size_t i = 0; i + 1 < outlets.size(); i += 3)
            EXPECT_NE(
                OLMGis::Sewage::CFlowDirection::SetMainOutlet(net.Node(outlets[i]), net.Section(outlets.substr(i, 2))),
                0);
        return *this;
    }

    int Calculate() { return calculator.Calculate(list, parameters.get(), 1, nullptr, &editor); }
    int CalculateWithoutInteraction() { return calculator.Calculate(list, parameters.get(), 1, nullptr, nullptr); }

    double Own(const char* section) const { return net.Get(section, "FLOW_SECT_TOTAL").AsDouble(); }

    /// Name and FLOW_TRANSIT of all sections of the network, "-" for none.
    std::string Transits() const {
        std::string text;
        for (const auto& section : net.Sections()) {
            OLMGis::Data::CDataBox box;
            OLMGis::Data::CDataRW::Read("FLOW_TRANSIT", section, box, 0, nullptr);
            text += (text.empty() ? "" : " ") + std::string(section->GetName()) + " " +
                    (box.IsNotNull() ? box.AsText() : "-");
        }
        return text;
    }

    boost::shared_ptr<OLMGis::Topology::CNode> AddNode(std::size_t number) const {
        const std::string name = "n" + std::to_string(number);
        return net.Topology().AddNode(name, name, {}).Value();
    }
    boost::shared_ptr<OLMGis::Topology::CSection>
    AddSection(const boost::shared_ptr<OLMGis::Topology::CNode>& start,
               const boost::shared_ptr<OLMGis::Topology::CNode>& end) const {
        const std::string name = "s" + std::to_string(net.Sections().size());
        return net.Topology().AddSection(name, name, start.get(), end.get(), {}).Value();
    }
};
