// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/GeoPackageGeometry.h"

#include "host/project_io/base/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <type_traits>

namespace OLMGis::ProjectIo {

using Topology::CPoint;
using Topology::CRings;
using Utility::Done;
using Utility::Status;

namespace {

// Well-known binary, ISO numbering: thousands say which ordinates follow x and y (1 height, 2 measure, 3 both).
constexpr std::uint32_t PointType = 1;
constexpr std::uint32_t LineType = 2;
constexpr std::uint32_t PolygonType = 3;
constexpr std::uint32_t MultiOffset = 3; ///< from a type to the collection of its kind

constexpr std::size_t LeastRingPoints = 4;

bool IsFinite(const CPoint& point) {
    return std::isfinite(point.m_x) && std::isfinite(point.m_y);
}

bool IsFinite(std::span<const CPoint> points) {
    return std::all_of(points.begin(), points.end(), [](const CPoint& point) { return IsFinite(point); });
}

bool IsClosed(std::span<const CPoint> ring) {
    return ring.size() > 1 && ring.front() == ring.back();
}

std::size_t ClosedSize(std::span<const CPoint> ring) {
    return IsClosed(ring) ? ring.size() : ring.size() + 1;
}

/// Reads a blob from front to back and never beyond its end.
class CBlobReader {
public:
    explicit CBlobReader(std::span<const std::byte> blob) : m_rest(blob) {}

    std::size_t GetRest() const { return m_rest.size(); }
    void SetLittleEndian(bool isLittle) { m_isLittle = isLittle; }

    std::uint8_t TakeByte() { return Take<std::uint8_t>(); }
    std::uint32_t TakeCount() { return Take<std::uint32_t>(); }
    double TakeDouble() { return std::bit_cast<double>(Take<std::uint64_t>()); }
    void Skip(std::size_t bytes) {
        Need(bytes);
        m_rest = m_rest.subspan(bytes);
    }

private:
    void Need(std::size_t bytes) const {
        if (m_rest.size() < bytes)
            FailBadInput("the geometry ends too early");
    }

    template <class Number>
    Number Take() {
        Need(sizeof(Number));
        Number number = 0;
        for (std::size_t i = 0; i < sizeof(Number); ++i) {
            const std::size_t shift = 8 * (m_isLittle ? i : sizeof(Number) - 1 - i);
            number = static_cast<Number>(number | (std::to_integer<Number>(m_rest[i]) << shift));
        }
        m_rest = m_rest.subspan(sizeof(Number));
        return number;
    }

    std::span<const std::byte> m_rest;
    bool m_isLittle = true;
};

/// Reads the head of the blob and of its well-known binary, up to the coordinates.
class CGeometryReader {
public:
    CGeometryReader(std::span<const std::byte> blob, std::uint32_t wantedType) : m_reader(blob) {
        PassHead();
        if (m_isEmpty)
            return;
        std::uint32_t type = PassType();
        if (type == wantedType + MultiOffset) {
            const std::uint32_t parts = m_reader.TakeCount();
            m_isEmpty = parts == 0;
            if (m_isEmpty)
                return;
            if (parts != 1)
                FailBadInput(fmt::format("the geometry has {} parts, expected 1", parts));
            type = PassType();
        }
        if (type != wantedType)
            FailBadInput(fmt::format("the geometry is of type {}, expected {}", type, wantedType));
    }

    bool IsEmpty() const { return m_isEmpty; }

    CPoint TakePoint() {
        CPoint point;
        point.m_x = m_reader.TakeDouble();
        point.m_y = m_reader.TakeDouble();
        m_reader.Skip(m_extraBytes);
        return point;
    }

    /// A count of items that take at least so many bytes each; fails for a count that the blob has no room for, before
    /// memory is reserved.
    std::uint32_t TakeCount(std::size_t leastBytes) {
        const std::uint32_t count = m_reader.TakeCount();
        if (count > m_reader.GetRest() / leastBytes)
            FailBadInput(fmt::format("the geometry ends too early, expected {} points or rings", count));
        return count;
    }

    void TakePoints(std::vector<CPoint>& points) {
        const std::uint32_t count = TakeCount(2 * sizeof(double) + m_extraBytes);
        points.clear();
        points.reserve(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            points.push_back(TakePoint());
            if (!IsFinite(points.back()))
                FailBadInput("the geometry has a coordinate that is not a finite number");
        }
    }

private:
    void PassHead() {
        if (m_reader.TakeByte() != 'G' || m_reader.TakeByte() != 'P')
            FailBadInput("the geometry does not begin with GP");
        m_reader.TakeByte(); // version of the blob; there is only one
        const unsigned flags = m_reader.TakeByte();
        constexpr unsigned EmptyFlag = 0x10;
        constexpr unsigned ExtendedFlag = 0x20;
        if ((flags & ExtendedFlag) != 0)
            FailBadInput("the geometry is of an extended kind, expected a plain one");
        constexpr std::size_t EnvelopeDoubles[] = {0, 4, 6, 6, 8};
        const unsigned envelope = (flags >> 1) & 7U;
        if (envelope >= std::size(EnvelopeDoubles))
            FailBadInput("the geometry has an unknown kind of envelope");
        m_reader.Skip(sizeof(std::int32_t) + EnvelopeDoubles[envelope] * sizeof(double));
        m_isEmpty = (flags & EmptyFlag) != 0;
    }

    /// The type without its ordinates; keeps their size.
    std::uint32_t PassType() {
        m_reader.SetLittleEndian(m_reader.TakeByte() == 1);
        const std::uint32_t type = m_reader.TakeCount();
        const std::uint32_t ordinates = type / 1000;
        if (ordinates > 3)
            FailBadInput(fmt::format("the geometry is of the unknown type {}", type));
        m_extraBytes = (ordinates == 3 ? 2 : ordinates == 0 ? 0 : 1) * sizeof(double);
        return type % 1000;
    }

