// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/desktop/PictureBox.h"

#include "host/gis_core/InstallationPaths.h"
#include "host/gis_core/Utility.h"

#include <fmt/format.h>

#include <QEvent>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>
#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace OLMGis::Desktop {

namespace {

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

/// The file to show for a path: its dark variant under a dark palette where there is one.
std::string VariantOf(const std::string& path, bool isDark) {
    const std::filesystem::path plain(path);
    const std::string dark = (plain.parent_path() / plain.stem()).string() + "_dark" + plain.extension().string();
    std::error_code ignored;
    return isDark && std::filesystem::is_regular_file(dark, ignored) ? dark : path;
}

} // namespace

CPictureBox::CPictureBox(QWidget* parent) : QWidget(parent) {}
CPictureBox::~CPictureBox() = default;

Utility::Status CPictureBox::SetPicture(const std::string& path) {
    m_path = path;
    Utility::Status loaded = Load();
    updateGeometry();
    update();
    return loaded;
}

Utility::Status CPictureBox::Load() {
    m_drawing.reset();
    m_image = QImage();
    m_shownPath.clear();
    if (m_path.empty())
        return Utility::Done{};
    const std::string path = VariantOf(m_path, IsDark(palette()));
    const Utility::Result<std::string> bytes = Utility::InstallationPaths::ReadWholeFile(path);
    if (!bytes)
        return bytes.GetError();
    const auto content = QByteArray::fromRawData(bytes->data(), static_cast<qsizetype>(bytes->size()));
    if (Utility::CUtility::EqualIgnoreCase(std::filesystem::path(path).extension().string(), ".svg")) {
        auto drawing = std::make_unique<QSvgRenderer>(content);
        if (!drawing->isValid() || drawing->viewBoxF().isEmpty())
            return Utility::BadInput(fmt::format("{}: found no drawing, expected an SVG file", path));
        m_drawing = std::move(drawing);
    } else {
        m_image = QImage::fromData(content);
        if (m_image.isNull())
            return Utility::BadInput(fmt::format("{}: found no picture, expected an SVG, PNG or JPEG file", path));
    }
    m_shownPath = path;
    return Utility::Done{};
}

QSize CPictureBox::sizeHint() const {
    return m_drawing ? m_drawing->defaultSize() : m_image.size();
}

QRectF CPictureBox::GetPictureRect() const {
    if (!HasPicture() || width() <= 0 || height() <= 0)
        return {};
    const QSizeF own = m_drawing ? m_drawing->viewBoxF().size() : QSizeF(m_image.size()) / devicePixelRatioF();
    double scale = std::min(width() / own.width(), height() / own.height());
    if (!m_drawing)
        scale = std::min(scale, 1.0);
    const QSizeF size = own * scale;
    return {QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size};
}

void CPictureBox::paintEvent(QPaintEvent* /*event*/) {
    const QRectF place = GetPictureRect();
    if (place.isEmpty())
        return;
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (m_drawing)
        m_drawing->render(&painter, place);
    else
        painter.drawImage(place, m_image);
}

void CPictureBox::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange || m_path.empty())
        return;
    if (VariantOf(m_path, IsDark(palette())) != m_shownPath) {
        // A variant that cannot be read leaves the box empty; nobody waits for an answer here.
        (void)Load();
        updateGeometry();
        update();
    }
}

} // namespace OLMGis::Desktop
