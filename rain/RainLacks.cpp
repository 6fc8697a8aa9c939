// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/RainLacks.h"

#include "flow/FlowKeys.h"
#include "flow/InputLacks.h"
#include "host/formulas/Units.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "rain/RainITPParameters.h"
#include "rain/curves/IDFCurves.h"
#include "rain/run/RunInput.h"

#include <algorithm>

using OLMGis::Data::CDataBox;
using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Sewage::CLack;
using OLMGis::Sewage::CSectionList;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Msg;

namespace Rain {

namespace {

// Messages: what was expected.
constexpr int ExpectedSlope = 70370;
constexpr int ExpectedInletTime = 70371;
constexpr int ExpectedRetention = 70372;
constexpr int ExpectedCurveFile = 70373;
constexpr int ExpectedCurve = 70374;
constexpr int ExpectedPipeGroup = 70375;
constexpr int ExpectedFilling = 70376;
constexpr int ExpectedDiameter = 70377;
constexpr int ExpectedAnyCurve = 70571;
constexpr int ExpectedLargerGroup = 70572;
constexpr int ExpectedLargerPipe = 70573;

/// The frequencies of a curve file, the first of them where they are many.
std::string ListCurves(const CIDFCurves& curves) {
    constexpr std::size_t Most = 20;
    std::string text;
    std::size_t count = 0;
    for (const auto& [frequency, curve] : curves.GetCurves())
        if (++count <= Most)
            text += (count > 1 ? ", " : "") + CUtility::ToText(frequency);
    return count > Most ? text + ", ..." : text;
}

std::string ExpectedOf(const std::string& tag, const CIDFCurves* curves) {
    if (tag == "FILE_PATH")
        return Msg(ExpectedCurveFile);
    if (tag == "FREQUENCY")
        return curves != nullptr && curves->IsValid() ? CUtility::Format(Msg(ExpectedCurve), ListCurves(*curves))
                                                      : Msg(ExpectedAnyCurve);
    if (tag == "PIPE_GROUP")
        return Msg(ExpectedPipeGroup);
    return Msg(tag == "PIPE_FILL" ? ExpectedFilling : ExpectedDiameter);
}

void AddFormLacks(const CPropertiesEx& form, const CRainITPParameters& settings, std::vector<CLack>& lacks) {
    const CIDFCurves* const curves = settings.FindCurves();
    std::vector<std::string> tags;
    for (const std::string& tag : settings.m_wrongTags)
        if (std::find(tags.begin(), tags.end(), tag) == tags.end())
            tags.push_back(tag);
    // The run has no words for a curve that the file lacks: no section converges.
    const double frequency = form.GetDblProperty("FREQUENCY", 0.0, 1);
    if (frequency != 0.0 && curves != nullptr && curves->IsValid() && curves->GetCurves().count(frequency) == 0)
        tags.emplace_back("FREQUENCY");
    for (const std::string& tag : tags) {
        const auto property = form.GetPropertyExByTag(tag);
        const CDataBox& value = property->GetEffectiveValue();
        const bool isNothing = value.AsText().empty() || (tag == "FREQUENCY" && value.AsDouble() == 0.0);
        CLack lack{tag};
        if (!isNothing)
            lack.m_found = value;
        lack.m_expected = ExpectedOf(tag, curves);
        lack.m_isOfForm = true;
        lacks.push_back(std::move(lack));
    }
}

CLack MakeLack(enmInputProblem problem, const CSectionInput& input, const CRunSettings& settings) {
    switch (problem) {
    case enmInputProblem::SlopeNotAboveZero:
        return {Flow::Keys::Slope, nullptr, CDataBox(*input.m_slope), Msg(ExpectedSlope)};
    case enmInputProblem::NoInletTime:
        return {Flow::Keys::InletTime, nullptr, {}, Msg(ExpectedInletTime), "5"};
    case enmInputProblem::NoTimeFactor:
        return {settings.FindTimeFactor()->m_key, nullptr, {}, Msg(ExpectedRetention), "1"};
    case enmInputProblem::NoSlope:
    case enmInputProblem::None:
        break;
    }
    return {Flow::Keys::Slope, nullptr, {}, Msg(ExpectedSlope)};
}

} // namespace

std::vector<std::string> GetReadKeys() {
    using namespace Flow::Keys;
    return {Slope,  InletTime,  RetentionBulgarian, PipeRoughness, PipeReference,
            Length, MainOutlet, CatchmentKinds,     CatchmentArea, CatchmentCoefficient};
}

std::vector<CLack> FindLacks(const CSectionList& sections, CFlowCalculatorParameters& params) {
    std::vector<CLack> lacks;
    CRainITPParameters settings;
    settings.ReadParameters(&params, 0);
    AddFormLacks(*params.m_properties, settings, lacks);
    const CRunInput input(CRunNetwork(sections), settings);
    for (const std::uint32_t row : input.GetRows())
        if (input.HasNodes(row))
            ForEachProblem(input.Of(row), settings, [&](enmInputProblem problem) {
                lacks.push_back(MakeLack(problem, input.Of(row), settings));
                lacks.back().m_entity = input.GetSection(row).get();
            });
    Flow::InputLacks::AddMainOutlets(sections, lacks);
    return lacks;
}

std::vector<CLack> FindStopLacks(const CRunStop& stop, const CRunInput& input) {
    CLack lack;
    if (stop.m_reason == CRunStop::enmReason::NoPipe) {
        lack.m_key = "PIPE_GROUP";
        lack.m_found = CDataBox(stop.m_pipeGroup);
        lack.m_expected =
            CUtility::Format(Msg(ExpectedLargerGroup), stop.m_diameter / OLMGis::Formulas::MillimetresPerMetre);
        lack.m_isOfForm = true;
    } else if (stop.m_reason == CRunStop::enmReason::ExistingPipeTooFull) {
        lack.m_key = Flow::Keys::PipeReference;
        lack.m_expected = Msg(ExpectedLargerPipe);
    } else {
        return {};
    }
    const auto& section = input.GetSection(stop.m_section);
    lack.m_entity = section.get();
    if (!lack.m_isOfForm)
        OLMGis::Data::CDataRW::Read(Flow::Keys::PipeReference, section, lack.m_found, 0, nullptr);
    return {lack};
}

} // namespace Rain
