// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/ICalculatorInputs.h"
#include "host/sewage_core/IFlowCalculator.h"
#include "rain/RainITPParameters.h"
#include "rain/run/SectionDataIDF.h"

#include <boost/shared_ptr.hpp>

#include <memory>
#include <string>
#include <vector>

class CVariationData;

namespace Rain {
class CVariationSearch;
} // namespace Rain

/// Dimensions a whole storm-water network from rainfall intensities. From the heads down, each section gets a
/// consistent set of concentration time (min), intensity (l/(s·ha)), design flow (m³/s), pipe and velocity (m/s).
/// Results reach the sections only after the whole network has been calculated.
///
/// The face of the calculation for a host: it reads the form, asks and alerts, and stores. What is calculated in
/// between is in the rooms run and variations.
class CFlowCalculator_RainITP final : public OLMGis::Sewage::IFlowCalculator, public OLMGis::Sewage::ICalculatorInputs {
public:
    using CSectionList = OLMGis::Sewage::CSectionList;
    using CSectionPtr = boost::shared_ptr<OLMGis::Topology::CSection>;

    CFlowCalculator_RainITP();
    ~CFlowCalculator_RainITP() override;

    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> CreateParameters() override;

    /// A new curve file brings a new choice of frequencies.
    void OnPropertiesUpdated(OLMGis::Topology::CPropertyEx* property,
                             OLMGis::Sewage::CFlowCalculatorParameters* parameters) override;

    /// 1 after a finished run, else 0 with nothing stored. sections must contain the whole network upstream of each of
    /// them; nulls, and sections without both nodes, are left out. write and report are not used. Cost: linear, but
    /// for the partial area effect: along chains by the square of their length, by search exponential.
    int Calculate(const CSectionList& sections, OLMGis::Sewage::CFlowCalculatorParameters* params, int write,
                  OLMGis::Sewage::CReport* report, OLMGis::Sewage::IUserInteraction* interaction) override;

    int IsWholeNetworkCalculator() override { return 1; }
    std::string GetCalculatorName() override;
    std::string GetCalculatorGroupName() override;
    std::string GetCalculatorIconOverride() override { return "IDI_CALC_RAINIDF"; }
    std::string GetCalculatorIcon() override { return "IDI_CALC_ADDITIONAL"; }
    std::string GetCalculatorGroupIcon() override { return "IDI_CALC_RAIN"; }
    std::string GetParametersDataId() override;

    // Results of the last run, until the network changes or the next run begins. Null after a failed run.

    /// The records of a section after a walk; null for one that was not selected or lacks a node.
    const Rain::CRecordList* FindSectionDataList(const CSectionPtr& section) const;

    /// What a search knows of a section; null for one that does not take part.
    const CVariationData* FindVariationData(const CSectionPtr& section) const;

    const Rain::CVariationSearch* GetSearch() const;

    /// After a walk: stores on the sections the first record of each (write), and appends to IDFOut.txt (report);
    /// iteration 1 begins that file anew.
    void WriteResults(int write, int report, int iteration);

    std::vector<std::string> GetReadKeys() const override;
    std::vector<std::string> GetWrittenKeys(bool inAnyEdition) const override;
    std::vector<OLMGis::Sewage::CLack> FindLacks(const OLMGis::Sewage::CSectionList& sections,
                                                 OLMGis::Sewage::CFlowCalculatorParameters& params) const override;

private:
    struct CRun;

    int Run();
    Rain::CRunStop Walk();
    Rain::CRunStop Search();
    void WriteBestResults();
    void WriteVariationsFile();
    void LogProblems(const CRainITPParameters& params);

    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> m_parameters;
    CRainITPParameters m_params;
    std::unique_ptr<CRun> m_run;                    ///< the last one; null before the first
    std::vector<OLMGis::Sewage::CLack> m_stopLacks; ///< what stopped the last run, until the next form
    std::string m_logged;                           ///< problems of the input that the log has already
};
