// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "waste/FlowCalculator_WasteAreas.h"

#include "flow/Edition.h"
#include "flow/FlowKeys.h"
#include "flow/FlowOutputs.h"
#include "flow/FlowValue.h"
#include "flow/FormFields.h"
#include "flow/InputLacks.h"
#include "host/formulas/Units.h"
#include "host/gis_core/CoreProgressBar.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/network_core/Catchment.h"
#include "host/sewage_core/CatchmentAreaManager.h"
#include "host/workspace_core/WsManager.h"
#include "waste/UpstreamSums.h"

#include <cmath>

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Data::FindDefinition;
using OLMGis::Formulas::LitresPerCubicMetre;
using OLMGis::Sewage::CCatchmentAreaManager;
using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Sewage::CReport;
using OLMGis::Sewage::CSectionList;
using OLMGis::Sewage::IUserInteraction;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CSection;
using OLMGis::Utility::CProgress;
using OLMGis::Utility::Msg;
using OLMGis::Workspace::CWsManager;
using Waste::CHouseholdSum;

namespace {

namespace Messages {

constexpr int Name = 11165;
constexpr int GroupName = 2313;
constexpr int Category = 464;
constexpr int HasHome = 2092;
constexpr int HasIndustry = 2093;
constexpr int IndustryK = 6127;
constexpr int FlowsStored = 2050;
constexpr int NothingStored = 61031;

// Fixed: others rely on these numbers, whose texts name inputs of the calculation by population. The labels are shown.
constexpr int HomeCoefficient = 2067;
constexpr int HomeCoefficientLabel = 70182;
constexpr int IndustryCoefficient = 2065;
constexpr int IndustryCoefficientLabel = 70183;

} // namespace Messages

constexpr double InhabitantsOfCoefficient = 1000.0; ///< to which the household coefficient refers

/// What was typed. Coefficients fall back to 0.0, whatever their fields start with: without its field a flow is none.
struct Input {
    Input(const CPropertiesEx& form, bool isBulgarianEdition)
        : hasHome(form.GetIntProperty("HOME_CHECK", 0, 1) != 0),
          hasIndustry(form.GetIntProperty("IND_CHECK", 0, 1) != 0), isBulgarian(isBulgarianEdition),
          home(form.GetDblProperty("HOME_COEFF", 0.0, 1)), industry(form.GetDblProperty("IND_COEFF", 0.0, 1)),
          industryK(form.GetDblProperty("BLG_COEFF_K", 0.0, 1)) {}

    bool hasHome;
    bool hasIndustry;
    bool isBulgarian;
    double home;      ///< l/s per 1000 inhabitants
    double industry;  ///< l/s per ha
    double industryK; ///< -, Bulgarian edition only
};

/// Ratio (-) of the greatest to the mean flow q. Falls towards 1 as the flow grows, is infinite for 0 and not-a-number
/// below.
double PeakFactor(double q) {
    return 1.0 + 2.5 / std::pow(q, 0.22);
}

/// Peak factor and peak flow (m³/s) of the household water of everything upstream.
struct BulgarianHome {
    BulgarianHome(const CHouseholdSum& upstream, double coefficient) {
        const double meanDensity = upstream.m_area == 0.0 ? 1.0 : upstream.m_people / upstream.m_area;
        const double q = meanDensity * upstream.m_area * coefficient / InhabitantsOfCoefficient;
        peakFactor = PeakFactor(q);
        if (peakFactor > GreatestPeakFactor)
            peakFactor = GreatestPeakFactor;
        flow = peakFactor * q / LitresPerCubicMetre;
    }

    static constexpr double GreatestPeakFactor = 3.5; ///< that of 1 l/s; also limits the infinite one of no flow
    double peakFactor;
    double flow;
};

/// One run: what was typed, the definitions of the keys, and the outcome so far.
class CRun {
public:
    CRun(const CFlowCalculatorParameters& parameters, bool isBulgarian)
        : m_in(*parameters.m_properties, isBulgarian), m_serialized(parameters.Serialize()) {}

    const Input& In() const { return m_in; }

