// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// Rain: the first byte chooses the kind, the rest is the text: a curve file, rows of Turkish parameters, Romanian
// coefficients. Curves stay between their own points, and texts that parse come back the same.
#include "host/sewage_core/IDPTurkParams.h"
#include "rain/curves/IDFCurves.h"
#include "rain/editions/RORainCoefficients.h"
#include "tests/fuzz/FuzzSupport.h"
#include "tests/support/TestProject.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace {

void TestCurves(const std::string& text) {
    std::istringstream stream(text);
    CIDFCurves curves;
    const int isValid = curves.Load(stream, "fuzz.txt");
    Require((isValid != 0) == curves.IsValid() && curves.IsValid() != curves.GetCurves().empty(),
            "valid without curve");
    Require(curves.GetProblems().size() <= CIDFCurves::MostProblems, "a flood of problems");
    for (const auto& problem : curves.GetProblems())
        Require(OLMGis::Utility::CUtility::IsUtf8(problem.m_text), "a problem is not UTF-8");
    for (const auto& [frequency, curve] : curves.GetCurves()) {
        Require(frequency != 0.0 && !curve.empty(), "a curve that cannot be chosen");
        Require(curves.GetCurveIntensity(frequency, curve.front().first - 1.0) == curve.front().second, "below");
        for (std::size_t i = 1; i < curve.size(); ++i) {
            const auto [t0, i0] = curve[i - 1];
            const auto [t1, i1] = curve[i];
            Require(t0 < t1 && curves.GetCurveIntensity(frequency, t1) == i1, "a point is not met");
            if (!(std::abs(t0) < 1e100 && std::abs(t1) < 1e100 && std::abs(i0) < 1e100 && std::abs(i1) < 1e100))
                continue; // sums of these may leave the range of a double
            const double between = curves.GetCurveIntensity(frequency, t0 + (t1 - t0) / 2.0);
            const double slack = 1e-9 * std::max(std::abs(i0), std::abs(i1));
            Require(between >= std::min(i0, i1) - slack && between <= std::max(i0, i1) + slack, "leaves its points");
        }
    }
}

void TestTurkish(const std::string& text) {
    OLMGis::Sewage::CIDPTurkParams params;
    const auto defaults = params.Load() != 0 ? params.GetRows().size() : 0;
    Require(params.setValue(text) != 0 ? !params.GetRows().empty() : params.GetRows().size() == defaults, "lost rows");
    for (const double area : {0.0, 1.0, 1e6})
        static_cast<void>(params.getIntesity(area, 15.0));
}

void TestRomanian(const std::string& text) {
    CRORainCoefficients coefficients;
    if (coefficients.ParseValue(text) == 0) {
        Require(coefficients.FormatValue() == CRORainCoefficients().FormatValue(), "a refused text changed something");
        return;
    }
    for (const double value : {coefficients.m_sensitive, coefficients.m_shortDuration, coefficients.m_longDuration})
        if (!(std::abs(value) < 1e9))
            return; // such a number has no six exact decimals
    CRORainCoefficients again;
    Require(again.ParseValue(coefficients.FormatValue()) != 0, "the own text is refused");
    Require(again.FormatValue() == coefficients.FormatValue(), "the text changed on its way");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    static const CTestProject project;
    const std::string text(AsText(data + 1, size - 1));
    switch (data[0] % 3) {
    case 0:
        TestCurves(text);
        break;
    case 1:
        TestTurkish(text);
        break;
    default:
        TestRomanian(text);
    }
    return 0;
}
