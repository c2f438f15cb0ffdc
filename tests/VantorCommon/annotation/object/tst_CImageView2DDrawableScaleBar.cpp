// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CScaleBar.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableScaleBar.h>

#include <QImage>
#include <QPainter>
#include <QSignalSpy>

using Vantor::Algorithms::CCalibration;
using Vantor::Geometry::CPoint;
using Vantor::Geometry::CScaleBar;

namespace
{
std::shared_ptr<CImageView2DDrawableScaleBar> MakeBar(double dblLength)
{
    auto pBar = std::make_shared<CImageView2DDrawableScaleBar>();
    pBar->SetData(std::make_shared<CScaleBar>(CPoint<double>(20, 100), CPoint<double>(20 + dblLength, 100)));
    return pBar;
}

CCalibration Millimetres(double dblPixel)
{
    CCalibration calibration;
    if (!calibration.Set({"mm", dblPixel, dblPixel}).empty())
        qFatal("no calibration");
    return calibration;
}

/// The columns of the black pixels of the middle of the bar, in a picture in which a pixel is s image pixels.
std::pair<int, int> BlackColumns(const CImageView2DDrawableScaleBar& bar, double s)
{
    QImage picture(400, 300, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    QPainter painter(&picture);
    painter.scale(1.0 / s, 1.0 / s);
    bar.PaintContents(painter, s);
    painter.end();
    const int nRow = static_cast<int>(100.0 / s);
    int nFirst = -1, nLast = -1;
    for (int x = 0; x < picture.width(); ++x) {
        if (picture.pixelColor(x, nRow) != QColor(Qt::black))
            continue;
        nFirst = nFirst < 0 ? x : nFirst;
        nLast = x;
    }
    return {nFirst, nLast};
}
} // namespace

class tst_CImageView2DDrawableScaleBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLengthIsRoundAndFitsIntoItsRoomAtEachZoom()
    {
        const auto pBar = MakeBar(150.0);
        QCOMPARE(pBar->GetLength(1.0), 100.0); // pixels
        pBar->SetCalibration(Millimetres(0.02), false);
        QCOMPARE(pBar->GetLength(1.0), 2.0);   // 3 mm of room
        QCOMPARE(pBar->GetLength(10.0), 2.0);  // shown smaller, the room of the image counts
        QCOMPARE(pBar->GetLength(0.25), 1.0);  // 200 pixels of the view are 50 of the image
        QCOMPARE(pBar->GetLength(0.01), 0.02); // 0.04 mm
    }

    void withoutRoomOrAGeometryThereIsNoBar()
    {
        QCOMPARE(MakeBar(0.0)->GetLength(1.0), 0.0);
        QCOMPARE(CImageView2DDrawableScaleBar().GetLength(1.0), 0.0);
        QCOMPARE(BlackColumns(*MakeBar(0.0), 1.0), std::make_pair(-1, -1));
    }

    void theBarIsPaintedAsLongAsItSays()
    {
        const auto pBar = MakeBar(150.0);
        pBar->SetCalibration(Millimetres(0.02), false);
        QCOMPARE(BlackColumns(*pBar, 1.0), std::make_pair(20, 119)); // 2 mm are 100 pixels
        QCOMPARE(BlackColumns(*pBar, 0.5), std::make_pair(40, 239)); // shown as 200
        const auto pTurned = MakeBar(-150.0);                        // drawn from the right to the left
        pTurned->SetCalibration(Millimetres(0.02), false);
        pTurned->MoveTopLeftTo(QPointF(20, 100));
        QCOMPARE(BlackColumns(*pTurned, 1.0), std::make_pair(20, 119));
    }

    void aCalibrationIsToldOnceAndIsNoChangeForFiles()
    {
        const auto pBar = MakeBar(150.0);
        const unsigned int nRevision = pBar->GetRevision();
        QSignalSpy spy(pBar.get(), &CImageView2DDrawableObject::signal_ChangeDrawableObjectProperty);
        pBar->SetCalibration(Millimetres(0.02), false);
        pBar->SetCalibration(Millimetres(0.02), true);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(pBar->GetRevision(), nRevision);
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DDrawableScaleBar)
#include "tst_CImageView2DDrawableScaleBar.moc"
