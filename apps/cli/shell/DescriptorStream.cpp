// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/shell/DescriptorStream.h"

#include <fmt/format.h>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
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

/// An open descriptor that closes itself.
class CDescriptor {
public:
    explicit CDescriptor(int descriptor) : m_descriptor(descriptor) {}
    ~CDescriptor() { Close(); }
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;

    int Get() const { return m_descriptor; }

    /// 0, or the errno of closing: some file systems report only then that the disk is full.
    int Close() {
        const int closed = m_descriptor < 0 ? 0 : ::close(m_descriptor);
        m_descriptor = -1;
        return closed == 0 ? 0 : errno;
    }

private:
    int m_descriptor;
};

Status WriteTo(CDescriptor& descriptor, const std::string& name, const std::function<Status(std::ostream&)>& write) {
    CDescriptorStream stream(descriptor.Get(), name);
    if (Status written = write(stream); !written)
        return written;
    return stream.Finish();
}

Status WriteDirectly(const std::string& path, const std::function<Status(std::ostream&)>& write) {
    CDescriptor descriptor(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (descriptor.Get() < 0)
        return NotWritten(path, errno);
    return WriteTo(descriptor, path, write);
}

/// Writes the new file beside the target and leaves it there, closed and flushed to the disk.
Status WriteBeside(const std::string& beside, const std::string& name, mode_t mode,
                   const std::function<Status(std::ostream&)>& write) {
    CDescriptor descriptor(::open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (descriptor.Get() < 0)
        return NotWritten(name, errno);
    if (Status written = WriteTo(descriptor, name, write); !written)
        return written;
    if (::fsync(descriptor.Get()) != 0)
        return NotWritten(name, errno);
    if (const int error = descriptor.Close(); error != 0)
        return NotWritten(name, error);
    return Done{};
}

} // namespace

CDescriptorStream::CBuffer::CBuffer(int descriptor) : m_descriptor(descriptor) {
    setp(m_bytes.data(), m_bytes.data() + m_bytes.size());
}

CDescriptorStream::CBuffer::int_type CDescriptorStream::CBuffer::overflow(int_type c) {
    if (sync() != 0)
        return traits_type::eof();
    if (!traits_type::eq_int_type(c, traits_type::eof())) {
        *pptr() = traits_type::to_char_type(c);
        pbump(1);
    }
    return traits_type::not_eof(c);
}

int CDescriptorStream::CBuffer::sync() {
    const char* next = pbase();
    while (m_error == 0 && next != pptr()) {
        const ssize_t written = ::write(m_descriptor, next, static_cast<std::size_t>(pptr() - next));
        if (written >= 0)
            next += written;
        else if (errno != EINTR)
            m_error = errno;
    }
    setp(m_bytes.data(), m_bytes.data() + m_bytes.size());
    return m_error == 0 ? 0 : -1;
}

CDescriptorStream::CDescriptorStream(int descriptor, std::string name)
    : std::ostream(nullptr), m_buffer(descriptor), m_name(std::move(name)) {
    rdbuf(&m_buffer);
}

Status CDescriptorStream::Finish() {
    flush();
    if (m_buffer.GetError() == 0 || m_buffer.GetError() == EPIPE)
        return Done{};
    return NotWritten(m_name, m_buffer.GetError());
}

Status WriteFileWhole(const std::string& path, const std::function<Status(std::ostream&)>& write) {
    if (path == "-") {
        CDescriptorStream stream(STDOUT_FILENO, "standard output");
        if (Status written = write(stream); !written)
            return written;
        return stream.Finish();
    }
    std::error_code ignored;
    // A link is followed: the file that it leads to is replaced.
    const std::filesystem::path target = std::filesystem::weakly_canonical(path, ignored);
    const std::string file = target.empty() ? path : target.string();
    struct stat former {};
    const bool isThere = ::stat(file.c_str(), &former) == 0;
    if (isThere && S_ISDIR(former.st_mode))
        return NotWritten(path, EISDIR);
    if (isThere && !S_ISREG(former.st_mode))
        return WriteDirectly(path, write);
    if (isThere && ::access(file.c_str(), W_OK) != 0)
        return NotWritten(path, errno);
    const std::string beside = fmt::format("{}.{}.part", file, ::getpid());
    ::unlink(beside.c_str()); // left by a killed process of the same number
    const mode_t mode = isThere ? former.st_mode & 07777U : 0666U;
    Status written = WriteBeside(beside, path, mode, write);
    if (written && ::rename(beside.c_str(), file.c_str()) != 0)
        written = NotWritten(path, errno);
    if (!written)
        ::unlink(beside.c_str());
    return written;
}

} // namespace Cli
