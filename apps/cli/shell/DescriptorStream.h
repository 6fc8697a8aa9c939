// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <array>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace Cli {

/// A stream that writes bytes to an open file descriptor in large pieces and remembers why a write failed. On a
/// terminal control characters other than line ends and tabs are shown as "?".
class CDescriptorStream final : public std::ostream {
public:
    /// The descriptor is borrowed; name: for messages.
    CDescriptorStream(int descriptor, std::string name);
    CDescriptorStream(const CDescriptorStream&) = delete;
    CDescriptorStream& operator=(const CDescriptorStream&) = delete;

    /// Writes out the buffer. Refused, with the system's reason, when any write has failed. A reader that has gone away
    /// (as in "| head") is no error.
    OLMGis::Utility::Status Finish();

    /// Whether nobody reads any more what is written.
    bool IsReaderGone() const;

private:
    class CBuffer final : public std::streambuf {
    public:
        explicit CBuffer(int descriptor);
        int GetError() const { return m_error; }

    protected:
        int_type overflow(int_type c) override;
        int sync() override;

    private:
        void Write(std::string_view bytes);

        std::array<char, std::size_t{1} << 16> m_bytes;
        int m_descriptor;
        bool m_isTerminal;
        int m_error = 0; ///< errno of the first write that failed
    };

    CBuffer m_buffer;
    std::string m_name;
};

} // namespace Cli
