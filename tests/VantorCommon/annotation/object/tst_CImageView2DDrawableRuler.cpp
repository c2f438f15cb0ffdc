// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CLine.h>
#include <Vantor/geometry/CRectangle.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableRuler.h>

#include <QApplication>

using namespace Vantor::Geometry;

class tst_CImageView2DDrawableRuler : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itsTypeIsRulerAndItsNameThatOfALine()
    {
        CImageView2DDrawableRuler ruler;
        QCOMPARE(ruler.GetType(), EImageView2DDrawbleObjectType_Ruler);
        ruler.SetData(std::make_shared<CLine>());
        QCOMPARE(ruler.GetName(), QStringLiteral("Line_") + QString::number(ruler.GetUID()));
    }

    void itsTextStandsAtTheEndOfTheLine()
    {
        CImageView2DDrawableRuler ruler;
        ruler.SetData(std::make_shared<CLine>(CPoint<double>(1, 2), CPoint<double>(3, -4)));
        QCOMPARE(ruler.GetPointText(), QPointF(3, -4));
    }

    void withoutALineItsTextPointIsZero()
    {
        CImageView2DDrawableRuler ruler;
        QCOMPARE(ruler.GetPointText(), QPointF(0, 0));
        ruler.SetData(std::make_shared<CRectangle>(1, 2, 3, 4));
        QCOMPARE(ruler.GetPointText(), QPointF(0, 0));
    }

    void theSecondLineIsTheLengthInUnitsIfLabelsTellThem()
    {
        CImageView2DDrawableRuler ruler;
        ruler.SetData(std::make_shared<CLine>(CPoint<double>(0, 0), CPoint<double>(30, -40)));
        Vantor::Algorithms::CCalibration calibration;
        ruler.SetCalibration(calibration, true);
        QCOMPARE(ruler.GetLabel().strSecond, QString()); // a pixel is no news
        QCOMPARE(calibration.Set({"mm", 0.5, 0.25}), std::string());
        ruler.SetCalibration(calibration, false);
        QCOMPARE(ruler.GetLabel().strSecond, QString());
        ruler.SetCalibration(calibration, true);
        QCOMPARE(ruler.GetLabel().strSecond, QStringLiteral("18.0278 mm"));
        QCOMPARE(ruler.GetLabel().strText, QStringLiteral("50.000 pixel"));
        ruler.SetData(std::make_shared<CRectangle>(1, 2, 3, 4));
        QCOMPARE(ruler.GetLabel().strSecond, QString());
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DDrawableRuler)
#include "tst_CImageView2DDrawableRuler.moc"
