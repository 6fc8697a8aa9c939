// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/ReportFile.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace OLMGis::Utility {

CReportFile::CReportFile(const std::string& path, enmStart start) : m_path(path) {
    std::error_code ignored;
    if (start == enmStart::Anew) {
        m_target = path;
        m_path += ".part"; // always the same name: one left by a killed process is written over
    }
    m_wasThere = start == enmStart::Append && std::filesystem::exists(path, ignored);
    if (const auto folder = std::filesystem::path(path).parent_path(); !folder.empty())
        std::filesystem::create_directories(folder, ignored);
    m_file.reset(std::fopen(m_path.c_str(), start == enmStart::Anew ? "wb" : "ab"));
    if (!m_file)
        NoteProblem(errno);
    if (const auto size = std::filesystem::file_size(m_path, ignored); m_file && !ignored)
        m_before = size;
}

CReportFile::~CReportFile() {
    if (m_file && !m_target.empty())
        TakeBack();
}

/// Keeps the first: later failures follow from it.
void CReportFile::NoteProblem(int error) {
    if (m_problem.empty())
        m_problem = std::generic_category().message(error);
}

bool CReportFile::Append(std::string_view text) {
    if (!m_file || !m_problem.empty())
        return false;
    const std::size_t count = std::fwrite(text.data(), 1, text.size(), m_file.get());
    m_appended += count;
    if (count != text.size())
        NoteProblem(errno);
    return m_problem.empty();
}

bool CReportFile::Close() {
    if (!m_file)
        return false;
    if (std::fclose(m_file.release()) != 0)
        NoteProblem(errno);
    if (m_problem.empty() && !m_target.empty() && std::rename(m_path.c_str(), m_target.c_str()) != 0)
        NoteProblem(errno);
    return m_problem.empty();
}

void CReportFile::TakeBack() {
    m_file.reset();
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(m_path, ignored))
        return;
    const auto size = std::filesystem::file_size(m_path, ignored);
    if (ignored || size < m_before || size > m_before + m_appended)
        return;
    if (m_wasThere)
        std::filesystem::resize_file(m_path, m_before, ignored);
    else
        std::filesystem::remove(m_path, ignored);
}

void CReportFile::CClose::operator()(std::FILE* file) const {
    std::fclose(file);
}

} // namespace OLMGis::Utility
