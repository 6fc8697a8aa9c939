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
    /// The descriptor is borrowed; name is what messages call it.
    CDescriptorStream(int descriptor, std::string name);
    CDescriptorStream(const CDescriptorStream&) = delete;
    CDescriptorStream& operator=(const CDescriptorStream&) = delete;

    /// Writes out what was gathered. Refused, naming the system's reason, when bytes got lost since the beginning. A
    /// reader that went away (as in "| head") wanted no more and is no error.
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

/// Writes a file such that it appears whole or not at all: beside it under another name, then put in its place. An
/// error, the writer's or the system's, leaves a former file as it was. What is no ordinary file (a pipe, a device) is
/// written directly. The path "-" is standard output.
OLMGis::Utility::Status WriteFileWhole(const std::string& path,
                                       const std::function<OLMGis::Utility::Status(std::ostream&)>& write);

} // namespace Cli
