// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <array>
#include <functional>
#include <ostream>
#include <streambuf>
#include <string>

namespace Cli {

/// A stream that writes bytes to an open file descriptor in large pieces and remembers why a write failed.
class CDescriptorStream final : public std::ostream {
public:
    /// The descriptor is borrowed; name: for messages.
    CDescriptorStream(int descriptor, std::string name);
    CDescriptorStream(const CDescriptorStream&) = delete;
    CDescriptorStream& operator=(const CDescriptorStream&) = delete;

    /// Writes out the buffer. Refused, with the system's reason, when any write has failed. A reader that has gone away
    /// (as in "| head") is no error.
    OLMGis::Utility::Status Finish();

private:
    class CBuffer final : public std::streambuf {
    public:
        explicit CBuffer(int descriptor);
        int GetError() const { return m_error; }

    protected:
        int_type overflow(int_type c) override;
        int sync() override;

    private:
        std::array<char, std::size_t{1} << 16> m_bytes;
        int m_descriptor;
        int m_error = 0; ///< errno of the first write that failed
    };

    CBuffer m_buffer;
    std::string m_name;
};

/// Writes a file whole or not at all: under another name beside it, then renamed. After an error, the writer's or the
/// system's, a former file is unchanged. A pipe or a device is written directly. The path "-" is standard output.
OLMGis::Utility::Status WriteFileWhole(const std::string& path,
                                       const std::function<OLMGis::Utility::Status(std::ostream&)>& write);

} // namespace Cli
