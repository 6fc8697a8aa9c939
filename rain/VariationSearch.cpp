// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/VariationSearch.h"

#include "host/gis_core/CoreProgressBar.h"
#include "host/gis_core/HostServices.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/PerformanceTimer.h"
#include "host/gis_core/Utility.h"
#include "rain/RunForecast.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <numeric>

using OLMGis::Utility::CCoreProgressBar;
using OLMGis::Utility::CModuleConfiguration;
using OLMGis::Utility::CPerformanceTimer;
using OLMGis::Utility::CUtility;

namespace {

constexpr int CombinationFailed = 2297; ///< message
constexpr int SearchCaption = 70140;    ///< message

constexpr int ProgressRange = 10000;

/// Shows the progress of a search and gives the display back.
class CSearchProgress {
public:
    CSearchProgress() {
        CCoreProgressBar::Instance()->SaveState();
        CCoreProgressBar::Instance()->Show(CModuleConfiguration::Instance()->GetMsg(SearchCaption), 0, ProgressRange);
    }
    ~CSearchProgress() { CCoreProgressBar::Instance()->RestoreState(); }
    CSearchProgress(const CSearchProgress&) = delete;
    CSearchProgress& operator=(const CSearchProgress&) = delete;
};

} // namespace

int CFlowCalculator_RainITP::SearchVariations(const CSectionList& sections) {
    return CVariationSearch(*this, m_variations, m_inputs, sections).Run();
}

CVariationSearch::CVariationSearch(CFlowCalculator_RainITP& calculator, CGuidMap<CVariationData>& variations,
                                   CSectionInputs& inputs, const CFlowCalculator_RainITP::CSectionList& sections)
    : m_calculator(calculator), m_params(calculator.GetParams()), m_variations(variations), m_inputs(inputs),
      m_network(std::make_shared<const CVariationNetwork>(sections)), m_entries(*m_network), m_trees(*m_network),
      m_forecast(ForecastVariations(*m_network, m_entries, m_trees)),
      m_table(std::make_shared<CVariationTable>(m_network)), m_outcomes(m_network->GetCount()) {}

int CVariationSearch::Run() {
    m_variations.Clear();
    for (std::uint32_t place = 0; place < m_network->GetCount(); ++place) {
        CVariationData& data = m_variations.Enter(*m_network->GetSection(place));
        data.m_inputCount = static_cast<int>(m_network->GetInputCount(place));
        data.m_combinations = CVariationCombinations(m_table, place);
    }
    // Directions may have been settled since the user was asked.
    const CRunForecast told = TellForecast(*m_network, m_forecast);
    if (!told.m_refusal.empty()) {
        acedAlert(told.m_refusal);
        return 0;
    }
    auto* const timers = CPerformanceTimer::Instance();
    const int timer = timers->CreateTimer();
    timers->StartTimer(timer);
    if (!SearchAll())
        return 0;
    timers->StopTimer(timer);
    acutPrintf(CUtility::Format("\ndelta ITP_CALC_VARIATION = %s", timers->ReadTimerStr(timer, 4)));
    timers->DestroyTimer(timer);
    return 1;
}

bool CVariationSearch::SearchAll() {
    const CSearchProgress progress;
    CVariationQueue queue(*m_network);
    while (!queue.IsEmpty()) {
        const std::uint32_t place = queue.Take();
        if (!Treat(place)) {
            if (!CCoreProgressBar::Instance()->IsCancelled())
                acedAlert(CModuleConfiguration::Instance()->GetMsg(CombinationFailed));
            return false;
        }
        FinishEntry(place);
        queue.Finish(place);
    }
    for (std::uint32_t place = 0; place < m_network->GetCount(); ++place)
        m_variations.Find(m_network->GetSection(place)->GetRow())->m_visitedCount =
            static_cast<int>(queue.GetVisitedCount(place));
    return true;
}

bool CVariationSearch::Treat(std::uint32_t place) {
    const std::uint64_t count = m_table->BeginTreatment(place);
    if (IsKept(place))
        m_outcomes[place].reserve(m_outcomes[place].size() + count);
    return m_trees.IsTreeAbove(place) ? Extend(place, count) : WalkWhole(place, count);
}

