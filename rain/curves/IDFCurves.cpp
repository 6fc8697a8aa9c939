// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/curves/IDFCurves.h"

#include "host/gis_core/HostServices.h"
#include "host/gis_core/InputNotes.h"
#include "host/gis_core/InstallationPaths.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Result.h"
#include "host/gis_core/Utility.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <istream>
#include <sstream>

using OLMGis::Utility::CUtility;
using OLMGis::Utility::Msg;

namespace {

constexpr std::size_t MostCharacters = 50; ///< of a point line
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

// Messages of problems.
constexpr int EmptyLine = 70121;
constexpr int LongLine = 70122;
constexpr int WrongParts = 70123;
constexpr int ReadingStops = 70124;
constexpr int RepeatedFrequency = 70125;
constexpr int RepeatedDuration = 70126;
constexpr int PointsBeforeHead = 70127;
constexpr int NoFrequency = 70128;
constexpr int NoPoints = 70129;
constexpr int NotWholeNumber = 70130;
constexpr int NoCurve = 70131;

// Messages of doubts.
constexpr int FrequencyIsNoNumber = 70500;
constexpr int RisingIntensity = 70501;
constexpr int SinglePoint = 70502;
constexpr int LooksLikeMillimetres = 70503;
constexpr int ImpossibleIntensity = 70505;

/// Rain depth (mm) of an intensity (l/(s·ha)) over a duration (min): 1 l/(s·ha) is 0.006 mm/min.
double DepthOf(double duration, double intensity) {
    return 0.006 * duration * intensity;
}

/// The least depth (mm) of a design storm that is taken as plausible: 4 mm in 10 min, 8 mm in an hour. Half of what
/// yearly storms of dry regions bring, and above what intensities in mm/h pass for where they are ordinary.
double LeastPlausibleDepth(double duration) {
    return 1.6 * std::pow(duration, 0.4);
}

} // namespace

/// Reads one source into the curves, line by line.
class CIDFCurves::CReader {
public:
    explicit CReader(CIDFCurves& curves) : m_target(curves) {}

    void Read(std::istream& input) {
        for (std::string line; ReadLine(input, line);) {
            std::string_view text = line;
            if (m_isEndless) {
                ++m_line;
                NoteBadLine(CUtility::Format(Msg(LongLine), static_cast<int>(MostSkipped)));
                m_target.m_curves.clear();
                m_target.m_valid = 0;
                break;
            }
            if (m_line++ == 0 && text.starts_with(ByteOrderMark))
                text.remove_prefix(ByteOrderMark.size());
            if (text.ends_with('\r'))
                text.remove_suffix(1);
            if (text.starts_with('*'))
                continue;
            if (text.starts_with('#')) {
                OpenCurve(text);
            } else if (!ReadPoint(text)) {
                // All curves but the present one are dropped. Fixed: others rely on it.
                m_target.m_curves.clear();
                m_target.m_valid = 0;
                break;
            }
        }
        if (StoreCurve()) {
            m_target.m_valid = 1;
            acutPrintf("\nof4");
        }
        if (m_target.m_valid == 0)
            Note(0, Msg(NoCurve));
        DoubtUnit();
        for (auto* const list : {&m_target.m_problems, &m_target.m_doubts})
            std::stable_sort(list->begin(), list->end(), [](const CProblem& a, const CProblem& b) {
                return a.m_line != 0 && (b.m_line == 0 || a.m_line < b.m_line);
            });
    }

private:
    /// The next line, without its end; false after the last. Of a very long line only the beginning is kept, and an
    /// endless one ends the reading: a device may have no lines at all.
    bool ReadLine(std::istream& input, std::string& line) {
        constexpr std::size_t Most = std::size_t{1} << 20;
        std::size_t skipped = 0;
        line.clear();
        if (!input.good())
            return false;
        std::streambuf& bytes = *input.rdbuf();
        constexpr int End = std::char_traits<char>::eof();
        for (int byte = bytes.sbumpc(); byte != '\n'; byte = bytes.sbumpc()) {
            if (byte == End) {
                input.setstate(std::ios::eofbit);
                return !line.empty();
            }
            if (line.size() < Most) {
                line += static_cast<char>(byte);
            } else if (++skipped == MostSkipped) {
                m_isEndless = true;
                return true;
            }
        }
        return true;
    }

