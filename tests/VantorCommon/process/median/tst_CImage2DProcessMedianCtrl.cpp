// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/process/ToolBench.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/TestMain.h"

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;
using Vantor::Algorithms::ERegionMode;

namespace
{
QByteArray MedianOf(const CImage& image, int nRadius)
{
    return PixelsAfter(image, [nRadius](CImage& copy) {
        QCOMPARE(copy.MedianFilter(nRadius, nRadius, nullptr, ERegionMode::Inside, 0.0), 0);
    });
}
} // namespace

class tst_CImage2DProcessMedianCtrl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void deliberateARunIs3x3WhateverTypeIsChosen()
    {
        ToolBench<MedianTool> b;
        const auto pBefore = b.Image();
        QVERIFY(b.parts.OpenEditor(1));
        b.parts.Key(Qt::Key_Down);
        b.parts.Key(Qt::Key_Return);
        QTRY_COMPARE(b.model.GetType(), EImage2DProcessMedian5x5);
        QCOMPARE(b.parts.Cell(0, 1), QStringLiteral("EImage2DProcessMedian5x5"));
        b.parts.ClickRun();
        QCOMPARE(b.Pixels(), MedianOf(*pBefore, 1));
        QVERIFY(b.Pixels() != MedianOf(*pBefore, 2));
    }

    void theNamesOfTheTypesAreReachedWithoutANamespace()
    {
        QCOMPARE(static_cast<int>(::EImage2DProcessMedian3x3), 0);
        QCOMPARE(static_cast<int>(::EImage2DProcessMedian5x5), 1);
        QCOMPARE(static_cast<int>(::EImage2DProcessMedianNxN), 2);
    }

    void aFilterThatFailsLeavesTheImageAndShowsNothing()
    {
        ToolBench<MedianTool> b;
        auto pDeep = std::make_shared<CImage>();
        QCOMPARE(pDeep->Create(20, 10, 1, 16, EImageType::Interleaved, 1), 0);
        b.SetImage(pDeep);
        LogRecorder log;
        b.parts.ClickRun();
        QVERIFY(b.Image() == pDeep);
        QCOMPARE(b.parts.Message(), QString());
        QCOMPARE(log.Take(), QStringList());
        QVERIFY(pDeep->MedianFilter(1, 1, nullptr, ERegionMode::Inside, 0.0) != 0);
        QVERIFY(!b.ctrl.GetFailureReason().isEmpty());
        QCOMPARE(b.ctrl.GetFailureReason(), QString::fromStdString(pDeep->GetFailureReason()));
    }

    void theReasonIsGoneAfterAGoodRun()
    {
        ToolBench<MedianTool> b;
        b.ctrl.ChangeSourceImageView(QString());
        b.parts.ClickRun();
        QVERIFY(!b.ctrl.GetFailureReason().isEmpty());
        b.ctrl.ChangeSourceImageView(QStringLiteral("Image View [0]"));
        b.parts.ClickRun();
        QCOMPARE(b.ctrl.GetFailureReason(), QString());
    }
};

VANTOR_TEST_MAIN(tst_CImage2DProcessMedianCtrl)
#include "tst_CImage2DProcessMedianCtrl.moc"