/// Every choice at the entering sections, each by computing the one section.
bool CVariationSearch::Extend(std::uint32_t place, std::uint64_t count) {
    const CSectionPtr& section = m_network->GetSection(place);
    CVariationData& data = *m_variations.Find(section->GetRow());
    std::vector<CEntering> entering = GatherEntering(place);
    const CSectionDataIDF blank(section, m_params, m_inputs.Of(section), [] { return 0.0; });
    CSectionDataIDF record;
    const std::uint64_t first = m_table->GetCount(place);
    for (std::uint64_t i = 0; i < count; ++i, GoToNext(entering)) {
        m_table->Add(place);
        bool isReached = true;
        const CEntering* const upstream = ChooseUpstream(entering, isReached);
        if (isReached) {
            if (!blank.m_error.empty()) {
                acedAlert(blank.m_error);
                return false;
            }
            record = blank;
            // In the order of CAreaSums: results agree to the last bit.
            record.m_totalArea = blank.m_ownArea;
            for (const CEntering& in : entering)
                if (in.m_choice < in.m_count)
                    record.m_totalArea += in.m_outcomes[in.m_choice].m_totalArea;
            if (upstream != nullptr)
                StandIn(*upstream);
            if (m_calculator.IterateSection(record, upstream == nullptr ? nullptr : upstream->m_record,
                                            m_params.m_precision, CFlowCalculator_RainITP::MostPasses) == 0)
                return false;
            Offer(data, record, first + i);
        }
        Keep(place, isReached ? &record : nullptr);
        if (!Proceed(1.0))
            return false;
    }
    return true;
}

/// Every combination by walking it from its heads.
bool CVariationSearch::WalkWhole(std::uint32_t place, std::uint64_t count) {
    const CSectionPtr& section = m_network->GetSection(place);
    CVariationData& data = *m_variations.Find(section->GetRow());
    const std::uint64_t first = m_table->GetCount(place);
    for (std::uint64_t i = 0; i < count; ++i) {
        m_table->Add(place);
        const auto combination = data.m_combinations[first + i];
        if (m_calculator.CalculateNetwork(combination) == 0)
            return false;
        const CRecordList* const records = m_calculator.FindSectionDataList(section);
        const bool isReached = records != nullptr && !records->empty();
        if (isReached)
            Offer(data, *records->front(), first + i);
        Keep(place, isReached ? records->front().get() : nullptr);
        if (!Proceed(static_cast<double>(combination.size())))
            return false;
    }
    return true;
}

std::vector<CVariationSearch::CEntering> CVariationSearch::GatherEntering(std::uint32_t place) {
    const auto in = m_network->GetIn(place);
    std::vector<CEntering> entering(in.size());
    for (std::size_t j = 0; j < in.size(); ++j) {
        const CSectionPtr& section = m_network->GetSection(in[j]);
        entering[j].m_outcomes = m_outcomes[in[j]].data();
        entering[j].m_count = m_outcomes[in[j]].size();
        entering[j].m_record =
            boost::make_shared<CSectionDataIDF>(section, m_params, m_inputs.Of(section), [] { return 0.0; });
        entering[j].m_record->m_previous = boost::make_shared<CSectionDataIDF>();
    }
    const auto name = [&](std::size_t j) { return m_network->GetSection(in[j])->GetName(); };
    m_nameOrder.resize(in.size());
    std::iota(m_nameOrder.begin(), m_nameOrder.end(), std::size_t{0});
    std::sort(m_nameOrder.begin(), m_nameOrder.end(), [&](std::size_t a, std::size_t b) { return name(a) < name(b); });
    for (std::size_t n = 1; n < m_nameOrder.size(); ++n)
        entering[m_nameOrder[n]].m_repeatsName = name(m_nameOrder[n]) == name(m_nameOrder[n - 1]);
    return entering;
}

/// The next choice, the last place running fastest; false behind the last.
bool CVariationSearch::GoToNext(std::vector<CEntering>& entering) {
    for (auto in = entering.rbegin(); in != entering.rend(); ++in) {
        if (in->m_choice < in->m_count) {
            ++in->m_choice;
            return true;
        }
        in->m_choice = 0;
    }
    return false;
}

