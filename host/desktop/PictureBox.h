// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <QImage>
#include <QWidget>
#include <memory>
#include <string>

class QSvgRenderer;

namespace OLMGis::Desktop {

/// Shows one picture, as large as fits with its proportions kept, in the middle; nothing without a picture. Drawings
/// are sharp at every size and scale of the screen; images are never enlarged beyond their own pixels.
class CPictureBox final : public QWidget {
public:
    explicit CPictureBox(QWidget* parent = nullptr);
    ~CPictureBox() override;

    /// Shows the picture of an SVG, PNG or JPEG file; an empty path shows none. Under a dark palette the file of the
    /// same name with "_dark" before the suffix is shown in its place where there is one, also when the palette changes
    /// later. An error of the file, which names it, leaves the box empty.
    Utility::Status SetPicture(const std::string& path);

    bool HasPicture() const { return m_drawing || !m_image.isNull(); }

    /// The file that is shown, the dark variant as such; empty without a picture.
    const std::string& GetShownPath() const { return m_shownPath; }

    /// Where the picture is drawn in a box of this size (in the widget's pixels); empty without a picture.
    QRectF GetPictureRect() const;

    /// The picture's own size; of an image in device pixels. Empty without a picture.
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    Utility::Status Load();

    std::string m_path; ///< as it was set
    std::string m_shownPath;
    std::unique_ptr<QSvgRenderer> m_drawing; ///< of an SVG file
    QImage m_image;                          ///< of every other file
};

} // namespace OLMGis::Desktop
