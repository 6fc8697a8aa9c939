// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "host/network_core/Section.h"
#include "host/sewage_core/FlowCalculatorParameters.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <utility>
#include <vector>

namespace OLMGis::Sewage {

/// Frames a modal editor that a calculator opens in the middle of a run.
class IUserInteraction {
public:
    virtual void EndUserInteraction() = 0;
    virtual void BeginUserInteraction() = 0;

protected:
    ~IUserInteraction() = default;
};

/// Lines of a preview in order, as label and value; a separator has a row of equal signs and an empty value.
using CReport = std::vector<std::pair<std::string, std::string>>;

using CSectionList = std::vector<boost::shared_ptr<Topology::CSection>>;

/// Calculates one group of design flows for a list of sections and stores them as attributes of those sections.
/// Calculators do not know each other: they pass values on only through the attributes.
///
/// The order of the operations is fixed: modules that are built apart rely on it. A further question to a calculator is
/// an interface of its own (see IDensityUser).
class IFlowCalculator {
public:
    virtual ~IFlowCalculator() = default;

    /// Makes a new parameter set with its form, keeps it in place of the previous one and returns it. Never null.
    virtual boost::shared_ptr<CFlowCalculatorParameters> CreateParameters() = 0;

    /// Called after the user has changed one property of a form.
    virtual void OnPropertiesUpdated(Topology::CPropertyEx* /*property*/, CFlowCalculatorParameters* /*parameters*/) {}

    /// The calculation.
    /// sections: may contain nulls where the calculator permits it; never changed.   params: null gives 0, nothing
    /// written.   write: 0 asks for a run without results, which only calculators with a preview observe.
    /// report: receives the preview, may be null.   interaction: may be null where no editor is needed.
    /// Result: non-zero when something was stored, in a way that each calculator documents; it gives no reason.
    virtual int Calculate(const CSectionList& sections, CFlowCalculatorParameters* params, int write, CReport* report,
                          IUserInteraction* interaction) = 0;

    /// Lets the user edit the parameters, by default in the host's form editor; 1 when the user confirmed them.
    virtual int InputParameters(const CSectionList& sections, CFlowCalculatorParameters* params, int mode,
                                CReport* report);

    /// 1 when the sections depend on each other, so that the calculator needs the whole network.
    virtual int IsWholeNetworkCalculator() = 0;

    /// Whether Calculate may run with write 0 to show a report first.
    virtual int IsPreviewAvailable() const { return 0; }
    virtual int IsInputDataSeparateFromCalculation() const { return 0; }

    /// Texts of the catalogue, and icon ids, for a host that lists calculators.
    virtual std::string GetCalculatorName() = 0;
    virtual std::string GetCalculatorGroupName() = 0;
    virtual std::string GetCalculatorIconOverride() = 0;
    virtual std::string GetCalculatorIcon() = 0;
    virtual std::string GetCalculatorGroupIcon() = 0;

    /// The key under which Calculate stores the serialised parameters on each section.
    virtual std::string GetParametersDataId() = 0;

    /// Begins with a sequence number: ascending keys are the order in which a design is calculated.
    const std::string& GetKey() const { return m_key; }

    /// The values that the calculator shows as its results, in order; some calculators store more. No nulls when the
    /// installation's definitions are complete.
    const std::vector<const Data::CDataDefinition*>& GetOutputDefinitions() const { return m_outputDefinitions; }
    const std::vector<std::pair<const Data::CDataDefinition*, int>>& GetOutputDefinitionsWithKind() const {
        return m_outputDefinitionsWithKind;
    }

protected:
    std::string m_key;
    std::vector<const Data::CDataDefinition*> m_outputDefinitions;
    std::vector<std::pair<const Data::CDataDefinition*, int>> m_outputDefinitionsWithKind;
};

} // namespace OLMGis::Sewage