/// The branch that goes on, as CNodeDataIDF chooses it; null when all are left out. Not reached is the section where
/// one that enters it was not, and where two of one name enter: these count as one, so that one always seems to be
/// missing.
const CVariationSearch::CEntering* CVariationSearch::ChooseUpstream(const std::vector<CEntering>& entering,
                                                                    bool& isReached) const {
    const CEntering* best = nullptr;
    bool isNameTaken = false;
    for (const std::size_t j : m_nameOrder) {
        const CEntering& in = entering[j];
        isNameTaken = isNameTaken && in.m_repeatsName;
        if (in.m_choice >= in.m_count)
            continue;
        const CVariationOutcome& outcome = in.m_outcomes[in.m_choice];
        isReached = isReached && outcome.m_isComputed && !isNameTaken;
        isNameTaken = true;
        if (best == nullptr) {
            best = &in;
            continue;
        }
        const double time = TimeToNode(outcome);
        const double bestTime = TimeToNode(best->m_outcomes[best->m_choice]);
        if ((m_params.m_branchingFlowTime == RainChoices::LongestBranch && time > bestTime) ||
            (m_params.m_branchingFlowTime == RainChoices::ShortestBranch && time < bestTime))
            best = &in;
    }
    return best;
}

double CVariationSearch::TimeToNode(const CVariationOutcome& outcome) const {
    return m_params.m_rainfallMode == RainChoices::TurkishParameters ? outcome.m_inletTime + outcome.m_flowTime
                                                                     : outcome.m_upstreamTime;
}

/// Makes the record of an entering section say what the section below asks of it.
void CVariationSearch::StandIn(const CEntering& entering) const {
    const CVariationOutcome& outcome = entering.m_outcomes[entering.m_choice];
    CSectionDataIDF& record = *entering.m_record;
    record.m_upstreamTime = outcome.m_upstreamTime;
    record.m_flowTime = outcome.m_flowTime;
    record.m_inletTime = outcome.m_inletTime;
    record.m_carrierTime = outcome.m_carrierTime;
    record.m_previous->m_carrierTime = outcome.m_takenCarrierTime;
}

/// Takes a record as the best when it is the first or has more flow. Of what it was built on nothing is kept: each best
/// record would hold its whole upstream path.
void CVariationSearch::Offer(CVariationData& data, const CSectionDataIDF& record, std::uint64_t index) const {
    if (data.m_bestIndex != CVariationData::NoBest && !(record.m_flow > data.m_best.m_flow))
        return;
    data.m_bestIndex = static_cast<unsigned int>(index);
    data.m_best = record;
    data.m_best.m_startNode.reset();
    data.m_best.m_previous.reset();
}

/// Whether the section below takes over what comes out here.
bool CVariationSearch::IsKept(std::uint32_t place) const {
    const std::uint32_t next = m_network->GetNext(place);
    return next != CVariationNetwork::Nowhere && m_trees.IsTreeAbove(next) && m_entries.m_ofPlace[next] > 0.0;
}

void CVariationSearch::Keep(std::uint32_t place, const CSectionDataIDF* record) {
    if (!IsKept(place))
        return;
    CVariationOutcome outcome;
    if (record != nullptr)
        outcome = {record->m_upstreamTime,
                   record->m_flowTime,
                   record->m_inletTime,
                   record->m_carrierTime,
                   record->m_previous ? record->m_previous->m_carrierTime : 0.0,
                   record->m_totalArea,
                   true};
    m_outcomes[place].push_back(outcome);
}

/// Behind its last entry a section asks no more for what came out above.
void CVariationSearch::FinishEntry(std::uint32_t place) {
    if (--m_entries.m_ofPlace[place] > 0.0 || !m_trees.IsTreeAbove(place))
        return;
    for (const std::uint32_t above : m_network->GetIn(place))
        std::vector<CVariationOutcome>().swap(m_outcomes[above]);
}

/// Reports computations; false when the user cancelled.
bool CVariationSearch::Proceed(double computations) {
    m_done += computations;
    const double share = std::min(1.0, m_done / std::max(1.0, m_forecast.m_computations));
    return CCoreProgressBar::Instance()->SetPosition(static_cast<int>(share * ProgressRange)) != 0;
}
