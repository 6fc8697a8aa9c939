// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "bench/Benchmarks.h"
#include "bench/Network.h"
#include "bench/RainForm.h"
#include "host/gis_core/HostServices.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/network_core/FormEditor.h"
#include "host/network_core/PropertyEditing.h"
#include "host/sewage_calculations/CalculationRun.h"
#include "host/sewage_core/FlowCalculatorManager.h"
#include "waste/FlowCalculator_WasteAreas.h"

#include <boost/make_shared.hpp>
#include <fmt/format.h>

namespace Bench {

using OLMGis::Sewage::CFlowCalculatorManager;
using OLMGis::Sewage::IFlowCalculator;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::enmPropertyEditorType;
using OLMGis::Utility::BadInput;

namespace {

/// Switches everything on: what a form leaves out would cost nothing.
void SwitchAllOn(CPropertiesEx& form, const std::function<void(OLMGis::Topology::CPropertyEx&)>& onChanged) {
    for (const auto& property : form.GetAllProperties()) {
        if (property->GetEditorType() != enmPropertyEditorType::CheckBox)
            continue;
        static_cast<void>(SetPropertyText(*property, "1"));
        onChanged(*property);
    }
    FillRainForm(form);
}

/// A host that confirms every form with everything switched on, and remembers an alert.
class CBenchHost final : public OLMGis::System::IBasicHostServices, public OLMGis::Topology::IFormEditor {
public:
    int EditForm(std::string_view /*title*/, CPropertiesEx& form, const COnChanged& onChanged) override {
        SwitchAllOn(form, onChanged);
        return 1;
    }
    void Alert(std::string_view text) override { m_alert = text; }

    std::string m_alert;

private:
    OLMGis::System::CHostServicesScope m_services{*this};
    OLMGis::Topology::CFormEditorScope m_editor{*this};
};

/// Whether at least one section has one of the calculator's results.
Status InspectResults(IFlowCalculator& calculator, const CBenchProject& project) {
    const auto& store = project.Topology().GetStore();
    for (const auto* definition : calculator.GetOutputDefinitions()) {
        const auto* const column = store.FindColumn(*definition);
        if (column != nullptr && column->CountNotNull() > 0)
            return Done{};
    }
    return BadInput("the run stored nothing");
}

/// One calculator, its parameters and its network.
class CCalculation {
public:
    CCalculation(CBenchProjectPtr project, boost::shared_ptr<IFlowCalculator> calculator)
        : m_project(std::move(project)), m_calculator(std::move(calculator)),
          m_parameters(m_calculator->CreateParameters()) {
        SwitchAllOn(*m_parameters->m_properties, [this](OLMGis::Topology::CPropertyEx& property) {
            m_calculator->OnPropertiesUpdated(&property, m_parameters.get());
        });
    }

    Status Run() {
        CBenchHost host;
        m_calculator->Calculate(m_project->Topology().GetSections(), m_parameters.get(), 1, nullptr, nullptr);
        return host.m_alert.empty() ? Status(Done{}) : Status(BadInput("alert: " + host.m_alert));
    }

    Status Inspect() const { return InspectResults(*m_calculator, *m_project); }

private:
    CBenchProjectPtr m_project;
    boost::shared_ptr<IFlowCalculator> m_calculator;
    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> m_parameters;
};

/// A generated network on which the calculators of lower keys ran.
Result<CBenchProjectPtr> MakeNetworkFor(const std::string& key, const CSize& size) {
    auto project = MakeGeneratedNetwork(size);
    if (!project)
        return project;
    if (const Status status = AddRainPipes(); !status)
        return status.GetError();
    for (const auto& calculator : CFlowCalculatorManager::Instance()->GetCalculators())
        if (calculator->GetKey() < key)
            if (const Status status = CCalculation(project.Value(), calculator).Run(); !status)
                return BadInput(calculator->GetKey() + ": " + status.GetError().message);
    return project;
}

CSubjectMaker Calculating(const std::string& key) {
    return [key](const CSize& size) -> Result<CSubject> {
        const auto project = MakeNetworkFor(key, size);
        if (!project)
            return project.GetError();
        const auto calculation =
            std::make_shared<CCalculation>(project.Value(), CFlowCalculatorManager::Instance()->GetCalculator(key));
        CSubject subject;
        subject.m_pass = [calculation] { return calculation->Run(); };
        subject.m_inspect = [calculation] { return calculation->Inspect(); };
        return subject;
    };
}

/// The same as a program runs it: with a journal that can take it back, and a summary of what was stored.
CSubjectMaker Running(const std::string& key) {
    return [key](const CSize& size) -> Result<CSubject> {
        const auto project = MakeNetworkFor(key, size);
        if (!project)
            return project.GetError();
        CSubject subject;
        subject.m_pass = [project = project.Value(), key]() -> Status {
            CBenchHost host;
            const auto outcome = OLMGis::Sewage::RunCalculation({key, {}, {}});
            if (!outcome)
                return outcome.GetError();
            return outcome->HasStored() ? Status(Done{}) : Status(BadInput("the run stored nothing"));
        };
        return subject;
    };
}

/// Waste water by areas in the edition in which each section has the flow of everything upstream.
CSubjectMaker SummingUpstream() {
    return [](const CSize& size) -> Result<CSubject> {
        const auto project = MakeGeneratedNetwork(size);
        if (!project)
            return project.GetError();
        OLMGis::Utility::CModuleConfiguration::Instance()->SetEdition("BLG");
        const auto calculation =
            std::make_shared<CCalculation>(project.Value(), boost::make_shared<CFlowCalculator_WasteAreas>());
        CSubject subject;
        subject.m_pass = [calculation] { return calculation->Run(); };
        subject.m_inspect = [calculation] { return calculation->Inspect(); };
        return subject;
    };
}

std::vector<std::string> RegisteredKeys() {
    const CBenchProject project;
    std::vector<std::string> keys;
    for (const auto& calculator : CFlowCalculatorManager::Instance()->GetCalculators())
        keys.push_back(calculator->GetKey());
    return keys;
}

} // namespace

void RegisterCalculators() {
    for (const std::string& key : RegisteredKeys())
        RegisterOnNetworks("calculate/" + key, enmPace::Quick, Calculating(key));
    RegisterOnNetworks("calculate/01_WASTE_AREAS_UPSTREAM", enmPace::Quick, SummingUpstream());
    RegisterOnNetworks("run/01_WASTE_PERCENT", enmPace::Quick, Running("01_WASTE_PERCENT"));
}

} // namespace Bench
