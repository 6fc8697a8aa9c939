// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/RunTrace.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/PropertyEditing.h"
#include "rain/FlowCalculator_RainITP.h"
#include "tests/support/FormTable.h"
#include "tests/support/ScriptedHost.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>
#include <string>
#include <vector>

/// A project with a drawn network, a group of circular pipes and a rain calculator. Every section has a slope of 5 per
/// thousand and an inlet time of 5 min to begin with; rain comes from the formula.
struct CRainRun {
    explicit CRainRun(const char* drawing = "A---B---C") : net(drawing) {
        AddPipes("Test", {200, 250, 300, 400, 500, 600, 700, 800, 900, 1000, 1200, 1400, 1600, 1800, 2000}, 1.0);
        for (const auto& section : net.Sections()) {
            OLMGis::Data::CDataRW::Write("SECTION_SLOPE", section, 5.0, nullptr);
            OLMGis::Data::CDataRW::Write("FLOW_INTIME", section, 5.0, nullptr);
        }
        Type("RAINFALL_MODE", "2484").Type("PIPE_GROUP", "Test");
    }

    CTestProject project;
    CScriptedHost host;
    CTextNetwork net;
    CFlowCalculator_RainITP calculator;
    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> parameters = calculator.CreateParameters();
    OLMGis::Utility::CRunTrace trace;

    static void AddPipes(const std::string& name, const std::vector<double>& widths, double roughness) {
        using namespace OLMGis::Topology;
        auto& catalog = *CCatalogManager::Instance()->GetCatalog("PIPE", 1);
        const auto group = catalog.AddGroup("group-" + name, name).Value();
        for (const double width : widths) {
            CPipeData pipe;
            pipe.m_innerWidth = pipe.m_innerHeight = width;
            pipe.m_roughness = roughness;
            pipe.m_type = "type-" + name;
            const std::string number = std::to_string(static_cast<int>(width));
            EXPECT_TRUE(catalog.AddPipe(*group, std::string(name).append("-").append(number), "DN" + number, pipe));
        }
    }

    CRainRun& Type(const char* tag, const std::string& text) {
        const auto property = parameters->m_properties->GetPropertyExByTag(tag);
        const auto typed = OLMGis::Topology::SetPropertyText(*property, text);
        EXPECT_TRUE(typed) << typed.GetError().message;
        calculator.OnPropertiesUpdated(property.get(), parameters.get());
        return *this;
    }
    CRainRun& Rain(const char* section, double area) {
        net.AddCatchment(section, 1, area);
        return *this;
    }
    int Calculate() { return calculator.Calculate(net.Sections(), parameters.get(), 1, nullptr, nullptr); }
    int CalculateTraced(const char* detail) {
        const OLMGis::Utility::CRunTraceScope scope(trace);
        trace.SetDetailOf(net.Section(detail)->GetGuid());
        return Calculate();
    }

    double Value(const char* section, const char* key) const { return net.Get(section, key).AsDouble(); }
    bool Has(const char* section, const char* key) const { return net.Get(section, key).IsNotNull(); }

    /// The records of a section; the test fails when it has none.
    const Rain::CRecordList& Records(const char* section) const {
        static const Rain::CRecordList none;
        const auto* const list = calculator.FindSectionDataList(net.Section(section));
        EXPECT_TRUE(list != nullptr && !list->empty()) << section;
        return list == nullptr ? none : *list;
    }
    const CSectionDataIDF& Record(const char* section) const { return *Records(section).front(); }

    double TraceValue(const OLMGis::Utility::CTraceTable& table, const OLMGis::Utility::CTraceTable::CRow& row,
                      const char* column) const {
        for (std::size_t c = 0; c < table.m_columns.size(); ++c)
            if (table.m_columns[c].m_name == column)
                return row.m_values[c].AsDouble();
        ADD_FAILURE() << column;
        return 0.0;
    }
};

/// Uniform flow in circular pipes by another road than the system's: bisection on the angle of the wetted arc. All in m
/// and s.
struct CCircleFlow {
    double m_diameter;
    double m_slope;
    double m_roughness;
    double m_viscosity = 1.0e-6;

    double Velocity(double radius) const {
        const double root = std::sqrt(8.0 * 9.81 * radius * m_slope);
        return -2.0 * root * std::log10(2.51 * m_viscosity / (4.0 * radius * root) + m_roughness / (14.84 * radius));
    }
    double FullFlow() const { return std::numbers::pi * m_diameter * m_diameter / 4.0 * Velocity(m_diameter / 4.0); }

    /// Filling (%) and velocity for a flow not above full bore, on the rising branch.
    std::pair<double, double> Fill(double flow) const {
        double low = 1e-6;
        double high = 5.2781; // just below the angle of the greatest flow
        double velocity = 0.0;
        for (int i = 0; i < 200; ++i) {
            const double angle = (low + high) / 2.0;
            const double area = m_diameter * m_diameter / 8.0 * (angle - std::sin(angle));
            velocity = Velocity(m_diameter / 4.0 * (1.0 - std::sin(angle) / angle));
            (area * velocity < flow ? low : high) = angle;
        }
        return {50.0 * (1.0 - std::cos(low / 2.0)), velocity};
    }
};
