// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/Geometry.h"

#include <cstddef>
#include <limits>
#include <span>
#include <vector>

namespace OLMGis::ProjectIo {

/// A rectangle around points, m.
struct CExtent {
    double m_minX = std::numeric_limits<double>::infinity();
    double m_maxX = -std::numeric_limits<double>::infinity();
    double m_minY = std::numeric_limits<double>::infinity();
    double m_maxY = -std::numeric_limits<double>::infinity();

    bool IsEmpty() const { return m_minX > m_maxX; }
    void Add(const Topology::CPoint& point);
    void Add(const CExtent& other);
};

/// Turns geometry into the binary form of GeoPackage: a head with coordinate system and extent, then well-known binary,
/// all little-endian. The blob is valid until the encoder makes the next one. Geometry that a GIS cannot show, none or
/// one with a coordinate that is not finite, gives an empty blob.
class CGeometryEncoder {
public:
    using CBlob = std::span<const std::byte>;

    /// srsId: the number of the coordinate system in the file.
    explicit CGeometryEncoder(int srsId) : m_srsId(srsId) {}

    CBlob Encode(const Topology::CPoint& point);
    CBlob Encode(std::span<const Topology::CPoint> line);

    /// Rings are closed where they are not; one that is too short to enclose an area is left out.
    CBlob Encode(const Topology::CRings& rings);

    /// The extent of the last blob.
    const CExtent& GetExtent() const { return m_extent; }

private:
    void Begin(std::span<const Topology::CPoint> outline, bool hasEnvelope);
    void PutPoints(std::span<const Topology::CPoint> points, bool isClosed);
    template <class Number>
    void Put(Number number);

    int m_srsId;
    CExtent m_extent;
    std::vector<std::byte> m_blob;
};

/// Read blobs of any program: both byte orders, collections of one part; heights and measures are skipped. An empty
/// blob and an empty geometry give an unknown point, no line, no rings. BadInput says what is wrong with the blob.
Utility::Status DecodePoint(std::span<const std::byte> blob, Topology::CPoint& point);
Utility::Status DecodeLine(std::span<const std::byte> blob, std::vector<Topology::CPoint>& line);
Utility::Status DecodePolygon(std::span<const std::byte> blob, Topology::CRings& rings);

} // namespace OLMGis::ProjectIo
