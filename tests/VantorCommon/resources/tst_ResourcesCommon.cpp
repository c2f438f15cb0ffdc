// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/shell/mvc/CMVCManager.h>

#include <QApplication>
#include <QColor>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QString>
#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace
{
constexpr int kSide = 24;
constexpr int kVisibleAlpha = 128;
/// The least contrast of graphics with what they lie on: WCAG 2.1, success criterion 1.4.11.
constexpr double kLeastContrast = 3.0;

QString PathOf(const QString& strName, const char* pSuffix = "")
{
    return strName + QLatin1String(pSuffix) + QStringLiteral(".png");
}

/// The light that a colour gives, 0 for black to 1 for white: "relative luminance" of WCAG 2.1.
double Luminance(const QColor& color)
{
    const auto linear = [](double dValue) {
        return dValue <= 0.03928 ? dValue / 12.92 : std::pow((dValue + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// 1 for equal colours to 21 for black on white: "contrast ratio" of WCAG 2.1.
double Contrast(const QColor& one, const QColor& other)
{
    const auto [dDark, dBright] = std::minmax({Luminance(one), Luminance(other)});
    return (dBright + 0.05) / (dDark + 0.05);
}

/// The least contrast that a visible pixel of an icon has with the ground: 1 to 21, 1 without visible pixels.
/// A half transparent pixel of a rim counts with the colour of the line that it belongs to.
double WeakestContrast(const QImage& icon, const QColor& ground)
{
    std::vector<double> contrasts;
    for (int y = 0; y < icon.height(); ++y)
        for (int x = 0; x < icon.width(); ++x) {
            const QColor color = icon.pixelColor(x, y);
            if (color.alpha() > kVisibleAlpha)
                contrasts.push_back(Contrast(QColor(color.rgb()), ground));
        }
    return contrasts.empty() ? 1.0 : *std::min_element(contrasts.begin(), contrasts.end());
}

/// What a screen with so many device pixels to a pixel shows of an icon of 24 pixels.
QImage Shown(const QIcon& icon, double dRatio)
{
    const int nSide = int(std::lround(kSide * dRatio));
    QImage screen(nSide, nSide, QImage::Format_ARGB32_Premultiplied);
    screen.setDevicePixelRatio(dRatio);
    screen.fill(Qt::transparent);
    QPainter painter(&screen);
    icon.paint(&painter, 0, 0, kSide, kSide);
    painter.end();
    screen.setDevicePixelRatio(1.0);
    return screen;
}

/// The largest difference of a channel between two pictures of one size, 0 to 255.
int Difference(const QImage& one, const QImage& other)
{
    const QImage a = one.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QImage b = other.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    int nLargest = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int i = 0; i < 4 * a.width(); ++i)
            nLargest = std::max(nLargest, std::abs(a.constScanLine(y)[i] - b.constScanLine(y)[i]));
    return nLargest;
}
} // namespace

class tst_ResourcesCommon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // The linker leaves out a library of which nothing is used, and its resources with it.
        QVERIFY(CMVCManager::m_vctItems.empty());
        QCOMPARE(qApp->devicePixelRatio(), 1.5);
    }

    void everyIconIsThereInBothSizesAndDrawn_data() { addIcons(); }
    void everyIconIsThereInBothSizesAndDrawn()
    {
        QFETCH(QString, name);
        for (const auto& [suffix, nSize] : {std::pair("", kSide), std::pair("@2x", 2 * kSide)}) {
            const QImage icon(PathOf(name, suffix));
            QCOMPARE(icon.size(), QSize(nSize, nSize));
            int nInk = 0;
            for (int y = 0; y < nSize; ++y)
                for (int x = 0; x < nSize; ++x)
                    nInk += qAlpha(icon.pixel(x, y)) > kVisibleAlpha ? 1 : 0;
            // Lines on a clear ground: neither empty nor a filled square.
            QVERIFY(nInk > nSize * nSize / 20);
            QVERIFY(nInk < nSize * nSize * 2 / 3);
        }
    }

    void theContrastOfBlackAndWhiteIs21()
    {
        QCOMPARE(Contrast(Qt::black, Qt::white), 21.0);
        QCOMPARE(Contrast(Qt::white, Qt::black), 21.0);
        QCOMPARE(Contrast(Qt::red, Qt::red), 1.0);
    }

    void everyIconIsLegibleOnLightAndOnDark_data() { addIcons(); }
    void everyIconIsLegibleOnLightAndOnDark()
    {
        QFETCH(QString, name);
        for (const char* suffix : {"", "@2x"}) {
            const QImage icon(PathOf(name, suffix));
            for (const char* ground : {"#ffffff", "#efefef", "#2b2b2b", "#1e1e1e"}) {
                const double dWeakest = WeakestContrast(icon, QColor(QLatin1String(ground)));
                QVERIFY2(dWeakest >= kLeastContrast,
                         qPrintable(QStringLiteral("%1 on %2: a contrast of %3 only")
                                        .arg(PathOf(name, suffix), QLatin1String(ground))
                                        .arg(dWeakest)));
            }
        }
    }

    void onAScreenOfDoubleDensityTheLargePictureIsShownAsItIs_data() { addIcons(); }
    void onAScreenOfDoubleDensityTheLargePictureIsShownAsItIs()
    {
        QFETCH(QString, name);
        const QImage shown = Shown(QIcon(PathOf(name)), 2.0);
        QCOMPARE(shown.size(), QSize(2 * kSide, 2 * kSide));
        QCOMPARE(Difference(shown, QImage(PathOf(name, "@2x"))), 0);
    }

    void atOneAndAHalfTheLargePictureIsReducedAndTheSmallOneNotEnlarged_data() { addIcons(); }
    void atOneAndAHalfTheLargePictureIsReducedAndTheSmallOneNotEnlarged()
    {
        QFETCH(QString, name);
        const QImage shown = Shown(QIcon(PathOf(name)), 1.5);
        const auto scaled = [&](const char* suffix) {
            return QImage(PathOf(name, suffix))
                .convertToFormat(QImage::Format_ARGB32_Premultiplied)
                .scaled(shown.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        };
        QCOMPARE(shown.size(), QSize(kSide * 3 / 2, kSide * 3 / 2));
        QVERIFY(Difference(shown, scaled("@2x")) <= 1);
        QVERIFY(Difference(shown, scaled("")) > 32);
    }

private:
    /// The icons of the library, and those of the viewer, which are of the same hand.
    static void addIcons()
    {
        QTest::addColumn<QString>("name");
        for (const char* name :
             {"2D",        "3D",     "selection", "move",    "zoomfit", "rotate-left", "rotate-right",
              "previous",  "next",   "capture",   "ruler",   "clear",   "add",         "open-folder",
              "save_file", "photo",  "pdf",       "close",   "copy",    "paste",       "search",
              "rectangle", "circle", "ellipse",   "polygon", "arrow",   "text"})
            QTest::newRow(name) << QStringLiteral(":/Image/") + QString::fromLatin1(name);
        for (const char* name :
             {"undo",       "redo",       "delete",     "quit",  "image-add", "recent", "layout-1x1",
              "layout-2x1", "layout-2x2", "median",     "sobel", "ocr",       "globe",  "settings",
              "about",      "shortcuts",  "dark-light", "dock",  "warning",   "info"})
            QTest::addRow("app/%s", name) << QStringLiteral(":/app/Image/") + QString::fromLatin1(name);
    }
};

int main(int argc, char* argv[])
{
    // QIcon looks for the large pictures only where some screen is denser than one to one.
    qputenv("QT_SCALE_FACTOR", "1.5");
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication app(argc, argv);
    tst_ResourcesCommon test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_ResourcesCommon.moc"
