// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/desktop/PictureBox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QTemporaryDir>
#include <array>
#include <filesystem>
#include <fstream>
#include <string>

using OLMGis::Desktop::CPictureBox;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// The toolkit for the tests of this file, and a folder with pictures of one colour each.
class PictureBox : public testing::Test {
protected:
    static void SetUpTestSuite() {
        static int count = 1;
        static std::array<char, 14> name{"tests_desktop"};
        static std::array<char*, 2> words{name.data(), nullptr};
        static QApplication application(count, words.data());
    }

    PictureBox() {
        // 40 x 20, the left half in the colour, and the whole background white.
        for (const auto& [name, colour] : {std::pair{"pipe", "#ff0000"}, {"pipe_dark", "#00ff00"}})
            std::ofstream(Path(name) + ".svg") << R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 40 20">)"
                                               << R"(<rect width="40" height="20" fill="#ffffff"/>)"
                                               << R"(<rect width="20" height="20" fill=")" << colour << R"("/></svg>)";
        QImage image(40, 20, QImage::Format_RGB32);
        image.fill(Qt::blue);
        image.save(QString::fromStdString(Path("photo.png")));
    }

    std::string Path(const std::string& name) const { return m_folder.path().toStdString() + "/" + name; }

    static QPalette Palette(bool isDark) {
        QPalette palette;
        palette.setColor(QPalette::Window, isDark ? QColor(32, 32, 32) : QColor(240, 240, 240));
        palette.setColor(QPalette::WindowText, isDark ? QColor(230, 230, 230) : QColor(20, 20, 20));
        return palette;
    }

    static QImage Grab(CPictureBox& box) { return box.grab().toImage(); }

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(PictureBox, KeepsTheProportionsInTheMiddle) {
    const struct {
        const char* file;
        QSize box;
        QRectF expected;
    } cases[] = {
        {"pipe.svg", {200, 200}, {0, 50, 200, 100}}, // as wide as the box
        {"pipe.svg", {200, 50}, {50, 0, 100, 50}},   // as high as the box
        {"pipe.svg", {20, 20}, {0, 5, 20, 10}},
        {"photo.png", {200, 200}, {80, 90, 40, 20}}, // an image is not enlarged
        {"photo.png", {20, 20}, {0, 5, 20, 10}},
    };
    for (const auto& [file, size, expected] : cases) {
        CPictureBox box;
        box.setPalette(Palette(false));
        ASSERT_TRUE(box.SetPicture(Path(file)));
        box.resize(size);
        EXPECT_EQ(box.GetPictureRect(), expected) << file << " in " << size.width() << " x " << size.height();
        const QImage shown = Grab(box);
        const QColor left = file == std::string("photo.png") ? Qt::blue : Qt::red;
        const QPoint middle = expected.toRect().center();
        EXPECT_EQ(shown.pixelColor(expected.toRect().left() + 2, middle.y()), left) << file;
        if (expected.top() > 2) {
            EXPECT_EQ(shown.pixelColor(middle.x(), 1), QColor(240, 240, 240)) << "the box's own colour beside it";
        }
    }
}

TEST_F(PictureBox, IsEmptyWithoutAPictureAndAfterABadFile) {
    std::ofstream(Path("text.svg")) << "no drawing";
    std::ofstream(Path("text.png")) << "no image";
    const struct {
        const char* file;
        const char* says;
    } cases[] = {{"missing.svg", "No such file"}, {"text.svg", "expected an SVG"}, {"text.png", "found no picture"}};
    CPictureBox box;
    box.resize(100, 100);
    EXPECT_FALSE(box.HasPicture());
    for (const auto& [file, says] : cases) {
        ASSERT_TRUE(box.SetPicture(Path("pipe.svg")));
        const auto set = box.SetPicture(Path(file));
        ASSERT_FALSE(set) << file;
        EXPECT_THAT(set.GetError().message, testing::AllOf(StartsWith(Path(file)), HasSubstr(says)));
        EXPECT_FALSE(box.HasPicture()) << file;
        EXPECT_TRUE(box.GetPictureRect().isEmpty()) << file;
        const QImage shown = Grab(box);
        EXPECT_EQ(shown.pixelColor(10, 50), shown.pixelColor(90, 90)) << file << " nothing of the former picture";
    }
    ASSERT_TRUE(box.SetPicture(Path("pipe.svg")));
    EXPECT_TRUE(box.SetPicture(""));
    EXPECT_FALSE(box.HasPicture());
}

TEST_F(PictureBox, FollowsThePalette) {
    CPictureBox box;
    box.resize(80, 40);
    box.setPalette(Palette(true));
    ASSERT_TRUE(box.SetPicture(Path("pipe.svg")));
    EXPECT_EQ(box.GetShownPath(), Path("pipe_dark.svg"));
    EXPECT_EQ(Grab(box).pixelColor(10, 20), QColor(0, 255, 0));
    box.setPalette(Palette(false));
    EXPECT_EQ(box.GetShownPath(), Path("pipe.svg"));
    EXPECT_EQ(Grab(box).pixelColor(10, 20), QColor(255, 0, 0));
    box.setPalette(Palette(true));
    ASSERT_TRUE(box.SetPicture(Path("photo.png")));
    EXPECT_EQ(box.GetShownPath(), Path("photo.png")) << "a picture without a dark variant is shown as it is";
}
