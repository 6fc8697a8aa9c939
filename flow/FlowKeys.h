// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

/// Keys under which calculators hand values on as attributes of sections. Flows in m³/s where no other unit is named.
namespace Flow::Keys {

// Waste water.
inline constexpr const char* SpecificFlow = "SPECIFIC_FLOW"; ///< m³/s per m of weighted length
inline constexpr const char* WastePercent = "FLOW_WASTE_PER";
inline constexpr const char* WasteHome = "FLOW_WASTE_HOME"; ///< editions other than the Bulgarian one
inline constexpr const char* WasteIndustry = "FLOW_WASTE_IND";
inline constexpr const char* WasteHomeBulgarian = "FLOW_WASTE_HOME_BG";         ///< of everything upstream
inline constexpr const char* PeakFactorBulgarian = "FLOW_BLG_WASTE_HOME_KOMAX"; ///< -, of the flow before
inline constexpr const char* WasteUneven = "FLOW_WASTE_UNEVEN";
inline constexpr const char* TurkishWasteHome = "FLOW_TUR_WASTE_HOME";
inline constexpr const char* TurkishWasteIndustry = "FLOW_TUR_WASTE_IND";
inline constexpr const char* TurkishInfiltration = "FLOW_TUR_WASTE_INF";

// Rain.
inline constexpr const char* Rain = "FLOW_RAIN";
inline constexpr const char* RainCurves = "FLOW_RAIN_IDF";
inline constexpr const char* Intensity = "FLOW_IDF_INTENSITY";                     ///< l/(s·ha)
inline constexpr const char* CorrectedArea = "FLOW_IDF_AREA_CORRECTED_SECT";       ///< ha, of the section
inline constexpr const char* CorrectedAreaTotal = "FLOW_IDF_AREA_CORRECTED_TOTAL"; ///< ha, with everything upstream
inline constexpr const char* ConcentrationTime = "FLOW_IDF_CONC_TIME";             ///< min
inline constexpr const char* UpstreamFlowTime = "FLOW_IDF_MJ_TIME"; ///< min, along the path above the section
inline constexpr const char* SectionFlowTime = "FLOW_IDF_TIME";     ///< min
inline constexpr const char* PipeReference = "PIPE_REF";            ///< text, GUID of a pipe
inline constexpr const char* PipeMark = "PIPE_MARK";                ///< text

// Additional flows.
inline constexpr const char* Foreign = "FLOW_FOREIGN";
inline constexpr const char* Point = "FLOW_POINT";
inline constexpr const char* Additional = "FLOW_ADDITIONAL";
inline constexpr const char* User = "FLOW_USER";

// Sums.
inline constexpr const char* SectionTotal = "FLOW_SECT_TOTAL";
inline constexpr const char* Transit = "FLOW_TRANSIT";
inline constexpr const char* Total = "FLOW_TOTAL";

// Entered on the section, not by a calculator.
inline constexpr const char* DensityCoefficient = "FLOW_COEFDEN";     ///< -
inline constexpr const char* RainFrequency = "FLOW_ATV_N";            ///< 1/year
inline constexpr const char* RainDuration = "FLOW_ATV_T";             ///< min
inline constexpr const char* ReductionCoefficient = "FLOW_COEFRED";   ///< -
inline constexpr const char* RetardationCoefficient = "FLOW_COEFRET"; ///< -
inline constexpr const char* InletTime = "FLOW_INTIME";               ///< min
inline constexpr const char* RetentionBulgarian = "FLOW_BLG_RET";     ///< -
inline constexpr const char* Slope = "SECTION_SLOPE";                 ///< 1/1000
inline constexpr const char* PipeRoughness = "PIPE_ROUGHNESS";        ///< mm
inline constexpr const char* Length = "length";                       ///< plan length, m; else that of the geometry

// Of nodes and catchments.
inline constexpr const char* MainOutlet = "MAIN_SECT_OUT"; ///< text, GUID of a section
inline constexpr const char* CatchmentKinds = "kinds";
inline constexpr const char* CatchmentArea = "area";               ///< ha
inline constexpr const char* CatchmentCoefficient = "coefficient"; ///< runoff, -
inline constexpr const char* CatchmentDensity = "density";         ///< inhabitants/ha

// The parameters that made a section's values: the form as one text.
inline constexpr const char* RainParameters = "FLOW_RAIN_S";
inline constexpr const char* WastePercentParameters = "FLOW_WASTE_PER_S";
inline constexpr const char* WasteAreasParameters = "FLOW_WASTE_AREA_S";
inline constexpr const char* AdditionalParameters = "FLOW_ADDITIONAL_S";
inline constexpr const char* TransitParameters = "FLOW_TRANSIT_S";
inline constexpr const char* TotalParameters = "FLOW_TOTAL_S";
inline constexpr const char* RainCurvesParameters = "FLOW_ITP_S"; ///< named, but never stored

} // namespace Flow::Keys
