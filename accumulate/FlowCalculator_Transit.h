// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "accumulate/TransitFlows.h"
#include "accumulate/TransitWalk.h"
#include "host/sewage_core/ICalculatorInputs.h"
#include "host/sewage_core/IFlowCalculator.h"

#include <boost/shared_ptr.hpp>

#include <functional>
#include <map>
#include <string>
#include <vector>

/// Accumulates flows down the network. Each section gets the sum of its own flows, as far as they are switched on
/// (FLOW_SECT_TOTAL, m³/s), and what arrives at its start from above (FLOW_TRANSIT, m³/s). Flow never splits: where
/// several sections leave a node, all goes through the main outlet. See Accumulate::CTransitWalk for what is not
/// reached.
///
/// Of all calculators only this one and the rain calculator keep figures of a run: those of the last finished one.
class CFlowCalculator_Transit : public OLMGis::Sewage::IFlowCalculator, public OLMGis::Sewage::ICalculatorInputs {
public:
    using CSection = OLMGis::Topology::CSection;
    using CEntity = OLMGis::Topology::CEntity;
    using CFlowCalculatorParameters = OLMGis::Sewage::CFlowCalculatorParameters;

    CFlowCalculator_Transit();

    boost::shared_ptr<CFlowCalculatorParameters> CreateParameters() override;

    /// The whole network is expected; nulls and sections without a node are passed over and keep their values. 1 after
    /// a finished run, also of no section at all; 0 when main outlets are missing and the direction editor, which
    /// interaction frames, was left: then an alert is shown and nothing has changed. Write and report have no effect.
    int Calculate(const OLMGis::Sewage::CSectionList& sections, CFlowCalculatorParameters* params, int write,
                  OLMGis::Sewage::CReport* report, OLMGis::Sewage::IUserInteraction* interaction) override;

    int IsWholeNetworkCalculator() override { return 1; }
    std::string GetCalculatorName() override;
    std::string GetCalculatorGroupName() override;
    std::string GetCalculatorIconOverride() override { return {}; }
    std::string GetCalculatorIcon() override { return "IDI_CALC_SUM"; }
    std::string GetCalculatorGroupIcon() override { return "IDI_CALC_SUM"; }
    std::string GetParametersDataId() override;

    /// The run itself, as Calculate.
    virtual int CalculateTransit(const OLMGis::Sewage::CSectionList& sections, CFlowCalculatorParameters* params,
                                 int write, OLMGis::Sewage::CReport* report,
                                 OLMGis::Sewage::IUserInteraction* interaction);

    /// Figures of the last finished run under the GUIDs of sections and nodes, in ascending order of the text as given.
    /// To be asked while that network is open. Cost at the first time after a run: n log n.
    const std::map<std::string, TransitSectionFlow>& GetSectionFlows() const;
    const std::map<std::string, TransitNodeFlow>& GetNodeFlows() const;

    /// The section that an entity names as its main outlet, whether or not it still leaves it; null without one.
    static boost::shared_ptr<CSection> GetMainOutletOf(const boost::shared_ptr<CEntity>& entity);

    /// Stores a section as main outlet of an entity; the outcome of the write, 0 for a null.
    static int SetMainOutletOf(const boost::shared_ptr<CEntity>& entity, const boost::shared_ptr<CSection>& section);

    /// Remembers the main outlets of the active system; a later save adds to what is remembered and renews it.
    void SaveMainOutlets();

    /// Stores what was remembered. Where no outlet was chosen at the time of saving, the present one stays.
    void RestoreMainOutlets();

    /// FLOW_TRANSIT of a section (m³/s), Flow::AbsentValue without one.
    static double ReadTransit(const boost::shared_ptr<CSection>& section);

    /// Stores FLOW_SECT_TOTAL (m³/s); the outcome of the write.
    static int WriteSectionTotal(const boost::shared_ptr<CSection>& section, double value);

    /// The sum (m³/s) of the flows that the parameters switch on; 0 for a null.
    static double GetOwnFlow(const boost::shared_ptr<CSection>& section, const CFlowCalculatorParameters* params);

    std::vector<std::string> GetReadKeys() const override;
    std::vector<std::string> GetWrittenKeys(bool inAnyEdition) const override;
    std::vector<std::string> GetNeededResults(const OLMGis::Topology::CPropertiesEx& form) const override;
    std::vector<OLMGis::Sewage::CLack> FindLacks(const OLMGis::Sewage::CSectionList& sections,
                                                 OLMGis::Sewage::CFlowCalculatorParameters& params) const override;

private:
    static TransitSectionFlow BuildSectionFlow(const boost::shared_ptr<CSection>& section,
                                               const TransitSwitches& switches);
    void WriteResults(const OLMGis::Sewage::CSectionList& sections, const std::string& serialized);

    boost::shared_ptr<CFlowCalculatorParameters> m_parameters;
    /// Entities are made side by side and share their count of holders, by which pointers would compare.
    struct CByAddress {
        bool operator()(const boost::shared_ptr<CEntity>& a, const boost::shared_ptr<CEntity>& b) const {
            return std::less<>()(a.get(), b.get());
        }
    };
    std::map<boost::shared_ptr<CEntity>, boost::shared_ptr<CSection>, CByAddress> m_savedMainOutlets;
    Accumulate::CTransitWalk m_walk; ///< figures of the last run by row, from which the maps are made when asked for
    mutable std::map<std::string, TransitSectionFlow> m_sectionFlows;
    mutable std::map<std::string, TransitNodeFlow> m_nodeFlows;
};