    CBlobReader m_reader;
    std::size_t m_extraBytes = 0; ///< of each point, after x and y
    bool m_isEmpty = false;
};

/// Runs a decoding step and returns its failure as a value.
template <class Step>
Status Decoded(Step step) {
    try {
        step();
        return Done{};
    } catch (const CFailure& failure) {
        return failure.GetError();
    }
}

} // namespace

void CExtent::Add(const CPoint& point) {
    m_minX = std::min(m_minX, point.m_x);
    m_maxX = std::max(m_maxX, point.m_x);
    m_minY = std::min(m_minY, point.m_y);
    m_maxY = std::max(m_maxY, point.m_y);
}

void CExtent::Add(const CExtent& other) {
    if (other.IsEmpty())
        return;
    Add(CPoint{other.m_minX, other.m_minY});
    Add(CPoint{other.m_maxX, other.m_maxY});
}

template <class Number>
void CGeometryEncoder::Put(Number number) {
    using CBits = std::conditional_t<sizeof(Number) == 8, std::uint64_t, std::uint32_t>;
    const auto bits = std::bit_cast<CBits>(number);
    const std::size_t place = m_blob.size();
    m_blob.resize(place + sizeof bits);
    for (std::size_t i = 0; i < sizeof bits; ++i)
        m_blob[place + i] = static_cast<std::byte>((bits >> (8 * i)) & 0xFFU);
}

void CGeometryEncoder::Begin(std::span<const CPoint> outline, bool hasEnvelope) {
    m_extent = {};
    for (const CPoint& point : outline)
        m_extent.Add(point);
    constexpr unsigned LittleEndianFlag = 1;
    constexpr unsigned EnvelopeFlag = 2;
    m_blob.assign({std::byte{'G'}, std::byte{'P'}, std::byte{0},
                   static_cast<std::byte>(LittleEndianFlag | (hasEnvelope ? EnvelopeFlag : 0U))});
    Put(m_srsId);
    if (hasEnvelope) {
        Put(m_extent.m_minX);
        Put(m_extent.m_maxX);
        Put(m_extent.m_minY);
        Put(m_extent.m_maxY);
    }
    m_blob.push_back(std::byte{1}); // well-known binary repeats the byte order
}

void CGeometryEncoder::PutPoints(std::span<const CPoint> points, bool isClosed) {
    const bool isOpen = isClosed && !IsClosed(points);
    Put(static_cast<std::uint32_t>(points.size() + (isOpen ? 1 : 0)));
    for (const CPoint& point : points) {
        Put(point.m_x);
        Put(point.m_y);
    }
    if (isOpen) {
        Put(points.front().m_x);
        Put(points.front().m_y);
    }
}

CGeometryEncoder::CBlob CGeometryEncoder::Encode(const CPoint& point) {
    if (!IsFinite(point))
        return {};
    Begin({&point, 1}, false);
    Put(PointType);
    Put(point.m_x);
    Put(point.m_y);
    return m_blob;
}

CGeometryEncoder::CBlob CGeometryEncoder::Encode(std::span<const CPoint> line) {
    if (line.size() < 2 || !IsFinite(line))
        return {};
    Begin(line, true);
    Put(LineType);
    PutPoints(line, false);
    return m_blob;
}

CGeometryEncoder::CBlob CGeometryEncoder::Encode(const CRings& rings) {
    if (rings.empty() || ClosedSize(rings.front()) < LeastRingPoints)
        return {};
    if (!std::all_of(rings.begin(), rings.end(), [](const auto& ring) { return IsFinite(ring); }))
        return {};
    Begin(rings.front(), true);
    Put(PolygonType);
    const auto isKept = [](const auto& ring) { return ClosedSize(ring) >= LeastRingPoints; };
    Put(static_cast<std::uint32_t>(std::count_if(rings.begin(), rings.end(), isKept)));
    for (const std::vector<CPoint>& ring : rings)
        if (isKept(ring))
            PutPoints(ring, true);
    return m_blob;
}

Status DecodePoint(std::span<const std::byte> blob, CPoint& point) {
    point = {};
    return Decoded([&] {
        if (blob.empty())
            return;
        CGeometryReader reader(blob, PointType);
        if (reader.IsEmpty())
            return;
        point = reader.TakePoint();
        if (!point.IsKnown())
            point = {}; // an empty point is written as two not-a-numbers
        else if (!IsFinite(point))
            FailBadInput("the geometry has a coordinate that is not a finite number");
    });
}

Status DecodeLine(std::span<const std::byte> blob, std::vector<CPoint>& line) {
    line.clear();
    return Decoded([&] {
        if (blob.empty())
            return;
        CGeometryReader reader(blob, LineType);
        if (reader.IsEmpty())
            return;
        reader.TakePoints(line);
        if (line.size() == 1)
            FailBadInput("the line has 1 point, expected 2 at least");
    });
}

Status DecodePolygon(std::span<const std::byte> blob, CRings& rings) {
    rings.clear();
    return Decoded([&] {
        if (blob.empty())
            return;
        CGeometryReader reader(blob, PolygonType);
        if (reader.IsEmpty())
            return;
        rings.resize(reader.TakeCount(sizeof(std::uint32_t) + LeastRingPoints * 2 * sizeof(double)));
        for (std::vector<CPoint>& ring : rings) {
            reader.TakePoints(ring);
            if (ring.size() < LeastRingPoints || !IsClosed(ring))
                FailBadInput("a ring of the polygon is not closed or has less than 4 points");
        }
    });
}

} // namespace OLMGis::ProjectIo
