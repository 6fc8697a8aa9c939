// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/InputFile.h"

#include "apps/cli/shell/Interrupt.h"
#include "host/gis_core/HostServices.h"
#include "host/project_io/base/DiskFile.h"
#include "host/project_io/base/Failure.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <streambuf>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace Cli {

using OLMGis::Utility::Result;

/// Reads a descriptor in large pieces.
class CInputFile::CBuffer final : public std::streambuf {
public:
    /// Owns the descriptor unless it is standard input. size: bytes, 0 where unknown.
    CBuffer(int descriptor, std::int64_t size, std::string caption)
        : m_caption(std::move(caption)), m_size(size), m_descriptor(descriptor) {}
    ~CBuffer() override {
        HideProgress();
        if (m_descriptor != STDIN_FILENO)
            ::close(m_descriptor);
    }

protected:
    int_type underflow() override {
        if (gptr() != egptr())
            return traits_type::to_int_type(*gptr());
        const std::size_t count = Read();
        setg(m_bytes.data(), m_bytes.data(), m_bytes.data() + count);
        return count == 0 ? traits_type::eof() : traits_type::to_int_type(*gptr());
    }

private:
    std::size_t Read() {
        while (!Interrupt::IsRequested()) {
            const ssize_t count = ::read(m_descriptor, m_bytes.data(), m_bytes.size());
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0)
                throw std::ios_base::failure("cannot be read", std::error_code(errno, std::generic_category()));
            m_done += count;
            ShowProgress();
            return static_cast<std::size_t>(count);
        }
        return 0;
    }

    void ShowProgress() {
        constexpr std::int64_t Small = std::int64_t{1} << 20; // bytes; read at once
        if (m_size > Small && m_done < m_size)
            OLMGis::System::HostServices().ShowProgress(m_caption,
                                                        static_cast<double>(m_done) / static_cast<double>(m_size));
        else
            HideProgress();
    }

    void HideProgress() {
        if (m_size > 0)
            OLMGis::System::HostServices().HideProgress();
    }

    std::array<char, std::size_t{1} << 16> m_bytes{};
    std::string m_caption;
    std::int64_t m_size;
    std::int64_t m_done = 0;
    int m_descriptor;
};

CInputFile::CInputFile(std::unique_ptr<CBuffer> buffer, std::string name)
    : m_buffer(std::move(buffer)), m_stream(std::make_unique<std::istream>(m_buffer.get())), m_name(std::move(name)) {}

CInputFile::~CInputFile() = default;
CInputFile::CInputFile(CInputFile&& other) noexcept = default;
CInputFile& CInputFile::operator=(CInputFile&& other) noexcept = default;

Result<CInputFile> CInputFile::Open(const std::string& path) {
    if (path == "-" || path == "/dev/stdin")
        return CInputFile(std::make_unique<CBuffer>(STDIN_FILENO, 0, std::string()), "standard input");
    return OLMGis::ProjectIo::CatchFailures<CInputFile>(path, [&path] {
        struct stat state {};
        OLMGis::ProjectIo::CDescriptor file = OLMGis::ProjectIo::OpenForReading(path, path, state);
        return CInputFile(std::make_unique<CBuffer>(file.Release(), state.st_size, "Reading " + path), path);
    });
}

} // namespace Cli