    /// upstream: the household catchments of the section and everything upstream, null outside the Bulgarian edition.
    void Store(const boost::shared_ptr<CSection>& section, const CHouseholdSum* upstream) {
        StoreParameters(section);
        if (m_in.hasHome && upstream != nullptr)
            StoreBulgarianHome(section, *upstream);
        else if (m_in.hasHome)
            StoreHome(section);
        if (m_in.hasIndustry)
            StoreIndustry(section);
    }

    int GetResult() const { return m_result; }

private:
    void StoreHome(const boost::shared_ptr<CSection>& section) {
        double area = 0.0;
        double density = 0.0;
        const auto* const catchments = CCatchmentAreaManager::Instance();
        catchments->GetCATotalArea(section, area, OLMGis::Topology::CatchmentHousehold);
        catchments->GetCAAverageDensityInhab(section, density);
        if (!(area > 0.0) || density == CCatchmentAreaManager::NoDensity)
            return;
        StoreFlow(m_homeKey, section, density * area * m_in.home / InhabitantsOfCoefficient / LitresPerCubicMetre);
        StoreParameters(section); // fixed: beside the flow once more
    }

    /// Stores in any case: a section without catchments, too, gets the peak factor and a flow.
    void StoreBulgarianHome(const boost::shared_ptr<CSection>& section, const CHouseholdSum& upstream) {
        const BulgarianHome home(upstream, m_in.home);
        StoreFlow(m_peakFactorKey, section, home.peakFactor);
        StoreFlow(m_bulgarianHomeKey, section, home.flow);
    }

    void StoreIndustry(const boost::shared_ptr<CSection>& section) {
        double area = 0.0;
        CCatchmentAreaManager::Instance()->GetCATotalArea(section, area, OLMGis::Topology::CatchmentIndustrial);
        if (!(area > 0.0))
            return;
        double q = area * m_in.industry / LitresPerCubicMetre;
        // Fixed: unlike the household peak factor this one has no upper limit and takes the flow in m³/s.
        if (m_in.isBulgarian)
            q = PeakFactor(q) * q * m_in.industryK;
        StoreFlow(m_industryKey, section, q);
    }

    void StoreFlow(const CDataDefinition* key, const boost::shared_ptr<CSection>& section, double value) {
        m_result = CDataRW::Write(key, section, CDataBox(value), nullptr) != 0 ? 1 : 0;
    }

    void StoreParameters(const boost::shared_ptr<CSection>& section) {
        CDataRW::Write(m_parametersKey, section, m_serialized, nullptr);
    }

    const Input m_in;
    const CDataBox m_serialized;
    const CDataDefinition* const m_homeKey = FindDefinition(Flow::Keys::WasteHome);
    const CDataDefinition* const m_bulgarianHomeKey = FindDefinition(Flow::Keys::WasteHomeBulgarian);
    const CDataDefinition* const m_peakFactorKey = FindDefinition(Flow::Keys::PeakFactorBulgarian);
    const CDataDefinition* const m_industryKey = FindDefinition(Flow::Keys::WasteIndustry);
    const CDataDefinition* const m_parametersKey = FindDefinition(Flow::Keys::WasteAreasParameters);
    int m_result = 0;
};

/// The household catchments of each section and everything upstream of it; false when the user stopped it.
bool SumUpstreamWithProgress(const CSectionList& sections, std::vector<CHouseholdSum>& sums) {
    constexpr std::size_t Range = 1000;
    CProgress progress(Msg(Messages::Name), Range);
    return Waste::SumUpstream(sections, sums, [&progress](std::size_t done, std::size_t count) {
        return progress.GoOn(count == 0 ? Range : Range * done / count);
    });
}

int RunOver(const CSectionList& sections, CRun& run) {
    std::vector<CHouseholdSum> sums;
    const bool isUpstreamNeeded = run.In().isBulgarian && run.In().hasHome;
    if (isUpstreamNeeded && !SumUpstreamWithProgress(sections, sums))
        return 0;
    for (std::size_t i = 0; i < sections.size(); ++i)
        run.Store(sections[i], isUpstreamNeeded ? &sums[i] : nullptr);
    return run.GetResult();
}

} // namespace

