// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/shell/DescriptorStream.h"

#include "reports/ShownText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <unistd.h>

namespace Cli {

using OLMGis::Utility::Done;
using OLMGis::Utility::Error;
using OLMGis::Utility::Refused;
using OLMGis::Utility::Status;

namespace {

Error NotWritten(const std::string& name, int error) {
    return Refused(fmt::format("{}: cannot be written: {}", name, std::generic_category().message(error)));
}

} // namespace

CDescriptorStream::CBuffer::CBuffer(int descriptor)
    : m_descriptor(descriptor), m_isTerminal(::isatty(descriptor) != 0) {
    setp(m_bytes.data(), m_bytes.data() + m_bytes.size());
}

CDescriptorStream::CBuffer::int_type CDescriptorStream::CBuffer::overflow(int_type c) {
    // Whole lines, so that no character is cut in two: a terminal gets it looked through.
    const std::string_view bytes(pbase(), static_cast<std::size_t>(pptr() - pbase()));
    const std::size_t lineEnd = m_isTerminal ? bytes.rfind('\n') : std::string_view::npos;
    const std::size_t count = lineEnd == std::string_view::npos ? bytes.size() : lineEnd + 1;
    Write(bytes.substr(0, count));
    const std::string_view rest = bytes.substr(count);
    std::copy(rest.begin(), rest.end(), m_bytes.begin());
    setp(m_bytes.data(), m_bytes.data() + m_bytes.size());
    pbump(static_cast<int>(rest.size()));
    if (m_error != 0)
        return traits_type::eof();
    if (!traits_type::eq_int_type(c, traits_type::eof())) {
        *pptr() = traits_type::to_char_type(c);
        pbump(1);
    }
    return traits_type::not_eof(c);
}

int CDescriptorStream::CBuffer::sync() {
    Write({pbase(), static_cast<std::size_t>(pptr() - pbase())});
    setp(m_bytes.data(), m_bytes.data() + m_bytes.size());
    return m_error == 0 ? 0 : -1;
}

void CDescriptorStream::CBuffer::Write(std::string_view bytes) {
    std::string shown;
    if (m_isTerminal)
        bytes = shown = Reports::WithoutControls(bytes);
    while (m_error == 0 && !bytes.empty()) {
        const ssize_t written = ::write(m_descriptor, bytes.data(), bytes.size());
        if (written >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            m_error = errno;
    }
}

CDescriptorStream::CDescriptorStream(int descriptor, std::string name)
    : std::ostream(nullptr), m_buffer(descriptor), m_name(std::move(name)) {
    rdbuf(&m_buffer);
}

bool CDescriptorStream::IsReaderGone() const {
    return m_buffer.GetError() == EPIPE;
}

Status CDescriptorStream::Finish() {
    flush();
    if (m_buffer.GetError() == 0 || IsReaderGone())
        return Done{};
    return NotWritten(m_name, m_buffer.GetError());
}

} // namespace Cli
