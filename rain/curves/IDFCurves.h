// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Rain intensity curves of a text file.
///
/// A line that begins with "*" is a comment. One that begins with "#" opens a curve: its number is the frequency, by
/// which the curve is chosen. Every other line is a point: duration (min) and intensity (l/(s·ha)), separated by blanks
/// or tabs, at most 50 characters. Of repeated frequencies and durations the first counts. LF or CR LF; the file may
/// begin with a UTF-8 byte order mark.
class CIDFCurves {
public:
    /// Points in ascending duration, each duration once, at least one: (min, l/(s·ha)).
    using CCurve = std::vector<std::pair<double, double>>;

    /// A line that is left out or read in part, or the whole file (line 0).
    struct CProblem {
        std::size_t m_line; ///< from 1
        std::string m_text; ///< why, in the language in force
    };

    /// Replaces the curves by those of a file; its path is kept. 1 when there is at least one, 0 also when the file
    /// can't be read.
    int LoadFromFile(const std::string& path);

    /// The same from a stream; name: the name of the source.
    int Load(std::istream& input, std::string_view name);

    /// Intensity (l/(s·ha)) for a duration (min) by the curve of exactly that frequency: linear between points,
    /// constant outside. -1.0 without such a curve. Two binary searches.
    double GetCurveIntensity(double frequency, double duration) const;

    /// The points around a duration on a curve: both the same at a point and outside; null without such a curve.
    std::pair<const CCurve::value_type*, const CCurve::value_type*> FindPoints(double frequency, double duration) const;

    bool IsValid() const { return m_valid != 0; }
    const std::map<double, CCurve>& GetCurves() const { return m_curves; }
    const std::string& GetPath() const { return m_path; }

    /// What the last load left out, in the order of the file; empty when everything was read. At most MostProblems.
    const std::vector<CProblem>& GetProblems() const { return m_problems; }
    static constexpr std::size_t MostProblems = 100;

    /// Lines that were read as they are and look wrong: a frequency that is no number, an intensity that rises with the
    /// duration, a curve of a single point, intensities that look like mm/h. In the order of the file, at most
    /// MostProblems.
    const std::vector<CProblem>& GetDoubts() const { return m_doubts; }

private:
    class CReader;

    std::map<double, CCurve> m_curves; ///< by frequency
    std::string m_path;
    int m_valid = 0;
    std::vector<CProblem> m_problems;
    std::vector<CProblem> m_doubts;
};