CFlowCalculator_WasteAreas::CFlowCalculator_WasteAreas() {
    m_key = "01_WASTE_AREAS";
    if (Flow::Edition::Is(Flow::Edition::Bulgarian)) {
        const auto keys = {Flow::Keys::PeakFactorBulgarian, Flow::Keys::WasteHomeBulgarian, Flow::Keys::WasteIndustry};
        m_outputDefinitions = Flow::Outputs::Definitions(keys);
        m_outputDefinitionsWithKind = Flow::Outputs::DefinitionsWithKind(keys);
    } else {
        const auto keys = {Flow::Keys::WasteHome, Flow::Keys::WasteIndustry};
        m_outputDefinitions = Flow::Outputs::Definitions(keys);
        m_outputDefinitionsWithKind = Flow::Outputs::DefinitionsWithKind(keys);
    }
}

boost::shared_ptr<CFlowCalculatorParameters> CFlowCalculator_WasteAreas::CreateParameters() {
    using namespace Flow;
    m_parameters = MakeParameters();
    const auto category = AddCategory(*m_parameters->m_properties, 0, Messages::Category);
    category->SetMsgDescription(Messages::Category);
    AddCheckBox(category, "HOME_CHECK", Messages::HasHome);
    AddNumber(category, "HOME_COEFF", Messages::HomeCoefficient, 4.0)->SetMsgLabel(Messages::HomeCoefficientLabel);
    AddCheckBox(category, "IND_CHECK", Messages::HasIndustry);
    AddNumber(category, "IND_COEFF", Messages::IndustryCoefficient, 1.0)
        ->SetMsgLabel(Messages::IndustryCoefficientLabel);
    if (Flow::Edition::Is(Flow::Edition::Bulgarian))
        AddNumber(category, "BLG_COEFF_K", Messages::IndustryK, 1.0);
    return m_parameters;
}

int CFlowCalculator_WasteAreas::Calculate(const CSectionList& sections, CFlowCalculatorParameters* params,
                                          int /*write*/, CReport* /*report*/, IUserInteraction* /*interaction*/) {
    if (params == nullptr || !params->m_properties)
        return 0;
    CRun run(*params, Flow::Edition::Is(Flow::Edition::Bulgarian));
    const int result = RunOver(sections, run);
    const auto log = [](int type, int message) { CWsManager::Instance()->LogMessage(type, Msg(message), 0); };
    if (result != 0)
        log(1, Messages::FlowsStored);
    else
        log(4, Messages::NothingStored);
    return result;
}

std::string CFlowCalculator_WasteAreas::GetCalculatorName() {
    return Msg(Messages::Name);
}

std::string CFlowCalculator_WasteAreas::GetCalculatorGroupName() {
    return Msg(Messages::GroupName);
}

std::string CFlowCalculator_WasteAreas::GetParametersDataId() {
    return Flow::Keys::WasteAreasParameters;
}

std::vector<std::string> CFlowCalculator_WasteAreas::GetReadKeys() const {
    return {Flow::Keys::CatchmentKinds, Flow::Keys::CatchmentArea, Flow::Keys::CatchmentDensity};
}

std::vector<std::string> CFlowCalculator_WasteAreas::GetWrittenKeys(bool inAnyEdition) const {
    const bool isBulgarian = Flow::Edition::Is(Flow::Edition::Bulgarian);
    std::vector<std::string> keys{Flow::Keys::WasteIndustry, Flow::Keys::WasteAreasParameters};
    if (inAnyEdition || !isBulgarian)
        keys.emplace_back(Flow::Keys::WasteHome);
    if (inAnyEdition || isBulgarian)
        keys.insert(keys.end(), {Flow::Keys::PeakFactorBulgarian, Flow::Keys::WasteHomeBulgarian});
    return keys;
}

std::vector<OLMGis::Sewage::CLack> CFlowCalculator_WasteAreas::FindLacks(const CSectionList& sections,
                                                                         CFlowCalculatorParameters& params) const {
    std::vector<OLMGis::Sewage::CLack> lacks;
    Flow::InputLacks::AddNothingSwitchedOn(*params.m_properties, {"HOME_CHECK", "IND_CHECK"}, lacks);
    if (Input(*params.m_properties, Flow::Edition::Is(Flow::Edition::Bulgarian)).hasHome)
        Flow::InputLacks::AddDensities(sections, lacks);
    return lacks;
}