    struct CPoint {
        double m_duration;
        double m_intensity;
        std::size_t m_line;
    };

    void OpenCurve(std::string_view text) {
        if (StoreCurve())
            m_target.m_valid = 1;
        m_points.clear();
        const std::string_view head = text.substr(std::min(text.find_first_not_of('#'), text.size()));
        m_frequency = CUtility::ToDouble(head);
        m_headLine = m_line;
        // Words may follow the number.
        const std::string_view word = FirstWord(head);
        if (m_frequency != 0.0 && !CUtility::ParseDouble(word))
            Doubt(m_line, CUtility::Format(Msg(FrequencyIsNoNumber), word, CUtility::ToText(m_frequency)));
    }

    static std::string_view FirstWord(std::string_view text) {
        constexpr std::string_view Blanks = " \t";
        text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
        return text.substr(0, text.find_first_of(Blanks));
    }

    /// False for a bad line.
    bool ReadPoint(std::string_view text) {
        const std::size_t characters = CUtility::CountCharacters(text);
        if (characters > MostCharacters)
            return NoteBadLine(CUtility::Format(Msg(LongLine), static_cast<int>(characters)));
        m_text.assign(text);
        std::replace(m_text.begin(), m_text.end(), '\t', ' ');
        m_parts.clear();
        const int count = CUtility::SplitString(m_text, m_parts, ' ');
        if (count != 2)
            return NoteBadLine(count == 0 ? Msg(EmptyLine) : CUtility::Format(Msg(WrongParts), count));
        for (const std::string& part : m_parts)
            if (!CUtility::ParseDouble(part))
                Note(m_line, CUtility::Format(Msg(NotWholeNumber), part, CUtility::ToText(CUtility::ToDouble(part))));
        if (const double intensity = CUtility::ToDouble(m_parts[1]); !(intensity >= 0.0) || std::isinf(intensity))
            Doubt(m_line, CUtility::Format(Msg(ImpossibleIntensity), CUtility::ToText(intensity)));
        m_points.push_back({CUtility::ToDouble(m_parts[0]), CUtility::ToDouble(m_parts[1]), m_line});
        return true;
    }

    /// Enters the present curve; false when it is none.
    bool StoreCurve() {
        if (m_headLine == 0) {
            if (!m_points.empty())
                Note(m_points.front().m_line, Msg(PointsBeforeHead));
            return false;
        }
        if (m_frequency == 0.0 || m_points.empty()) {
            Note(m_headLine, Msg(m_frequency == 0.0 ? NoFrequency : NoPoints));
            return false;
        }
        std::stable_sort(m_points.begin(), m_points.end(),
                         [](const CPoint& a, const CPoint& b) { return a.m_duration < b.m_duration; });
        const auto [stored, isNew] = m_target.m_curves.try_emplace(m_frequency);
        if (!isNew) {
            Note(m_headLine, CUtility::Format(Msg(RepeatedFrequency), CUtility::ToText(m_frequency)));
            return true;
        }
        for (const CPoint& point : m_points) {
            if (stored->second.empty() || stored->second.back().first < point.m_duration)
                stored->second.emplace_back(point.m_duration, point.m_intensity);
            else
                Note(point.m_line, CUtility::Format(Msg(RepeatedDuration), CUtility::ToText(point.m_duration)));
        }
        DoubtCurve(stored->second);
        return true;
    }

    /// Looks at a curve that was stored. m_points: its points in ascending duration.
    void DoubtCurve(const CCurve& curve) {
        if (curve.size() == 1)
            Doubt(m_headLine, Msg(SinglePoint));
        const auto rising = std::adjacent_find(m_points.begin(), m_points.end(), [](const CPoint& a, const CPoint& b) {
            return a.m_duration < b.m_duration && a.m_intensity < b.m_intensity;
        });
        if (rising != m_points.end())
            Doubt((rising + 1)->m_line, CUtility::Format(Msg(RisingIntensity), CUtility::ToText(rising->m_intensity),
                                                         CUtility::ToText((rising + 1)->m_intensity)));
        if (m_greatestLine == 0 || m_greatest.front().second < curve.front().second) {
            m_greatest = curve;
            m_greatestLine = m_headLine;
        }
    }

