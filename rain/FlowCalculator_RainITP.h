// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/IFlowCalculator.h"
#include "host/sewage_core/SewageHydraulics.h"
#include "rain/AreaSums.h"
#include "rain/GuidMap.h"
#include "rain/NodeDataIDF.h"
#include "rain/RainITPParameters.h"
#include "rain/SectionDataIDF.h"
#include "rain/SectionInputs.h"
#include "rain/VariationData.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

class CRainPassTrace;

/// Dimensions a whole storm-water network from rain intensities. From the heads down, each section gets a consistent
/// set of concentration time (min), intensity (l/(s·ha)), design flow (m³/s), pipe and velocity (m/s): the intensity
/// depends on the time, the time on the velocity, the velocity on the pipe, the pipe on the flow, the flow on the
/// intensity. Results reach the sections only after the whole network has been computed.
class CFlowCalculator_RainITP final : public OLMGis::Sewage::IFlowCalculator {
public:
    using CSectionList = OLMGis::Sewage::CSectionList;
    using CSectionPtr = boost::shared_ptr<OLMGis::Topology::CSection>;
    using CBareList = std::vector<const OLMGis::Topology::CSection*>; ///< no nulls
    using CRecordPtr = boost::shared_ptr<CSectionDataIDF>;

    CFlowCalculator_RainITP();
    ~CFlowCalculator_RainITP() override;

    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> CreateParameters() override;

    /// A new curve file brings a new choice of frequencies.
    void OnPropertiesUpdated(OLMGis::Topology::CPropertyEx* property,
                             OLMGis::Sewage::CFlowCalculatorParameters* parameters) override;

    /// 1 after a finished run, else 0 with nothing stored. sections must hold the whole network upstream of each of
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

    // The steps of a run. They work on the parameters of the last reading.

    /// Forgets what was read of the sections: attributes and the network may have changed.
    void BeginRun();

    /// Walks the sections from the heads down. 1 when the walk came to its end, 0 at the first section that fails or
    /// when the user cancelled. Sections below rings, side outlets and sections that are not in the list are not
    /// reached, without being a failure.
    int CalculateNetwork(const CSectionList& sections);

    /// Tries every combination of what lies upstream of each section and keeps the one with the greatest flow. 1, or 0
    /// with an alert when a combination fails.
    int SearchVariations(const CSectionList& sections);

    /// Computes a section on an upstream record (may be null) and keeps the new record. Null when the section can't be
    /// computed or its iteration doesn't converge.
    CRecordPtr ComputeSection(const CSectionPtr& section, const CRecordPtr& previous, double tolerance, int maxPasses);

    /// A record of a section as it stands before its iteration.
    CRecordPtr MakeRecord(const CSectionPtr& section);

    /// Repeats passes until the intensity of a pass is within tolerance (%) of the one for the times that the pass
    /// found. 1, or 0 when a pass fails or maxPasses don't suffice.
    int IterateSection(CSectionDataIDF& record, const CRecordPtr& previous, double tolerance, int maxPasses);
    int CalculatePass(CSectionDataIDF& record, const CRecordPtr& previous);

    /// Diameter, pipe, velocity and flow time for the record's flow (not 0). 0 with an alert when no pipe fits.
    int SizeSection(CSectionDataIDF& record);

    /// Intensity (l/(s·ha)) for the record's present times; 0.0 for null, -1.0 without a curve.
    double GetIntensity(const CSectionDataIDF* record) const;

    /// Corrected area (ha) of a section, as the run read it.
    double GetOwnArea(const CSectionPtr& section) { return m_inputs.Of(section).m_ownArea; }

    bool IsSelected(const CSectionPtr& section) const;

    /// Removes what isn't selected, keeps the order, returns the count left.
    int FilterToSelected(CBareList& list) const;

    /// Null when there is none, also for a null node or section.
    boost::shared_ptr<CNodeDataIDF> FindNodeData(const boost::shared_ptr<OLMGis::Topology::CNode>& node) const;
    const CRecordList* FindSectionDataList(const CSectionPtr& section) const;
    CVariationData* FindVariationData(const CSectionPtr& section);

    /// Has each pass noted while trace isn't null; not owned.
    void SetPassTrace(CRainPassTrace* trace) { m_passTrace = trace; }

    // Results of the last run.
    const CRainITPParameters& GetParams() const { return m_params; }
    CRainITPParameters& GetParams() { return m_params; }
    const CGuidMap<CRecordList>& GetSectionData() const { return m_sectionData; }
    const CGuidMap<CVariationData>& GetVariations() const { return m_variations; }

    /// Writes to the sections the first record of each (write), and the table of IDFOut.txt (report); iteration 1
    /// begins that file anew.
    void WriteResults(int write, int report, int iteration);
    void WriteSectionResults(const CSectionDataIDF& record, int savePipe);
    void WriteBestResults();
    void WriteVariationsFile();

    static constexpr int MostPasses = 20;

private:
    class CResultWriter;

    int Run(const CSectionList& sections);
    int WalkWithProgress(const CSectionList& sections);
    void PrepareWalk(const CSectionList& sections);
    void FetchLaterSections(std::size_t front);
    void FetchSection(const OLMGis::Topology::CSection& section, int step);
    const CNodeDataIDF::CBranches* FindBranches(std::uint32_t nodeRow) const;
    int WalkSection(const CSectionPtr& section);
    bool FitPipe(CSectionDataIDF& record, double diameter);
    void ExplainInput(const CRainITPParameters& params);
    bool GoOn();

    boost::shared_ptr<OLMGis::Sewage::CFlowCalculatorParameters> m_parameters;

    boost::shared_ptr<OLMGis::Sewage::CSewageHydraulics> m_hydraulics;
    CGuidMap<CRecordList> m_sectionData;
    CGuidMap<CVariationData> m_variations;
    CGuidMap<boost::shared_ptr<CNodeDataIDF>> m_nodeData; ///< by starting node
    CRainITPParameters m_params;

    CSectionInputs m_inputs;
    CAreaSums m_areaSums;
    CBareList m_queue;                     ///< of the walk at hand
    CBareList m_buffer;                    ///< for questions to the network
    CRainPassTrace* m_passTrace = nullptr; ///< notes each pass while it is set

    std::string m_explained; ///< what the log was last told about the curve file and texts
    int m_done = 0;          ///< sections of the walk at hand
    bool m_showsProgress = false;
};
