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

/// Pairs of label and value of a preview, in order; a separator has a row of equal signs and an empty value.
using CReport = std::vector<std::pair<std::string, std::string>>;

using CSectionList = std::vector<boost::shared_ptr<Topology::CSection>>;

/// Derives one group of design flows for a list of sections and stores them as attributes of those sections.
/// Calculators know nothing of each other: they hand values on only through the attributes.
class IFlowCalculator {
public:
    virtual ~IFlowCalculator() = default;

    /// Makes a new parameter set with its form, keeps it in place of the former one and returns it. Never null.
    virtual boost::shared_ptr<CFlowCalculatorParameters> CreateParameters() = 0;

    /// Told after the user changed one property of a form.
    virtual void OnPropertiesUpdated(Topology::CPropertyEx* /*property*/, CFlowCalculatorParameters* /*parameters*/) {}

    /// The calculation.
    /// sections: may hold nulls where the calculator says so; never changed.   params: null answers 0, nothing written.
    /// write: 0 asks for a run without results, which only calculators with a preview honour.
    /// report: receives the preview, may be null.   interaction: may be null where no editor is needed.
    /// The result tells whether something was stored, differs from calculator to calculator, and never says why not.
    virtual int Calculate(const CSectionList& sections, CFlowCalculatorParameters* params, int write, CReport* report,
                          IUserInteraction* interaction) = 0;

    /// Lets the user edit the parameters, by default through the host's form editor; 1 when they were confirmed.
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

    /// Begins with a sequence number: ascending keys are the order of the design work.
    const std::string& GetKey() const { return m_key; }

    /// The values that the calculator shows as its results, in order; narrower than what some of them write. No nulls
    /// where the installation's definitions are complete.
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