    /// Of the greatest curve, because frequent storms are small. Durations at which storms are well known.
    void DoubtUnit() {
        const auto isUsual = [](const auto& point) { return point.first >= 5.0 && point.first <= 120.0; }; // min
        const auto shown = std::find_if(m_greatest.begin(), m_greatest.end(), isUsual);
        const bool isSmall = std::all_of(m_greatest.begin(), m_greatest.end(), [&](const auto& point) {
            return !isUsual(point) || DepthOf(point.first, point.second) < LeastPlausibleDepth(point.first);
        });
        if (m_greatest.size() > 1 && shown != m_greatest.end() && shown->second > 0.0 && isSmall)
            Doubt(m_greatestLine, CUtility::Format(Msg(LooksLikeMillimetres), DepthOf(shown->first, shown->second),
                                                   CUtility::ToText(shown->first)));
    }

    bool NoteBadLine(const std::string& reason) {
        Note(m_line, CUtility::Format(Msg(ReadingStops), reason));
        return false;
    }

    void Note(std::size_t line, std::string text) { Enter(m_target.m_problems, line, std::move(text)); }
    void Doubt(std::size_t line, std::string text) { Enter(m_target.m_doubts, line, std::move(text)); }

    static void Enter(std::vector<CProblem>& list, std::size_t line, std::string text) {
        if (list.size() < MostProblems)
            list.push_back({line, OLMGis::Utility::ToShown(std::move(text))});
    }

    CIDFCurves& m_target;
    static constexpr std::size_t MostSkipped = std::size_t{1} << 26; ///< characters of one line

    bool m_isEndless = false; ///< the present line
    std::size_t m_line = 0;
    std::size_t m_headLine = 0; ///< of the present curve, 0 before the first
    double m_frequency = 0.0;
    std::vector<CPoint> m_points; ///< of the present curve, in the order of the file
    CCurve m_greatest;            ///< the curve with the greatest intensity at its first point
    std::size_t m_greatestLine = 0;
    std::string m_text;
    std::vector<std::string> m_parts;
};

int CIDFCurves::LoadFromFile(const std::string& path) {
    m_valid = 0;
    m_curves.clear();
    m_problems.clear();
    m_doubts.clear();
    m_path = path;
    OLMGis::Data::NoteInput(OLMGis::Data::Inputs::File, path);
    auto content = OLMGis::Utility::InstallationPaths::ReadWholeFile(path);
    if (!content) {
        // The path is in front of the problem already.
        std::string_view reason = content.GetError().message;
        if (reason.starts_with(path + ": "))
            reason.remove_prefix(path.size() + 2);
        m_problems.push_back({0, std::string(reason)});
        return 0;
    }
    std::istringstream input(std::move(content.Value()));
    return Load(input, path);
}

int CIDFCurves::Load(std::istream& input, std::string_view name) {
    m_valid = 0;
    m_curves.clear();
    m_problems.clear();
    m_doubts.clear();
    m_path = name;
    try {
        CReader(*this).Read(input);
    } catch (const std::exception& error) {
        m_valid = 0;
        m_problems.push_back({0, error.what()});
    }
    return m_valid;
}

double CIDFCurves::GetCurveIntensity(double frequency, double duration) const {
    const auto [below, above] = FindPoints(frequency, duration);
    if (below == nullptr)
        return -1.0;
    if (below == above)
        return below->second;
    return below->second + (above->second - below->second) * (duration - below->first) / (above->first - below->first);
}

std::pair<const CIDFCurves::CCurve::value_type*, const CIDFCurves::CCurve::value_type*>
CIDFCurves::FindPoints(double frequency, double duration) const {
    const auto found = m_valid == 0 ? m_curves.end() : m_curves.find(frequency);
    if (found == m_curves.end())
        return {nullptr, nullptr};
    const CCurve& curve = found->second;
    // Not-a-number is above no point and at none, so that it ends at the last one.
    const auto above =
        std::isnan(duration)
            ? curve.end()
            : std::lower_bound(curve.begin(), curve.end(), duration,
                               [](const CCurve::value_type& point, double d) { return point.first < d; });
    if (above == curve.end())
        return {&curve.back(), &curve.back()};
    if (above == curve.begin() || above->first == duration)
        return {&*above, &*above};
    return {&*(above - 1), &*above};
}
