// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/rain/RainRun.h"

TEST(RomanianCoefficient, IsChosenByTheInletTimeNotTheTimeOfConcentration) {
    // Coefficients of other areas: 0.5 for times up to 40 min, 0.25 for longer ones. Storm CAD 11090: the time of
    // concentration includes the flow time of the section.
    const struct {
        const char* name;
        double inletTime; ///< min
        double length;    ///< m
        double coefficient;
    } rows[] = {
        {"both times short", 5.0, 30.0, 0.5},
        {"inlet time short, time of concentration long", 30.0, 3000.0, 0.5},
        {"inlet time at the limit", 40.0, 3000.0, 0.5},
        {"both times long", 40.5, 30.0, 0.25},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CRainRun run("A---B");
        run.net.Set("AB", "FLOW_INTIME", row.inletTime);
        run.net.Set("AB", "length", row.length);
        run.Rain("AB", 0.5).Type("CALC_STANDARD", "2").Type("RO", "1;1;0.5;0.25").Type("STORM_CAD", "11090");
        ASSERT_EQ(run.Calculate(), 1);
        EXPECT_EQ(run.Value("AB", "FLOW_IDF_CONC_TIME") > 40.0, row.length > 1000.0 || row.inletTime > 40.0);
        const double flowWithoutCoefficient =
            run.Value("AB", "FLOW_IDF_AREA_CORRECTED_TOTAL") * run.Value("AB", "FLOW_IDF_INTENSITY") / 1000.0;
        EXPECT_NEAR(run.Value("AB", "FLOW_RAIN_IDF"), row.coefficient * flowWithoutCoefficient, 1e-15);
    }
}
